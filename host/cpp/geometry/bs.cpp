#include "bs.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace {

BS_POINT blend(const BS_POINT& a, const BS_POINT& b, double t) {
    const double s = 1.0 - t;
    return {s * a.x + t * b.x, s * a.y + t * b.y, s * a.z + t * b.z, s * a.w + t * b.w};
}

bool isFinite(const BS_POINT& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z) && std::isfinite(p.w);
}

bool isUsable(const BS_POINT& p) {
    return isFinite(p) && p.w != 0.0;
}

// Enough to evaluate safely: costs nothing that grows with the curve.
bool hasSoundCounts(const BS_CURVE& c) {
    return c.controls && c.knots && c.order >= 1 && c.order <= BS_MAX_ORDER && c.controlCount >= c.order &&
           c.knotCount >= c.order && c.knotCount - c.order >= c.controlCount;
}

bool isSound(const BS_CURVE& c) {
    if (!hasSoundCounts(c)) return false;
    const double* knotsEnd = c.knots + c.controlCount + c.order;
    return std::all_of(c.knots, knotsEnd, [](double k) { return std::isfinite(k); }) &&
           std::is_sorted(c.knots, knotsEnd) &&
           std::all_of(c.controls, c.controls + c.controlCount, isFinite) &&
           c.knots[c.order - 1] < c.knots[c.controlCount] && std::isfinite(*(knotsEnd - 1) - c.knots[0]);
}

bool isSpan(const BS_CURVE& c, int span) {
    return span >= c.order - 1 && span < c.controlCount && c.knots[span] < c.knots[span + 1];
}

// De Boor's triangle over one span. The span isn't empty, so no denominator in it is 0.
struct Evaluation {
    BS_POINT point;
    BS_POINT derivative; ///< of the homogeneous curve
};

Evaluation evaluate(const BS_CURVE& c, double u, int span) {
    const int degree = c.order - 1;
    BS_POINT d[BS_MAX_ORDER];
    std::copy(c.controls + span - degree, c.controls + span + 1, d);
    Evaluation result{d[0], {0, 0, 0, 0}};
    for (int level = 1; level <= degree; ++level) {
        if (level == degree) {
            const double f = degree / (c.knots[span + 1] - c.knots[span]);
            const BS_POINT& a = d[degree - 1];
            const BS_POINT& b = d[degree];
            result.derivative = {f * (b.x - a.x), f * (b.y - a.y), f * (b.z - a.z), f * (b.w - a.w)};
        }
        for (int j = degree; j >= level; --j) {
            const double low = c.knots[span - degree + j];
            const double high = c.knots[span + 1 + j - level];
            d[j] = blend(d[j - 1], d[j], (u - low) / (high - low));
        }
    }
    result.point = d[degree];
    return result;
}

// Quotient rule on the homogeneous curve.
bool tangentAt(const BS_CURVE& c, double u, int span, RPT3* tangent) {
    const Evaluation e = evaluate(c, u, span);
    if (!isUsable(e.point)) return false;
    const double w = e.point.w;
    const double f = e.derivative.w / w;
    *tangent = {(e.derivative.x - f * e.point.x) / w, (e.derivative.y - f * e.point.y) / w,
                (e.derivative.z - f * e.point.z) / w};
    return true;
}

bool hasDirection(const RPT3& v, double size) {
    const double l = std::hypot(v.x, v.y, v.z);
    return std::isfinite(l) && l > 1e-12 * size;
}

// How fast the control polygon of a span runs: what a derivative is small beside.
double typicalSpeed(const BS_CURVE& c, int span) {
    double longest = 0;
    for (int i = span - c.order + 2; i <= span; ++i) {
        const BS_POINT& a = c.controls[i - 1];
        const BS_POINT& b = c.controls[i];
        if (a.w == 0.0 || b.w == 0.0) continue; // a control without a say
        longest = std::max(longest,
                           std::hypot(b.x / b.w - a.x / a.w, b.y / b.w - a.y / a.w, b.z / b.w - a.z / a.w));
    }
    return longest / (c.knots[span + 1] - c.knots[span]);
}

} // namespace

int BsGetCurveUList(const BS_CURVE& curve, int density, std::vector<double>* parameters,
                    std::vector<int>* spans, int* count) try {
    if (density < 1 || !isSound(curve)) return 3011;
    std::vector<double> us;
    std::vector<int> at;
    for (int span = curve.order - 1; span < curve.controlCount; ++span) {
        if (!isSpan(curve, span)) continue;
        const double low = curve.knots[span];
        const double width = curve.knots[span + 1] - low;
        for (int k = 0; k < density; ++k) {
            us.push_back(low + width * k / density);
            at.push_back(span);
        }
    }
    us.push_back(curve.knots[curve.controlCount]);
    at.push_back(at.back());
    if (us.size() > 0x7fffffff) return 1001;
    *count = static_cast<int>(us.size());
    parameters->swap(us);
    spans->swap(at);
    return 0;
} catch (const std::bad_alloc&) {
    return 1001;
}

int BsSplinePoint(const BS_CURVE& curve, double u, int span, BS_POINT* homogeneous) {
    if (!hasSoundCounts(curve) || !isSpan(curve, span)) return 3011;
    const BS_POINT p = evaluate(curve, u, span).point;
    if (!isUsable(p)) return 3011;
    *homogeneous = p;
    return 0;
}

int BsCurveRichtAbl(const BS_CURVE& curve, double u, int span, RPT3* tangent) {
    if (!hasSoundCounts(curve) || !isSpan(curve, span) || curve.order < 2) return 3011;
    const double speed = typicalSpeed(curve, span);
    const double low = curve.knots[span];
    const double high = curve.knots[span + 1];
    const double beside = u + (u < 0.5 * (low + high) ? 1e-6 : -1e-6) * (high - low);
    for (const double at : {u, beside}) {
        RPT3 t;
        if (!tangentAt(curve, at, span, &t) || !hasDirection(t, speed)) continue;
        *tangent = t;
        return 0;
    }
    return 3011;
}

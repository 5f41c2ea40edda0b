// Elements straight into the active pattern, with the host's current pen and line type.
#include "ov.h"

#include "drawing/host_state.h"
#include "services/failure.h"
#include "services/session.h"
#include "ut.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace host;

int ovpenlt(int* code, int* pen, int* lineType) {
    if (callFails()) return errorNoMemory;
    if (*code == 5) {
        *pen = session().pen;
        *lineType = session().lineType;
        return 0;
    }
    if (*code != 6) return errorNotApplicable;
    session().pen = *pen;
    session().lineType = *lineType;
    return 0;
}

/// An element at (x, y) with the current pen and line type.
static Element makeElement(ElementType type, double x, double y, unsigned char info) {
    Element element;
    element.type = type;
    element.x = x;
    element.y = y;
    element.pen = session().pen;
    constexpr int limit = std::numeric_limits<std::int16_t>::max();
    element.lineType = static_cast<std::int16_t>(std::clamp(session().lineType, 0, limit));
    element.info = info & 0x7f;
    return element;
}

int ovdraw(int op, double x, double y, unsigned char info) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    if (op != 1 && op != 2) return errorNotApplicable;
    appendElement(*pattern, makeElement(op == 1 ? ElementType::Draw : ElementType::Move, x, y, info));
    return 0;
}

int ovarc(int op, double x, double y, double cx, double cy, unsigned char info) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    if (op != 3 && op != 4 && op != 22) return errorNotApplicable;
    Element element = makeElement(op == 22 ? ElementType::Circle : ElementType::Arc, x, y, info);
    element.cx = cx;
    element.cy = cy;
    element.ccw = op == 4;
    appendElement(*pattern, element);
    return 0;
}

static bool isUsable(const std::vector<RPT>& points) {
    if (points.size() < 3) return false;
    const double tolerance = UtConv(50);
    // Squares settle it without a root but close to the tolerance and at the edges of the range.
    const double surelyLong = tolerance * tolerance * 1.0001;
    constexpr double surelyFinite = 1e300;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!std::isfinite(points[i].x) || !std::isfinite(points[i].y)) return false;
        if (i == 0) continue;
        const double dx = points[i].x - points[i - 1].x, dy = points[i].y - points[i - 1].y;
        const double square = dx * dx + dy * dy;
        if (square > surelyLong && square < surelyFinite) continue;
        const double chord = std::hypot(dx, dy);
        if (!(chord > tolerance) || !std::isfinite(chord)) return false;
    }
    return true;
}

static void appendSpline(Pattern& pattern, Spline&& spline) {
    const RPT at = currentPoint(pattern);
    const RPT& first = spline.points.front();
    const RPT& last = spline.points.back();
    if (pattern.elements.empty() || at.x != first.x || at.y != first.y)
        appendElement(pattern, makeElement(ElementType::Move, first.x, first.y, 0));
    Element element = makeElement(ElementType::Spline, last.x, last.y, 0);
    element.cx = static_cast<double>(pattern.splines.size());
    pattern.splines.push_back(std::move(spline));
    appendElement(pattern, element);
}

int ovspline(int* count, double x[], double y[], int* degree, int* /*one*/, int flags[2], double* startAngle,
             double* endAngle) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().active();
    if (!pattern) return errorNoSuchObject;
    Spline spline;
    spline.points.reserve(static_cast<std::size_t>(std::max(*count, 0)));
    for (int i = 0; i < *count; ++i) spline.points.push_back({x[i], y[i]});
    spline.degree = *degree;
    spline.startFixed = flags[0] == 1 && std::isfinite(*startAngle);
    spline.endFixed = flags[1] == 1 && std::isfinite(*endAngle);
    spline.startAngle = spline.startFixed ? *startAngle : 0;
    spline.endAngle = spline.endFixed ? *endAngle : 0;
    if (!isUsable(spline.points)) return errorNotApplicable;
    appendSpline(*pattern, std::move(spline));
    return 0;
}

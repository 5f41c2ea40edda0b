// Draw stage of SPLINE: sampled, and given to the host as lines or as biarcs.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "bs.h"
#include "ci.h"
#include "ci_objects.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_spline_import.h"
#include "dx_transform.h"
#include "ge.h"
#include "mt.h"
#include "uo.h"
#include "ut.h"

#include <cmath>

namespace {

constexpr int LINEAR = 16;
constexpr int NO_CURVE = 3011; ///< the host's answer to a record that describes none: nothing to be drawn

/// Points of the curve in world coordinates ahead of the shift, with their tangents.
struct Samples {
    std::vector<RPT> points;
    std::vector<RPT> tangents;
    RPT3 last{0, 0, 0};
    std::vector<RPT3>* inSpace = nullptr; ///< receives the points, for the 3D stage
};

/// The record in the form that the host evaluates; it points into its own arrays.
class HostCurve {
public:
    explicit HostCurve(const DX_SPLINE_TYPE& rec) {
        controls_.reserve(rec.controlPoints.size());
        for (const DX_CONTROL_POINT& c : rec.controlPoints)
            controls_.push_back({c.point.x * c.weight, c.point.y * c.weight, c.point.z * c.weight, c.weight});
        curve_.controls = controls_.data();
        curve_.knots = rec.knots.data();
        curve_.controlCount = static_cast<int>(controls_.size());
        curve_.knotCount = static_cast<int>(rec.knots.size());
        curve_.order = static_cast<std::int16_t>(rec.degree >= 0 && rec.degree < 32767 ? rec.degree + 1 : 0);
    }
    HostCurve(const HostCurve&) = delete;
    HostCurve& operator=(const HostCurve&) = delete;
    const BS_CURVE& get() const { return curve_; }

private:
    std::vector<BS_POINT> controls_;
    BS_CURVE curve_;
};

/// Takes a point into the samples. False when it isn't finite.
bool addSample(Samples& samples, RPT3 point, const RPT& tangent, const Mat44 m) {
    DxTrans3DRpt(&point, m);
    if (!DxIsFinite(point)) return false;
    samples.points.push_back({point.x, point.y});
    samples.tangents.push_back(tangent);
    samples.last = point;
    if (samples.inSpace) samples.inSpace->push_back(point);
    if (DxCheckPass) DxCheckXYZ(point.x, point.y, point.z);
    return true;
}

/// Announces the elements of the samples. Measuring makes none, and a curve in space has its own pattern.
int announce(int count, const Samples& samples) {
    return count > 0 && !DxCheckPass && !samples.inSpace ? DxNewElement(count) : 0;
}

/// Samples the curve itself. A curve that is none of the host's is an error of its own. `useArcs` is cleared
/// when a tangent can't be had.
int sampleCurve(const DX_SPLINE_TYPE& rec, const Mat44 m, bool& useArcs, Samples& samples) {
    const HostCurve curve(rec);
    const bool linear = rec.flags & LINEAR || rec.degree == 1;
    std::vector<double> parameters;
    std::vector<int> spans;
    int count = 0;
    const int density = linear ? 1 : 2 * curve.get().order;
    if (const int error = BsGetCurveUList(curve.get(), density, &parameters, &spans, &count))
        return error == NO_CURVE ? 0 : error;
    if (const int error = announce(count, samples)) return error;
    for (int k = 0; k < count; ++k) {
        const auto i = static_cast<std::size_t>(k);
        BS_POINT h{};
        if (BsSplinePoint(curve.get(), parameters[i], spans[i], &h) != 0 || h.w == 0) continue;
        RPT tangent{1, 0};
        RPT3 derivative{};
        if (useArcs && BsCurveRichtAbl(curve.get(), parameters[i], spans[i], &derivative) == 0) {
            RPT3 turned;
            Mt44MultRpt3Vec(derivative, m, &turned);
            tangent = {turned.x, turned.y};
        } else {
            useArcs = false;
        }
        addSample(samples, {h.x / h.w, h.y / h.w, h.z / h.w}, tangent, m);
    }
    return 0;
}

int sampleFitPoints(const DX_SPLINE_TYPE& rec, const Mat44 m, Samples& samples) {
    if (const int error = announce(rec.fitCount, samples)) return error;
    for (const RPT3& point : rec.fitPoints) addSample(samples, point, {1, 0}, m);
    return 0;
}

int drawPolygon(const Samples& samples, unsigned char info) {
    if (const int error = Dxovdraw(2, samples.points[0].x, samples.points[0].y, 0)) return error;
    for (std::size_t i = 1; i < samples.points.size(); ++i)
        if (const int error = Dxovdraw(1, samples.points[i].x, samples.points[i].y, info)) return error;
    return 0;
}

double cross(const RPT& u, const RPT& v) {
    return u.x * v.y - u.y * v.x;
}
RPT minus(const RPT& a, const RPT& b) {
    return {a.x - b.x, a.y - b.y};
}
double dot(const RPT& a, const RPT& b) {
    return a.x * b.x + a.y * b.y;
}

/// Two arcs that touch each other, from sample a to sample a + 2.
struct Biarc {
    RPT centre1{}, centre2{}, join{};
    short sense1 = 0, sense2 = 0;
};

/// False where two arcs don't fit, so that a line goes on to the next sample.
bool findBiarc(const RPT* p, const RPT* t, Biarc& biarc) {
    if (cross(t[1], t[2]) * cross(t[0], t[1]) < 0) return false; // an inflection
    const RPT d = minus(p[2], p[0]);
    const short side = cross(d, minus(p[1], p[0])) > 0 ? -1 : 1;
    double r1 = 0, r2 = 0;
    if (GeUtilInterpolByArc(p[0], t[0], p[2], t[2], t[1], side, 0.00001, 1, &biarc.centre1, &r1,
                            &biarc.sense1, &biarc.centre2, &r2, &biarc.sense2, &biarc.join) != 0)
        return false;
    if (!(dot(minus(p[0], biarc.join), d) <= 0 && dot(minus(p[2], biarc.join), d) >= 0)) return false;
    return biarc.sense1 != 0 || biarc.sense2 != 0;
}

int drawPiece(const RPT& from, const RPT& to, const RPT& centre, short sense, unsigned char info) {
    const double tolerance = DxDrawingTolerance();
    if (std::fabs(to.x - from.x) < tolerance && std::fabs(to.y - from.y) < tolerance)
        return Dxovdraw(1, to.x, to.y, info);
    return Dxovarc(sense == 1 ? 4 : 3, to.x, to.y, centre.x, centre.y, info);
}

int drawBiarcs(const Samples& samples, unsigned char info) {
    const std::vector<RPT>& p = samples.points;
    if (const int error = Dxovdraw(2, p[0].x, p[0].y, 0)) return error;
    std::size_t a = 0;
    while (a + 1 < p.size()) {
        Biarc biarc;
        int error = 0;
        if (a + 2 < p.size() && findBiarc(&p[a], &samples.tangents[a], biarc)) {
            error = drawPiece(p[a], biarc.join, biarc.centre1, biarc.sense1, info);
            if (!error) error = drawPiece(biarc.join, p[a + 2], biarc.centre2, biarc.sense2, info);
            a += 2;
        } else {
            error = Dxovdraw(1, p[a + 1].x, p[a + 1].y, info);
            ++a;
        }
        if (error) return error;
    }
    return 0;
}

} // namespace

int DxDrawSpline(const DX_SPLINE_TYPE* rec, const Mat44 m, int approx, int stage) {
    const bool inSpace = stage == 3;
    if (inSpace && !Dx3dLines) return 0;
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    const bool linear = rec->flags & LINEAR || rec->degree == 1;
    const bool hasCurve = rec->knotCount != 0 && rec->controlCount != 0;
    bool useArcs = approx && !linear && hasCurve;
    std::vector<RPT3> list;
    Samples samples;
    if (inSpace) samples.inSpace = &list;
    const int error = hasCurve ? sampleCurve(*rec, m, useArcs, samples) : sampleFitPoints(*rec, m, samples);
    if (error || DxCheckPass) return error;
    if (samples.points.size() < 2) {
        if (!samples.points.empty()) DxLastPoint = samples.last;
        return DxSetPenLt(pen, lineType);
    }
    if (const int failed = DxStartDrawing(pen, lineType)) return failed;
    const auto info = static_cast<unsigned char>((rec->flags & 1) + 4);
    if (stage == 2)
        if (const int failed = useArcs ? drawBiarcs(samples, info) : drawPolygon(samples, info))
            return failed;
    if (inSpace)
        if (const int failed = DxCiDraw3DCurveByPoints(list)) return failed;
    DxLastPoint = samples.last;
    return 0;
}

int DxDrawFlatSpline(const DX_SPLINE_TYPE* rec, const DxEntityContext& context) {
    return DxDrawSpline(rec, context.matrix, context.approx >= 1, 2);
}

int DxDrawSplineInSpace(const DX_SPLINE_TYPE* rec, const DxEntityContext& context) {
    return DxDrawSpline(rec, context.matrix, context.approx >= 1, 3);
}

// RAY and XLINE: lines without end, of which the host gets what lies within the extents.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_ray_import.h"
#include "dx_transform.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using R = DX_RAY_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::point},
    {11, &R::direction},
});

constexpr double endless = std::numeric_limits<double>::infinity();

/// The part of a line that is drawn, as multiples of its direction from its point on.
struct Part {
    double from, to;
};

/// Keeps what lies between two bounds of one coordinate.
void clip(Part& part, double at, double step, double low, double high) {
    if (step == 0) {
        if (at < low || at > high) part = {0, -1};
        return;
    }
    const double a = (low - at) / step, b = (high - at) / step;
    part.from = std::max(part.from, std::min(a, b));
    part.to = std::min(part.to, std::max(a, b));
}

/// What lies within the extents and a margin about them.
Part partWithin(const RPT3& point, const RPT3& step, double start) {
    const bool isKnown = !DxIsExtentsUnInizialized();
    const RPT3 low = isKnown ? DxExtMin : point, high = isKnown ? DxExtMax : point;
    const double diagonal = std::hypot(high.x - low.x, high.y - low.y);
    const double length = std::hypot(step.x, step.y), margin = 0.05 * diagonal;
    Part part{start, endless};
    clip(part, point.x, step.x, low.x - margin, high.x + margin);
    clip(part, point.y, step.y, low.y - margin, high.y + margin);
    if (part.to > part.from) return part;
    const double reach = std::max(diagonal, 1.0) / length;
    return {start == 0 ? 0 : -reach, reach};
}

int draw(const R& rec, const Mat44 m, double start) {
    DxPenLt look;
    if (!DxPenLtToCAD(&rec.base, &look.pen, &look.lineType)) return 0;
    RPT3 point = rec.point;
    RPT3 ahead{point.x + rec.direction.x, point.y + rec.direction.y, point.z + rec.direction.z};
    DxTrans3DRpt(&point, m);
    DxTrans3DRpt(&ahead, m);
    const RPT3 step{ahead.x - point.x, ahead.y - point.y, 0};
    if (!DxIsFinite(point) || !DxIsFinite(ahead) || std::hypot(step.x, step.y) == 0) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(point.x, point.y, point.z);
        return 0;
    }
    const Part part = partWithin(point, step, start);
    const RPT3 from{point.x + part.from * step.x, point.y + part.from * step.y, point.z};
    const RPT3 to{point.x + part.to * step.x, point.y + part.to * step.y, point.z};
    if (!DxIsFinite(from) || !DxIsFinite(to)) return 0;
    if (const int error = DxStartDrawing(look.pen, look.lineType)) return error;
    if (const int error = Dxovdraw(2, from.x, from.y)) return error;
    DxLastPoint = to;
    return Dxovdraw(1, to.x, to.y);
}

} // namespace

int DxReadRay(R* rec) {
    DxInitEntityBase(&rec->base);
    rec->point = rec->direction = {0, 0, 0};
    return DxReadEntity(*rec, fields, [](const DxPair&) { return false; });
}

int DxDrawRay(const R* rec, const Mat44 m) {
    return draw(*rec, m, 0);
}

int DxDrawXline(const R* rec, const Mat44 m) {
    return draw(*rec, m, -endless);
}

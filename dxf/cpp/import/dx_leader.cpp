// LEADER: an arrow that points at something.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../dimension/dx_dim_overrides.h"
#include "../session/session_state.h"
#include "dx_annotation_import.h"
#include "dx_dimstyle.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_leader_curve.h"
#include "dx_transform.h"
#include "ov_arrow.h"

namespace {

using R = DX_LEADER_TYPE;
constexpr auto fields = dxFields<R>({
    {3, &R::styleName, DX_UPPER},
    {40, &R::textHeight},
    {41, &R::textWidth},
    {71, &R::arrowFlag},
    {72, &R::pathType},
    {73, &R::creationFlag},
    {74, &R::hookDirection},
    {75, &R::hookline},
    {77, &R::colour},
    {210, &R::extrusion},
    {211, &R::horizontalDirection},
});

void init(R& rec) {
    rec = R{};
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.extrusion);
    rec.arrowFlag = 1;
    rec.creationFlag = 3;
    rec.horizontalDirection = {1, 0, 0};
}

/// Group 10 begins a vertex. Their count isn't needed, so one that lies does no harm.
bool takeVertex(R& rec, const DxPair& pair) {
    if (pair.code == 10) rec.vertices.push_back({DxfReadConvDouble(pair.text), 0, 0});
    if (pair.code != 20 && pair.code != 30) return pair.code == 10 || pair.code == 76;
    if (rec.vertices.empty()) return true;
    (pair.code == 20 ? rec.vertices.back().y : rec.vertices.back().z) = DxfReadConvDouble(pair.text);
    return true;
}

/// Points in the drawing; empty when one of them isn't finite.
std::vector<RPT3> pointsOf(const R& rec, const Mat44 m) {
    constexpr int spline = 1;
    std::vector<RPT3> points =
        DxMoreKinds && rec.pathType == spline ? DxLeaderCurve(rec.vertices) : rec.vertices;
    for (RPT3& point : points) {
        DxTrans3DRpt(&point, m);
        if (!DxIsFinite(point)) return {};
    }
    return points;
}

struct Head {
    int kind = OV_ARROW_NONE;
    double length = 0;
};
Head headOf(const R& rec, const DX_DIM_STYLE* style) {
    if (!style) return {};
    Head head;
    if (rec.arrowFlag) head.kind = style->reals[DIMTSZ] != 0 ? OV_ARROW_TICK : OV_ARROW_FILLED;
    head.length = style->reals[DIMASZ] * style->reals[DIMSCALE];
    return head;
}

} // namespace

const DX_DIM_STYLE* DxStyleOf(const DX_NAME& name, const std::unique_ptr<DX_DIM_STYLE>& changed) {
    return changed ? changed.get() : DxFindDimStyle(name.view());
}

void DxTakeStyleColour(DX_ENTITY_BASE_TYPE* base, int colour) {
    if (!DxMoreKinds || colour <= 0 || colour > 256) return;
    base->color = colour;
    base->trueColor = -1;
}

int DxReadLeader(R* rec) {
    init(*rec);
    DxDimOverrides overrides(rec->styleName, rec->styleOverride);
    return DxReadEntity(*rec, fields,
                        [&](const DxPair& pair) { return overrides.take(pair) || takeVertex(*rec, pair); });
}

int DxDrawLeader(const R* rec, const Mat44 m) {
    const DX_DIM_STYLE* style = DxStyleOf(rec->styleName, rec->styleOverride);
    DX_ENTITY_BASE_TYPE base;
    DxCopyEntityBase(&base, &rec->base);
    if (style) DxTakeStyleColour(&base, style->integers[DIMCLRD]);
    DxPenLt look;
    if (!DxPenLtToCAD(&base, &look.pen, &look.lineType)) return 0;
    const std::vector<RPT3> points = pointsOf(*rec, m);
    if (points.empty()) return 0;
    if (DxCheckPass) {
        for (const RPT3& point : points) DxCheckXYZ(point.x, point.y, point.z);
        return 0;
    }
    if (const int error = DxStartDrawing(look.pen, look.lineType)) return error;
    const Head head = headOf(*rec, style);
    return DxDrawArrowLine(points, head.kind, head.length, look);
}

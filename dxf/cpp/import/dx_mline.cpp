// MLINE: lines side by side, whose places at each vertex the entity tells itself. They are drawn in the
// entity's colour and line type; joints, caps and fills of its style aren't drawn.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_mline_import.h"
#include "dx_transform.h"

#include <algorithm>
#include <cmath>

namespace {

using R = DX_MLINE_TYPE;
constexpr auto fields = dxFields<R>({
    {71, &R::flags},
});

using V = DX_MLINE_VERTEX;
constexpr auto vertexFields = dxFields<V>({
    {11, &V::point},
    {12, &V::direction},
    {13, &V::mitre},
});

/// Group 11 begins a vertex, 74 a line there. Announced counts aren't needed.
bool takeVertex(R& rec, const DxPair& pair) {
    if (pair.code == 11) rec.vertices.emplace_back();
    if (rec.vertices.empty()) return false;
    V& vertex = rec.vertices.back();
    if (pair.code == 74) {
        vertex.lines.emplace_back();
    } else if (pair.code == 41) {
        if (!vertex.lines.empty()) vertex.lines.back().push_back(DxfReadConvDouble(pair.text));
    } else {
        return vertexFields.store(vertex, pair.code, pair.text);
    }
    return true;
}

RPT3 beyond(const RPT3& from, const RPT3& direction, double length) {
    return {from.x + direction.x * length, from.y + direction.y * length, from.z + direction.z * length};
}

/// Where line `i` passes the vertex.
RPT3 placeOf(const V& vertex, std::size_t i) {
    const bool isKnown = i < vertex.lines.size() && !vertex.lines[i].empty();
    return beyond(vertex.point, vertex.mitre, isKnown ? vertex.lines[i][0] : 0);
}

/// One piece of a line, in the drawing.
int drawPiece(RPT3 from, RPT3 to, const Mat44 m) {
    DxTrans3DRpt(&from, m);
    DxTrans3DRpt(&to, m);
    if (!DxIsFinite(from) || !DxIsFinite(to)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(from.x, from.y, from.z);
        DxCheckXYZ(to.x, to.y, to.z);
        return 0;
    }
    DxLastPoint = to;
    const int error = Dxovdraw(2, from.x, from.y);
    return error ? error : Dxovdraw(1, to.x, to.y);
}

/// Line `i` from a vertex to the next, without what is cut out of it.
int drawSegment(const V& vertex, const V& next, std::size_t i, const Mat44 m) {
    const RPT3 start = placeOf(vertex, i), end = placeOf(next, i);
    const std::vector<double>& params = vertex.lines[i];
    if (params.size() <= 2 && (params.size() < 2 || params[1] == 0)) return drawPiece(start, end, m);
    for (std::size_t k = 1; k < params.size(); k += 2) {
        const RPT3 from = beyond(start, vertex.direction, params[k]);
        const bool isCut = k + 1 < params.size();
        const RPT3 to = isCut ? beyond(start, vertex.direction, params[k + 1]) : end;
        if (const int error = drawPiece(from, to, m)) return error;
    }
    return 0;
}

} // namespace

int DxReadMline(R* rec) {
    *rec = R{};
    DxInitEntityBase(&rec->base);
    return DxReadEntity(*rec, fields, [rec](const DxPair& pair) { return takeVertex(*rec, pair); });
}

int DxDrawMline(const R* rec, const Mat44 m) {
    constexpr int closed = 2;
    DxPenLt look;
    if (rec->vertices.size() < 2 || !DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (!DxCheckPass)
        if (const int error = DxStartDrawing(look.pen, look.lineType)) return error;
    const std::size_t count = rec->vertices.size(), segments = rec->flags & closed ? count : count - 1;
    for (std::size_t at = 0; at < segments; ++at) {
        const V &vertex = rec->vertices[at], &next = rec->vertices[(at + 1) % count];
        for (std::size_t i = 0; i < vertex.lines.size(); ++i)
            if (const int error = drawSegment(vertex, next, i, m)) return error;
    }
    return 0;
}

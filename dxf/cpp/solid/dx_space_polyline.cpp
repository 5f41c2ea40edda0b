// POLYLINE, LWPOLYLINE and their vertices in space: a strip or the wall of a cylinder for each piece.
#include "../config/dx_pens.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_polyline_import.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_space_import.h"
#include "dx_space_strip.h"
#include "mt.h"
#include "space_state.h"

#include <cmath>
#include <utility>

namespace {

enum PolylineFlags { IS_3D_POLYLINE = 8, IS_POLYGON_MESH = 16, IS_POLYFACE_MESH = 64 };

/// The matrix from the polyline's coordinates to world coordinates.
const double (*toWorld(const Mat44 m, Mat44 storage))[4] {
    return DxActPolyline.flags & IS_3D_POLYLINE ? m : DxObjectMatrix(DxActPolyline.extrusion, m, storage);
}

const DX_ENTITY_BASE_TYPE& baseOf(const DX_VERTEX_TYPE& vertex) {
    const auto style = static_cast<std::size_t>(vertex.style);
    return vertex.style >= 0 && style < DxActPolyline.styles.size() ? DxActPolyline.styles[style]
                                                                    : DxActPolyline.base;
}

/// The open piece: from the last point to `to`.
struct Piece {
    RPT3 to;
    double thickness;
    const DX_ENTITY_BASE_TYPE& base;
    int pen, lineType;
};

/// The piece as an arc. False when its bulge makes none.
bool asArc(const Piece& piece, DX_ARC_TYPE& arc) {
    const RPT3& from = Dx3dLastPoint;
    double cx = 0, cy = 0;
    if (Dx3dPolyBulge == 0 || !DxGetMidXY(from.x, from.y, piece.to.x, piece.to.y, Dx3dPolyBulge, &cx, &cy))
        return false;
    DxCopyEntityBase(&arc.base, &piece.base);
    for (int i = 0; i < 3; ++i) arc.extrusion[i] = DxActPolyline.extrusion[i];
    arc.thickness = piece.thickness;
    arc.centre = {cx, cy, piece.to.z};
    arc.radius = std::hypot(from.x - cx, from.y - cy);
    arc.startAngle = std::atan2(from.y - cy, from.x - cx) * DX_DEGREES;
    arc.endAngle = std::atan2(piece.to.y - cy, piece.to.x - cx) * DX_DEGREES;
    if (Dx3dPolyBulge < 0) std::swap(arc.startAngle, arc.endAngle);
    arc.counterClockwise = 1;
    return true;
}

int drawPiece(const Piece& piece, const Mat44 m) {
    DX_ARC_TYPE arc;
    if (asArc(piece, arc)) return DxDraw3dArc(&arc, m);
    const bool isThick = piece.thickness != 0;
    Mat44 storage;
    DxFaceList faces(piece.pen, piece.lineType);
    const int error =
        DxAddStrip(faces, Dx3dLastPoint, piece.to, {0, 0, piece.thickness}, isThick, toWorld(m, storage));
    return error ? error : DxFinishFaces(faces, isThick || Dx3dPolyRaised);
}

int measure(RPT3 point, const Mat44 m) {
    Mat44 storage;
    DxTrans3DRpt(&point, toWorld(m, storage));
    DxCheckXYZ(point.x, point.y, point.z);
    return 0;
}

int drawStep(const DX_VERTEX_TYPE& vertex, const Mat44 m) {
    int pen = 0, lineType = 0;
    const DX_ENTITY_BASE_TYPE& base = baseOf(vertex);
    if (!DxPenLtToCAD(&base, &pen, &lineType)) return 0;
    if (!DxCheckPass)
        if (const int error = DxSetPenLt(pen, lineType)) return error;
    int error = 0;
    if (DxCheckPass) measure(vertex.location, m);
    if (Dx3dPolyFirst) {
        Dx3dPolyStart = vertex.location;
        Dx3dPolyFirst = 0;
    } else if (!DxCheckPass) {
        error = drawPiece({vertex.location, vertex.thickness, base, pen, lineType}, m);
    }
    Dx3dLastPoint = vertex.location;
    Dx3dPolyBulge = vertex.bulge;
    return error;
}

int drawVertices(const std::vector<DX_VERTEX_TYPE>& vertices, const Mat44 m) {
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (const int error = drawStep(vertices[i], m)) return error;
        if (DxIsStoppedAt(i)) return DX_ERR_STOPPED;
    }
    if (!vertices.empty()) DxActVertex = vertices.back();
    return DxSeqEnd3d(m);
}

} // namespace

int DxDraw3dVertex(DX_VERTEX_TYPE* vertex, const Mat44 m) {
    DxActVertex = *vertex;
    return drawStep(DxActVertex, m);
}

int DxSeqEnd3d(const Mat44 m) {
    if (!DxPolylineOpen || !DxActPolyline.closed || Dx3dPolyFirst) return 0;
    if (DxCheckPass) return measure(Dx3dPolyStart, m);
    const int error = drawPiece(
        {Dx3dPolyStart, DxActPolyline.thickness, baseOf(DxActVertex), Dx3dPolyPen, Dx3dPolyLineType}, m);
    Dx3dLastPoint = Dx3dPolyStart;
    return error;
}

int DxDraw3dPolyline(const DX_POLYLINE_TYPE* rec, const Mat44 m) {
    if (rec != &DxActPolyline) DxActPolyline = *rec;
    DX_POLYLINE_TYPE& polyline = DxActPolyline;
    if (polyline.meshCountM >= 1 && polyline.meshCountN >= 2 && polyline.flags & IS_POLYGON_MESH) {
        DxDrawPolyMat(&polyline, m);
        return 0;
    }
    if (polyline.vertexCount != 0 && polyline.flags & IS_POLYFACE_MESH) {
        DxDrawPolyNet(&polyline, m);
        return 0;
    }
    if (!DxPenLtToCAD(&polyline.base, &Dx3dPolyPen, &Dx3dPolyLineType)) return 0;
    Dx3dPolyBulge = 0;
    Dx3dPolyFirst = 1;
    Dx3dPolyRaised = !DxCheckPass && DxIsPolylineOfSpace(polyline, m);
    if (!DxCheckPass)
        if (const int error = DxSetPenLt(Dx3dPolyPen, Dx3dPolyLineType)) return error;
    DxPolylineOpen = 1;
    const int error = drawVertices(polyline.vertices, m);
    DxPolylineOpen = 0;
    return error;
}

int DxDraw3dPolylineRow(DX_POLYLINE_ROW* /*row*/, const Mat44 m) {
    return DxDraw3dPolyline(&DxActPolyline, m);
}

int DxDraw3dSeqEndRow(DX_POLYLINE_ROW* /*row*/, const Mat44 m) {
    return DxSeqEnd3d(m);
}

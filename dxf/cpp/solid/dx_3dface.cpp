// 3DFACE: a face of three or four corners, any of whose edges may be invisible.
#include "../config/dx_pens.h"
#include "../host/dx_face_list.h"
#include "../host/dx_host.h"
#include "../host/dx_host_facets.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../sections/sections_state.h"
#include "../session/session_state.h"
#include "dx_mesh_faces.h"
#include "dx_space_import.h"
#include "ve.h"

#include <algorithm>
#include <cmath>

namespace {

using R = DX_3DFACE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::corners, 0},
    {11, &R::corners, 1},
    {12, &R::corners, 2},
    {13, &R::corners, 3},
    {70, &R::edgeFlags},
});

/// The corners in world coordinates. False when one of them isn't finite.
bool placeCorners(const DX_3DFACE_TYPE& rec, const Mat44 m, RPT3 (&corners)[4]) {
    std::copy(rec.corners, rec.corners + 4, corners);
    for (RPT3& corner : corners) DxTrans3DRpt(&corner, m);
    return std::all_of(corners, corners + 4, DxIsFinite);
}

int measure(const RPT3 (&corners)[4]) {
    for (const RPT3& corner : corners) DxCheckXYZ(corner.x, corner.y, corner.z);
    return 0;
}

/// Whether the fourth corner lies off the plane of the others.
bool isWarped(const RPT3 (&corners)[4]) {
    constexpr double tolerance = 0.0001;
    VE_PLANE plane;
    RPT3 foot;
    double distance = 0;
    return Ve3dEbAus3p(1, corners[0], corners[1], corners[2], &plane) == 0 &&
           Ve3dDistPtPlane(corners[3], plane, &distance, &foot) == 0 && std::fabs(distance) > tolerance;
}

/// A face takes the pen that is closest to its material's colour, where that is known.
void takeMaterialPen(std::uint32_t handle, int* pen) {
    const auto material = DxMaterials.find(handle);
    int closest = 0;
    if (handle != 0 && material != DxMaterials.end() &&
        DxCiGetClosestPen(static_cast<std::uint32_t>(material->second.ambientColor), &closest) == 0)
        *pen = closest;
}

/// Flat, one face; warped, two triangles with a hidden edge between them.
int addFaces(DxFaceList& faces, const RPT3 (&c)[4], int edgeFlags, bool warped) {
    const auto edge = [&](int k) { return edgeFlags & (1 << k) ? DX_EDGE_HIDDEN : DX_EDGE_SHOWN; };
    if (!warped) {
        const RPT3 points[5] = {c[0], c[1], c[2], c[3], c[0]};
        const DxEdge edges[5] = {DX_NO_EDGE, edge(0), edge(1), edge(2), edge(3)};
        return faces.addFace(points, edges, 5);
    }
    const RPT3 first[4] = {c[0], c[1], c[2], c[0]}, second[4] = {c[0], c[2], c[3], c[0]};
    const DxEdge firstEdges[4] = {DX_NO_EDGE, edge(0), edge(1), DX_EDGE_HIDDEN};
    const DxEdge secondEdges[4] = {DX_NO_EDGE, DX_EDGE_HIDDEN, edge(2), edge(3)};
    const int error = faces.addFace(first, firstEdges, 4);
    return error ? error : faces.addFace(second, secondEdges, 4);
}

} // namespace

int DxRead3Dface(DX_3DFACE_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    rec->edgeFlags = 0;
    for (RPT3& corner : rec->corners) corner = {0, 0, 0};
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    for (RPT3& corner : rec->corners) corner.z += elevation.value;
    return 0;
}

bool DxIsFiniteFace(const DX_3DFACE_TYPE& face, const Mat44 m) {
    RPT3 corners[4];
    return placeCorners(face, m, corners);
}

int DxDrawFace(const DX_3DFACE_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    RPT3 corners[4];
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType) || !placeCorners(*rec, m, corners)) return 0;
    if (DxCheckPass) return measure(corners);
    if (!DxDrawsPlan()) return 0;
    constexpr unsigned char closedFigure = 5;
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    int result = Dxovdraw(2, corners[0].x, corners[0].y);
    for (int k = 0; k < 4; ++k) {
        const RPT3& to = corners[(k + 1) % 4];
        const bool isHidden = rec->edgeFlags & (1 << k);
        result |= isHidden ? Dxovdraw(2, to.x, to.y, 0) : Dxovdraw(1, to.x, to.y, closedFigure);
    }
    if (!result) DxLastPoint = corners[0];
    return result;
}

int DxDraw3Dface(const DX_3DFACE_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    RPT3 corners[4];
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    takeMaterialPen(rec->base.materialHandle, &pen);
    if (!placeCorners(*rec, m, corners)) return 0;
    if (DxCheckPass) return measure(corners);
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    DxFaceList faces(pen, lineType);
    if (const int error = addFaces(faces, corners, rec->edgeFlags, isWarped(rec->corners))) return error;
    return faces.draw();
}

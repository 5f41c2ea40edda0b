// SOLID and TRACE in space: a plate, or a block where they have a thickness.
#include "../config/dx_pens.h"
#include "../import/dx_transform.h"
#include "dx_space_import.h"
#include "dx_space_strip.h"

namespace {

/// A closed face over four corners.
int addQuad(DxFaceList& faces, const RPT3& a, const RPT3& b, const RPT3& c, const RPT3& d, const Mat44 m) {
    constexpr DxEdge edges[5] = {DX_NO_EDGE, DX_EDGE_SHOWN, DX_EDGE_SHOWN, DX_EDGE_SHOWN, DX_EDGE_SHOWN};
    RPT3 points[5] = {a, b, c, d, a};
    for (RPT3& point : points) DxTrans3DRpt(&point, m);
    return faces.addFace(points, edges, 5);
}

/// The bottom, a side over each edge of the outline, the top.
int addBlock(DxFaceList& faces, const RPT3 (&outline)[4], double thickness, const Mat44 m) {
    const RPT3(&c)[4] = outline;
    if (const int error = addQuad(faces, c[0], c[1], c[2], c[3], m)) return error;
    if (thickness == 0) return 0;
    const auto raised = [&](int i) { return RPT3{c[i].x, c[i].y, c[i].z + thickness}; };
    for (int i = 0; i < 4; ++i) {
        const int j = (i + 1) % 4;
        if (const int error = addQuad(faces, c[i], c[j], raised(j), raised(i), m)) return error;
    }
    return addQuad(faces, raised(0), raised(1), raised(2), raised(3), m);
}

} // namespace

int DxDraw3dSolid(const DX_SOLID_TYPE* solid, const Mat44 matrix) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&solid->base, &pen, &lineType)) return 0;
    if (const int error = DxSetPenLt(pen, lineType)) return error;
    Mat44 storage;
    const auto* toWorld = DxObjectMatrix(solid->extrusion, matrix, storage);
    const RPT3(&c)[4] = solid->corners;
    DxFaceList faces(pen, lineType);
    if (const int error = addBlock(faces, {c[0], c[1], c[3], c[2]}, solid->thickness, toWorld)) return error;
    return DxFinishFaces(faces, solid->thickness != 0);
}

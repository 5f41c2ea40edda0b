// ARC and CIRCLE in space: walls of cylinders.
#include "../config/dx_pens.h"
#include "../host/dx_wall.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_insert_import.h"
#include "../import/dx_transform.h"
#include "dx_space_import.h"
#include "dx_space_strip.h"
#include "mt.h"

namespace {

constexpr double radiansADegree = 0.017453292519943295;
constexpr double fullTurn = 6.283185307179586;

/// Gives the wall, turned by `turn` degrees and moved to its centre, to the host.
int drawWall(const DX_ENTITY_BASE_TYPE& base, const DxWall& wall, const RPT3& centre, double turn,
             const double extrusion[3], bool isThick, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&base, &pen, &lineType)) return 0;
    if (const int error = DxSetPenLt(pen, lineType)) return error;
    if (wall.result()) return wall.result() == 3011 ? 0 : wall.result();
    Mat44 placed, storage;
    DxRefRotMat3D(centre, turn, placed);
    Mt44Concat(placed, DxObjectMatrix(extrusion, m, storage), placed);
    DxFaceList faces(pen, lineType);
    if (const int error = wall.addTo(faces, placed)) return error;
    return DxFinishFaces(faces, isThick);
}

} // namespace

int DxDraw3dCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m) {
    return drawWall(rec->base, DxWall(rec->thickness, rec->radius, 0), rec->centre, 0, rec->extrusion,
                    rec->thickness != 0, m);
}

int DxDraw3dArc(const DX_ARC_TYPE* rec, const Mat44 m) {
    double span = (rec->endAngle - rec->startAngle) * radiansADegree;
    if (span < 0) span += fullTurn;
    return drawWall(rec->base, DxWall(rec->thickness, rec->radius, span), rec->centre, rec->startAngle,
                    rec->extrusion, rec->thickness != 0, m);
}

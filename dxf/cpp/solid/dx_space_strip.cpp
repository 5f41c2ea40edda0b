#include "dx_space_strip.h"

#include "../config/config_state.h"
#include "../import/account_state.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../session/session_state.h"

int DxAddStrip(DxFaceList& faces, const RPT3& from, const RPT3& to, const RPT3& rise, bool isThick,
               const Mat44 m) {
    const RPT3 up = isThick ? rise : RPT3{0, 0, 1};
    RPT3 points[5] = {from,
                      to,
                      {to.x + up.x, to.y + up.y, to.z + up.z},
                      {from.x + up.x, from.y + up.y, from.z + up.z},
                      from};
    for (RPT3& point : points) DxTrans3DRpt(&point, m);
    const DxEdge behind = isThick ? DX_EDGE_SHOWN : DX_NO_EDGE;
    const DxEdge edges[5] = {DX_NO_EDGE, DX_EDGE_SHOWN, behind, behind, behind};
    return faces.addFace(points, edges, 5);
}

int DxFinishFaces(DxFaceList& faces, bool isThick) {
    if (!faces.isFinite()) return 0;
    if (DxCheckPass) {
        faces.measure(DxCheckXYZ);
        return 0;
    }
    if (!Dx3dLines && !isThick) return 0;
    DxEntityDrawn = 1;
    return faces.draw();
}

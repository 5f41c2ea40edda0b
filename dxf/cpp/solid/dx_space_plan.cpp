// Which flat elements an import in space leaves out: the plans of what has its faces and edges there.
#include "../import/dx_transform.h"
#include "../session/session_state.h"
#include "dx_space_import.h"
#include "space_state.h"

#include <algorithm>
#include <cmath>

static bool isRaised(RPT3 point, const Mat44 m) {
    constexpr double ground = 1e-9;
    DxTrans3DRpt(&point, m);
    return std::fabs(point.z) > ground;
}

bool DxDrawsPlan() {
    return DxModus != 3 || DxFlatPlan;
}

bool DxIsLineOfSpace(const DX_LINE_TYPE& line, const Mat44 m) {
    return !DxDrawsPlan() && (line.thickness != 0 || isRaised(line.start, m) || isRaised(line.end, m));
}

bool DxIsPolylineOfSpace(const DX_POLYLINE_TYPE& polyline, const Mat44 m) {
    constexpr int in3d = 8;
    return !DxDrawsPlan() && polyline.flags & in3d &&
           std::any_of(polyline.vertices.begin(), polyline.vertices.end(),
                       [m](const DX_VERTEX_TYPE& vertex) { return isRaised(vertex.location, m); });
}

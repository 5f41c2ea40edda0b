#include "dx_host_solid.h"

#include "../config/config_state.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "ge.h"
#include "mt.h"

int DxCiReadSat(const UtCString& path, const DX_SOLID_LOOK& look, const Mat44 matrix) {
    constexpr int noPart = -1;
    const RPT3 shift = DxPointToContext(RPT3{0, 0, 0});
    GeMat44 move;
    move.Set(3, 0, shift.x);
    move.Set(3, 1, shift.y);
    Mat44 placed;
    Mt44Concat(matrix, move.data(), placed);
    return Ci3d(DxCiContextId)
        .ReadSatFileByParams(path, look.pen, look.lineType, look.material, look.number, GeMat44(placed),
                             noPart, DxSolidsAsSubObjects);
}

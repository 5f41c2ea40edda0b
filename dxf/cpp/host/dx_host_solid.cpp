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

int DxCiGetSolid(int patNo, int index, CI_SOLID* solid) {
    constexpr int noContext = 0; // the drawing's own unit
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(patNo, &cursor)) return error;
    return Ci3d(noContext).GetSolid(cursor, index, solid);
}

int DxCiCreateVisMaterial(const UtCString& name, const RENDERING_ENGINE::MATERIAL& material,
                          const UtCString& picture, MatDbKey& key, unsigned long& number) {
    RENDERING_ENGINE::TEXTURE texture;
    RENDERING_ENGINE::init(texture);
    return Ci3d(DxCiContextId).CreateVisMaterial(name, material, 1, &texture, {{picture}}, key, number);
}

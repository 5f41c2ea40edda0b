#include "dx_write_3d.h"

#include "../export/dx_unwritten.h"

int DxWrite3dPat(int pat) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_3D);
}

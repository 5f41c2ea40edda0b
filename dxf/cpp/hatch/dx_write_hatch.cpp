#include "dx_write_hatch.h"

#include "../export/dx_unwritten.h"

int DxWritePatHatch(int pat, int /*inBlock*/) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_HATCH);
}

int DxWriteHatchBlock(int /*pat*/) {
    return 0;
}

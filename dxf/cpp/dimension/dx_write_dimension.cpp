#include "dx_write_dimension.h"

#include "../export/dx_unwritten.h"

int DxWritePatDim(int /*pat*/, int /*withBlocks*/) {
    return 0;
}

int DxWriteDimBlock(int pat) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_DIMENSION);
}

int DxWritePatSimpleDim(int pat) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_DIMENSION);
}

#include "dx_write_images.h"

#include "dx_unwritten.h"

int DxCiWritePatBitmap(int pat) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_BITMAP);
}

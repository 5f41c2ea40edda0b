#include "dx_write_text.h"

#include "../export/dx_unwritten.h"

int DxWritePatText(int pat) {
    return DxCountUnwritten(pat, DX_UNWRITTEN_TEXT);
}

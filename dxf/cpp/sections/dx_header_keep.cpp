#include "dx_header_keep.h"

int DxHeaderMakeDrawingHeader() {
    return 0;
}

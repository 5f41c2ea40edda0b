#include "dx_spaces.h"

int DxCiSwitchToReadSpace() {
    return 0;
}

int DxDrawView(DX_VIEW_TYPE* /*view*/, const Mat44 /*m*/) {
    return 0;
}

int DxFinishModelSpace(const Mat44 /*m*/) {
    return 0;
}

int DxFinishPaperSpaces(const Mat44 /*m*/) {
    return 0;
}

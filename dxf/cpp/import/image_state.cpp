#include "image_state.h"

std::vector<DX_QUEUED_IMAGE> DxImageQueue;

void DxResetImageState() {
    DxImageQueue = {};
}

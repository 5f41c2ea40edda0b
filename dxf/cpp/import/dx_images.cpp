#include "dx_images.h"

int DxImageQueueDraw() {
    return 0;
}

void DxImageQueueFree() {}

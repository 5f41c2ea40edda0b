#include "dx_dim_chain.h"

int DxDimChainDraw() {
    return 0;
}

void DxDimChainFree() {}

#include "hatch_state.h"

int DxHatchBlockNo = 0;
int DxHatchInsertNo = 0;
DxTable<DX_HATCH_BLOCKS> DxHatchBlocks;
unsigned DxFillSeed = 0;

void DxResetHatchState() {
    DxHatchBlockNo = DxHatchInsertNo = 0;
    DxHatchBlocks.free();
    DxFillSeed = 0;
}

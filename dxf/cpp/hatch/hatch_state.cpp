#include "hatch_state.h"

int DxHatchBlockNo = 0;
int DxHatchInsertNo = 0;
unsigned DxFillSeed = 0;

void DxResetHatchState() {
    DxHatchBlockNo = DxHatchInsertNo = 0;
    DxFillSeed = 0;
}

#include "ellipse_state.h"

DX_SAMPLE_SINES DxSampleSines[DX_SAMPLE_SINES_COUNT] = {};

void DxResetEllipseState() {
    for (DX_SAMPLE_SINES& sines : DxSampleSines) sines.count = 0;
}

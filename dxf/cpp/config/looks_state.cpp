#include "looks_state.h"

static constexpr int firstLookPen = 256; // those below are the colours of the palette

std::map<std::uint64_t, int> DxLookPens;
int DxNextLookPen = firstLookPen;

void DxResetLooksState() {
    DxLookPens.clear();
    DxNextLookPen = firstLookPen;
}

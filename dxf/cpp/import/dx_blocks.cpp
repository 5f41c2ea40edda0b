#include "dx_blocks.h"

#include "../sections/dx_section.h"
#include "../session/dx_reader.h"

int DxReadBlockSection() {
    bool found = false;
    if (const int error = DxEnterSection("BLOCKS", found); error || !found) return error;
    if (const int error = DxSkipSection()) return error;
    return DxReadUntil(0, "SECTION");
}

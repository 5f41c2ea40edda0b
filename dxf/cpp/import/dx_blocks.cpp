#include "dx_blocks.h"

#include "../sections/dx_section.h"
#include "../session/dx_reader.h"

int DxReadBlockSection() {
    bool found = false;
    const int error = DxEnterSection("BLOCKS", found);
    if (error || !found) return error;
    if (const int end = DxSkipSection()) return end;
    return DxReadUntil(0, "SECTION");
}

#include "dx_blocks.h"

#include "../session/dx_reader.h"
#include "../session/dx_sections.h"

int DxReadBlockSection() {
    bool found = false;
    const int error = DxBeginSection("BLOCKS", "BLOCKS", &found);
    if (error || !found) return error;
    if (const int end = DxSkipToEndOfSection()) return end;
    return DxReadUntil(0, "SECTION");
}

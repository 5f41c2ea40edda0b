// The blocks that an export has written for patterns.
#pragma once

#include "../session/writer_state.h"
#include "dx_insert.h"
#include "dx_placement.h"
#include "ut_string.h"

#include <memory>
#include <string>
#include <vector>

/// One block, and the INSERT that it gets in ENTITIES.
struct DX_WRITE_BLOCK {
    UtCString name;
    UtCString layer; ///< of the INSERT
    int pattern = 0;
    int counter = 1;    ///< of names derived from this one
    DX_PLACEMENT place; ///< of the INSERT
    std::vector<DX_ATTRIB_TYPE> attribs;
    int copies = 0; ///< later patterns that share this block
};

/// All blocks in the order of writing, which is that of the patterns.
extern std::vector<DX_WRITE_BLOCK> DxBlockList;

/// Counter of the block that has this name (in any case of letters), null when none has.
int* DxFindBlockCounter(const UtCString& name);
/// Makes the name fit for the target version and different from all names of the block table.
void DxCheckBlockname(UtCString& name);
/// Records the block that was just written for pattern `pat`. While blocks are kept back, a body equal to an
/// earlier one (but for names and handles) isn't written: the new INSERT shares the earlier block. 0 or 9000.
int DxAddBlock(const UtCString& name, const UtCString& layer, int pat);
/// Reports the shared blocks and frees the table.
void DxFreeBlockTable();

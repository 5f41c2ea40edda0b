// BLOCKS on its way out: the section, the frames of blocks, the space blocks, and the INSERT of a pattern's
// block.
#pragma once

#include "dx_block_table.h"

int DxWriteBlockSection();
/// BLOCK of the current pattern, and its end. `open` says whether a block is open.
int DxWriteBlockStart(int& open);
int DxWriteBlockEnd(int& open);
int DxWriteModelSpace();
int DxWritePaperSpace();
int DxWritePaperSpace0();
int DxWriteInsert(const DX_WRITE_BLOCK& block);

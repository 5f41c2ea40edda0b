// What the expansion of blocks remembers; the place in the block tree is DxActLevel.
#pragma once

#include "../session/dx_documents.h"

extern DX_NAME DxInsertLt;      ///< line type of the layer of the INSERT that is entered
extern int DxDepthReported;     ///< the depth limit was reported in this session
extern long DxRingEntitiesLeft; ///< that INSERTs of blocks that insert each other may cost beyond their size
extern std::size_t DxStoredBytes; ///< of memory, that entities of blocks take

void DxResetBlocksState();

// The chain of INSERTs being expanded.
#pragma once

#include "../session/dx_documents.h"

extern DX_NAME DxInsertLt;        ///< line type of the layer of the innermost INSERT
extern DX_BLOCK_TYPE* DxTopBlock; ///< block of the outermost running INSERT, null outside
extern int DxBlockPatIndex;       ///< entry of DxPatTable that the running INSERT's attributes go to
extern int DxDepthReported;       ///< the depth limit was reported in this session
extern std::size_t DxStoredBytes; ///< of memory, that entities of blocks take

void DxResetBlocksState();

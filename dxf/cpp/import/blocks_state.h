// What the expansion of blocks remembers; the place in the block tree is DxActLevel.
#pragma once

#include "../session/dx_documents.h"

#include <set>
#include <string>
#include <vector>

extern DX_NAME DxInsertLt;      ///< line type of the layer of the INSERT that is entered
extern int DxDepthReported;     ///< the depth limit was reported in this session
extern long DxRingEntitiesLeft; ///< that INSERTs of blocks that insert each other may cost beyond their size
extern std::size_t DxStoredBytes; ///< of memory, that entities of blocks take

extern std::set<std::string> DxDefinitionNames;      ///< blocks that kept INSERTs want as definitions
extern std::vector<std::string> DxDefinitionsWanted; ///< the same, in order
extern std::size_t DxDefinitionsDrawn;               ///< of those, the first ones

void DxResetBlocksState();

// Running values of one export: the pattern walk, the blocks and the open block.
#pragma once

#include "../config/config_state.h"
#include "dx_fixed.h"
#include "ut_string.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

/// What an open block stands for.
enum DxBlockKind : int { DX_BLOCK_PLAIN = 0, DX_BLOCK_DIMENSION = 1, DX_BLOCK_HATCH = 2 };

/// Index of a name in DxPatNames, the names of the current pattern; the same as the order values of the
/// layers.
enum DxPatName : int {
    DX_PAT_GROUP = 0,
    DX_PAT_LEVEL = 1,
    DX_PAT_CLASS = 2,
    DX_PAT_NAME = 3,
    DX_PAT_LAYER = 4,
    DX_PAT_OBSTAT = 5,
};

extern int DxBlockOpen;          ///< 1 while a BLOCK is open or none is wanted; 0: the next entity opens one
extern UtCString DxBlockLayer;   ///< layer of the pattern's INSERT; "0" until the first entity of the block
extern int DxEntityCount;        ///< entities of the current pattern
extern int DxPatCounter;         ///< running number of patterns, for the progress display
extern int DxBlockType;          ///< a DxBlockKind
extern int DxPatsOneWork;        ///< all patterns have the same work plane
extern DxTable<int> DxPlainPats; ///< patterns that go straight into ENTITIES, ascending
extern int DxElemColor, DxTextColor, DxArrowColor,
    DxHatchColor; ///< colour attributes of the pattern, 0: none
extern int DxDimTextColor, DxDimArrowColor;
extern int DxBlockMatrixMode;   ///< writers take the inverse of the pattern's matrix
extern int DxBlockBufferWanted; ///< a block's pairs are kept back for comparison

extern std::uint32_t DxModelSpaceHandle, DxModelSpaceDict; ///< block record and extension dictionary
extern std::uint32_t DxByBlockLtypeHandle;                 ///< line type "ByBlock"
extern std::uint32_t DxOwnerHandle; ///< block record that owns the entities being written

/// What an export loses, by kind, with counts; reported once. First content that this build doesn't write,
/// then what the target's version can't hold.
enum DxUnwritten : int {
    DX_UNWRITTEN_HATCH,
    DX_UNWRITTEN_BITMAP,
    DX_UNWRITTEN_3D,
    DX_UNWRITTEN_SOLID,
    DX_UNWRITTEN_CLOUD,
    DX_UNWRITTEN_POLYGON,
    DX_UNWRITTEN_FACE,
    DX_UNWRITTEN_BACKGROUND,
    DX_UNWRITTEN_CHARACTER,
    DX_UNWRITTEN_COUNT
};
extern long DxUnwrittenCounts[DX_UNWRITTEN_COUNT];

extern std::set<std::string> DxUsedApps; ///< applications that the extended data of written entities is of

extern std::map<std::string, int> DxDefinitionNumbers; ///< the host's definitions by name
/// Definition that a pattern leaves as an INSERT of, 0: none; of the patterns that were asked for.
extern std::unordered_map<int, int> DxPlacedDefinitions;
extern std::map<int, UtCString> DxDefinitionBlocks; ///< names of the blocks that are written for definitions

extern std::uint32_t DxFirstKeptHandle;  ///< handles below belong to this export; 0: none are kept
extern std::vector<bool> DxHandlesTaken; ///< kept handles that entities of this export have

void DxResetExportState();

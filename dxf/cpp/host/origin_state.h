// What the entity that is being drawn has given to the host so far, and what the host is yet to be told of.
#pragma once

#include "dx_fixed.h"

#include <cstdint>
#include <string>
#include <vector>

inline constexpr int DX_ORIGIN_LISTS = 4; ///< of a pattern, see OV_CONTENT

/// Where the content of an entity begins: its first pattern, and the lengths of that pattern's lists.
struct DX_ORIGIN_START {
    int isWanted = 0; ///< the entity's origin is to be kept, and nothing of it was drawn yet
    int pat = 0;      ///< 0: nothing of it was drawn
    int rows[DX_ORIGIN_LISTS] = {};
    int list = -1; ///< the one that counts whatever else has grown; -1: the only one that has
};

/// A run of elements that wait in the queue with it.
struct DX_WAITING_ORIGIN {
    int first, count;
    std::string text;
};

/// What one INSERT has drawn: entries of DxPatTable, the first of which is the INSERT's own.
struct DX_PLACED {
    int firstEntry = -1, endEntry = -1;
    int number = 0; ///< of the INSERT's own pattern
    std::string text;
};

/// The pattern of a layer within the INSERT that is being drawn.
struct DX_PLACED_LAYER {
    const void* layer;
    int isHidden;
    int entry;
};

extern DX_ORIGIN_START DxOriginStart;
extern std::vector<DX_WAITING_ORIGIN> DxWaitingOrigins;
extern int DxPlacedWanted;                          ///< the INSERT that is being drawn is to be kept
extern DX_PLACED DxActPlaced;                       ///< of that INSERT; without an entry until it draws
extern std::vector<DX_PLACED_LAYER> DxPlacedLayers; ///< of that INSERT
extern std::vector<DX_PLACED> DxPlacedInserts;      ///< of the pass, to be told when all is drawn
extern int DxOriginDepth;            ///< number of INSERTs around the entities whose origins are kept
extern int DxOpenDefinition;         ///< the definition that is being drawn, 0: none
extern std::string DxDefinitionText; ///< of that definition

void DxResetOriginState();

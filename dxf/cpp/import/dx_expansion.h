// What the expansion of blocks costs: entities of blocks that are inserted again and again are kept in
// memory, and blocks that would never end are found ahead of them.
#pragma once

#include "../session/dx_documents.h"
#include "dx_entity_walk.h"

/// Number of entities of a block when all INSERTs in it are expanded; infinite where no number holds it. A
/// ring counts once, and external references and blocks that hold nothing count nothing. O(size of what it
/// inserts) the first time.
double DxExpandedEntities(DX_BLOCK_TYPE& block);
/// So many entities of the block are read in a pass before the import stops; 0: all. Blocks that insert each
/// other are cut where they meet again, so that one ring costs little; several are walked along each way
/// through them.
long DxMostEntities(DX_BLOCK_TYPE& block);
/// So many were read. What rings cost beyond their own size is counted over all INSERTs.
void DxCountRing(const DX_BLOCK_TYPE& block, long read);
/// Whether a walk through the block would find nothing to draw and nothing to tell.
bool DxHoldsNothing(DX_BLOCK_TYPE& block);

/// Draws the entities of a block up to `end`, with the reader in front of the first. 0 or an error.
int DxDrawBlockEntities(DX_BLOCK_TYPE& block, const char* end, const Mat44 m);

/// No drawing that a person made has blocks of so many entities, and no host could hold them.
inline constexpr double DX_ENDLESS_BLOCK = 2e8;
/// So many of its entities are read in a pass before the import stops.
inline constexpr long DX_ENDLESS_BLOCK_SHARE = 1'000'000;

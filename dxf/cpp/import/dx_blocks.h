// Blocks of a file: the BLOCKS section stores where each block's entities stand; an INSERT goes back there.
#pragma once

#include "../session/dx_documents.h"

#include <optional>
#include <string_view>

/// Reads the BLOCKS section, entered in front of 2 / "BLOCKS"; stands behind the next 0 / "SECTION" when
/// done. A missing section is a warning. 0 or the reader's error.
int DxReadBlockSection();
/// Reads the head of a block; the reader stands in front of the group 0 of its first entity then.
int DxReadBlock(DX_BLOCK_TYPE* rec);
/// Adds the record to the current document, with its position. 0 or 2360.
int DxSetBlock(DX_BLOCK_TYPE* rec);

/// A block, and the ticket that has put the reader at its entities.
struct DxfEntityFileReference {
    DX_BLOCK_TYPE* block = nullptr; ///< null: no such block
    std::optional<DxfEntityFilePosition> place;
};
/// Finds the block of exactly this name, in the current document or in those that it hangs under, opens the
/// file of an external reference, and goes to the block's entities.
void DxGetBlock(std::string_view name, DxfEntityFileReference& reference);
/// Opens the file of an external reference and makes the block's entities those of that file. 0 or an error.
int DxReadXRefBlocks(DX_BLOCK_TYPE& block);
/// Whether a kept INSERT of this block can leave as one. The block will be drawn as a definition then.
bool DxWantDefinition(const DX_BLOCK_TYPE& block);

// Entering and leaving a block of an INSERT.
#pragma once

#include "import_state.h"

/// A level of INSERT expansion for a scope: the place in the block tree is `inner`, and behind it what it
/// was, but for the layer that layer 0 stands for, which stays that of the last INSERT.
class DxInsertScope {
public:
    explicit DxInsertScope(const DX_INSERT_LEVEL& inner);
    ~DxInsertScope();
    DxInsertScope(const DxInsertScope&) = delete;
    DxInsertScope& operator=(const DxInsertScope&) = delete;

    int error() const { return error_; } ///< 0, or the host's allocation error.
    /// Behind the block's entities: attributes stand in the placement around the INSERT, on its layer.
    void endEntities() const;

private:
    DX_INSERT_LEVEL outer_;
    DX_NAME layer_;
    int error_;
};

/// Whether the block is being drawn at level `depth` or, with an external reference, its document is.
bool DxIsDrawnAt(int depth, const DX_BLOCK_TYPE& block);

#include "dx_insert_level.h"

#include "../session/dx_documents.h"

/// Makes `level` the entry of its depth. 0 or the host's error.
static int storeLevel(const DX_INSERT_LEVEL& level) {
    const auto depth = static_cast<std::size_t>(level.depth);
    while (DxInsertStack.size() <= depth)
        if (const int error = DxInsertStack.add({})) return error;
    DxInsertStack[depth] = level;
    return 0;
}

DxInsertScope::DxInsertScope(const DX_INSERT_LEVEL& inner)
    : outer_(DxActLevel), layer_(inner.layer), error_(storeLevel(inner)) {
    if (!error_) DxActLevel = inner;
}

DxInsertScope::~DxInsertScope() {
    outer_.layer = DxActLevel.layer;
    DxActLevel = outer_;
}

void DxInsertScope::endEntities() const {
    DxActLevel.placement = outer_.placement;
    DxActLevel.layer = layer_;
}

bool DxIsDrawnAt(int depth, const DX_BLOCK_TYPE& block) {
    return depth > 0 && DxInsertStack[static_cast<std::size_t>(depth)].block == &block;
}

#include "blocks_state.h"

DX_NAME DxInsertLt{};
DX_BLOCK_TYPE* DxTopBlock = nullptr;
int DxBlockPatIndex = -1;
int DxDepthReported = 0;
std::size_t DxStoredBytes = 0;

void DxResetBlocksState() {
    DxInsertLt.clear();
    DxTopBlock = nullptr;
    DxBlockPatIndex = -1;
    DxDepthReported = 0;
    DxStoredBytes = 0;
}

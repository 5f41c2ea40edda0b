#include "block_table_state.h"

#include "dx_block_table.h"

std::vector<DX_WRITE_BLOCK> DxBlockList;
std::unordered_map<std::string, std::size_t> DxBlockByName;
std::unordered_map<std::string, std::size_t> DxBlockByBody;

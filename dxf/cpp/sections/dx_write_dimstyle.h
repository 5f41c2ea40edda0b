// DIMSTYLE records on their way out.
#pragma once

#include <cstddef>
#include <cstdint>

/// Number of records that DxDimparWriteAll writes: the document's dimension styles, and the one that a file
/// names as its current style in $DIMSTYLE, if it isn't among them.
std::size_t DxDimparCount();
int DxDimparWriteAll(std::uint32_t tableHandle);

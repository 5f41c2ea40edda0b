// DIMSTYLE records on their way out.
#pragma once

#include <cstddef>
#include <cstdint>

/// Number of records that DxDimparWrite can write: the document's dimension styles, at least one, since a
/// file names its current style in $DIMSTYLE.
std::size_t DxDimparCount();
int DxDimparWrite(std::size_t index, std::uint32_t tableHandle);

// Numbers on their way into a file.
#pragma once

#include <cstddef>

/// Room that DxPutFixed needs: a sign, 309 digits, the point and 99 decimals.
inline constexpr std::size_t DX_LONGEST_FIXED = 411;

/// Writes `value` with `digits` decimals (0 to 99), rounded as printf does with "%.*f", and gives the end. A
/// value that isn't finite counts as 0, since no reader takes it.
char* DxPutFixed(char* at, double value, int digits);

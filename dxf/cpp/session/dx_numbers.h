// Numbers of value texts, as the C library reads them but without a locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Reads a number at the start of `text` as strtod does in the C locale: leading blanks, a sign, decimal and
/// hexadecimal forms, "inf" and "nan". Result: the characters used, 0 (with `value` 0) when there is no
/// number.
std::size_t DxScanNumber(std::string_view text, double& value);
/// As atof: the number at the start of the text, 0 when there is none.
double DxAtof(std::string_view value);
/// Real value of a group: as DxAtof, and 0 for a magnitude above 1e19 and for what is no number at all.
double DxfReadConvDouble(std::string_view value);
/// As atoi; a value out of range is clamped.
int DxAtoi(std::string_view value);
/// Hexadecimal number of a handle; longer handles lose their high part.
std::uint32_t DxHexToU32(std::string_view value);

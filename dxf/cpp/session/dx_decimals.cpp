#include "dx_decimals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace {

constexpr int MAX_DECIMALS = 99;
constexpr double POWERS[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

/// `magnitude` in units of its last decimal, rounded. False where that isn't certain: for large numbers, many
/// decimals, and what lies near the middle of two results.
bool roundToUnits(double magnitude, int digits, std::uint64_t& units) {
    constexpr double EXACT_INTEGERS = 9e15; // below 2^53, and so are the fractions behind them
    constexpr double TOO_CLOSE = 1e-9;
    if (digits >= static_cast<int>(std::size(POWERS))) return false;
    const double power = POWERS[digits];
    const double product = magnitude * power;
    if (!(product < EXACT_INTEGERS)) return false;
    const double lost = std::fma(magnitude, power, -product); // what the rounding of the product has cost
    units = static_cast<std::uint64_t>(product);
    const double rest = product - static_cast<double>(units) + lost;
    if (std::abs(rest - 0.5) < TOO_CLOSE) return false;
    if (rest > 0.5) ++units;
    return true;
}

/// Units with `digits` of them behind the point.
char* putUnits(char* at, std::uint64_t units, int digits) {
    char decimals[std::size(POWERS)];
    for (int i = digits; i-- > 0; units /= 10) decimals[i] = static_cast<char>('0' + units % 10);
    at = std::to_chars(at, at + 20, units).ptr;
    if (digits == 0) return at;
    *at++ = '.';
    return std::copy(decimals, decimals + digits, at);
}

} // namespace

char* DxPutFixed(char* at, double value, int digits) {
    if (!std::isfinite(value)) value = 0.0;
    digits = std::clamp(digits, 0, MAX_DECIMALS);
    std::uint64_t units = 0;
    if (!roundToUnits(std::abs(value), digits, units))
        return std::to_chars(at, at + DX_LONGEST_FIXED, value, std::chars_format::fixed, digits).ptr;
    if (std::signbit(value)) *at++ = '-';
    return putUnits(at, units, digits);
}

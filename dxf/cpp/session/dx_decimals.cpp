#include "dx_decimals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr int MAX_DECIMALS = 99;
constexpr int QUICK_DECIMALS = 8;
constexpr double POWERS[QUICK_DECIMALS + 1] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};

/// `magnitude` in units of its last decimal, rounded. False where that isn't certain: for large numbers, many
/// decimals, and what lies too near to the middle of two results.
bool roundToUnits(double magnitude, int digits, std::uint64_t& units) {
    constexpr double LARGEST = 9e15; // below 2^53
    constexpr double RELATIVE_ERROR = 1.2e-16;
    if (digits > QUICK_DECIMALS) return false;
    const double product = magnitude * POWERS[digits];
    if (!(product < LARGEST)) return false;
    const auto below = static_cast<std::int64_t>(product);
    const double beyondMiddle = product - static_cast<double>(below) - 0.5;
    if (std::abs(beyondMiddle) <= product * RELATIVE_ERROR) return false;
    units = static_cast<std::uint64_t>(below + (beyondMiddle > 0 ? 1 : 0));
    return true;
}

/// The two digits of each number below 100.
constexpr auto PAIRS = [] {
    std::array<char, 200> all{};
    for (std::size_t i = 0; i < 100; ++i) {
        all[2 * i] = static_cast<char>('0' + i / 10);
        all[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return all;
}();

char* putPair(char* at, std::uint32_t number) {
    std::memcpy(at, &PAIRS[2 * number], 2);
    return at + 2;
}

/// A number below 10000 without zeros in front.
char* putSmall(char* at, std::uint32_t number) {
    const std::uint32_t upper = number / 100;
    const std::uint32_t lower = number % 100;
    if (upper >= 10) return putPair(putPair(at, upper), lower);
    if (upper > 0) {
        *at = static_cast<char>('0' + upper);
        return putPair(at + 1, lower);
    }
    if (lower >= 10) return putPair(at, lower);
    *at = static_cast<char>('0' + lower);
    return at + 1;
}

char* putWhole(char* at, std::uint64_t whole) {
    constexpr std::uint32_t STEP = 10'000;
    if (whole < STEP) return putSmall(at, static_cast<std::uint32_t>(whole));
    if (whole >= STEP * STEP) return std::to_chars(at, at + 20, whole).ptr;
    const auto number = static_cast<std::uint32_t>(whole);
    const std::uint32_t rest = number % STEP;
    return putPair(putPair(putSmall(at, number / STEP), rest / 100), rest % 100);
}

/// The last `count` digits of `number`, with zeros in front.
char* putLast(char* at, std::uint32_t number, int count) {
    if (count == 6) { // nearly always
        const std::uint32_t upper = number / 10'000;
        const std::uint32_t lower = number % 10'000;
        return putPair(putPair(putPair(at, upper), lower / 100), lower % 100);
    }
    for (int i = count; i-- > 0; number /= 10) at[i] = static_cast<char>('0' + number % 10);
    return at + count;
}

/// Units with `digits` of them behind the point.
char* putUnits(char* at, std::uint64_t units, int digits) {
    static constexpr std::uint64_t WHOLES[] = {1,       10,        100,        1'000,      10'000,
                                               100'000, 1'000'000, 10'000'000, 100'000'000};
    // A division by a number that the compiler knows costs a tenth.
    const std::uint64_t whole = digits == 6 ? units / 1'000'000 : units / WHOLES[digits];
    const auto part = static_cast<std::uint32_t>(units - whole * WHOLES[digits]);
    at = putWhole(at, whole);
    if (digits == 0) return at;
    *at++ = '.';
    return putLast(at, part, digits);
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

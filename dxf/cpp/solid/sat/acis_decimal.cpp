#include "acis_decimal.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

namespace ACIS {
namespace {

constexpr int DIGITS = 17;
constexpr std::uint64_t FULL = 100'000'000'000'000'000; ///< 10 to the power of DIGITS

struct Wide {
    std::uint64_t high, low;
};

constexpr Wide product(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t half = 0xffffffff, a0 = a & half, a1 = a >> 32, b0 = b & half, b1 = b >> 32;
    const std::uint64_t low = a0 * b0, middle = a1 * b0 + (low >> 32), cross = a0 * b1 + (middle & half);
    return {a1 * b1 + (middle >> 32) + (cross >> 32), cross << 32 | (low & half)};
}

/// `value` without its last `shift` bits, 1 to 127 of them, rounded to the nearest, from halfway to the even.
constexpr std::uint64_t rounded(Wide value, int shift) {
    const bool isFar = shift >= 64;
    const int by = shift & 63;
    const std::uint64_t from = isFar ? value.high : value.low, over = isFar ? 0 : value.high;
    const std::uint64_t whole = by ? from >> by | over << (64 - by) : from;
    const std::uint64_t rest = from & ((std::uint64_t{1} << by) - 1), below = isFar ? value.low : 0;
    const std::uint64_t half = by ? std::uint64_t{1} << (by - 1) : 0;
    if (!by) { // the first bit that goes is the highest of the lower word
        const std::uint64_t top = std::uint64_t{1} << 63;
        return whole + (below > top || (below == top && (whole & 1)));
    }
    const bool isHalf = rest == half && below == 0;
    return whole + (isHalf ? whole & 1 : rest >= half);
}

constexpr int FIRST = -4, LAST = 9; ///< powers of ten that are written without an exponent here
constexpr std::array<double, LAST - FIRST + 1> tens = {1e-4, 1e-3, 1e-2, 1e-1, 1e0, 1e1, 1e2,
                                                       1e3,  1e4,  1e5,  1e6,  1e7, 1e8, 1e9};
constexpr std::array<std::uint64_t, 28> fives = [] {
    std::array<std::uint64_t, 28> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 5;
    return powers;
}();

/// The 17 digits of a number from 1e-4 to below 1e9 as one whole number, exactly; `power` is that of its
/// first digit.
std::uint64_t digitsOf(double number, int& power) {
    const auto bits = std::bit_cast<std::uint64_t>(number);
    constexpr int mantissaBits = 52, bias = 1075;
    const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << mantissaBits) - 1)) | std::uint64_t{1}
                                                                                           << mantissaBits;
    const int exponent = static_cast<int>(bits >> mantissaBits) - bias;
    power = FIRST;
    while (number >= tens[static_cast<std::size_t>(power + 1 - FIRST)]) ++power;
    const int scale = DIGITS - 1 - power; // number * 10^scale has the digits ahead of its point
    std::uint64_t digits =
        rounded(product(mantissa, fives[static_cast<std::size_t>(scale)]), -exponent - scale);
    if (digits < FULL) return digits;
    ++power;
    return digits / 10;
}

/// 17 digits with a point among them, without zeros at the end.
void appendPlain(std::string& out, std::uint64_t digits, int power) {
    char text[DIGITS + 8];
    char *const first = text + 6, *last = first + DIGITS;
    for (char* at = last; at > first; digits /= 10) *--at = static_cast<char>('0' + digits % 10);
    while (last > first && last[-1] == '0') --last;
    if (power < 0) {
        out.append("0.").append(static_cast<std::size_t>(-power - 1), '0').append(first, last);
        return;
    }
    out.append(first, static_cast<std::size_t>(power + 1));
    if (last > first + power + 1) out.append(1, '.').append(first + power + 1, last);
}

} // namespace

void appendWhole(std::string& out, std::int64_t n) {
    char digits[24];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, n).ptr);
}

void appendReal(std::string& out, double number, int digits) {
    const double size = std::abs(number);
    if (size < tens.back() && number == std::trunc(number))
        return appendWhole(out, static_cast<std::int64_t>(number));
    if (digits == DIGITS && size >= tens.front() && size < tens.back()) {
        int power = 0;
        const std::uint64_t all = digitsOf(size, power);
        if (number < 0) out.push_back('-');
        return appendPlain(out, all, power);
    }
    char text[40];
    out.append(text, std::to_chars(text, text + sizeof text, number, std::chars_format::general, digits).ptr);
}

} // namespace ACIS

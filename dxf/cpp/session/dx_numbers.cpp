#include "dx_numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace {

constexpr double POWERS_OF_TEN[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
int hexDigit(char c) {
    if (isDigit(c)) return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

struct Cursor {
    const char* at;
    const char* end;

    bool done() const { return at == end; }
    void skipBlanks() {
        while (at != end && isBlank(*at)) ++at;
    }
    /// Takes a sign; true for a minus.
    bool takeSign() {
        if (at == end || (*at != '-' && *at != '+')) return false;
        return *at++ == '-';
    }
};

/// Digits with at most one point: value without the point, and how many of the digits stand behind it.
struct Digits {
    std::uint64_t mantissa = 0;
    int count = 0;
    int fraction = 0;
};

Digits takeDigits(Cursor& text) {
    Digits digits;
    const auto take = [&] {
        const char* const start = text.at;
        for (; text.at != text.end && isDigit(*text.at); ++text.at)
            digits.mantissa = digits.mantissa * 10 + static_cast<unsigned>(*text.at - '0');
        return static_cast<int>(text.at - start);
    };
    digits.count = take();
    if (text.at != text.end && *text.at == '.') {
        ++text.at;
        digits.fraction = take();
        digits.count += digits.fraction;
    }
    return digits;
}

/// True, with `value`, where one exactly rounded operation gives the nearest double: mantissas of up to 53
/// bits and powers of ten that are exact. More than 19 digits may have overflown the mantissa.
bool convertExactly(const Digits& digits, double& value) {
    if (digits.count > 19 || digits.mantissa > (std::uint64_t{1} << 53)) return false;
    value = static_cast<double>(digits.mantissa) / POWERS_OF_TEN[digits.fraction];
    return true;
}

/// Whether a number out of range is too large, rather than too small: by the place of its first digit and its
/// exponent. `text` is what the conversion took, without sign and base prefix.
bool isTooLarge(std::string_view text, bool hex) {
    const char mark = hex ? 'p' : 'e';
    long place = 0; // digits between the first that isn't 0 and the point, negative behind it
    bool point = false, found = false;
    std::size_t i = 0;
    for (; i < text.size() && (text[i] | 0x20) != mark; ++i) {
        if (text[i] == '.') {
            point = true;
        } else if (found) {
            place += !point;
        } else if (text[i] != '0') {
            found = true;
            place += !point;
        } else {
            place -= point;
        }
    }
    long exponent = 0;
    if (i + 1 < text.size()) {
        const std::string_view rest = text.substr(i + 1);
        exponent = DxAtoi(rest);
    }
    return place * (hex ? 4 : 1) + exponent > 0;
}

/// The standard conversion of an unsigned number; what it makes of a value out of range is made infinite or
/// 0.
std::size_t convertSlowly(std::string_view text, bool hex, double& value) {
    const auto format = hex ? std::chars_format::hex : std::chars_format::general;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, format);
    const auto used = static_cast<std::size_t>(end - text.data());
    if (error == std::errc::invalid_argument) {
        value = 0;
        return 0;
    }
    if (error == std::errc::result_out_of_range)
        value = isTooLarge(text.substr(0, used), hex) ? std::numeric_limits<double>::infinity() : 0.0;
    return used;
}

/// "0x" and a hexadecimal number; "0" alone where none follows.
std::size_t convertHex(std::string_view text, double& value) {
    const std::string_view rest = text.substr(2);
    const bool isNumber = !rest.empty() && (hexDigit(rest[0]) >= 0 ||
                                            (rest[0] == '.' && rest.size() > 1 && hexDigit(rest[1]) >= 0));
    if (isNumber) {
        if (const std::size_t used = convertSlowly(rest, true, value)) return used + 2;
    }
    value = 0;
    return 1;
}

} // namespace

std::size_t DxScanNumber(std::string_view text, double& value) {
    Cursor cursor{text.data(), text.data() + text.size()};
    cursor.skipBlanks();
    const bool negative = cursor.takeSign();
    const char* const start = cursor.at;
    value = 0;
    const Digits digits = takeDigits(cursor);
    const bool hasMore = !cursor.done() && (*cursor.at | 0x20) >= 'a' && (*cursor.at | 0x20) <= 'z';
    if (!digits.count && !hasMore) return 0;
    if (hasMore || !convertExactly(digits, value)) {
        const std::string_view number(start, static_cast<std::size_t>(cursor.end - start));
        const bool hex = number.size() > 2 && number[0] == '0' && (number[1] | 0x20) == 'x';
        const std::size_t used = hex ? convertHex(number, value) : convertSlowly(number, false, value);
        if (!used) return 0;
        cursor.at = start + used;
    }
    if (negative) value = -value;
    return static_cast<std::size_t>(cursor.at - text.data());
}

double DxAtof(std::string_view text) {
    double value = 0;
    DxScanNumber(text, value);
    return value;
}

double DxfReadConvDouble(std::string_view text) {
    const double value = DxAtof(text);
    return std::fabs(value) <= 1e19 ? value : 0.0; // false for what is no number
}

int DxAtoi(std::string_view text) {
    Cursor cursor{text.data(), text.data() + text.size()};
    cursor.skipBlanks();
    const bool negative = cursor.takeSign();
    constexpr std::int64_t LIMIT = std::int64_t{std::numeric_limits<int>::max()} + 1;
    std::int64_t value = 0;
    for (; !cursor.done() && isDigit(*cursor.at); ++cursor.at) {
        value = value * 10 + (*cursor.at - '0');
        if (value > LIMIT) value = LIMIT;
    }
    if (negative) return static_cast<int>(-value);
    return value == LIMIT ? std::numeric_limits<int>::max() : static_cast<int>(value);
}

std::uint32_t DxHexToU32(std::string_view text) {
    Cursor cursor{text.data(), text.data() + text.size()};
    cursor.skipBlanks();
    std::uint32_t value = 0;
    for (; !cursor.done(); ++cursor.at) {
        const int digit = hexDigit(*cursor.at);
        if (digit < 0) break;
        value = value << 4 | static_cast<unsigned>(digit);
    }
    return value;
}

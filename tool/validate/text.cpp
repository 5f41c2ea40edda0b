#include "text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace validate {

namespace {

constexpr char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr std::array<int, 256> kHexDigits = [] {
    std::array<int, 256> digits{};
    digits.fill(-1);
    for (int i = 0; i < 10; ++i) digits['0' + i] = i;
    for (int i = 0; i < 6; ++i) digits['a' + i] = digits['A' + i] = 10 + i;
    return digits;
}();

std::string_view withoutPlus(std::string_view text) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    return text;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string upperCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = upper(c);
    return result;
}

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (upper(a[i]) != upper(b[i])) return false;
    return true;
}

std::optional<int64_t> readInteger(std::string_view text) {
    text = trimmed(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (negative || text.front() == '+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    constexpr int64_t limit = std::numeric_limits<int64_t>::max() / 10 - 1;
    int64_t value = 0;
    for (char c : text) {
        if (!isDigit(c)) return std::nullopt;
        value = value > limit ? std::numeric_limits<int64_t>::max() : value * 10 + (c - '0');
    }
    return negative ? -value : value;
}

bool isPlainReal(std::string_view text) {
    text = trimmed(text);
    const char* p = text.data();
    const char* const end = p + text.size();
    if (p < end && (*p == '-' || *p == '+')) ++p;
    const char* const start = p;
    while (p < end && isDigit(*p)) ++p;
    auto digits = p - start;
    if (p < end && *p == '.') {
        const char* const fraction = ++p;
        while (p < end && isDigit(*p)) ++p;
        digits += p - fraction;
    }
    if (digits == 0) return false;
    if (p == end) return digits < 300 || std::isfinite(readReal(text));
    if (*p != 'e' && *p != 'E') return false;
    ++p;
    if (p < end && (*p == '-' || *p == '+')) ++p;
    if (p == end) return false;
    const char* const exponent = p;
    while (p < end && isDigit(*p)) ++p;
    if (p < end) return false;
    return (p - exponent < 3 && digits < 200) || std::isfinite(readReal(text));
}

double readReal(std::string_view text) {
    text = withoutPlus(trimmed(text));
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too small counts as 0, too large as infinite; the exponent's sign tells which.
        return text.find("e-") != text.npos || text.find("E-") != text.npos
                   ? 0.0
                   : std::numeric_limits<double>::infinity();
    }
    return error == std::errc() && end == text.data() + text.size() ? value : 0.0;
}

std::optional<uint64_t> readHandle(std::string_view text) {
    text = trimmed(text);
    if (text.empty() || text.size() > 16) return std::nullopt;
    uint64_t value = 0;
    for (char c : text) {
        const int digit = kHexDigits[static_cast<unsigned char>(c)];
        if (digit < 0) return std::nullopt;
        value = value << 4 | static_cast<uint64_t>(digit);
    }
    return value;
}

std::string handleText(uint64_t handle) {
    char buffer[16];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, handle, 16).ptr;
    return upperCase({buffer, static_cast<size_t>(end - buffer)});
}

std::string inQuotes(std::string_view text) {
    constexpr size_t longest = 60;
    constexpr char hex[] = "0123456789ABCDEF";
    const bool clip = text.size() > longest;
    if (clip) text = text.substr(0, longest);
    std::string result = "\"";
    for (size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const size_t length = byte < 0x80 ? 1 : utf8Length(text, i);
        if (byte < 0x20 || byte == 0x7F || length == 0) {
            result += {'\\', 'x', hex[byte >> 4], hex[byte & 15]};
            ++i;
        } else {
            result += text.substr(i, length);
            i += length;
        }
    }
    return result + (clip ? "...\"" : "\"");
}

size_t utf8Length(std::string_view text, size_t at) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(at);
    const size_t length = lead < 0x80   ? 1
                          : lead < 0xC2 ? 0
                          : lead < 0xE0 ? 2
                          : lead < 0xF0 ? 3
                          : lead < 0xF5 ? 4
                                        : 0;
    if (length == 0 || length > text.size() - at) return 0;
    for (size_t i = 1; i < length; ++i)
        if ((byte(at + i) & 0xC0) != 0x80) return 0;
    if (length == 3 && ((lead == 0xE0 && byte(at + 1) < 0xA0) || (lead == 0xED && byte(at + 1) > 0x9F)))
        return 0;
    if (length == 4 && ((lead == 0xF0 && byte(at + 1) < 0x90) || (lead == 0xF4 && byte(at + 1) > 0x8F)))
        return 0;
    return length;
}

} // namespace validate

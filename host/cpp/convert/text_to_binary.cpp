#include "convert/binary_dxf.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace host {
namespace {

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

/// The number at the head of a text; 0 when there is none.
template <typename Number>
Number parse(std::string_view text) {
    text = withoutBlanks(text);
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    Number value{};
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// Takes the groups of a text file one by one. Lines end with LF, CR LF or CR.
class TextGroups {
public:
    explicit TextGroups(std::string_view text) : rest_(text) {}

    bool take(int& code, std::string_view& value) {
        std::string_view line;
        if (!takeLine(line)) return false;
        line = withoutBlanks(line);
        const auto parsed = std::from_chars(line.data(), line.data() + line.size(), code);
        malformed_ = parsed.ec != std::errc{} || code < 0 || code > 1071;
        return !malformed_ && takeLine(value);
    }

    bool malformed() const { return malformed_; }

private:
    bool takeLine(std::string_view& line) {
        if (rest_.empty()) return false;
        const std::size_t end = rest_.find_first_of("\r\n");
        line = rest_.substr(0, end);
        if (end == std::string_view::npos) {
            rest_ = {};
            return true;
        }
        const bool pair = rest_[end] == '\r' && end + 1 < rest_.size() && rest_[end + 1] == '\n';
        rest_.remove_prefix(end + (pair ? 2 : 1));
        return true;
    }

    std::string_view rest_;
    bool malformed_ = false;
};

/// True for files whose codes take one byte: up to AC1009, and those that name no version.
bool hasNarrowCodes(std::string_view text) {
    TextGroups groups(text);
    int code = 0;
    std::string_view value;
    while (groups.take(code, value)) {
        if (code == 0 && value == "ENDSEC") break;
        if (code != 9 || value != "$ACADVER" || !groups.take(code, value)) continue;
        return value.substr(0, 2) != "AC" || parse<int>(value.substr(2)) <= 1009;
    }
    return true;
}

void appendBytes(std::string& out, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) out += static_cast<char>((value >> (8 * i)) & 0xff);
}

void appendCode(std::string& out, int code, bool narrow) {
    constexpr int escape = 255;
    const auto number = static_cast<std::uint64_t>(code);
    if (narrow && code < escape) {
        appendBytes(out, number, 1);
        return;
    }
    if (narrow) appendBytes(out, escape, 1);
    appendBytes(out, number, 2);
}

template <typename Int>
void appendInteger(std::string& out, std::string_view value) {
    const auto number = parse<std::int64_t>(value);
    const auto low = std::int64_t{std::numeric_limits<Int>::min()};
    const auto high = std::int64_t{std::numeric_limits<Int>::max()};
    appendBytes(out, static_cast<std::uint64_t>(std::clamp(number, low, high)), sizeof(Int));
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// A chunk holds up to 127 bytes here; a longer line becomes several groups of the same code.
void appendChunks(std::string& out, int code, std::string_view hex, bool narrow) {
    constexpr std::size_t longest = 127;
    std::string bytes;
    hex = withoutBlanks(hex);
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        const int high = hexDigit(hex[i]);
        const int low = hexDigit(hex[i + 1]);
        if (high < 0 || low < 0) break;
        bytes += static_cast<char>(high * 16 + low);
    }
    std::size_t from = 0;
    do {
        const std::string piece = bytes.substr(from, longest);
        appendCode(out, code, narrow);
        appendBytes(out, piece.size(), 1);
        out += piece;
        from += longest;
    } while (from < bytes.size());
}

void appendText(std::string& out, std::string_view value) {
    out += value.substr(0, value.find('\0'));
    out += '\0';
}

/// Appends a group. False for a code whose values have no known width.
bool appendGroup(std::string& out, int code, std::string_view value, bool narrow) {
    const DxfValue kind = dxfValueKind(code);
    if (kind == DxfValue::Unknown) return false;
    if (kind == DxfValue::Chunk) {
        appendChunks(out, code, value, narrow);
        return true;
    }
    appendCode(out, code, narrow);
    switch (kind) {
    case DxfValue::Double: appendBytes(out, std::bit_cast<std::uint64_t>(parse<double>(value)), 8); break;
    case DxfValue::Int16: appendInteger<std::int16_t>(out, value); break;
    case DxfValue::Int32: appendInteger<std::int32_t>(out, value); break;
    case DxfValue::Int64: appendInteger<std::int64_t>(out, value); break;
    case DxfValue::Bool: appendBytes(out, parse<int>(value) != 0, 1); break;
    default: appendText(out, value); break;
    }
    return true;
}

} // namespace

bool textDxfToBinary(std::string_view text, std::FILE* out) {
    const bool narrow = hasNarrowCodes(text);
    constexpr int comment = 999;
    constexpr std::size_t full = 1 << 16;
    std::string bytes(binaryDxfSentinel);
    const auto flush = [&] {
        const bool written = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
        bytes.clear();
        return written;
    };
    TextGroups groups(text);
    bool any = false;
    int code = 0;
    std::string_view value;
    while (groups.take(code, value)) {
        if (code == comment) continue;
        if (!appendGroup(bytes, code, value, narrow)) return false;
        any = true;
        if (code == 0 && withoutBlanks(value) == "EOF") break;
        if (bytes.size() > full && !flush()) return false;
    }
    return any && !groups.malformed() && flush();
}

} // namespace host

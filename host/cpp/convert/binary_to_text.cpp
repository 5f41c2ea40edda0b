#include "convert/binary_dxf.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <string>

namespace host {
namespace {

/// Takes the groups of a binary file one by one and never looks beyond its end.
class BinaryGroups {
public:
    explicit BinaryGroups(std::string_view bytes) : rest_(bytes) {
        rest_.remove_prefix(binaryDxfSentinel.size());
        // The first group is 0 and its text: a zero byte behind the code's first can only be its second.
        wideCodes_ = rest_.size() >= 2 && rest_[0] == 0 && rest_[1] == 0;
    }

    bool takeCode(int& code) {
        std::uint64_t value = 0;
        if (!takeNumber(wideCodes_ ? 2 : 1, value)) return false;
        constexpr std::uint64_t escape = 255;
        if (!wideCodes_ && value == escape && !takeNumber(2, value)) return false;
        code = static_cast<int>(value);
        return true;
    }

    bool takeNumber(std::size_t width, std::uint64_t& value) {
        if (rest_.size() < width) return false;
        value = 0;
        for (std::size_t i = 0; i < width; ++i)
            value |= std::uint64_t{static_cast<unsigned char>(rest_[i])} << (8 * i);
        rest_.remove_prefix(width);
        return true;
    }

    bool takeText(std::string_view& text) {
        const std::size_t end = rest_.find('\0');
        if (end == std::string_view::npos) return false;
        text = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return true;
    }

    bool takeChunk(std::string_view& bytes) {
        std::uint64_t length = 0;
        if (!takeNumber(1, length) || rest_.size() < length) return false;
        bytes = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return true;
    }

    std::size_t left() const { return rest_.size(); }

private:
    std::string_view rest_;
    bool wideCodes_ = false;
};

/// Appends `text` right-justified in `width` columns.
void appendPadded(std::string& out, std::string_view text, std::size_t width) {
    if (text.size() < width) out.append(width - text.size(), ' ');
    out += text;
}

template <typename Int>
void appendInteger(std::string& out, Int value, std::size_t width) {
    std::array<char, 24> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    appendPadded(out, {buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data())}, width);
}

/// The shortest text that reads back as the same double, with a decimal point.
void appendDouble(std::string& out, double value) {
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data()));
    const std::size_t exponent = text.find('e');
    out += text.substr(0, exponent);
    if (text.find_first_of(".n") == std::string_view::npos) out += ".0"; // "nan" and "inf" stay
    if (exponent == std::string_view::npos) return;
    out += 'E';
    out += text.substr(exponent + 1);
}

/// A text with its line ends as caret codes, since a value is one line.
void appendText(std::string& out, std::string_view text) {
    for (const char c : text) {
        if (c == '\n')
            out += "^J";
        else if (c == '\r')
            out += "^M";
        else
            out += c;
    }
}

void appendHex(std::string& out, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += digits[byte >> 4];
        out += digits[byte & 15];
    }
}

/// Appends a value as a line. False at the end of the file and for a kind of no known width.
bool appendValue(std::string& out, BinaryGroups& groups, DxfValue kind) {
    std::uint64_t number = 0;
    std::string_view text;
    switch (kind) {
    case DxfValue::Text:
        if (!groups.takeText(text)) return false;
        appendText(out, text);
        break;
    case DxfValue::Double:
        if (!groups.takeNumber(8, number)) return false;
        appendDouble(out, std::bit_cast<double>(number));
        break;
    case DxfValue::Int16:
        if (!groups.takeNumber(2, number)) return false;
        appendInteger(out, static_cast<std::int16_t>(number), 6);
        break;
    case DxfValue::Int32:
        if (!groups.takeNumber(4, number)) return false;
        appendInteger(out, static_cast<std::int32_t>(number), 9);
        break;
    case DxfValue::Int64:
        if (!groups.takeNumber(8, number)) return false;
        appendInteger(out, static_cast<std::int64_t>(number), 18);
        break;
    case DxfValue::Bool:
        if (!groups.takeNumber(1, number)) return false;
        appendInteger(out, number, 6);
        break;
    case DxfValue::Chunk:
        if (!groups.takeChunk(text)) return false;
        appendHex(out, text);
        break;
    case DxfValue::Unknown: return false;
    }
    out += '\n';
    return true;
}

bool flush(std::string& text, std::FILE* out) {
    const bool written = std::fwrite(text.data(), 1, text.size(), out) == text.size();
    text.clear();
    return written;
}

} // namespace

bool binaryDxfToText(std::string_view bytes, std::FILE* out) {
    if (bytes.substr(0, binaryDxfSentinel.size()) != binaryDxfSentinel) return false;
    BinaryGroups groups(bytes);
    constexpr std::size_t full = 1 << 16;
    std::string text;
    bool any = false;
    int code = 0;
    while (groups.takeCode(code)) {
        const std::size_t begin = text.size();
        appendInteger(text, code, 3);
        text += '\n';
        if (!appendValue(text, groups, dxfValueKind(code))) {
            text.resize(begin);
            break;
        }
        any = true;
        const bool end = code == 0 && std::string_view(text).substr(begin) == "  0\nEOF\n";
        if (end) break;
        if (text.size() > full && !flush(text, out)) return false;
    }
    return any && flush(text, out);
}

std::size_t binaryDxfOffset(std::string_view bytes, long groups) {
    if (bytes.substr(0, binaryDxfSentinel.size()) != binaryDxfSentinel) return 0;
    BinaryGroups walk(bytes);
    std::size_t offset = bytes.size() - walk.left();
    std::string text;
    int code = 0;
    for (; groups > 0 && walk.takeCode(code) && appendValue(text, walk, dxfValueKind(code)); --groups) {
        offset = bytes.size() - walk.left();
        text.clear();
    }
    return offset;
}

} // namespace host

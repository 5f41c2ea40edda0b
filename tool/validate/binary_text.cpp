#include "binary_text.h"

#include "tags.h"
#include "words.h"

#include <bit>
#include <charconv>
#include <cstdint>

namespace validate {

namespace {

constexpr std::string_view kMark = " Binary DXF\r\n\x1A"; // behind the name of its first program
constexpr size_t kHead = 22;                              // the mark and a zero byte end here

/// Values of a binary file. Nothing is read beyond its end.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes), at_(kHead) {
        // The first group is 0 and a text: a zero behind the code's first byte can only be its second.
        isWide_ = bytes_.substr(at_, 2) == std::string_view("\0\0", 2);
    }

    size_t at() const { return at_; }
    bool atEnd() const { return at_ >= bytes_.size(); }

    bool number(size_t width, uint64_t& value) {
        if (bytes_.size() - at_ < width) return false;
        value = 0;
        for (size_t i = 0; i < width; ++i)
            value |= uint64_t{static_cast<unsigned char>(bytes_[at_ + i])} << (8 * i);
        at_ += width;
        return true;
    }
    bool code(int& code) {
        constexpr uint64_t announcesWide = 255;
        uint64_t value = 0;
        if (!number(isWide_ ? 2 : 1, value)) return false;
        if (!isWide_ && value == announcesWide && !number(2, value)) return false;
        code = static_cast<int>(value);
        return true;
    }
    bool text(std::string_view& text) {
        const size_t end = bytes_.find('\0', at_);
        if (end == bytes_.npos) return false;
        text = bytes_.substr(at_, end - at_);
        at_ = end + 1;
        return true;
    }
    bool chunk(std::string_view& bytes) {
        uint64_t length = 0;
        if (!number(1, length) || bytes_.size() - at_ < length) return false;
        bytes = bytes_.substr(at_, length);
        at_ += length;
        return true;
    }

private:
    std::string_view bytes_;
    size_t at_;
    bool isWide_ = false;
};

template <class Number>
void appendNumber(std::string& out, Number value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, end.ptr);
}

/// Line ends within a text, which is one line, as caret codes.
void appendText(std::string& out, std::string_view text) {
    for (const char c : text) {
        if (c == '\n' || c == '\r')
            out += c == '\n' ? "^J" : "^M";
        else
            out += c;
    }
}

void appendHex(std::string& out, std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char c : bytes) {
        out += digits[static_cast<unsigned char>(c) >> 4];
        out += digits[static_cast<unsigned char>(c) & 15];
    }
}

/// Appends an integer of `width` bytes with a sign.
bool appendInteger(std::string& out, Bytes& bytes, size_t width) {
    uint64_t value = 0;
    if (!bytes.number(width, value)) return false;
    const unsigned shift = static_cast<unsigned>(64 - 8 * width);
    appendNumber(out, static_cast<int64_t>(value << shift) >> shift);
    return true;
}

/// Appends a value as a line. False when the file is cut within it.
bool appendValue(std::string& out, Bytes& bytes, ValueType type) {
    uint64_t number = 0;
    std::string_view text;
    switch (type) {
    case ValueType::Real:
        if (!bytes.number(8, number)) return false;
        appendNumber(out, std::bit_cast<double>(number));
        return true;
    case ValueType::I16: return appendInteger(out, bytes, 2);
    case ValueType::I32: return appendInteger(out, bytes, 4);
    case ValueType::I64: return appendInteger(out, bytes, 8);
    case ValueType::Bool: return appendInteger(out, bytes, 1);
    case ValueType::Hex:
        if (!bytes.chunk(text)) return false;
        appendHex(out, text);
        return true;
    default:
        if (!bytes.text(text)) return false;
        appendText(out, text);
        return true;
    }
}

} // namespace

bool isBinaryDxf(std::string_view bytes) {
    return bytes.substr(0, 32).find(kMark) != bytes.npos;
}

BinaryText readBinary(std::string_view file) {
    BinaryText result;
    if (file.size() < kHead) {
        result.end = file.size();
        result.damage = words::say("the file is cut within its head");
        return result;
    }
    Bytes bytes(file);
    std::string& out = result.text;
    while (!bytes.atEnd()) {
        const size_t begin = bytes.at(), length = out.size();
        int code = 0;
        const bool hasCode = bytes.code(code);
        const bool isKnown = hasCode && code <= kLastCode && valueType(code) != ValueType::Undefined;
        if (isKnown) {
            appendNumber(out, code);
            out += '\n';
        }
        if (!isKnown || !appendValue(out, bytes, valueType(code))) {
            out.resize(length);
            result.end = begin;
            result.damage = hasCode && !isKnown
                                ? words::say("group code {}, whose values have no known length", code)
                                : words::say("the file is cut within a group");
            return result;
        }
        out += '\n';
        result.places.push_back(begin);
        result.end = bytes.at();
        if (code == 0 && std::string_view(out).substr(length) == "0\nEOF\n") break;
    }
    return result;
}

} // namespace validate

#include "dx_unicode.h"

#include "os.h"
#include "session_state.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int hostCodePage = 1252;

/// Length of the character that begins with `lead`, 0 for a byte that begins none.
std::size_t lengthByLead(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// The shortest form of a scalar value, as UTF-8 demands it.
bool isWellFormed(char32_t c, std::size_t length) {
    if (length == 3) return c >= 0x800 && (c < 0xD800 || c > 0xDFFF);
    return length != 4 || (c >= 0x10000 && c <= 0x10FFFF);
}

/// The character at the start of `text`; its length is 0 for malformed bytes.
std::pair<char32_t, std::size_t> decode(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lengthByLead(lead);
    if (length < 2) return {lead, length};
    if (text.size() < length) return {0, 0};
    char32_t c = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (DxBeginsChar(text[i])) return {0, 0};
        c = c << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    return {c, isWellFormed(c, length) ? length : 0};
}

/// Value of the `count` hexadecimal digits at `pos`, -1 when they aren't all there.
int hexAt(std::string_view text, std::size_t pos, std::size_t count) {
    if (text.size() < pos + count) return -1;
    int value = 0;
    for (const char c : text.substr(pos, count)) {
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9')
            value = value * 16 + (c - '0');
        else if (lower >= 'a' && lower <= 'f')
            value = value * 16 + (lower - 'a' + 10);
        else
            return -1;
    }
    return value;
}

bool isHighHalf(int unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowHalf(int unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// True for what the host gives for a byte that has no meaning in its code page.
bool isStray(char32_t character) {
    return character == DX_REPLACEMENT || (character >= 0xF8A0 && character <= 0xF8FF);
}

/// The only character of some bytes; 0 when they are none, or more than one.
char32_t onlyChar(std::string_view bytes, int codePage) {
    const std::string text = DxFromCodePage(bytes, codePage);
    std::size_t pos = 0;
    if (text.empty()) return 0;
    const char32_t c = DxNextChar(text, pos);
    return pos == text.size() ? c : 0;
}

/// The character of two bytes in one of the code pages that "\M+" names by a digit; 0 if there is none.
char32_t multiByteChar(int page, int bytes) {
    constexpr int pages[] = {0, 932, 950, 949, 1361, 936};
    if (page < 1 || page > 5) return 0;
    const char pair[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)};
    const bool isSingle = bytes < 256;
    const char32_t c = onlyChar({isSingle ? pair + 1 : pair, isSingle ? 1U : 2U}, pages[page]);
    return isStray(c) ? 0 : c;
}

/// "\M+" is followed by a digit for the code page and four digits, or by four digits alone.
DxEscape multiByteEscape(std::string_view text, std::size_t pos) {
    const int page = hexAt(text, pos + 3, 1), bytes = hexAt(text, pos + 4, 4);
    if (bytes >= 0)
        if (const char32_t c = multiByteChar(page, bytes)) return {c, 8};
    const int code = hexAt(text, pos + 3, 4);
    return code > 0 ? DxEscape{static_cast<char32_t>(code), 7} : DxEscape{};
}

DxEscape unicodeEscape(std::string_view text, std::size_t pos) {
    const int code = hexAt(text, pos + 3, 4);
    if (code <= 0) return {};
    if (isLowHalf(code)) return {DX_REPLACEMENT, 7};
    if (!isHighHalf(code)) return {static_cast<char32_t>(code), 7};
    const std::string_view next = text.substr(pos + 7, 3);
    const int low = next == "\\U+" || next == "\\u+" ? hexAt(text, pos + 10, 4) : -1;
    if (!isLowHalf(low)) return {DX_REPLACEMENT, 7};
    return {static_cast<char32_t>(0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00)), 14};
}

} // namespace

// ---- UTF-8 -------------------------------------------------------------------------------------------

bool DxIsAscii(std::string_view bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; });
}

bool DxIsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = decode(bytes).second;
        if (!length) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

char32_t DxNextChar(std::string_view text, std::size_t& pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    const auto [c, length] = decode(text.substr(pos));
    pos += std::max<std::size_t>(length, 1);
    return length ? c : DX_REPLACEMENT;
}

void DxAppendChar(std::string& text, char32_t c) {
    const auto tail = [&](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) c = DX_REPLACEMENT;
    if (c < 0x80)
        text += static_cast<char>(c);
    else if (c < 0x800)
        text += {static_cast<char>(0xC0 | c >> 6), tail(0)};
    else if (c < 0x10000)
        text += {static_cast<char>(0xE0 | c >> 12), tail(6), tail(0)};
    else
        text += {static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
}

std::size_t DxCharCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), DxBeginsChar));
}

void DxCutChars(std::string& text, std::size_t count) {
    if (text.size() <= count) return;
    for (std::size_t i = 0, seen = 0; i < text.size(); ++i) {
        if (DxBeginsChar(text[i]) && seen++ == count) return text.resize(i);
    }
}

// ---- escapes -----------------------------------------------------------------------------------------

DxEscape DxEscapeAt(std::string_view text, std::size_t pos) {
    if (text.size() < pos + 7 || text[pos] != '\\' || text[pos + 2] != '+') return {};
    const char kind = static_cast<char>(text[pos + 1] | 0x20);
    if (kind == 'u') return unicodeEscape(text, pos);
    return kind == 'm' ? multiByteEscape(text, pos) : DxEscape{};
}

std::string DxWithoutEscapes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();) {
        const DxEscape escape = DxEscapeAt(text, pos);
        if (escape.length && escape.character != DX_REPLACEMENT)
            DxAppendChar(out, escape.character);
        else
            out.append(text.substr(pos, std::max<std::size_t>(escape.length, 1)));
        pos += std::max<std::size_t>(escape.length, 1);
    }
    return out;
}

static void appendUnit(std::string& text, char32_t unit) {
    constexpr char HEX[] = "0123456789ABCDEF";
    text += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) text += HEX[unit >> shift & 0xF];
}

void DxAppendEscape(std::string& text, char32_t c) {
    if (c < 0x10000) return appendUnit(text, c);
    appendUnit(text, 0xD800 + ((c - 0x10000) >> 10));
    appendUnit(text, 0xDC00 + ((c - 0x10000) & 0x3FF));
}

// ---- code pages --------------------------------------------------------------------------------------

std::string DxFromCodePage(std::string_view bytes, int codePage) {
    return UtCString(bytes, OsUserCodePageIdToTorvaCodePage(codePage)).str();
}

UtCString DxHostText(std::string_view text) {
    const std::string host = DxIsUtf8(text) ? std::string(text) : DxFromCodePage(text, DxCodePage);
    return host.find('\\') == std::string::npos ? host : DxWithoutEscapes(host);
}

char32_t DxHostChar(int code) {
    if (code < 1 || code > 255) return 0;
    if (code < 0x80 || code >= 0xA0) return static_cast<char32_t>(code);
    const char byte = static_cast<char>(code);
    return onlyChar({&byte, 1}, hostCodePage);
}

int DxHostCode(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<int>(c);
    unsigned char byte = 0;
    return UtCUtf_Unicode2Ansi(c, hostCodePage, byte) ? byte : -1;
}

char32_t DxFileChar(int code) {
    if (code < 1) return DX_REPLACEMENT;
    if (code < 0x80 || code > 255) return static_cast<char32_t>(code);
    const char byte = static_cast<char>(code);
    const char32_t c = onlyChar({&byte, 1}, DxCodePage);
    return c == 0 || isStray(c) ? static_cast<char32_t>(code) : c;
}

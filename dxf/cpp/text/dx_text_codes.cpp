#include "dx_text_codes.h"

#include "../config/config_state.h"
#include "../session/dx_encoding.h"
#include "ci_text.h"
#include "text_state.h"

#include <algorithm>

namespace {

constexpr int hostCodePage = 1252;
constexpr char32_t replacement = 0xFFFD;

/// Table codes of the signs that have a "%%" code of their own.
constexpr int degreeCode = 176, plusMinusCode = 177, diameterCode = 29, percentCode = 35;
constexpr char32_t diameterSign = 0xD8; // what the host's character set has for it

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Value of the `count` hexadecimal digits at `pos`, -1 when they aren't all there.
int hexAt(std::string_view text, std::size_t pos, std::size_t count) {
    if (text.size() < pos + count) return -1;
    int value = 0;
    for (std::size_t i = pos; i < pos + count; ++i) {
        const char c = lower(text[i]);
        if (isDigit(c))
            value = value * 16 + (c - '0');
        else if (c >= 'a' && c <= 'f')
            value = value * 16 + (c - 'a' + 10);
        else
            return -1;
    }
    return value;
}

/// True for what the host gives for a byte that has no meaning in its code page.
bool isStray(char32_t character) {
    return character == replacement || (character >= 0xF8A0 && character <= 0xF8FF);
}

int tableCode(char32_t character) {
    const int code = DxHostCode(character);
    return code >= 0 ? code : static_cast<int>(std::max<char32_t>(character, 256));
}

DxTextUnit unitOf(char32_t character, std::size_t length) {
    return {character, tableCode(character), length};
}

/// The character of two bytes in one of the code pages that "\M+" names by a digit; 0 if there is none.
char32_t multiByteChar(int page, int bytes) {
    constexpr int pages[] = {0, 932, 950, 949, 1361, 936};
    if (page < 1 || page > 5) return 0;
    const char pair[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)};
    const bool isSingle = bytes < 256;
    const UtCString text(std::string_view(isSingle ? pair + 1 : pair, isSingle ? 1 : 2), pages[page]);
    std::size_t pos = 0;
    if (text.IsEmpty()) return 0;
    const char32_t c = DxNextChar(text.str(), pos);
    return pos == text.Len() && !isStray(c) ? c : 0;
}

/// "\M+" is followed by a digit for the code page and four digits, or by four digits alone.
DxTextUnit multiByteUnit(std::string_view text, std::size_t pos) {
    const int page = hexAt(text, pos + 3, 1), bytes = hexAt(text, pos + 4, 4);
    if (bytes >= 0) {
        if (const char32_t c = multiByteChar(page, bytes)) return unitOf(c, 8);
    }
    const int code = hexAt(text, pos + 3, 4);
    return code > 0 ? unitOf(static_cast<char32_t>(code), 7) : unitOf('\\', 1);
}

bool isHighHalf(int unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowHalf(int unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// "\U+" and four digits; two halves of a surrogate pair are one unit.
DxTextUnit unicodeUnit(std::string_view text, std::size_t pos) {
    const int code = hexAt(text, pos + 3, 4);
    if (code <= 0) return unitOf('\\', 1);
    if (!isHighHalf(code))
        return isLowHalf(code) ? unitOf(replacement, 7) : unitOf(static_cast<char32_t>(code), 7);
    const bool hasMore = text.substr(pos + 7, 3) == "\\U+" || text.substr(pos + 7, 3) == "\\u+";
    const int low = hasMore ? hexAt(text, pos + 10, 4) : -1;
    if (!isLowHalf(low)) return unitOf(replacement, 7);
    return unitOf(static_cast<char32_t>(0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00)), 14);
}

DxTextUnit percentUnit(std::string_view text, std::size_t pos) {
    if (text.size() < pos + 3 || text[pos + 1] != '%') return unitOf('%', 1);
    switch (lower(text[pos + 2])) {
    case 'd': return {0xB0, degreeCode, 3};
    case 'p': return {0xB1, plusMinusCode, 3};
    case 'c': return {diameterSign, diameterCode, 3};
    case 'u':
    case 'o':
    case 'k': return {0, 0, 3};
    case '%': return {'%', percentCode, 3};
    default: break;
    }
    if (text.size() < pos + 5 || !std::all_of(&text[pos + 2], &text[pos + 4] + 1, isDigit))
        return unitOf('%', 1);
    const int code = (text[pos + 2] - '0') * 100 + (text[pos + 3] - '0') * 10 + (text[pos + 4] - '0');
    return {DxFileChar(code), code, 5};
}

DxTextUnit escapeUnit(std::string_view text, std::size_t pos) {
    if (text.size() < pos + 7 || text[pos + 2] != '+') return unitOf('\\', 1);
    const char kind = lower(text[pos + 1]);
    if (kind == 'u') return unicodeUnit(text, pos);
    return kind == 'm' ? multiByteUnit(text, pos) : unitOf('\\', 1);
}

} // namespace

DxTextUnit DxNextTextUnit(std::string_view text, std::size_t pos) {
    if (text[pos] == '%') return percentUnit(text, pos);
    if (text[pos] == '\\') return escapeUnit(text, pos);
    const std::size_t start = pos;
    const char32_t c = DxNextChar(text, pos);
    return unitOf(c, pos - start);
}

char32_t DxNextChar(std::string_view text, std::size_t& pos) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(pos++);
    if (lead < 0x80) return lead;
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - pos < more) return replacement;
    char32_t c = lead & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        if ((byte(pos + i) & 0xC0) != 0x80) return replacement;
        c = c << 6 | (byte(pos + i) & 0x3FU);
    }
    pos += more;
    return c;
}

void DxAppendChar(std::string& text, char32_t c) {
    const auto tail = [&](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) c = replacement;
    if (c < 0x80)
        text += static_cast<char>(c);
    else if (c < 0x800)
        text += {static_cast<char>(0xC0 | c >> 6), tail(0)};
    else if (c < 0x10000)
        text += {static_cast<char>(0xE0 | c >> 12), tail(6), tail(0)};
    else
        text += {static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
}

static bool beginsChar(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

std::size_t DxCharCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsChar));
}

void DxCutChars(std::string& text, std::size_t count) {
    if (text.size() <= count) return;
    for (std::size_t i = 0, seen = 0; i < text.size(); ++i) {
        if (beginsChar(text[i]) && seen++ == count) return text.resize(i);
    }
}

int DxTextStrlen(std::string_view text) {
    int count = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        if (DxIsPlain(text[pos])) {
            ++count;
            ++pos;
            continue;
        }
        const DxTextUnit unit = DxNextTextUnit(text, pos);
        if (unit.character) ++count;
        pos += unit.length;
    }
    return count;
}

int DxTextHostCount(std::string_view converted) {
    return static_cast<int>(std::count_if(converted.begin(), converted.end(), [](char c) {
        const bool isSwitch = c >= 0 && c < 32 && c != '\t';
        return beginsChar(c) && !isSwitch;
    }));
}

UtCString DxTextConv2Unicode(std::string_view in) {
    if (in.find('\\') == std::string_view::npos) return in;
    std::string out;
    for (std::size_t pos = 0; pos < in.size();) {
        const DxTextUnit unit = in[pos] == '\\' ? escapeUnit(in, pos) : DxTextUnit{0, 0, 1};
        if (unit.length > 1 && unit.character != replacement)
            DxAppendChar(out, unit.character);
        else
            out.append(in.substr(pos, unit.length));
        pos += unit.length;
    }
    return out;
}

void DxResolveEscapes(std::string& text) {
    if (text.find('\\') != std::string::npos) text = DxTextConv2Unicode(text).str();
}

int DxTextCheckIllegalChars(std::string& text) {
    int result = 0;
    for (char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == 0 || byte > 31 || c == '\t' || c == '\n' || c == '\r' || OsUserIsSpecialChar(byte))
            continue;
        c = '?';
        result = 4711;
    }
    return result;
}

void DxTextCheckPolierText(std::string& text) {
    if (!DxFinishPending) return;
    DxFinishPending = 0;
    while (!text.empty() && !beginsChar(text.back())) text.pop_back();
    if (!text.empty()) text.pop_back();
    text += UtCString(DxFinishText.view(), DxFileHostCodePage()).str();
}

char32_t DxHostChar(int code) {
    if (code < 1 || code > 255) return 0;
    if (code < 0x80 || code >= 0xA0) return static_cast<char32_t>(code);
    const char byte = static_cast<char>(code);
    std::size_t pos = 0;
    return DxNextChar(UtCString(std::string_view(&byte, 1), hostCodePage).str(), pos);
}

int DxHostCode(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c < 0x100)) return static_cast<int>(c);
    unsigned char byte = 0;
    return UtCUtf_Unicode2Ansi(c, hostCodePage, byte) ? byte : -1;
}

char32_t DxFileChar(int code) {
    if (code < 1) return replacement;
    if (code < 0x80 || code > 255) return static_cast<char32_t>(code);
    const char byte = static_cast<char>(code);
    std::size_t pos = 0;
    const UtCString text(std::string_view(&byte, 1), DxFileHostCodePage());
    const char32_t c = text.IsEmpty() ? replacement : DxNextChar(text.str(), pos);
    return isStray(c) ? static_cast<char32_t>(code) : c;
}

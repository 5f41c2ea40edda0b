#include "dx_text_codes.h"

#include "../config/config_state.h"
#include "ci_text.h"
#include "text_state.h"

#include <algorithm>

namespace {

/// Table codes of the signs that have a "%%" code of their own.
constexpr int degreeCode = 176, plusMinusCode = 177, diameterCode = 29, percentCode = 35;
constexpr char32_t diameterSign = 0xD8; // what the host's character set has for it

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int tableCode(char32_t character) {
    const int code = DxHostCode(character);
    return code >= 0 ? code : static_cast<int>(std::max<char32_t>(character, 256));
}

DxTextUnit unitOf(char32_t character, std::size_t length) {
    return {character, tableCode(character), length};
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
    const DxEscape escape = DxEscapeAt(text, pos);
    return escape.length ? unitOf(escape.character, escape.length) : unitOf('\\', 1);
}

} // namespace

DxTextUnit DxNextTextUnit(std::string_view text, std::size_t pos) {
    if (text[pos] == '%') return percentUnit(text, pos);
    if (text[pos] == '\\') return escapeUnit(text, pos);
    const std::size_t start = pos;
    const char32_t c = DxNextChar(text, pos);
    return unitOf(c, pos - start);
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

bool DxIsSwitch(char c) {
    return c >= 0 && c < 32 && OsUserIsSpecialChar(static_cast<unsigned char>(c));
}

bool DxIsBlankText(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == ' ' || c == '\t' || DxIsSwitch(c); });
}

int DxTextHostCount(std::string_view converted) {
    return static_cast<int>(std::count_if(converted.begin(), converted.end(),
                                          [](char c) { return DxBeginsChar(c) && !DxIsSwitch(c); }));
}

UtCString DxTextConv2Unicode(std::string_view in) {
    return in.find('\\') == std::string_view::npos ? std::string(in) : DxWithoutEscapes(in);
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
    while (!text.empty() && !DxBeginsChar(text.back())) text.pop_back();
    if (!text.empty()) text.pop_back();
    text += DxFinishText.view();
}

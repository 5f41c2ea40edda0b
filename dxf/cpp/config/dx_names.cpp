#include "dx_names.h"

#include "../session/dx_unicode.h"
#include "../session/session_state.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t LONG_NAME = 160;
constexpr std::size_t SHORT_NAME = 31;
constexpr int NEWEST_LEVEL_OF_SHORT_NAMES = 7; // DxWriteVersion counts backwards: ACAD14 is 6

bool hasShortNames() {
    return DxWriteVersion >= NEWEST_LEVEL_OF_SHORT_NAMES;
}

void replaceForbidden(std::string& name) {
    // Readers refuse the semicolon as they do the others.
    static constexpr std::string_view FORBIDDEN = "<>/\\\":;?*|,=`";
    std::replace_if(
        name.begin(), name.end(), [](char c) { return FORBIDDEN.find(c) != std::string_view::npos; }, '_');
}

/// Letters that an old name writes without their accents: the umlauts and their neighbours, and what their
/// DOS codes are taken for.
struct PlainLetter {
    std::u32string_view letters;
    char plain;
};
constexpr PlainLetter PLAIN_LETTERS[] = {
    {U"\u00C4\u00CC\u00D8\u00E4\u017D\u201E", 'A'},
    {U"\u00CF\u00DB\u00DC\u00FC\u0161\u0081", 'U'},
    {U"\u00CE\u00D6\u00DA\u00F6\u2122\u201D", 'O'},
    {U"\u00DE\u00DF\u00E1", 'S'},
};

char shortNameCharacter(char32_t c) {
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '$' || c == '-') return static_cast<char>(c);
    for (const PlainLetter& row : PLAIN_LETTERS)
        if (row.letters.find(c) != std::u32string_view::npos) return row.plain;
    return '_';
}

/// One character of the short name for each character of the long one.
void makeShort(std::string& name) {
    std::string shortName;
    for (std::size_t pos = 0; pos < name.size();) shortName += shortNameCharacter(DxNextChar(name, pos));
    name.swap(shortName);
}

} // namespace

std::size_t DxNameLimit() {
    return hasShortNames() ? SHORT_NAME : LONG_NAME;
}

void DxCheckName(UtCString& name) {
    std::string text = name.str();
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    UtTrim(text);
    if (hasShortNames())
        makeShort(text);
    else
        replaceForbidden(text);
    DxCutChars(text, DxNameLimit());
    UtRtrim(text);
    name = text;
}

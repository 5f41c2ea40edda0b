#include "dx_names.h"

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

/// Letters that an old name writes without their accents: Windows and DOS codes of the umlauts and their
/// neighbours.
struct PlainLetter {
    std::string_view codes;
    char letter;
};
constexpr PlainLetter PLAIN_LETTERS[] = {
    {"\xC4\xCC\xD8\xE4\x8E\x84", 'A'},
    {"\xCF\xDB\xDC\xFC\x9A\x81", 'U'},
    {"\xCE\xD6\xDA\xF6\x99\x94", 'O'},
    {"\xDE\xDF\xE1", 'S'},
};

char shortNameCharacter(char c) {
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '$' || c == '-') return c;
    for (const PlainLetter& row : PLAIN_LETTERS)
        if (row.codes.find(c) != std::string_view::npos) return row.letter;
    return '_';
}

/// One character of the short name for each character of the long one, by its code in the western code page.
void makeShort(std::string& name) {
    const std::string bytes = UtCString(name).Ansi(1252);
    name.clear();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes.compare(i, 3, "\\U+") == 0 && i + 7 <= bytes.size()) { // a character that the page lacks
            name += '_';
            i += 6;
        } else {
            name += shortNameCharacter(bytes[i]);
        }
    }
}

} // namespace

std::size_t DxNameLimit() {
    return hasShortNames() ? SHORT_NAME : LONG_NAME;
}

void DxCutUtf8(std::string& text, std::size_t limit) {
    if (text.size() <= limit) return;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0U) == 0x80U) --limit;
    text.resize(limit);
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
    DxCutUtf8(text, DxNameLimit());
    UtRtrim(text);
    name = text;
}

#include "dx_names.h"

#include "../session/dx_writer.h"
#include "dx_block_table.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t LONG_NAME = 160;
constexpr std::size_t SHORT_NAME = 31;

std::size_t nameLimit() {
    return DxMiscCheckVersion(6) ? LONG_NAME : SHORT_NAME;
}

/// Cuts UTF-8 at a character's edge.
void cut(std::string& text, std::size_t limit) {
    if (text.size() <= limit) return;
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xC0U) == 0x80U) --limit;
    text.resize(limit);
}

void replaceForbidden(std::string& name) {
    static constexpr std::string_view FORBIDDEN = "<>/\\\":;?*|,=`";
    std::replace_if(
        name.begin(), name.end(), [](char c) { return FORBIDDEN.find(c) != std::string_view::npos; }, '_');
}

/// Letters that an old name writes without their accents: Windows and DOS codes of the umlauts and their
/// neighbours.
char oldLetter(unsigned code) {
    struct Row {
        std::string_view codes;
        char letter;
    };
    static constexpr Row ROWS[] = {
        {"\xC4\xCC\xD8\xE4\x8E\x84", 'A'},
        {"\xCF\xDB\xDC\xFC\x9A\x81", 'U'},
        {"\xCE\xD6\xDA\xF6\x99\x94", 'O'},
        {"\xDE\xDF\xE1", 'S'},
    };
    if (code >= 'a' && code <= 'z') return static_cast<char>(code - 32);
    if (code == '$' || code == '-' || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z'))
        return static_cast<char>(code);
    for (const Row& row : ROWS)
        if (code > 127 && code < 256 && row.codes.find(static_cast<char>(code)) != std::string_view::npos)
            return row.letter;
    return '_';
}

void makeOld(std::string& name) {
    const std::string bytes = UtCString(name).Ansi(1252);
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes.compare(i, 3, "\\U+") == 0 && i + 7 <= bytes.size()) { // a character that the page lacks
            out += '_';
            i += 6;
        } else {
            out += oldLetter(static_cast<unsigned char>(bytes[i]));
        }
    }
    name = out;
}

} // namespace

void DxCheckName(UtCString& name) {
    std::string text = name.str();
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    UtTrim(text);
    if (DxMiscCheckVersion(6))
        replaceForbidden(text);
    else
        makeOld(text);
    cut(text, nameLimit());
    UtRtrim(text);
    name = text;
}

void DxCheckBlockname(UtCString& name) {
    DxCheckName(name);
    const std::string base = name.str();
    int* counter = DxFindBlockCounter(name);
    while (DxFindBlockCounter(name) && counter) {
        const std::string tail = "-" + std::to_string(++*counter);
        std::string text = base;
        cut(text, nameLimit() - tail.size());
        name = text + tail;
    }
}

#include "dx_names.h"

#include "../session/session_state.h"
#include "os.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

constexpr int NEWEST_LEVEL_OF_SHORT_NAMES = 7; // DxWriteVersion counts backwards: ACAD14 is 6
constexpr std::size_t SHORT_NAME = 31;

/// Umlauts and accented letters by their codes in the code pages that old drawings were written in.
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

char toShortNameCharacter(char c) {
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '$' || c == '-') return c;
    for (const PlainLetter& row : PLAIN_LETTERS)
        if (row.codes.find(c) != std::string_view::npos) return row.letter;
    return '_';
}

/// The second byte of a character of two bytes may look like one of the forbidden characters.
void replaceForbidden(std::string& name) {
    constexpr std::string_view FORBIDDEN = "<>/\\\":?*|,=`";
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (OsIsLeadByte(static_cast<unsigned char>(name[i]), DxCodePage)) {
            ++i;
        } else if (FORBIDDEN.find(name[i]) != std::string_view::npos) {
            name[i] = '_';
        }
    }
}

} // namespace

void DxCheckName(DX_NAME* name) {
    std::string text(name->view());
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 32) c = ' ';
    UtTrim(text);
    if (DxWriteVersion >= NEWEST_LEVEL_OF_SHORT_NAMES) {
        std::transform(text.begin(), text.end(), text.begin(), toShortNameCharacter);
        text.resize(std::min(text.size(), SHORT_NAME));
    } else {
        replaceForbidden(text);
    }
    name->assign(text);
}

// Codes within texts: "%%" codes and escapes, one visible unit after the other.
//
// Texts are UTF-8 here. What a file gives as bytes of its code page has been converted when it was read, so
// that no trail byte can be taken for a backslash.
#pragma once

#include "../session/dx_unicode.h"
#include "ut_string.h"

#include <cstddef>
#include <string>
#include <string_view>

/// One unit of a text: a character, a code or an escape.
struct DxTextUnit {
    char32_t character = 0; ///< what it shows, 0: nothing (it switches a line on or off)
    int code = 0;           ///< its place in a ".chr" table; above 255: in none
    std::size_t length = 1; ///< bytes of the text, at least 1
};
/// True for a byte that is a unit by itself and stands for the character of its number.
constexpr bool DxIsPlain(char c) {
    return c > 0 && c != '%' && c != '\\';
}
/// The unit at `pos`, which lies within the text.
DxTextUnit DxNextTextUnit(std::string_view text, std::size_t pos);

/// Number of visible characters.
int DxTextStrlen(std::string_view text);
/// True for what switches a line along a text of the host on or off: it is no character, and takes no room.
bool DxIsSwitch(char c);
/// True for a text of blanks, tabs and switches only. A code of the host below 32 is a sign like others.
bool DxIsBlankText(std::string_view text);
/// Characters of a host-side text that take room: what switches a line along the text doesn't.
int DxTextHostCount(std::string_view converted);
/// The text with "\U+XXXX" and "\M+…" escapes as characters. Two halves of a surrogate pair become one; half
/// a pair, and the code 0, stay as they are.
UtCString DxTextConv2Unicode(std::string_view in);
/// The same in place.
void DxResolveEscapes(std::string& text);
/// Replaces control characters that the host doesn't know by "?". 4711 if there was any, else 0.
int DxTextCheckIllegalChars(std::string& text);
/// When DxFinishPending is set: the text's last character gives way to DxFinishText, and the mark is cleared.
void DxTextCheckPolierText(std::string& text);

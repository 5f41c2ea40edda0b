// Unicode: UTF-8, the escapes that stand for characters in drawing files, and the code pages at a file's
// edge.
//
// Within the module every text is UTF-8: names, values and configuration from the reader on, messages, and
// what goes to the host. The reader and the writer of pairs convert.
#pragma once

#include "ut_string.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Stands for bytes that are no character.
inline constexpr char32_t DX_REPLACEMENT = 0xFFFD;

// ---- UTF-8 -------------------------------------------------------------------------------------------

bool DxIsAscii(std::string_view bytes);
/// Whether `bytes` are well-formed UTF-8.
bool DxIsUtf8(std::string_view bytes);
/// The character at `pos`, which moves behind it. Malformed bytes count as U+FFFD, one by one.
char32_t DxNextChar(std::string_view text, std::size_t& pos);
void DxAppendChar(std::string& text, char32_t character);
/// True for the first byte of a character.
constexpr bool DxBeginsChar(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}
std::size_t DxCharCount(std::string_view text);
/// Cuts behind `count` characters.
void DxCutChars(std::string& text, std::size_t count);

// ---- escapes -----------------------------------------------------------------------------------------

/// An escape within a text.
struct DxEscape {
    char32_t character = 0; ///< U+FFFD for half of a surrogate pair
    std::size_t length = 0; ///< bytes of the text, 0: no escape stands there
};
/// The escape at `pos`: "\U+XXXX", two of them for a character beyond U+FFFF, or "\M+" with a digit for a
/// code page and four for the character.
DxEscape DxEscapeAt(std::string_view text, std::size_t pos);
/// The text with its escapes as characters. Halves of a surrogate pair and the code 0 stay as they are.
std::string DxWithoutEscapes(std::string_view text);
/// The character as "\U+XXXX"; beyond U+FFFF one escape for each half of its surrogate pair.
void DxAppendEscape(std::string& text, char32_t character);

// ---- code pages --------------------------------------------------------------------------------------

/// Bytes of code page `codePage` as UTF-8. A byte that the page lacks comes back by DxCodePageByte.
std::string DxFromCodePage(std::string_view bytes, int codePage);
/// A name or message for the host: escapes become characters. Bytes that aren't UTF-8, such as those of a
/// group that the reader gives as it stands, are of code page DxCodePage.
UtCString DxHostText(std::string_view text);

/// The character of a byte of the host's own character set, Windows 1252; 0 for a code outside 1 to 255.
char32_t DxHostChar(int code);
/// The byte of a character in the host's own character set, -1 when it has none.
int DxHostCode(char32_t character);
/// The character of a byte of code page DxCodePage; of its own number where the page has none.
char32_t DxFileChar(int code);

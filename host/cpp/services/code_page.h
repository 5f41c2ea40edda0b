// Code pages by their Windows numbers.
#pragma once

#include <string>
#include <string_view>

namespace host {

bool isCodePageKnown(int codePage);
bool isDoubleByte(int codePage);

/// Bytes of a code page as well-formed UTF-8; a byte that it doesn't define becomes
/// U+0080 to U+009F or U+F8A0 to U+F8FF by its number, ill-formed UTF-8 and UTF-16 U+FFFD. An unknown code
/// page counts as 1252.
std::string decodeBytes(std::string_view bytes, int codePage);
/// UTF-8 as bytes of a code page; characters that it lacks become "\U+XXXX".
std::string encodeText(std::string_view text, int codePage);
/// The byte of a character in a single-byte code page. False when there is none.
bool encodeCharacter(char32_t character, int codePage, unsigned char& byte);

} // namespace host

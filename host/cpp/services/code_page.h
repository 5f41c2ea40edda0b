// Code pages by their Windows numbers.
#pragma once

#include <string>
#include <string_view>

namespace host {

bool isCodePageKnown(int codePage);
bool isDoubleByte(int codePage);

/// Bytes of a code page as well-formed UTF-8; what it doesn't define becomes U+FFFD. An unknown code page
/// counts as 1252.
std::string decodeBytes(std::string_view bytes, int codePage);
/// UTF-8 as bytes of a code page; characters that it lacks become "\U+XXXX".
std::string encodeText(std::string_view text, int codePage);
/// The byte of a character in a single-byte code page. False when there is none.
bool encodeCharacter(char32_t character, int codePage, unsigned char& byte);

} // namespace host

// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

inline constexpr char32_t replacementCharacter = 0xfffd;

/// The character at `pos`, which moves behind it. Malformed input (overlong forms, surrogates, cut sequences
/// too) gives the replacement character and moves by one byte; `wellFormed` tells.
char32_t decodeUtf8(std::string_view text, std::size_t& pos, bool& wellFormed);
/// Surrogates and values beyond U+10FFFF are appended as the replacement character.
void appendUtf8(std::string& text, char32_t character);
/// Length of the leading part that is plain ASCII.
std::size_t asciiLength(std::string_view text);

} // namespace host

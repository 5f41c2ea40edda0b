#pragma once
// Small readings of the text of a DXF file: numbers, handles, names. Nothing here allocates unless it says
// so.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace validate {

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);

/// ASCII letters in capitals; other bytes stay. Names of a DXF file are compared so.
std::string upperCase(std::string_view text);

/// Whether two names are the same apart from the case of ASCII letters.
bool sameName(std::string_view a, std::string_view b);

/// A decimal integer with blanks around it; values beyond 64 bits saturate. Nothing for any other text.
std::optional<int64_t> readInteger(std::string_view text);

/// Whether the text is a finite real in plain decimal notation ("1.5", "-2", ".5", "1e20"), blanks around
/// allowed.
bool isPlainReal(std::string_view text);

/// The value of a plain real, 0 for any other text.
double readReal(std::string_view text);

/// 1 to 16 hexadecimal digits, blanks around allowed.
std::optional<uint64_t> readHandle(std::string_view text);

/// The handle as files write it: hexadecimal capitals.
std::string handleText(uint64_t handle);

/// The text in double quotes for a message: clipped when long, control bytes and broken UTF-8 as \xHH.
std::string inQuotes(std::string_view text);

/// Length of the well-formed UTF-8 sequence that starts at `at`, 0 when it is broken or cut.
size_t utf8Length(std::string_view text, size_t at);

} // namespace validate

#pragma once
// Encodings of the texts of a DXF file: code pages up to 2004, UTF-8 since 2007.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace validate {

struct ByteRange {
    uint8_t first = 1, last = 0; ///< empty by default
    constexpr bool has(unsigned byte) const { return byte >= first && byte <= last; }
};

/// A code page as far as it takes to tell whether bytes belong to it.
struct CodePage {
    std::string_view number;    ///< "1252"
    uint64_t undefined[2] = {}; ///< bit n: byte 0x80 + n (second word: 0xC0 + n) has no character
    ByteRange lead[3] = {};     ///< first bytes of double-byte characters
    ByteRange trail[3] = {};    ///< their second bytes
    bool any = false;           ///< all bytes are characters, or the page is not known in detail
};

/// The page for a value of $DWGCODEPAGE ("ANSI_1252", "dos932", "MAC-ROMAN"); null for a name that is none.
const CodePage* findCodePage(std::string_view name);

/// Length of the character at `at` in bytes; 0 when the page has no such character or it is cut.
size_t characterLength(const CodePage& page, std::string_view text, size_t at);

/// Whether the text has bytes beyond ASCII and all of them are well-formed UTF-8.
bool looksLikeUtf8(std::string_view text);

/// Whether any byte is a control byte, a backslash or beyond ASCII: the texts that deserve a closer look.
bool hasSpecialBytes(std::string_view text);

/// Whether a \U+XXXX or \M+nXXXX begins at the backslash at `at` and lacks digits.
bool isCutEscape(std::string_view text, size_t at);

} // namespace validate

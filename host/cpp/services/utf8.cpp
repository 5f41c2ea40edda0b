#include "services/utf8.h"

#include <cstdint>
#include <cstring>

namespace host {

/// Bytes of a sequence by its first byte; 0 for a byte that can't be first.
static std::size_t sequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xc2 && first <= 0xdf) return 2;
    if (first >= 0xe0 && first <= 0xef) return 3;
    return first >= 0xf0 && first <= 0xf4 ? 4 : 0;
}

static bool isScalar(char32_t character) {
    return character <= 0x10ffff && (character < 0xd800 || character > 0xdfff);
}

char32_t decodeUtf8(std::string_view text, std::size_t& pos, bool& wellFormed) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[pos + i]); };
    constexpr char32_t smallest[5] = {0, 0, 0x80, 0x800, 0x10000};
    const std::size_t length = sequenceLength(byteAt(0));
    wellFormed = length > 0 && length <= text.size() - pos;
    char32_t character = 0;
    if (wellFormed) {
        character = length == 1 ? byteAt(0) : byteAt(0) & (0x7fU >> length);
        for (std::size_t i = 1; i < length; ++i) {
            if ((byteAt(i) & 0xc0) != 0x80) wellFormed = false;
            character = (character << 6) | (byteAt(i) & 0x3fU);
        }
        if (character < smallest[length] || !isScalar(character)) wellFormed = false;
    }
    pos += wellFormed ? length : 1;
    return wellFormed ? character : replacementCharacter;
}

void appendUtf8(std::string& text, char32_t c) {
    if (!isScalar(c)) c = replacementCharacter;
    const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xc0 | (c >> 6));
        put(0x80 | (c & 0x3f));
    } else if (c < 0x10000) {
        put(0xe0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3f));
        put(0x80 | (c & 0x3f));
    } else {
        put(0xf0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3f));
        put(0x80 | ((c >> 6) & 0x3f));
        put(0x80 | (c & 0x3f));
    }
}

std::size_t asciiLength(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t i = 0;
    for (; i + sizeof highBits <= text.size(); i += sizeof highBits) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        if (word & highBits) break;
    }
    while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80) ++i;
    return i;
}

} // namespace host

// Walking through UTF-8 where malformed bytes don't matter.
#pragma once

#include "services/utf8.h"

namespace host {

/// The character at `pos`, which moves behind it; malformed input gives the replacement character.
inline char32_t nextChar(std::string_view text, std::size_t& pos) {
    const auto byte = static_cast<unsigned char>(text[pos]);
    if (byte < 0x80) return ++pos, byte;
    bool wellFormed = false;
    return decodeUtf8(text, pos, wellFormed);
}

} // namespace host

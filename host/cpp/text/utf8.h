// Walking through UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// The character at `pos`, which moves behind it; a byte that begins no well-formed character counts as
/// U+FFFD.
inline char32_t nextChar(std::string_view text, std::size_t& pos) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(pos++);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - pos < static_cast<std::size_t>(more)) return 0xFFFD;
    char32_t c = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        const unsigned char next = byte(pos + i);
        if ((next & 0xC0) != 0x80) return 0xFFFD;
        c = c << 6 | (next & 0x3F);
    }
    pos += more;
    return c;
}

} // namespace host

#include "dx_encoding.h"

#include "os.h"
#include "session_state.h"

#include <cstdint>

namespace {

/// Length of the character that begins with `lead`, 0 for a byte that begins none.
int utf8Length(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC2) return 0;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    return lead < 0xF5 ? 4 : 0;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// The character of `length` bytes at `at`; all bytes are there.
std::uint32_t decode(const char* at, int length) {
    const auto lead = static_cast<unsigned char>(*at);
    std::uint32_t c = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i) c = c << 6 | (static_cast<unsigned char>(at[i]) & 0x3FU);
    return c;
}

bool isScalar(std::uint32_t c, int length) {
    if (length == 3) return c >= 0x800 && (c < 0xD800 || c > 0xDFFF);
    if (length == 4) return c >= 0x10000 && c <= 0x10FFFF;
    return true;
}

void appendUtf8(std::string& text, std::uint32_t c) {
    const auto tail = [&](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += {static_cast<char>(0xC0 | c >> 6), tail(0)};
    } else if (c < 0x10000) {
        text += {static_cast<char>(0xE0 | c >> 12), tail(6), tail(0)};
    } else {
        text += {static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0)};
    }
}

void appendEscape(std::string& text, std::uint32_t unit) {
    constexpr char HEX[] = "0123456789ABCDEF";
    text += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) text += HEX[unit >> shift & 0xF];
}

/// One UTF-16 unit of an escape "\U+XXXX" at the start of `text`; -1 when there is none.
int escapedUnit(std::string_view text) {
    if (text.size() < 7 || text[0] != '\\' || (text[1] | 0x20) != 'u' || text[2] != '+') return -1;
    int unit = 0;
    for (std::size_t i = 3; i < 7; ++i) {
        const char c = text[i];
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9')
            unit = unit << 4 | (c - '0');
        else if (lower >= 'a' && lower <= 'f')
            unit = unit << 4 | (lower - 'a' + 10);
        else
            return -1;
    }
    return unit;
}

bool isHighSurrogate(int unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(int unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// The text with its escapes resolved. Half a surrogate pair stands for no character and stays an escape.
std::string resolveEscapes(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        int unit = escapedUnit(text);
        std::size_t used = 7;
        if (isHighSurrogate(unit)) {
            const int low = escapedUnit(text.substr(7));
            if (isLowSurrogate(low)) {
                unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
                used = 14;
            }
        }
        if (unit <= 0 || (used == 7 && unit >= 0xD800 && unit < 0xE000)) {
            out += text[0];
            used = 1;
        } else {
            appendUtf8(out, static_cast<std::uint32_t>(unit));
        }
        text.remove_prefix(used);
    }
    return out;
}

} // namespace

int DxFileHostCodePage() {
    if (DxIsExport) return UT_CP_UTF8; // records hold the host's names; the writer converts
    return OsUserCodePageIdToTorvaCodePage(DxCodePage);
}

UtCString DxHostText(std::string_view bytes) {
    UtCString text(bytes, DxFileHostCodePage());
    if (text.str().find("\\U+") == std::string::npos && text.str().find("\\u+") == std::string::npos)
        return text;
    return resolveEscapes(text.str());
}

bool DxIsUtf8(std::string_view bytes) {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end) {
        const int length = utf8Length(static_cast<unsigned char>(*at));
        if (!length || end - at < length) return false;
        for (int i = 1; i < length; ++i)
            if (!isContinuation(at[i])) return false;
        if (!isScalar(decode(at, length), length)) return false;
        at += length;
    }
    return true;
}

std::string_view DxWithoutCutUtf8(std::string_view bytes) {
    std::size_t lead = bytes.size();
    for (int i = 0; i < 4 && lead > 0; ++i) {
        if (isContinuation(bytes[--lead])) continue;
        const auto length = static_cast<std::size_t>(utf8Length(static_cast<unsigned char>(bytes[lead])));
        return lead + length > bytes.size() ? bytes.substr(0, lead) : bytes;
    }
    return bytes;
}

std::string DxUtf8ToFile(std::string_view utf8) {
    const int codePage = DxFileHostCodePage();
    if (codePage == UT_CP_UTF8) return std::string(utf8);
    std::string out;
    out.reserve(utf8.size());
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    while (at != end) {
        const int length = utf8Length(static_cast<unsigned char>(*at));
        if (length == 0 || end - at < length) { // no caller should bring these, but none may hang on them
            out += '?';
            ++at;
            continue;
        }
        const std::uint32_t c = decode(at, length);
        at += length;
        unsigned char byte = 0;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (UtCUtf_Unicode2Ansi(c, codePage, byte)) {
            out += static_cast<char>(byte);
        } else if (c < 0x10000) {
            appendEscape(out, c);
        } else {
            appendEscape(out, 0xD800 + ((c - 0x10000) >> 10));
            appendEscape(out, 0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return out;
}

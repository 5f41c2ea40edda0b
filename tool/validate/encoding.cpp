#include "encoding.h"

#include "text.h"

#include <cstring>

namespace validate {

namespace {

constexpr CodePage kPages[] = {
    {"874", {0xff01ffde, 0xf000000078000000}},
    {"1250", {0x101010a, 0}},
    {"1251", {0x1000000, 0}},
    {"1252", {0x2001a002, 0}},
    {"1253", {0x400f501f502, 0x8000000000040000}},
    {"1254", {0x6001e002, 0}},
    {"1255", {0xf401f402, 0x98000000fe000400}},
    {"1256"},
    {"1257", {0x229501150a, 0}},
    {"1258", {0x6401e402, 0}},
    {"932", {}, {{0x81, 0x9F}, {0xE0, 0xFC}}, {{0x40, 0x7E}, {0x80, 0xFC}}},
    {"936", {}, {{0x81, 0xFE}}, {{0x40, 0x7E}, {0x80, 0xFE}}},
    {"949", {}, {{0x81, 0xFE}}, {{0x41, 0x5A}, {0x61, 0x7A}, {0x81, 0xFE}}},
    {"950", {}, {{0x81, 0xFE}}, {{0x40, 0x7E}, {0xA1, 0xFE}}},
    {"1361", {}, {{0x84, 0xD3}, {0xD8, 0xDE}, {0xE0, 0xF9}}, {{0x31, 0x7E}, {0x81, 0xFE}}},
};

/// Pages in which each byte is a character, or whose bytes nobody promises.
constexpr std::string_view kOpenPages[] = {
    "437",       "850",       "852",       "855",       "857",       "860",       "861",       "863",
    "864",       "865",       "866",       "869",       "ISO8859-1", "ISO8859-2", "ISO8859-3", "ISO8859-4",
    "ISO8859-5", "ISO8859-6", "ISO8859-7", "ISO8859-8", "ISO8859-9", "MAC-ROMAN", "MACINTOSH", "ASCII",
    "US_ASCII",  "UNDEFINED", "JOHAB",     "KSC5601",   "GB2312",    "BIG5"};

constexpr CodePage kOpenPage{"", {}, {}, {}, true};

bool isHex(std::string_view text, size_t at, size_t count) {
    if (at + count > text.size()) return false;
    for (size_t i = at; i < at + count; ++i)
        if (!readHandle(text.substr(i, 1))) return false;
    return true;
}

} // namespace

const CodePage* findCodePage(std::string_view name) {
    std::string upper = upperCase(trimmed(name));
    for (std::string_view prefix : {"ANSI_", "DOS", "CP"})
        if (upper.rfind(prefix, 0) == 0) {
            upper.erase(0, prefix.size());
            break;
        }
    for (const CodePage& page : kPages)
        if (page.number == upper) return &page;
    for (std::string_view open : kOpenPages)
        if (open == upper) return &kOpenPage;
    return nullptr;
}

size_t characterLength(const CodePage& page, std::string_view text, size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80 || page.any) return 1;
    for (const ByteRange& lead : page.lead) {
        if (!lead.has(byte)) continue;
        if (at + 1 >= text.size()) return 0;
        for (const ByteRange& trail : page.trail)
            if (trail.has(static_cast<unsigned char>(text[at + 1]))) return 2;
        return 0;
    }
    return page.undefined[byte >= 0xC0] >> (byte & 0x3F) & 1 ? 0 : 1;
}

bool looksLikeUtf8(std::string_view text) {
    bool beyondAscii = false;
    for (size_t at = 0; at < text.size();) {
        const size_t length = utf8Length(text, at);
        if (length == 0) return false;
        beyondAscii = beyondAscii || length > 1;
        at += length;
    }
    return beyondAscii;
}

bool hasSpecialBytes(std::string_view text) {
    constexpr uint64_t ones = 0x0101010101010101, highs = 0x8080808080808080;
    const char* p = text.data();
    size_t left = text.size();
    for (; left >= 8; p += 8, left -= 8) {
        uint64_t word = 0;
        std::memcpy(&word, p, 8);
        const uint64_t slash = word ^ (ones * '\\');
        if ((word | (word - ones * 0x20) | ((slash - ones) & ~slash)) & highs) return true;
    }
    for (; left; ++p, --left)
        if (static_cast<unsigned char>(*p) < 0x20 || static_cast<unsigned char>(*p) >= 0x80 || *p == '\\')
            return true;
    return false;
}

bool isCutEscape(std::string_view text, size_t at) {
    const std::string_view start = text.substr(at, 3);
    if (start == "\\U+") return !isHex(text, at + 3, 4);
    if (start == "\\M+") return !(at + 3 < text.size() && isDigit(text[at + 3]) && isHex(text, at + 4, 4));
    return false;
}

} // namespace validate

#include "services/code_page.h"

#include "os.h"
#include "services/utf8.h"
#include "ut_string.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <iconv.h>
#include <map>
#include <memory>
#include <unordered_map>

namespace host {
namespace {

struct PageName {
    int number;
    const char* name; ///< for the converter of the C library
    bool doubleByte = false;
};

constexpr PageName pageNames[] = {
    {437, "CP437"},          {737, "CP737"},          {775, "CP775"},          {850, "CP850"},
    {852, "CP852"},          {855, "CP855"},          {857, "CP857"},          {858, "CP858"},
    {860, "CP860"},          {861, "CP861"},          {862, "CP862"},          {863, "CP863"},
    {864, "CP864"},          {865, "CP865"},          {866, "CP866"},          {869, "CP869"},
    {874, "CP874"},          {932, "CP932", true},    {936, "CP936", true},    {949, "CP949", true},
    {950, "CP950", true},    {1250, "CP1250"},        {1251, "CP1251"},        {1252, "CP1252"},
    {1253, "CP1253"},        {1254, "CP1254"},        {1255, "CP1255"},        {1256, "CP1256"},
    {1257, "CP1257"},        {1258, "CP1258"},        {1361, "JOHAB", true},   {10000, "MACINTOSH"},
    {20866, "KOI8-R"},       {21866, "KOI8-U"},       {28591, "ISO-8859-1"},   {28592, "ISO-8859-2"},
    {28593, "ISO-8859-3"},   {28594, "ISO-8859-4"},   {28595, "ISO-8859-5"},   {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},   {28598, "ISO-8859-8"},   {28599, "ISO-8859-9"},   {28600, "ISO-8859-10"},
    {28601, "ISO-8859-11"},  {28603, "ISO-8859-13"},  {28604, "ISO-8859-14"},  {28605, "ISO-8859-15"},
    {51932, "EUC-JP", true}, {51949, "EUC-KR", true}, {54936, "GB18030", true}};

/// A converter of the C library, closed with its owner.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(::iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) ::iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Converts as much as it can to the end of `out`; `in` keeps the rest. 0, or EILSEQ or EINVAL for what
    /// stands at its head.
    int convert(std::string_view& in, std::string& out) {
        ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        int error = 0;
        do {
            error = step(in, out);
        } while (error == E2BIG);
        return error;
    }

private:
    int step(std::string_view& in, std::string& out) {
        std::array<char, 512> buffer;
        char* source = const_cast<char*>(in.data()); // iconv only reads it
        std::size_t left = in.size();
        char* target = buffer.data();
        std::size_t room = buffer.size();
        int error =
            ::iconv(handle_, &source, &left, &target, &room) == static_cast<std::size_t>(-1) ? errno : 0;
        if (error == 0) ::iconv(handle_, nullptr, nullptr, &target, &room); // what waits for a combining mark
        out.append(buffer.data(), buffer.size() - room);
        in.remove_prefix(in.size() - left);
        return error;
    }

    iconv_t handle_;
};

/// A byte that has no meaning in its code page stands for itself: as the control character of its number
/// where there is one, else in the private area, where no page has a character of its own.
constexpr char32_t strayBase = 0xF800;
char32_t strayCharacter(unsigned char byte) {
    return byte < 0xA0 ? byte : strayBase + byte;
}

/// The byte that a character stands for which no page has, 0 for any other.
unsigned char strayByte(char32_t character) {
    if (character >= 0x80 && character < 0xA0) return static_cast<unsigned char>(character);
    const bool isStray = character >= strayBase + 0xA0 && character <= strayBase + 0xFF;
    return isStray ? static_cast<unsigned char>(character - strayBase) : 0;
}

/// What is worked out once for a code page. Single-byte pages are tables; others keep their converters.
struct CodePage {
    explicit CodePage(const PageName& page) : toUtf8("UTF-8", page.name), fromUtf8(page.name, "UTF-8") {
        if (page.doubleByte) return;
        for (unsigned byte = 0; byte < 256; ++byte) addByte(static_cast<unsigned char>(byte));
    }

    void addByte(unsigned char byte) {
        const char source = static_cast<char>(byte);
        std::string_view in(&source, 1);
        std::string out;
        char32_t character = strayCharacter(byte);
        if (toUtf8.isOpen() && toUtf8.convert(in, out) == 0 && !out.empty()) {
            std::size_t pos = 0;
            bool wellFormed = false;
            character = decodeUtf8(out, pos, wellFormed);
        } else if (byte < 0x80) {
            character = byte;
        }
        characters[byte] = character;
        bytes.emplace(character, byte);
    }

    Converter toUtf8, fromUtf8;
    std::array<char32_t, 256> characters{};
    std::unordered_map<char32_t, unsigned char> bytes;
};

std::map<int, std::unique_ptr<CodePage>> pagesInUse; // NOLINT: constant once made, made on demand

const PageName& pageName(int codePage) {
    const auto named = [&](const PageName& page) { return page.number == codePage; };
    const auto* found = std::find_if(std::begin(pageNames), std::end(pageNames), named);
    return found == std::end(pageNames) ? pageName(1252) : *found;
}

CodePage& findPage(const PageName& page) {
    std::unique_ptr<CodePage>& made = pagesInUse[page.number];
    if (!made) made = std::make_unique<CodePage>(page);
    return *made;
}

std::string repairUtf8(std::string_view text) {
    std::string result;
    for (std::size_t pos = 0; pos < text.size();) {
        bool wellFormed = false;
        appendUtf8(result, decodeUtf8(text, pos, wellFormed));
    }
    return result;
}

std::string decodeUtf16(std::string_view bytes) {
    const auto unitAt = [&](std::size_t i) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(low | (high << 8));
    };
    std::string result;
    std::size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        char32_t unit = unitAt(i);
        const bool leads = unit >= 0xd800 && unit < 0xdc00 && i + 3 < bytes.size();
        const char32_t next = leads ? unitAt(i + 2) : 0;
        if (next >= 0xdc00 && next < 0xe000) {
            unit = 0x10000 + ((unit - 0xd800) << 10) + (next - 0xdc00);
            i += 2;
        }
        appendUtf8(result, unit); // a lone surrogate is replaced there
    }
    if (i < bytes.size()) appendUtf8(result, replacementCharacter);
    return result;
}

std::string decodeDoubleByte(std::string_view bytes, CodePage& page) {
    std::string result;
    while (!bytes.empty() && (!page.toUtf8.isOpen() || page.toUtf8.convert(bytes, result) != 0)) {
        if (bytes.empty()) break;
        appendUtf8(result, strayCharacter(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(1);
    }
    return result;
}

void appendUnit(std::string& result, char32_t unit) {
    result += static_cast<char>(unit & 0xff);
    result += static_cast<char>((unit >> 8) & 0xff);
}

template <typename Put>
void forEachUtf16Unit(char32_t character, const Put& put) {
    if (character < 0x10000) {
        put(character);
        return;
    }
    put(0xd800 + ((character - 0x10000) >> 10));
    put(0xdc00 + ((character - 0x10000) & 0x3ff));
}

void appendEscape(std::string& result, char32_t character) {
    forEachUtf16Unit(character, [&](char32_t unit) {
        char buffer[16];
        const int length = std::snprintf(buffer, sizeof buffer, "\\U+%04X", static_cast<unsigned>(unit));
        result.append(buffer, static_cast<std::size_t>(length));
    });
}

std::string encodeUtf16(std::string_view text) {
    std::string result;
    for (std::size_t pos = 0; pos < text.size();) {
        bool wellFormed = false;
        forEachUtf16Unit(decodeUtf8(text, pos, wellFormed), [&](char32_t unit) { appendUnit(result, unit); });
    }
    return result;
}

std::string encodeSingleByte(std::string_view text, const CodePage& page) {
    std::string result;
    for (std::size_t pos = 0; pos < text.size();) {
        bool wellFormed = false;
        const char32_t character = decodeUtf8(text, pos, wellFormed);
        const auto found = page.bytes.find(character);
        if (found != page.bytes.end())
            result += static_cast<char>(found->second);
        else
            appendEscape(result, character);
    }
    return result;
}

std::string encodeDoubleByte(std::string_view text, CodePage& page) {
    std::string result;
    while (!text.empty() && (!page.fromUtf8.isOpen() || page.fromUtf8.convert(text, result) != 0)) {
        if (text.empty()) break;
        std::size_t pos = 0;
        bool wellFormed = false;
        const char32_t character = decodeUtf8(text, pos, wellFormed);
        if (const unsigned char byte = strayByte(character))
            result += static_cast<char>(byte);
        else
            appendEscape(result, character);
        text.remove_prefix(pos);
    }
    return result;
}

} // namespace

bool isCodePageKnown(int codePage) {
    return codePage == UT_CP_UTF8 || codePage == UT_CP_UTF16 || pageName(codePage).number == codePage;
}

bool isDoubleByte(int codePage) {
    return pageName(codePage).doubleByte;
}

std::string decodeBytes(std::string_view bytes, int codePage) {
    if (codePage == UT_CP_UTF16) return decodeUtf16(bytes);
    const std::size_t plain = asciiLength(bytes);
    std::string result(bytes.substr(0, plain));
    if (plain == bytes.size()) return result;
    const std::string_view rest = bytes.substr(plain);
    if (codePage == UT_CP_UTF8) return result + repairUtf8(rest);
    const PageName& name = pageName(codePage);
    CodePage& page = findPage(name);
    if (name.doubleByte) return result + decodeDoubleByte(rest, page);
    for (const char c : rest) appendUtf8(result, page.characters[static_cast<unsigned char>(c)]);
    return result;
}

std::string encodeText(std::string_view text, int codePage) {
    if (codePage == UT_CP_UTF16) return encodeUtf16(text);
    const std::size_t plain = asciiLength(text);
    if (codePage == UT_CP_UTF8 || plain == text.size()) return std::string(text);
    const PageName& name = pageName(codePage);
    CodePage& page = findPage(name);
    const std::string_view rest = text.substr(plain);
    return std::string(text.substr(0, plain)) +
           (name.doubleByte ? encodeDoubleByte(rest, page) : encodeSingleByte(rest, page));
}

bool encodeCharacter(char32_t character, int codePage, unsigned char& byte) {
    const PageName& name = pageName(codePage);
    if (character < 0x80 || name.doubleByte || codePage == UT_CP_UTF8 || codePage == UT_CP_UTF16) {
        if (character < 0x80) byte = static_cast<unsigned char>(character);
        return character < 0x80;
    }
    const CodePage& page = findPage(name);
    const auto found = page.bytes.find(character);
    if (found == page.bytes.end()) return false;
    byte = found->second;
    return true;
}

} // namespace host

int OsUserCodePageIdToTorvaCodePage(int codePage) {
    return host::isCodePageKnown(codePage) ? codePage : 1252;
}

bool OsIsLeadByte(unsigned char byte, int codePage) {
    switch (codePage) {
    case 932: return (byte >= 0x81 && byte <= 0x9f) || (byte >= 0xe0 && byte <= 0xfc);
    case 936:
    case 949:
    case 950: return byte >= 0x81 && byte <= 0xfe;
    default: return false;
    }
}

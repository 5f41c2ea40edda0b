// Marks of the code page, and texts that are in another encoding than the version's.

#include "encoding.h"
#include "mends.h"
#include "tags.h"
#include "text.h"

#include <array>
#include <iconv.h>

namespace repair {

namespace {

bool isText(const Pair& pair) {
    return pair.code >= 0 && pair.code <= validate::kLastCode && pair.code != 999 &&
           validate::valueType(pair.code) == validate::ValueType::String;
}

bool isAscii(std::string_view text) {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

bool isUtf8(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const size_t length = validate::utf8Length(text, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

/// The Unicode value of the sequence at `at`, `length` bytes long.
uint32_t codePoint(std::string_view text, size_t at, size_t length) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
    uint32_t value = length == 1 ? byte(0) : byte(0) & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) value = value << 6 | (byte(i) & 0x3FU);
    return value;
}

void appendEscape(std::string& text, uint32_t unit) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) text += digits[unit >> shift & 15];
}

/// UTF-8 as a file up to 2004 says it: characters beyond ASCII as \U+XXXX.
std::string withEscapes(std::string_view text) {
    std::string result;
    for (size_t at = 0; at < text.size();) {
        const size_t length = validate::utf8Length(text, at);
        const uint32_t value = codePoint(text, at, length);
        at += length;
        if (value < 0x80) {
            result += static_cast<char>(value);
        } else if (value < 0x10000) {
            appendEscape(result, value);
        } else {
            appendEscape(result, 0xD800 + ((value - 0x10000) >> 10));
            appendEscape(result, 0xDC00 + ((value - 0x10000) & 0x3FF));
        }
    }
    return result;
}

/// From a code page to UTF-8. Bytes that the page lacks become question marks.
class Converter {
public:
    explicit Converter(const std::string& page) : handle_(iconv_open("UTF-8", page.c_str())) {}
    ~Converter() {
        if (isOpen()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    std::string convert(std::string_view text) const {
        std::string source(text), result;
        char* in = source.data();
        size_t left = source.size();
        while (left > 0) {
            std::array<char, 256> buffer{};
            char* out = buffer.data();
            size_t room = buffer.size();
            const bool failed = iconv(handle_, &in, &left, &out, &room) == static_cast<size_t>(-1);
            result.append(buffer.data(), buffer.size() - room);
            if (!failed || room < 8) continue; // done, or out of room
            result += '?';
            ++in;
            --left;
        }
        return result;
    }

private:
    iconv_t handle_;
};

/// The converter's name for a value of $DWGCODEPAGE, "CP1252" when it says nothing useful.
std::string pageName(std::string_view value) {
    std::string name;
    for (char c : value)
        if (validate::isDigit(c)) name += c;
    const bool known = validate::findCodePage(value) != nullptr && name.size() >= 3 && name.size() <= 4;
    return known ? "CP" + name : "CP1252";
}

class TextMend {
public:
    TextMend(Document& document, Log& log) : document_(document), log_(log) {}

    void run() {
        mendPage();
        const Variable* page = document_.variable("$DWGCODEPAGE");
        if (document_.atLeast(Version::R2007)) {
            const Converter converter(pageName(page && !page->values.empty() ? page->values[0].value : ""));
            if (converter.isOpen()) mendBroken(converter);
        } else if (isAllUtf8()) {
            escape();
        }
    }

private:
    template <typename Use>
    void forEachText(const Use& use) {
        const auto pairs = [&](std::vector<Pair>& list, std::string_view kind, Section section) {
            for (Pair& pair : list)
                if (isText(pair) && !isAscii(pair.value)) use(pair, kind, section);
        };
        for (Variable& variable : document_.header)
            pairs(variable.values, variable.name.value, Section::Header);
        document_.forEachRecord(
            [&](Record& record, Section section) { pairs(record.pairs, record.kind(), section); });
        for (Record& record : document_.classes) pairs(record.pairs, record.kind(), Section::Classes);
    }

    void mendPage() {
        Variable* page = document_.variable("$DWGCODEPAGE");
        if (!page || page->values.empty() || document_.atLeast(Version::R2007)) return;
        if (validate::findCodePage(page->values[0].value)) return;
        log_.addAt(Rule::UnknownCodePage, page->name.line, Section::Header, "the code page ",
                   inQuotes(page->values[0].value), " becomes ANSI_1252");
        page->values[0].value = "ANSI_1252";
    }

    void mendBroken(const Converter& converter) {
        forEachText([&](Pair& pair, std::string_view kind, Section section) {
            if (isUtf8(pair.value)) return;
            pair.value = document_.keep(converter.convert(pair.value));
            log_.findings().add(Rule::BadUtf8, {pair.line, 0, kind, section}, "group ", pair.code,
                                " was in a code page, it becomes ", inQuotes(pair.value));
        });
    }

    /// One text may look like UTF-8 by chance; all of a file hardly do.
    bool isAllUtf8() {
        size_t count = 0, sound = 0;
        forEachText([&](const Pair& pair, std::string_view, Section) {
            ++count;
            sound += isUtf8(pair.value) ? 1 : 0;
        });
        return count > 0 && sound == count;
    }

    void escape() {
        forEachText([&](Pair& pair, std::string_view kind, Section section) {
            pair.value = document_.keep(withEscapes(pair.value));
            log_.findings().add(Rule::Utf8InCodePage, {pair.line, 0, kind, section}, "group ", pair.code,
                                " was UTF-8, it becomes ", inQuotes(pair.value));
        });
    }

    Document& document_;
    Log& log_;
};

} // namespace

void mendText(Document& document, Log& log) {
    TextMend(document, log).run();
}

} // namespace repair

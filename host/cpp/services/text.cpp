// UtCString and the text services around it.
#include "ut_string.h"

#include "services/code_page.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

static bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

static std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

UtCString::UtCString(std::string_view bytes, int codePage) : text_(host::decodeBytes(bytes, codePage)) {}

bool UtCString::IsNumber() const {
    std::string_view digits = withoutBlanks(text_);
    if (!digits.empty() && (digits.front() == '+' || digits.front() == '-')) digits.remove_prefix(1);
    return !digits.empty() &&
           std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string UtCString::Ansi(int codePage) const {
    return host::encodeText(text_, codePage);
}

UtCString UtCString::Lower() const {
    std::string text = text_;
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

UtCString UtCString::Upper() const {
    std::string text = text_;
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

bool UtCStringList::AddUnique(const UtCString& text) {
    if (!seen_.insert(text.str()).second) return false;
    texts_.push_back(text);
    return true;
}

void UtCStringList::Empty() {
    texts_.clear();
    seen_.clear();
}

// ---- formatting ------------------------------------------------------------------------------------

__attribute__((format(printf, 1, 0))) static UtCString formatList(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    char buffer[256];
    const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    std::string text;
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof buffer) {
        text.assign(buffer, static_cast<std::size_t>(length));
    } else if (length >= 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

UtCString UtFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    UtCString text = formatList(format, arguments);
    va_end(arguments);
    return text;
}

/// The kinds of arguments that a format takes, in order: length modifier and conversion, "*" for a width.
static std::string conversions(const char* format) {
    std::string kinds;
    while ((format = std::strchr(format, '%'))) {
        ++format;
        if (*format == '%') {
            ++format;
            continue;
        }
        for (; *format && std::strchr("-+ #0123456789.*$", *format); ++format)
            if (*format == '*' || *format == '$') kinds += *format;
        while (*format && std::strchr("hlLqjzt", *format)) kinds += *format++;
        if (!*format) return kinds + '?';
        kinds += *format == 'i' ? 'd' : *format;
        kinds += ';';
        ++format;
    }
    return kinds;
}

UtCString UtFormatMsg(const UtCString& format, const char* original, ...) {
    const bool fits = conversions(format.c_str()) == conversions(original);
    va_list arguments;
    va_start(arguments, original);
    UtCString text = formatList(fits ? format.c_str() : original, arguments);
    va_end(arguments);
    return text;
}

// ---- cutting ---------------------------------------------------------------------------------------

void UtRtrim(std::string& text) {
    while (!text.empty() && isBlank(text.back())) text.pop_back();
}

void UtLtrim(std::string& text) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isBlank));
}

void UtTrim(std::string& text) {
    UtRtrim(text);
    UtLtrim(text);
}

void UtRtrim(char* text) {
    std::size_t length = std::strlen(text);
    while (length > 0 && isBlank(text[length - 1])) --length;
    text[length] = '\0';
}

void UtLtrim(char* text) {
    const char* begin = text;
    while (isBlank(*begin)) ++begin;
    std::memmove(text, begin, std::strlen(begin) + 1);
}

void UtTrim(char* text) {
    UtRtrim(text);
    UtLtrim(text);
}

int UtPos(std::string_view text, std::string_view part) {
    const std::size_t at = text.find(part);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

void UtGetNextPart(std::string& line, char delimiter, std::string& firstPart) {
    const std::size_t at = line.find(delimiter);
    firstPart = line.substr(0, at);
    if (at == std::string::npos)
        line.clear();
    else
        line.erase(0, at + 1);
}

bool UtCUtf_Unicode2Ansi(unsigned unicode, int codePage, unsigned char& byte) {
    return host::encodeCharacter(unicode, codePage, byte);
}

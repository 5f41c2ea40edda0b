#include "dx_scan.h"

#include "../session/dx_reader.h"

#include <algorithm>

bool DxIsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

static void skipBlanks(std::string_view& text) {
    const auto first = std::find_if_not(text.begin(), text.end(), DxIsBlank);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
}

std::string_view DxTakeWord(std::string_view& text) {
    skipBlanks(text);
    const auto end = std::find_if(text.begin(), text.end(), DxIsBlank);
    const std::string_view word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

std::string_view DxTrimmed(std::string_view text) {
    skipBlanks(text);
    while (!text.empty() && DxIsBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// Cuts the longest number off the front of `text`; empty when there is none.
static std::string_view takeNumber(std::string_view& text, bool isReal) {
    skipBlanks(text);
    std::size_t length = 0;
    bool hasDigit = false;
    const auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    const auto takeDigits = [&] {
        while (isDigit(length)) {
            ++length;
            hasDigit = true;
        }
    };
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) length = 1;
    takeDigits();
    if (isReal && length < text.size() && text[length] == '.') {
        ++length;
        takeDigits();
    }
    if (!hasDigit) return {};
    if (isReal && length < text.size() && (text[length] == 'e' || text[length] == 'E')) {
        const bool isSigned =
            length + 1 < text.size() && (text[length + 1] == '+' || text[length + 1] == '-');
        const std::size_t exponent = length + (isSigned ? 2 : 1);
        if (isDigit(exponent)) {
            length = exponent;
            takeDigits();
        }
    }
    const std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    return number;
}

/// One conversion; false when the text has nothing for it.
static bool convert(char kind, std::string_view& text, DxScanned& out) {
    if (kind == 's') {
        const std::string_view word = DxTakeWord(text);
        if (word.empty() || out.wordCount == 2) return false;
        out.words[out.wordCount++] = word;
        return true;
    }
    const std::string_view number = takeNumber(text, kind == 'l');
    if (number.empty()) return false;
    if (kind == 'l') {
        out.real = DxAtof(number);
    } else {
        out.numbers[out.numberCount++] = DxAtoi(number);
    }
    return true;
}

DxScanned DxScanLine(std::string_view line, std::string_view format) {
    DxScanned out;
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char c = format[i];
        if (c == '%') {
            const char kind = format[++i];
            if (kind == 'l') ++i; // "%lf"
            if (!convert(kind, line, out)) break;
            ++out.count;
        } else if (DxIsBlank(c)) {
            skipBlanks(line);
        } else {
            if (line.empty() || line[0] != c) break;
            line.remove_prefix(1);
        }
    }
    return out;
}

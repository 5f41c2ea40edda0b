#include "acis_source.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace ACIS {
namespace {

constexpr std::array<char, 256> breaks = [] {
    std::array<char, 256> table{};
    for (int c = 0; c < 33; ++c) table[c] = 1;
    table[127] = 1;
    table['{'] = table['}'] = table['#'] = 2;
    return table;
}();

char breakOf(char c) {
    return breaks[static_cast<unsigned char>(c)];
}

bool looksWhole(std::string_view text) {
    for (std::size_t i = text[0] == '-' || text[0] == '+' ? 1 : 0; i < text.size(); ++i)
        if (text[i] < '0' || text[i] > '9') return false;
    return text.size() <= 18;
}

/// An exponent that makes a number vanish makes it 0; one that makes it endless makes it none.
bool scanReal(std::string_view text, double& value) {
    if (text[0] == '+') text.remove_prefix(1);
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ptr != text.data() + text.size()) return false;
    if (result.ec == std::errc()) return value - value == 0;
    const std::size_t exponent = text.find_first_of("eE");
    value = 0;
    return exponent != std::string_view::npos && text.substr(exponent + 1, 1) == "-";
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool startsNumber(char c) {
    return isDigit(c) || c == '-' || c == '+' || c == '.';
}

/// What isn't a number, but what is left when one is cut.
bool isOfNumbers(std::string_view text) {
    return text.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
}

} // namespace

bool scanNumber(std::string_view text, Token& token) {
    if (text.empty() || !startsNumber(text[0])) return false;
    if (looksWhole(text)) {
        const std::string_view digits = text[0] == '+' ? text.substr(1) : text;
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), token.integer);
        if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) return false;
        token.kind = TokenKind::Integer;
        token.reals[0] = static_cast<double>(token.integer);
        return true;
    }
    token.kind = TokenKind::Real;
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos) return scanReal(text, token.reals[0]);
    if (text.size() > 64) return false;
    std::string point(text);
    point[comma] = '.';
    return scanReal(point, token.reals[0]);
}

bool isBareWord(std::string_view text) {
    if (text.empty() || std::any_of(text.begin(), text.end(), [](char c) { return breakOf(c) != 0; }))
        return false;
    const auto startsDigit = [&](std::size_t at) { return at < text.size() && isDigit(text[at]); };
    Token token;
    if (startsNumber(text[0])) return !scanNumber(text, token) && !isOfNumbers(text);
    return text[0] != '$' && !(text[0] == '@' && startsDigit(1));
}

bool isName(std::string_view text) {
    return text.size() < 256 && isBareWord(text);
}

bool isBinaryBanner(std::string_view data) {
    const std::string_view banner = data.substr(0, BANNER);
    return banner == "ACIS BinaryFile" || banner == "ASM BinaryFile4";
}

bool Source::counted(std::int64_t count, std::string_view& text) {
    if (count < 0 || static_cast<std::uint64_t>(count) + 1 > left()) return false;
    text = data_.substr(at_ + 1, static_cast<std::size_t>(count));
    at_ += static_cast<std::size_t>(count) + 1;
    return true;
}

/// Behind "@": length, one blank, the bytes.
void TextSource::string(Token& token) {
    token.kind = TokenKind::Bad;
    std::uint32_t count = 0;
    const char* first = data_.data() + at_;
    const auto result = std::from_chars(first, data_.data() + data_.size(), count);
    if (result.ec != std::errc()) return;
    at_ += static_cast<std::size_t>(result.ptr - first);
    if (counted(count, token.text)) token.kind = TokenKind::String;
}

void TextSource::next(Token& token) {
    const std::size_t size = data_.size();
    while (at_ < size && breakOf(data_[at_]) == 1) ++at_;
    if (at_ == size) {
        token.kind = TokenKind::Eof;
        return;
    }
    const char c = data_[at_];
    if (breakOf(c) == 2) {
        ++at_;
        token.kind = c == '{' ? TokenKind::Open : c == '}' ? TokenKind::Close : TokenKind::End;
        return;
    }
    if (c == '@' && at_ + 1 < size && isDigit(data_[at_ + 1])) {
        ++at_;
        return string(token);
    }
    const std::size_t from = at_;
    while (at_ < size && !breakOf(data_[at_])) ++at_;
    token.text = data_.substr(from, at_ - from);
    if (c == '$') {
        const bool isNumber = scanNumber(token.text.substr(1), token) && token.kind == TokenKind::Integer;
        token.kind = isNumber ? TokenKind::Pointer : TokenKind::Bad;
    } else if (!startsNumber(c)) {
        token.kind = TokenKind::Word;
    } else if (!scanNumber(token.text, token)) {
        token.kind = isOfNumbers(token.text) ? TokenKind::Bad : TokenKind::Word;
    }
}

bool TextSource::counts(std::int64_t numbers[4]) {
    Token token;
    for (int i = 0; i < 4; ++i) {
        next(token);
        if (token.kind != TokenKind::Integer) return false;
        numbers[i] = token.integer;
    }
    return true;
}

} // namespace ACIS

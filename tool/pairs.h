// Group-code pairs of a DXF's text, for quick looks that make no demand on the file.
#pragma once

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace tool {

/// The pairs one by one; a code that is no number is -1.
class PairReader {
public:
    explicit PairReader(std::string_view bytes) : rest_(bytes) {}
    bool next() {
        if (rest_.empty()) return false;
        code = parseCode(takeLine());
        value = takeLine();
        return true;
    }
    int code = 0;
    std::string_view value;      ///< without line end and blanks around
    bool metEndlessLine = false; ///< one that no reader of drawings takes for a line

private:
    std::string_view takeLine() {
        const void* end = std::memchr(rest_.data(), '\n', rest_.size());
        const std::size_t length =
            end ? static_cast<std::size_t>(static_cast<const char*>(end) - rest_.data()) : rest_.size();
        constexpr std::size_t longest = 1'048'575;
        metEndlessLine = metEndlessLine || length > longest;
        const std::string_view line = rest_.substr(0, length);
        rest_.remove_prefix(std::min(rest_.size(), length + 1));
        return trim(line);
    }
    static std::string_view trim(std::string_view line) {
        const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
        while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
        while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
        return line;
    }
    static int parseCode(std::string_view line) {
        int number = -1;
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
        return error == std::errc{} && end == line.data() + line.size() ? number : -1;
    }

    std::string_view rest_;
};

inline int toInt(std::string_view text, int fallback) {
    int number = 0;
    return std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc{} ? number
                                                                                             : fallback;
}

inline double toReal(std::string_view text) {
    double number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc{} && std::fabs(number) <= 1e19 ? number : 0;
}

} // namespace tool

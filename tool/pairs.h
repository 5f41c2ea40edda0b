// Group-code pairs of a DXF's text, for quick looks that make no demand on the file.
#pragma once

#include <charconv>
#include <cmath>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tool {

/// The first line feed in [at, end), or `end`. Most lines end within the first step.
inline const char* findLineFeed(const char* at, const char* end) {
#if defined(__SSE2__)
    const __m128i lineFeed = _mm_set1_epi8('\n');
    for (; end - at >= 16; at += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        if (const int hits = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lineFeed)))
            return at + __builtin_ctz(static_cast<unsigned>(hits));
    }
#endif
    while (at != end && *at != '\n') ++at;
    return at;
}

/// The pairs one by one; a code that is no number is -1.
class PairReader {
public:
    explicit PairReader(std::string_view bytes) : at_(bytes.data()), end_(at_ + bytes.size()) {}
    bool next() {
        if (at_ == end_) return false;
        code = takeCode();
        value = takeLine();
        return true;
    }
    int code = 0;
    std::string_view value;      ///< without line end and blanks around
    bool metEndlessLine = false; ///< one that no reader of drawings takes for a line

private:
    std::string_view takeLine() {
        const char* const start = at_;
        const char* const stop = findLineFeed(start, end_);
        at_ = stop == end_ ? end_ : stop + 1;
        constexpr std::ptrdiff_t longest = 1'048'575;
        metEndlessLine = metEndlessLine || stop - start > longest;
        return trim({start, static_cast<std::size_t>(stop - start)});
    }
    /// Nearly all codes are a few digits with blanks ahead.
    int takeCode() {
        if (end_ - at_ >= 16) {
            const char* p = at_;
            while (*p == ' ' && p - at_ < 8) ++p;
            const char* const digits = p;
            int number = 0;
            for (; *p >= '0' && *p <= '9' && p - digits < 4; ++p) number = number * 10 + (*p - '0');
            const bool isNumber = p != digits;
            if (*p == '\r') ++p;
            if (isNumber && *p == '\n') {
                at_ = p + 1;
                return number;
            }
        }
        return parseCode(takeLine());
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

    const char* at_;
    const char* end_;
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

#include "floor.h"

#include <charconv>
#include <cstring>

namespace bench {

bool isRealCode(int code) {
    return (code >= 10 && code <= 59) || (code >= 110 && code <= 149) || (code >= 210 && code <= 239) ||
           (code >= 460 && code <= 469) || (code >= 1010 && code <= 1059);
}

/// Takes a line off the front; its carriage return goes too.
static std::string_view takeLine(const char*& at, const char* end) {
    const char* const start = at;
    const auto* lineEnd = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
    if (!lineEnd) lineEnd = end;
    at = lineEnd == end ? end : lineEnd + 1;
    if (lineEnd != start && lineEnd[-1] == '\r') --lineEnd;
    return {start, static_cast<std::size_t>(lineEnd - start)};
}

FloorResult runFloor(std::string_view dxf) {
    FloorResult result;
    const char* at = dxf.data();
    const char* const end = at + dxf.size();
    while (at != end) {
        std::string_view codeLine = takeLine(at, end);
        if (at == end) break;
        const std::string_view value = takeLine(at, end);
        while (!codeLine.empty() && codeLine.front() == ' ') codeLine.remove_prefix(1);
        int code = 0;
        std::from_chars(codeLine.data(), codeLine.data() + codeLine.size(), code);
        double real = 0;
        if (isRealCode(code)) std::from_chars(value.data(), value.data() + value.size(), real);
        result.sum += code + real;
        ++result.pairs;
    }
    return result;
}

} // namespace bench

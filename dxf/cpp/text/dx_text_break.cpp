#include "dx_text_break.h"

#include "dx_text_codes.h"

namespace {

/// Where a line could be broken: behind a word, and in front of the next one.
struct Break {
    std::size_t end = 0, next = 0;
    double widthBehind = 0; ///< of the line up to `next`
};

void breakLine(std::string_view line, double room, const std::function<double(std::string_view)>& advance,
               std::vector<std::string>& out) {
    std::size_t start = 0;
    double width = 0;
    bool inBlanks = false;
    Break last;
    for (std::size_t pos = 0; pos < line.size();) {
        const std::size_t at = pos;
        const bool isBlank = DxNextChar(line, pos) == ' ';
        if (isBlank && !inBlanks) last.end = at;
        if (!isBlank && inBlanks) {
            last.next = at;
            last.widthBehind = width;
        }
        inBlanks = isBlank;
        width += advance(line.substr(at, pos - at));
        if (isBlank || width <= room || last.end <= start) continue;
        out.emplace_back(line.substr(start, last.end - start));
        start = last.end = last.next;
        width -= last.widthBehind;
        last.widthBehind = 0;
    }
    out.emplace_back(line.substr(start));
}

} // namespace

std::vector<std::string> DxTextBreakLines(const std::vector<std::string>& lines, double room,
                                          const std::function<double(std::string_view)>& advance) {
    std::vector<std::string> out;
    for (const std::string& line : lines) breakLine(line, room, advance, out);
    return out;
}

#include "text/layout.h"

#include "ge.h"
#include "ov_text.h"
#include "text/utf8.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

/// Which lines along a text are switched on behind a stretch of it, when those of `on` were on ahead of it.
unsigned switchesBehind(std::string_view stretch, unsigned on) {
    for (const char c : stretch)
        if (c >= OV_SWITCH_UNDERLINE && c <= OV_SWITCH_STRIKE) on ^= 1U << (c - OV_SWITCH_UNDERLINE);
    return on;
}

/// Breaks one line at blanks so that each piece is no wider than `room`; a word that is wider stands alone.
/// The blanks at a break belong to neither piece.
class LineBreaker {
public:
    LineBreaker(const Text& text, TextFont& font, double room) : text_(text), font_(font), room_(room) {}

    void run(std::string_view line, std::vector<LayoutLine>& out) {
        std::size_t start = 0, breakAt = 0, behindBreak = 0;
        double width = 0, widthAtBreak = 0, widthBehindBreak = 0;
        unsigned switches = 0;
        bool inBlanks = false;
        for (std::size_t pos = 0; pos < line.size();) {
            const std::size_t at = pos;
            const char32_t c = nextChar(line, pos);
            if (c == ' ') {
                if (!inBlanks) breakAt = at, widthAtBreak = width;
                inBlanks = true;
            } else if (inBlanks) {
                behindBreak = at;
                widthBehindBreak = width;
                inBlanks = false;
            }
            width += advance(c);
            if (c == ' ' || width - gap() <= room_ * roundingSlack || breakAt <= start) continue;
            out.push_back({line.substr(start, breakAt - start), 0, 0, widthAtBreak, switches});
            switches = switchesBehind(out.back().text, switches);
            start = behindBreak;
            breakAt = start;
            width -= widthBehindBreak;
            widthBehindBreak = 0;
        }
        out.push_back({line.substr(start), 0, 0, width, switches});
    }

private:
    static constexpr double roundingSlack = 1 + 1e-9;

    /// The space behind the last character of a line needs no room.
    double gap() const { return (text_.spacing - 1) * text_.width; }

    double advance(char32_t c) const {
        const double cell = font_.glyph(c).cell;
        return c < 32 && c != '\t' ? 0 : (cell + text_.spacing - 1) * text_.width;
    }

    const Text& text_;
    TextFont& font_;
    double room_;
};

std::vector<LayoutLine> breakLines(const Text& text, TextFont& font, double room) {
    std::vector<LayoutLine> lines;
    LineBreaker breaker(text, font, room > 0 ? room : HUGE_VAL);
    for (const std::string& line : text.lines) breaker.run(line, lines);
    return lines;
}

/// 0 left, 1 centre, 2 right.
int alignmentOf(const Text& text, int column) {
    return text.justification == 0 && text.lineLength > 0 ? column : text.justification;
}

} // namespace

TextFont& fontOf(const Text& text) {
    return textFonts().resolve({text.font, text.face, (text.styleBits >> OV_TEXT_BOLD & 1) != 0,
                                (text.styleBits >> OV_TEXT_ITALIC & 1) != 0});
}

double sheetMillimetres(const Drawing& drawing) {
    return sheetMillimetres(drawing, drawing.activeView);
}

double sheetMillimetres(const Drawing& drawing, int view) {
    return GeUnit(drawing.unit).factor() * 1e-6 * drawing.viewScale(view);
}

double lineWidth(const Text& text, TextFont& font, std::string_view line) {
    double cells = 0;
    long count = 0;
    for (std::size_t pos = 0; pos < line.size();) {
        const char32_t c = nextChar(line, pos);
        if (c < 32 && c != '\t') continue;
        cells += font.glyph(c).cell;
        ++count;
    }
    return (cells + static_cast<double>(count) * (text.spacing - 1)) * text.width;
}

TextLayout layoutText(const Text& text, double millimetresPerUnit) {
    TextLayout layout;
    const double room = text.lineLength * millimetresPerUnit;
    layout.lines = breakLines(text, fontOf(text), room);
    for (const LayoutLine& line : layout.lines) layout.width = std::max(layout.width, line.width);
    if (room > 0 && text.justification != 0) layout.width = std::max(layout.width, room);
    const double step = text.lineDistance * text.height;
    layout.height = static_cast<double>(layout.lines.size()) * step;
    const int column = (text.origin - 1) % 3, row = (text.origin - 1) / 3;
    layout.left = -layout.width * column / 2;
    layout.bottom = -layout.height * row / 2;
    const int alignment = alignmentOf(text, column);
    double baseline = layout.bottom + layout.height - step + (step - text.height) / 2;
    for (LayoutLine& line : layout.lines) {
        line.x =
            layout.left + (layout.width - line.width) * alignment / 2 + (text.spacing - 1) * text.width / 2;
        line.baseline = baseline;
        baseline -= step;
    }
    return layout;
}

TextCorners textCorners(const Text& text, double millimetresPerUnit) {
    const TextLayout layout = layoutText(text, millimetresPerUnit);
    const double c = std::cos(text.angle) / millimetresPerUnit, s = std::sin(text.angle) / millimetresPerUnit;
    const auto at = [&](double x, double y) { return RPT{text.x + c * x - s * y, text.y + s * x + c * y}; };
    const double right = layout.left + layout.width, top = layout.bottom + layout.height;
    return {{at(layout.left, layout.bottom), at(right, layout.bottom), at(right, top), at(layout.left, top)}};
}

} // namespace host

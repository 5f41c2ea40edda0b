// Where the characters of a text stand.
//
// All lengths are millimetres on the sheet, in the text's own frame: x along the text, y upward, its point at
// (0, 0). The drawing turns that frame by the text's angle.
#pragma once

#include "drawing/drawing.h"
#include "text/text_font.h"

#include <string_view>
#include <vector>

namespace host {

/// A line as it is shown: lines that are longer than the line length stand here in pieces.
struct LayoutLine {
    std::string_view text; ///< into the lines of the text
    double x = 0;          ///< left edge of the first cell, spacing left aside
    double baseline = 0;   ///< y
    double width = 0;      ///< of its cells, with spacing
    /// Lines along the text that the pieces ahead of this one have switched on; bit n is that of character
    /// OV_SWITCH_UNDERLINE + n.
    unsigned switches = 0;
};

struct TextLayout {
    std::vector<LayoutLine> lines;
    double left = 0, bottom = 0; ///< of the block
    double width = 0, height = 0;
};

/// The font that a text asks for.
TextFont& fontOf(const Text& text);
/// Sheet millimetres in one unit of the drawing, in the view that is shown or in that of a number.
double sheetMillimetres(const Drawing& drawing);
double sheetMillimetres(const Drawing& drawing, int view);
/// Width of a line of the text, spacing at its end included.
double lineWidth(const Text& text, TextFont& font, std::string_view line);
/// `millimetresPerUnit` turns the text's line length to millimetres on the sheet.
TextLayout layoutText(const Text& text, double millimetresPerUnit);

/// Corners of the block in the drawing's frame and unit, counter-clockwise from the lower left.
struct TextCorners {
    RPT p[4];
};
TextCorners textCorners(const Text& text, double millimetresPerUnit);

} // namespace host

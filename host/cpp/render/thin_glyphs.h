// Glyphs of fonts that stand in for fonts of single strokes: their strokes are made as thin as lines.
//
//     ________         A face that draws all its strokes with one width is the union of discs along its
//    (  ____  )   __   strokes; what is left when so much is taken off all round is the union of smaller
//    | |    | |  |  |  discs along the same strokes.
#pragma once

#include "rpt.h"

#include <cairo.h>

#include <map>
#include <tuple>
#include <vector>

namespace host {

class FontFile;

class ThinGlyphs {
public:
    static constexpr double kEm = 1000; ///< units of the em square
    static constexpr double kParts = 4; ///< parts of a unit in which thicknesses are told
    /// Closed contours, even-odd, in units of the em square, y downward.
    using Outline = std::vector<std::vector<RPT>>;

    /// The outline of a glyph with `less` parts of a unit taken off on all sides, or fewer where a part of it
    /// would vanish.
    /// `font` has the face of `file`. Worked out once and kept; the reference stays valid.
    const Outline& outline(cairo_t* font, const FontFile& file, unsigned long index, int less);

private:
    std::map<std::tuple<const FontFile*, unsigned long, int>, Outline> outlines_;
};

/// Makes the glyph the path of `pen`, in units of an em square of ThinGlyphs::kEm. `font` has the face.
void glyphPath(cairo_t* pen, cairo_t* font, unsigned long index);

} // namespace host

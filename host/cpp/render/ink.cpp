#include "render/ink.h"

#include <algorithm>
#include <cmath>

namespace host {

int Ink::thinner(double weight) const {
    cairo_matrix_t font;
    cairo_get_font_matrix(cairo_, &font);
    const double units = font.yy != 0 ? -weight / std::fabs(font.yy) * ThinGlyphs::kEm : 0;
    return static_cast<int>(std::clamp(units, 0.0, ThinGlyphs::kEm) * ThinGlyphs::kParts);
}

static void addContours(cairo_t* cairo, const cairo_glyph_t& at, const ThinGlyphs::Outline& outline) {
    cairo_matrix_t font;
    cairo_get_font_matrix(cairo, &font);
    for (const std::vector<RPT>& contour : outline) {
        cairo_new_sub_path(cairo);
        for (const RPT& p : contour) {
            double x = p.x / ThinGlyphs::kEm, y = p.y / ThinGlyphs::kEm;
            cairo_matrix_transform_distance(&font, &x, &y);
            cairo_line_to(cairo, at.x + x, at.y + y);
        }
        cairo_close_path(cairo);
    }
}

void Ink::glyphs(const FontFile& file, const std::vector<char32_t>&, const std::vector<cairo_glyph_t>& glyphs,
                 double weight) {
    if (const int less = thinner(weight); less > 0) {
        for (const cairo_glyph_t& at : glyphs)
            addContours(cairo_, at, thin_.outline(cairo_, file, at.index, less));
        cairo_fill(cairo_);
        return;
    }
    const int count = static_cast<int>(glyphs.size());
    cairo_show_glyphs(cairo_, glyphs.data(), count);
    if (weight <= 0) return;
    cairo_glyph_path(cairo_, glyphs.data(), count);
    cairo_set_line_width(cairo_, weight);
    cairo_stroke(cairo_);
}

void Ink::beginLayer(const std::string&) {}

} // namespace host

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

void Ink::glyph(const FontFile& file, char32_t, const cairo_glyph_t& at, double weight) {
    if (const int less = thinner(weight); less > 0) {
        addContours(cairo_, at, thin_.outline(cairo_, file, at.index, less));
        cairo_fill(cairo_);
        return;
    }
    if (weight != weight_) endGlyphs();
    weight_ = weight;
    glyphs_.push_back(at);
}

void Ink::endGlyphs() {
    if (glyphs_.empty()) return;
    const int count = static_cast<int>(glyphs_.size());
    cairo_show_glyphs(cairo_, glyphs_.data(), count);
    if (weight_ > 0) {
        cairo_glyph_path(cairo_, glyphs_.data(), count);
        cairo_set_line_width(cairo_, weight_);
        cairo_stroke(cairo_);
    }
    glyphs_.clear();
}

void Ink::beginLayer(const std::string&) {}

} // namespace host

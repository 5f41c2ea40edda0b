#include "render/ink.h"

namespace host {

void Ink::glyph(const FontFile&, char32_t, const cairo_glyph_t& at, double bolder) {
    cairo_show_glyphs(cairo_, &at, 1);
    if (bolder <= 0) return;
    cairo_glyph_path(cairo_, &at, 1);
    cairo_set_line_width(cairo_, bolder);
    cairo_stroke(cairo_);
}

void Ink::beginLayer(const std::string&) {}

} // namespace host

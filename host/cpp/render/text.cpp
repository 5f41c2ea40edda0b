#include "render/text.h"

#include "ov_text.h"
#include "render/ink.h"
#include "text/layout.h"
#include "text/utf8.h"

#include <cairo-ft.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace host {

namespace {

/// A line along the text: which style bit and which switch character ask for it, and where it runs, relative
/// to the height of capital letters.
struct StyleLine {
    int bit;
    char32_t toggle;
    double y;
};
constexpr std::array<StyleLine, 3> styleLines{{{OV_TEXT_UNDERLINE, OV_SWITCH_UNDERLINE, -0.22},
                                               {OV_TEXT_OVERLINE, OV_SWITCH_OVERLINE, 1.2},
                                               {OV_TEXT_STRIKE, OV_SWITCH_STRIKE, 0.42}}};
constexpr double lineThickness = 0.06;
constexpr double syntheticSlant = 0.2126; // tangent of 12 degrees
constexpr double syntheticBold = 0.07;    // relative to the height of capital letters

void setColor(cairo_t* canvas, Rgb color) {
    cairo_set_source_rgb(canvas, color.r / 255.0, color.g / 255.0, color.b / 255.0);
}

/// Collects the stretches of a style line while the pen moves along the text.
class StyleLineTracer {
public:
    StyleLineTracer(Ink& ink, const Text& text, const LayoutLine& line)
        : ink_(ink), text_(text), y_(line.baseline) {
        for (std::size_t i = 0; i < styleLines.size(); ++i) {
            const unsigned isSwitchedOn = line.switches >> (styleLines[i].toggle - OV_SWITCH_UNDERLINE) & 1;
            isOn_[i] = (text.styleBits >> styleLines[i].bit & 1) || isSwitchedOn;
        }
    }
    void start(double x) { start_.fill(x); }
    void toggle(char32_t c, double x) {
        for (std::size_t i = 0; i < styleLines.size(); ++i) {
            if (styleLines[i].toggle != c || text_.styleBits >> styleLines[i].bit & 1) continue;
            if (isOn_[i]) stroke(i, x);
            isOn_[i] = !isOn_[i];
            start_[i] = x;
        }
    }
    void finish(double x) {
        for (std::size_t i = 0; i < styleLines.size(); ++i) {
            if (isOn_[i]) stroke(i, x);
        }
    }

private:
    void stroke(std::size_t i, double x) {
        const double h = text_.height;
        cairo_rectangle(ink_.cairo(), start_[i], y_ + (styleLines[i].y - lineThickness / 2) * h,
                        x - start_[i], lineThickness * h);
        ink_.fill();
    }

    Ink& ink_;
    const Text& text_;
    double y_;
    std::array<bool, 3> isOn_{};
    std::array<double, 3> start_{};
};

} // namespace

TextPainter::TextPainter(Ink& ink, double sheetMillimetresPerUnit)
    : ink_(ink), canvas_(ink.cairo()), perUnit_(sheetMillimetresPerUnit) {}

TextPainter::~TextPainter() {
    for (const auto& [file, face] : faces_) cairo_font_face_destroy(face);
}

void TextPainter::draw(const Text& text, Rgb ink, Rgb back, double lineWidth) {
    if (!(text.height > 0 && std::isfinite(text.height / perUnit_))) return;
    if (cairo_status(canvas_) != CAIRO_STATUS_SUCCESS)
        return; // no memory: what was drawn won't become a picture
    const TextLayout layout = layoutText(text, perUnit_);
    lineWidth_ = lineWidth * perUnit_;
    ink_.save();
    cairo_translate(canvas_, text.x, text.y);
    cairo_rotate(canvas_, text.angle);
    cairo_scale(canvas_, 1 / perUnit_, 1 / perUnit_);
    drawBackground(text, layout.left, layout.bottom, layout.width, layout.height, ink, back);
    setColor(canvas_, ink);
    for (const LayoutLine& line : layout.lines) drawLine(text, line);
    ink_.restore();
}

void TextPainter::drawBackground(const Text& text, double left, double bottom, double width, double height,
                                 Rgb ink, Rgb back) {
    const bool isFramed = text.backType >= 1 && text.backType <= 3;
    if ((!text.backOn && !isFramed) || width <= 0) return;
    if (text.backOn) {
        cairo_rectangle(canvas_, left, bottom, width, height);
        setColor(canvas_, back);
        ink_.fill();
    }
    if (isFramed) {
        cairo_rectangle(canvas_, left, bottom, width, height);
        setColor(canvas_, ink);
        cairo_set_line_width(canvas_, lineThickness * text.height);
        ink_.stroke();
    }
    cairo_new_path(canvas_);
}

/// What a glyph's strokes get beyond their width, see Ink::glyph().
static double weightOf(const TextFont& font, FontFile& file, double height, double lineWidth) {
    if (font.thickened()) return file.bold() ? 0 : syntheticBold * height;
    // A character that the font lacks may come from a file of another make.
    if (!font.stroked() || lineWidth <= 0 || !file.hasSingleStrokes()) return 0;
    return std::min(0.0, (lineWidth - file.strokeWidth() * height) / 2);
}

void TextPainter::drawLine(const Text& text, const LayoutLine& line) {
    TextFont& font = fontOf(text);
    StyleLineTracer lines(ink_, text, line);
    lines.start(line.x);
    FontFile* file = nullptr;
    double scale = 0, x = line.x, end = line.x;
    // Those of one font together: each call of the canvas is kept until the picture is whole.
    std::vector<char32_t> characters;
    std::vector<cairo_glyph_t> glyphs;
    const auto show = [&] {
        if (glyphs.empty()) return;
        ink_.glyphs(*file, characters, glyphs, weightOf(font, *file, text.height, lineWidth_));
        characters.clear();
        glyphs.clear();
    };
    for (std::size_t pos = 0; pos < line.text.size();) {
        const char32_t c = nextChar(line.text, pos);
        if (c < 32 && c != '\t') {
            show(); // a style line changes the path
            lines.toggle(c, end);
            continue;
        }
        const Glyph& glyph = font.glyph(c);
        if (glyph.file) {
            if (glyph.file != file || glyph.scale != scale) {
                show();
                selectFont(text, *glyph.file, glyph.scale, font.slanted());
                file = glyph.file;
                scale = glyph.scale;
            }
            characters.push_back(c);
            glyphs.push_back({glyph.index, x + glyph.offset * text.width, line.baseline});
        }
        end = x + glyph.cell * text.width;
        x += (glyph.cell + text.spacing - 1) * text.width;
    }
    show();
    lines.finish(end);
}

void TextPainter::selectFont(const Text& text, const FontFile& file, double scale, bool slanted) {
    const double shear = std::tan(text.slant) + (slanted ? syntheticSlant : 0);
    const double width = file.emPerCap() * scale * text.width;
    const double height = file.emPerCap() * text.height;
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, width, 0, -shear * height, -height, 0, 0);
    cairo_set_font_face(canvas_, faceOf(file));
    cairo_set_font_matrix(canvas_, &matrix);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_set_font_options(canvas_, options);
    cairo_font_options_destroy(options);
}

cairo_font_face_t* TextPainter::faceOf(const FontFile& file) {
    auto [entry, isNew] = faces_.try_emplace(&file, nullptr);
    if (isNew) {
        FcPattern* pattern = FcPatternCreate();
        FcPatternAddString(pattern, FC_FILE, reinterpret_cast<const FcChar8*>(file.path().c_str()));
        FcPatternAddInteger(pattern, FC_INDEX, file.faceIndex());
        entry->second = cairo_ft_font_face_create_for_pattern(pattern);
        FcPatternDestroy(pattern);
    }
    return entry->second;
}

} // namespace host

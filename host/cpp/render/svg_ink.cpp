#include "render/svg_ink.h"

#include "render/base64.h"
#include "text/font_files.h"
#include "text/utf8.h"

#include <cctype>
#include <cmath>

namespace host {

static constexpr double kEm = ThinGlyphs::kEm; ///< in outlines and sizes of texts
/// Bytes of path data in one element: more makes viewers slow.
static constexpr std::size_t kLongestPath = 1 << 15;

SvgInk::SvgInk(cairo_t* cairo, double width, double height, bool textsAsTexts)
    : Ink(cairo), width_(width), height_(height), textsAsTexts_(textsAsTexts) {}

SvgInk::~SvgInk() {
    for (const auto& [surface, id] : images_) cairo_surface_destroy(surface);
}

std::string SvgInk::newId(char kind) {
    return kind + std::to_string(++ids_);
}

/// The context's colour or gradient as an attribute, ` fill="#f00"`.
std::string SvgInk::source(const char* role) {
    cairo_pattern_t* pattern = cairo_get_source(cairo());
    const std::string start = std::string(" ") + role + "=\"";
    double r = 0, g = 0, b = 0, alpha = 1;
    if (cairo_pattern_get_type(pattern) == CAIRO_PATTERN_TYPE_LINEAR)
        return start + "url(#" + gradient(pattern) + ")\"";
    cairo_pattern_get_rgba(pattern, &r, &g, &b, &alpha);
    std::string text = start + svgColor(r, g, b) + "\"";
    if (alpha < 1) text += std::string(" ") + role + "-opacity=\"" + svgNumber(alpha, 3) + "\"";
    return text;
}

std::string SvgInk::gradient(cairo_pattern_t* pattern) {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    cairo_pattern_get_linear_points(pattern, &x1, &y1, &x2, &y2);
    const std::string id = newId('g');
    const auto place = [](double value) { return "\"" + svgNumber(std::round(value * kSvgFine), 9) + "\""; };
    defs_ += "<linearGradient id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\" x1=" + place(x1) +
             " y1=" + place(y1) + " x2=" + place(x2) + " y2=" + place(y2) + ">";
    int count = 0;
    cairo_pattern_get_color_stop_count(pattern, &count);
    for (int i = 0; i < count; ++i) {
        double at = 0, r = 0, g = 0, b = 0, alpha = 1;
        cairo_pattern_get_color_stop_rgba(pattern, i, &at, &r, &g, &b, &alpha);
        defs_ += "<stop offset=\"" + svgNumber(at) + "\" stop-color=\"" + svgColor(r, g, b) + "\"";
        if (alpha < 1) defs_ += " stop-opacity=\"" + svgNumber(alpha, 3) + "\"";
        defs_ += "/>";
    }
    defs_ += "</linearGradient>\n";
    return id;
}

void SvgInk::flush() {
    flushRun();
    if (path_.empty()) return;
    body_ += "<path" + strokes_ + " d=\"" + path_.data() + "\"/>\n";
    path_.clear();
}

void SvgInk::stroke() {
    flushRun();
    double right = 1, up = 0, left = 0, down = 1;
    cairo_user_to_device_distance(cairo(), &right, &up);
    cairo_user_to_device_distance(cairo(), &left, &down);
    const double fine = kSvgFine * std::sqrt(std::fabs(right * down - up * left));
    std::string look = source("stroke");
    look += " stroke-width=\"" + svgNumber(std::round(cairo_get_line_width(cairo()) * fine), 9) + "\"";
    std::vector<double> dashes(static_cast<std::size_t>(cairo_get_dash_count(cairo())));
    double phase = 0;
    if (!dashes.empty()) cairo_get_dash(cairo(), dashes.data(), &phase);
    for (std::size_t i = 0; i < dashes.size(); ++i)
        look += (i == 0 ? " stroke-dasharray=\"" : " ") + svgNumber(std::round(dashes[i] * fine), 9);
    if (!dashes.empty()) look += "\"";
    if (cairo_get_line_cap(cairo()) != CAIRO_LINE_CAP_ROUND) look += " stroke-linecap=\"butt\"";
    const bool isClear =
        look.find("opacity") != std::string::npos; // where it crosses itself it would be denser
    if (look != strokes_ || isClear || path_.data().size() > kLongestPath) flush();
    strokes_ = look;
    path_.add(cairo());
    cairo_new_path(cairo());
}

void SvgInk::fill() {
    flush();
    SvgPath path;
    path.add(cairo());
    if (!path.empty()) body_ += "<path" + source("fill") + " d=\"" + path.data() + "\"/>\n";
    cairo_new_path(cairo());
}

void SvgInk::clip() {
    flush();
    SvgPath path;
    path.add(cairo());
    const std::string id = newId('c');
    defs_ +=
        "<clipPath id=\"" + id + "\"><path clip-rule=\"evenodd\" d=\"" + path.data() + "\"/></clipPath>\n";
    body_ += "<g clip-path=\"url(#" + id + ")\">";
    ++clips_.back();
    cairo_new_path(cairo());
}

void SvgInk::paint() {
    flush();
    cairo_surface_t* surface = nullptr;
    if (cairo_pattern_get_surface(cairo_get_source(cairo()), &surface) == CAIRO_STATUS_SUCCESS) {
        drawImage(surface);
        return;
    }
    body_ += "<rect width=\"" + svgNumber(std::round(width_ * kSvgFine), 9) + "\" height=\"" +
             svgNumber(std::round(height_ * kSvgFine), 9) + "\"" + source("fill") + "/>\n";
}

void SvgInk::save() {
    cairo_save(cairo());
    clips_.push_back(0);
}

void SvgInk::restore() {
    if (clips_.back() > 0) flush();
    for (; clips_.back() > 0; --clips_.back()) body_ += "</g>\n";
    clips_.pop_back();
    cairo_restore(cairo());
}

static cairo_status_t append(void* text, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void SvgInk::drawImage(cairo_surface_t* surface) {
    auto [image, isNew] = images_.try_emplace(surface);
    if (isNew) {
        cairo_surface_reference(surface);
        image->second = newId('i');
        std::string png;
        cairo_surface_write_to_png_stream(surface, append, &png);
        defs_ += "<image id=\"" + image->second + "\" width=\"" +
                 std::to_string(cairo_image_surface_get_width(surface)) + "\" height=\"" +
                 std::to_string(cairo_image_surface_get_height(surface)) +
                 "\" preserveAspectRatio=\"none\" xlink:href=\"data:image/png;base64," + base64(png) +
                 "\"/>\n";
    }
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo(), &matrix);
    body_ += "<use transform=\"" + svgMatrix(matrix) + "\" xlink:href=\"#" + image->second + "\"/>\n";
}

/// The id of a glyph's outline, drawn at its first use; empty when it has no ink.
std::string SvgInk::outlineOf(const FontFile& file, unsigned long index, int less) {
    auto [outline, isNew] = outlines_.try_emplace({&file, index, less});
    if (!isNew) return outline->second;
    cairo_surface_t* nowhere = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
    cairo_t* pen = cairo_create(nowhere);
    if (less > 0) {
        for (const std::vector<RPT>& contour : thin_.outline(cairo(), file, index, less)) {
            cairo_new_sub_path(pen);
            for (const RPT& p : contour) cairo_line_to(pen, p.x, p.y);
            cairo_close_path(pen);
        }
    } else {
        glyphPath(pen, cairo(), index);
    }
    SvgPath path;
    path.add(pen, 1);
    cairo_destroy(pen);
    cairo_surface_destroy(nowhere);
    if (path.empty()) return {};
    outline->second = newId('t');
    const std::string rule = less > 0 ? "" : " fill-rule=\"nonzero\""; // contours of a font may overlap
    defs_ += "<path id=\"" + outline->second + "\"" + rule + " d=\"" + path.data() + "\"/>\n";
    return outline->second;
}

static std::string fontOf(const FontFile& file) {
    std::string text = " font-family=\"" + xmlText(file.family()) + "\" font-size=\"1000\"";
    if (file.bold()) text += " font-weight=\"bold\"";
    if (file.italic()) text += " font-style=\"italic\"";
    return text;
}

static std::string utf8Of(char32_t c) {
    std::string text;
    appendUtf8(text, c);
    return text;
}

void SvgInk::addGlyph(char32_t c, const std::string& outline, double x) {
    const std::string place = svgNumber(std::round(x), 9);
    if (textsAsTexts_) {
        run_.places += (run_.places.empty() ? "" : " ") + place;
        run_.text += xmlText(utf8Of(c));
    } else if (!outline.empty()) {
        run_.uses +=
            "<use" + (place == "0" ? "" : " x=\"" + place + "\"") + " xlink:href=\"#" + outline + "\"/>";
    }
}

void SvgInk::glyph(const FontFile& file, char32_t c, const cairo_glyph_t& at, double weight) {
    if (!path_.empty()) flush();
    cairo_matrix_t font, place;
    cairo_get_font_matrix(cairo(), &font);
    cairo_get_matrix(cairo(), &place);
    // The frame of the line's em square: its origin lies where the baseline has x = 0.
    cairo_matrix_t em = font;
    em.y0 = at.y;
    cairo_matrix_multiply(&em, &em, &place);
    cairo_matrix_scale(&em, 1 / kEm, 1 / kEm);
    std::string look = " transform=\"" + svgMatrix(em) + "\"" + source("fill");
    const double bold = weight > 0 && font.yy != 0 ? weight / std::fabs(font.yy) * kEm : 0;
    look += bold > 0 ? source("stroke") + " stroke-width=\"" + svgNumber(std::round(bold), 9) + "\""
                     : std::string();
    if (textsAsTexts_) look += fontOf(file);
    if (look != run_.look) flushRun();
    run_.look = look;
    const std::string outline = textsAsTexts_ ? std::string() : outlineOf(file, at.index, thinner(weight));
    addGlyph(c, outline, font.xx != 0 ? at.x / font.xx * kEm : 0);
}

void SvgInk::glyphs(const FontFile& file, const std::vector<char32_t>& characters,
                    const std::vector<cairo_glyph_t>& glyphs, double weight) {
    for (std::size_t i = 0; i < glyphs.size(); ++i) glyph(file, characters[i], glyphs[i], weight);
}

void SvgInk::flushRun() {
    if (!run_.text.empty())
        body_ += "<text" + run_.look + " x=\"" + run_.places + "\" xml:space=\"preserve\">" + run_.text +
                 "</text>\n";
    if (!run_.uses.empty()) body_ += "<g" + run_.look + ">" + run_.uses + "</g>\n";
    run_ = {};
}

/// A name that may stand as an id: the layer's own where it can be one, with a number where it stood before.
std::string SvgInk::layerId(const std::string& name) {
    std::string id = "layer-";
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = byte >= 0x80 || std::isalnum(byte) || c == '_' || c == '-' || c == '.';
        id += isPlain ? c : '_';
    }
    std::string free = id;
    for (int i = 2; !layerIds_.insert(free).second; ++i) free = id + "-" + std::to_string(i);
    return free;
}

void SvgInk::beginLayer(const std::string& name) {
    flush();
    layer_ = name;
    layerStart_ = body_.size();
}

void SvgInk::endLayer() {
    flush();
    if (body_.size() == layerStart_) return; // nothing of it here
    body_.insert(layerStart_, "<g id=\"" + layerId(layer_) + "\" data-layer=\"" + xmlText(layer_) + "\">\n");
    body_ += "</g>\n";
}

std::string SvgInk::document() {
    flush();
    const auto fine = [](double length) { return svgNumber(std::round(length * kSvgFine), 9); };
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<svg xmlns=\"http://www.w3.org/2000/svg\" "
                       "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"" +
                       svgNumber(width_, 9) + "pt\" height=\"" + svgNumber(height_, 9) +
                       "pt\" viewBox=\"0 0 " + fine(width_) + " " + fine(height_) + "\">\n";
    if (!defs_.empty()) text += "<defs>\n" + defs_ + "</defs>\n";
    text += "<g fill=\"none\" fill-rule=\"evenodd\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    return text + body_ + "</g>\n</svg>\n";
}

} // namespace host

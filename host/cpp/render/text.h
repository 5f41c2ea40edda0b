// Texts in pictures.
#pragma once

#include "drawing/drawing.h"

#include <memory>
#include <string>
#include <unordered_map>

struct _cairo;
struct _cairo_font_face;

namespace host {

class FontFile;
class Ink;
struct LayoutLine;

/// Draws texts on a canvas whose user space is the drawing's frame: its unit, y upward.
class TextPainter {
public:
    /// `sheetMillimetresPerUnit`: see sheetMillimetres(). The ink outlives the painter.
    TextPainter(Ink& ink, double sheetMillimetresPerUnit);
    ~TextPainter();
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    /// `ink` is the colour of the text, `back` that of its background where it wants one, `lineWidth` that of
    /// lines in the canvas's units: fonts of single strokes have strokes as thin as these.
    void draw(const Text& text, Rgb ink, Rgb back, double lineWidth = 0);

private:
    void drawBackground(const Text& text, double left, double bottom, double width, double height, Rgb ink,
                        Rgb back);
    void drawLine(const Text& text, const LayoutLine& line);
    void selectFont(const Text& text, const FontFile& file, double scale, bool slanted);
    _cairo_font_face* faceOf(const FontFile& file);

    Ink& ink_;
    _cairo* canvas_; ///< of the ink
    double perUnit_;
    double lineWidth_ = 0;
    std::unordered_map<const FontFile*, _cairo_font_face*> faces_; ///< a reference held on each
};

} // namespace host

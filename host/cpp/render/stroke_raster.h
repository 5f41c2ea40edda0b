// Strokes of very many lines in a pixel picture. Cairo computes each stroke's outline and crosses it with 15
// lines a pixel row; for a line a pixel or two wide, the distance of a pixel's middle from the line says the
// same.
#pragma once

#include "render/curves.h"

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

/// What the lines of one colour cover. Where they overlap, a pixel counts once, as in one stroke.
class StrokeRaster {
public:
    /// For this context's picture. Not usable() where that isn't one of opaque pixels, or is clipped.
    explicit StrokeRaster(cairo_t* cairo);
    bool usable() const { return picture_ != nullptr; }

    void setLineWidth(double width) { half_ = width / 2; }
    /// A line with round ends, device coordinates. Both points must be finite.
    void line(const RPT& from, const RPT& to) { capsule(from, to, half_); }
    void curve(const RPT& from, const Bezier& b);
    void dot(const RPT& at, double radius) { capsule(at, at, radius); }
    /// Lays the colour over the picture's pixels that are covered; then nothing is any more.
    void paint(const Rgb& color);

private:
    struct Walk;
    /// Pixels from first to just before end.
    struct Box {
        int firstX, firstY, endX, endY;
    };
    void widen(const RPT& a, const RPT& b, double spare);
    bool clip(RPT& a, RPT& b, double spare) const;
    void capsule(RPT a, RPT b, double half);
    void coverSpan(const Walk& walk, int first, int end);
    void coverEnds(const Walk& walk, int first, int end);
    void paintRow(int y, std::uint32_t color);

    cairo_surface_t* picture_ = nullptr; ///< the context's, which outlives this
    int width_ = 0, height_ = 0;
    double half_ = 0.5;
    std::vector<std::uint8_t> covered_; ///< 0 … 255 by pixel, row by row
    Box box_{};                         ///< of what may be covered
};

} // namespace host

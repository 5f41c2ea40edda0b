// Paths in device space, safe for any coordinates: Cairo computes in a range of a few million units, so
// what lies far outside the picture is cut off here.
#pragma once

#include "render/curves.h"
#include "render/stroke_raster.h"

#include <cairo.h>

#include <vector>

namespace host {

/// Lines and curves to be stroked. Points that aren't finite lift the pen.
class StrokePath {
public:
    explicit StrokePath(cairo_t* cairo) : cairo_(cairo) {}
    /// Where lines go from now on; null: to Cairo.
    void drawInto(StrokeRaster* raster) { raster_ = raster; }
    void moveTo(const RPT& p);
    void lineTo(const RPT& p);
    void curveTo(const Bezier& b);
    /// Ends the path: what was held back is drawn. The pen stays where it is, for a path to come.
    void finish();
    long segments() const { return segments_; } ///< since the last finish()

private:
    void begin(const RPT& p);
    void emitLine(const RPT& from, const RPT& to);
    void emitClippedCurve(const RPT& from, const Bezier& b);

    void emitCurve(const RPT& from, const Bezier& b);

    cairo_t* cairo_;
    StrokeRaster* raster_ = nullptr;
    RPT at_{0, 0};   ///< the pen
    RPT sent_{0, 0}; ///< Cairo's current point, when `open_`
    bool valid_ = false, open_ = false;
    long segments_ = 0;
};

/// Closed contours to be filled or clipped to, even-odd.
class FillPath {
public:
    void moveTo(const RPT& p);
    void lineTo(const RPT& p) { curveTo({at_, p, p}); }
    void curveTo(const Bezier& b);
    /// Hands the path to Cairo.
    void emit(cairo_t* cairo) const;
    bool empty() const { return contours_.empty(); }
    /// Box of the control points within the safe range.
    Extents box() const;

private:
    struct Part {
        RPT start;
        std::vector<Bezier> segments;
    };
    std::vector<Part> contours_;
    RPT at_{0, 0};
    bool far_ = false; ///< something lies outside the safe range
};

} // namespace host

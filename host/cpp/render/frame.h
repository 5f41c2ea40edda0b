// From the drawing's plane to the picture.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Where the drawing lies in the picture. Device coordinates: pixels or points, y downward.
struct Frame {
    double width = 0, height = 0; ///< of the picture
    double scale = 1;             ///< device units per drawing unit
    double left = 0, top = 0;     ///< drawing coordinates of the picture's corner (margin excluded)
    double margin = 0;
    double lineWidth = 1;
    RPT alongX{1, 0}, alongY{0, 1}; ///< how the drawing's axes lie in the picture
    double unitsPerMm = 1;          ///< drawing units per millimetre on the sheet

    /// Device point of (x, y). Subtracts first, so that detail survives far from the origin. Not finite for
    /// points that aren't.
    RPT map(double x, double y) const {
        if (isTilted()) return mapView(x * alongX.x + y * alongY.x, x * alongX.y + y * alongY.y);
        return mapView(x, y);
    }
    /// Device point of a point in view coordinates.
    RPT mapView(double x, double y) const {
        return {(x - left) * scale + margin, (top - y) * scale + margin};
    }
    /// Whether the drawing's plane is seen from another side than above.
    bool isTilted() const { return alongX.x != 1 || alongX.y != 0 || alongY.x != 0 || alongY.y != 1; }
};

/// Frame with a longer side of `size` that shows `extents` with a margin around. Any extents will do: empty
/// ones, a point, ones that aren't finite.
Frame fitFrame(const Extents& extents, int size);
/// Frame that shows exactly the sheet of a view; the sheet's middle is the drawing's origin.
Frame sheetFrame(const View& view, int size);

} // namespace host

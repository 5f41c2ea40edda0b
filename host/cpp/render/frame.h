// From the drawing to the picture.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Where the drawing lies in the picture. Device coordinates: pixels or points, y downward.
struct Frame {
    double width = 0, height = 0;            ///< of the picture
    double scale = 1;                        ///< device units per drawing unit
    RPT3 origin{0, 0, 0};                    ///< point of the drawing …
    RPT at{0, 0};                            ///< … and where it lies in the picture
    RPT axes[3] = {{1, 0}, {0, -1}, {0, 0}}; ///< one unit along x, y and z, in device units
    double lineWidth = 1;
    double unitsPerMm = 1; ///< drawing units per millimetre on the sheet

    /// Device point of (x, y, z). Subtracts first, so that detail survives far from the origin. Not finite
    /// for points that aren't.
    RPT map(double x, double y, double z = 0) const {
        const double dx = x - origin.x, dy = y - origin.y, dz = z - origin.z;
        return {dx * axes[0].x + dy * axes[1].x + dz * axes[2].x + at.x,
                dx * axes[0].y + dy * axes[1].y + dz * axes[2].y + at.y};
    }
    /// Device vector of a direction in the plane.
    RPT along(double x, double y) const {
        return {x * axes[0].x + y * axes[1].x, x * axes[0].y + y * axes[1].y};
    }
    /// Whether the drawing is seen from behind.
    bool mirrors() const { return axes[0].x * axes[1].y - axes[0].y * axes[1].x > 0; }
};

/// Frame with a longer side of `size` that shows `extents` with a margin around. Any extents will do: empty
/// ones, a point, ones that aren't finite.
Frame fitFrame(const Extents& extents, int size);
/// Frame that shows exactly `window`, where that isn't a mere strip.
Frame windowFrame(const Extents& window, int size);
/// Frame that shows exactly the sheet of a view; the sheet's middle is the drawing's origin.
Frame sheetFrame(const View& view, int size);
/// Frame of a picture of `width` by `height` with `middle` in its middle, at `scale`.
Frame middleFrame(const RPT& middle, double scale, double width, double height);
/// The same picture for what stands on a plane: coordinates are those of the plane.
Frame planeFrame(const Frame& frame, const WorkPlane& plane);
double lineWidthOf(double size); ///< of a picture with this longer side

} // namespace host

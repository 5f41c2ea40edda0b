// Pictures in a drawing, and its georeference.
#pragma once

#include "rpt.h"

#include <string>
#include <vector>

namespace host {

/// A picture: a file, and where it lies. Its content stays in the file.
struct Bitmap {
    std::string file;          ///< absolute path
    int width = 0, height = 0; ///< pixels, 0: a file that can't be read as a picture
    RPT3 origin{0, 0, 0};      ///< upper left corner
    RPT3 u{1, 0, 0};           ///< along the upper edge, over the whole width
    RPT3 v{0, -1, 0};          ///< down the left edge, over the whole height
    std::vector<RPT> outline;  ///< what shows, in parts of width and height from the upper left; empty: all
};

/// What ties the drawing to coordinates on the earth.
struct GeoReference {
    bool set = false;
    RPT3 point{0, 0, 0}; ///< a point of the drawing
    double x = 0, y = 0; ///< its coordinates, metres turned into the drawing's unit
    double angle = 0;    ///< north against the y axis, radians
};

} // namespace host

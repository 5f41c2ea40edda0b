// Pictures of a drawing: SVG, PNG, PDF.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace host {

struct RenderOptions {
    int size = 1200;         ///< longer side: pixels (PNG), points (SVG, PDF)
    std::string view;        ///< view to show, empty: all, fitted
    bool dark = false;       ///< white pens on black, as on a screen; else black stays visible on white
    bool inSpace = false;    ///< seen from a direction
    RPT3 direction{0, 0, 1}; ///< in which the viewer stands, far away
    bool hidden = false;     ///< in space: without what is behind faces
    bool shade = false;      ///< in space: faces lit
};

/// Draws into the file; the format follows its extension. Empty, or what went wrong.
std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options);

} // namespace host

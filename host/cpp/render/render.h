// Pictures of a drawing: SVG, PNG, PDF.
#pragma once

#include "drawing/drawing.h"

#include <string>
#include <vector>

namespace host {

struct RenderOptions {
    int size = 1200;         ///< longer side: pixels (PNG), points (SVG, PDF)
    std::string view;        ///< view to show, empty: the model, fitted
    bool dark = false;       ///< white pens on black, as on a screen; else black stays visible on white
    bool allViews = false;   ///< a page for each of pageViews(); for PDF only
    bool inSpace = false;    ///< the model, seen from a direction
    RPT3 direction{0, 0, 1}; ///< in which the viewer stands, far away
    bool hidden = false;     ///< in space: without what is behind faces
    bool shade = false;      ///< in space: faces lit
};

/// The views that are worth a picture: the model, the sheets, and details that stand on no sheet.
std::vector<std::string> pageViews(const Drawing& drawing);

/// Draws into the file; the format follows its extension. A sheet in a PDF has its own size, whatever `size`
/// says. Empty, or what went wrong.
std::string renderDrawing(const Drawing& drawing, const std::string& path, const RenderOptions& options);

} // namespace host

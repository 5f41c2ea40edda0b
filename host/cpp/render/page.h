// What a picture shows: the model, or a sheet with the details of the model that stand on it.
#pragma once

#include "render/frame.h"
#include "render/picture_cache.h"
#include "render/render.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace host {

/// Patterns of one view, seen through one frame.
struct Scene {
    Frame frame;
    int view = 0;          ///< number of the view whose patterns show
    std::vector<RPT> clip; ///< polygon in the picture, empty: all of it
    std::shared_ptr<const std::unordered_set<std::string>> layers; ///< that show; null: all
};

struct Page {
    double width = 0, height = 0;
    std::vector<Scene> scenes; ///< from the bottom up
};

/// The picture of a view, null for the whole model, or the first sheet when there is nothing but sheets.
/// `size` is its longer side; `trueSize`: a sheet takes its own size in points instead.
Page makePage(const Drawing& drawing, const View* view, int size, bool trueSize);
/// The model on a sheet of paper, its middle in the middle; with a window that part of it only.
Page makePaperPage(const Drawing& drawing, const Paper& paper, const Extents& window, int size,
                   bool trueSize);
/// A part of the model, which fills the picture.
Page makeWindowPage(const Drawing& drawing, const Extents& window, int size);

/// A page with the model alone, seen through the frame.
Page modelPage(const Drawing& drawing, Frame frame);

/// The frame for what a pattern holds, which may stand on a plane of its own.
Frame patternFrame(const Drawing& drawing, const Pattern& pattern, const Frame& frame);

/// The names in a filter, layer="A" | layer="B".
std::unordered_set<std::string> filterLayers(const std::string& filter);

} // namespace host

// A drawing in space, seen from a direction.
#pragma once

#include "drawing/drawing.h"
#include "drawing/space_view.h"
#include "render/page.h"
#include "render/render.h"

#include <cairo.h>

#include <string>
#include <unordered_set>

namespace host {

/// A picture of the model in space: what it shows is collected once, for its frame and for its painting.
class SpacePicture {
public:
    SpacePicture(const Drawing& drawing, const RenderOptions& options);
    /// One scene, whose frame shows view coordinates.
    Page page() const;
    void paint(cairo_t* cairo, const Frame& frame);

private:
    bool isShown(const Pattern& pattern) const;
    bool isPlanOfSpace(const Pattern& pattern) const;
    void measure(const Pattern& pattern);
    void addElements(const Pattern& pattern);
    void announce(PictureCache& pictures, const Frame& tilted) const;
    Frame tilt(const Frame& frame) const;

    const Drawing& drawing_;
    const RenderOptions& options_;
    std::unordered_set<std::string> layersInSpace_; ///< that hold something in space
    ViewAxes axes_;
    SpaceView view_;
    Extents extents_; ///< in view coordinates
};

} // namespace host

// A drawing in space, seen from a direction.
#pragma once

#include "drawing/drawing.h"
#include "drawing/space_view.h"
#include "render/page.h"
#include "render/plan_of_space.h"
#include "render/render.h"

#include <cairo.h>

#include <unordered_map>

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
    /// The flat elements of a pattern that have no like in space.
    const Pattern& flatOf(const Pattern& pattern) const;
    void addSolids(SpaceContent& content) const;
    void addSpace(const Pattern& pattern);
    void measure(const Pattern& pattern);
    void addElements(const Pattern& pattern);
    void announce(PictureCache& pictures, const Frame& tilted) const;
    Frame tilt(const Frame& frame) const;

    const Drawing& drawing_;
    const RenderOptions& options_;
    std::unordered_map<const Pattern*, Pattern> flat_; ///< of patterns, where something stands in space
    ViewAxes axes_;
    SpaceView view_;
    Extents extents_; ///< in view coordinates
};

} // namespace host

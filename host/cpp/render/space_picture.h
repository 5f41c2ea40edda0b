// A drawing in space, seen from a direction.
#pragma once

#include "drawing/drawing.h"
#include "drawing/space_view.h"
#include "render/render.h"

#include <cairo.h>

namespace host {

struct Frame;

/// A picture in space: what it shows is collected once, for its frame and for its painting.
class SpacePicture {
public:
    SpacePicture(const Drawing& drawing, const RenderOptions& options);
    /// In view coordinates.
    const Extents& extents() const { return extents_; }
    /// Lets a frame show the drawing's plane as it lies in the view.
    void tilt(Frame& frame) const;
    void paint(cairo_t* cairo, const Frame& frame);

private:
    bool isShown(const Pattern& pattern) const;
    void measure(const Pattern& pattern);
    void addElements(const Pattern& pattern);

    const Drawing& drawing_;
    const RenderOptions& options_;
    ViewAxes axes_;
    SpaceView view_;
    Extents extents_;
};

} // namespace host

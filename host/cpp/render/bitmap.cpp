// Pictures of the drawing in a picture.
#include "render/bitmap.h"

#include "render/painter.h"

#include <algorithm>
#include <cmath>

namespace host {

Parallelogram placeBitmap(const Bitmap& bitmap, const Frame& frame) {
    const auto corner = [&](double u, double v) {
        return frame.map(bitmap.origin.x + u * bitmap.u.x + v * bitmap.v.x,
                         bitmap.origin.y + u * bitmap.u.y + v * bitmap.v.y,
                         bitmap.origin.z + u * bitmap.u.z + v * bitmap.v.z);
    };
    const RPT at = corner(0, 0), right = corner(1, 0), below = corner(0, 1);
    return {at, {right.x - at.x, right.y - at.y}, {below.x - at.x, below.y - at.y}};
}

bool isShown(const Parallelogram& p, const Frame& frame) {
    Extents box;
    for (const RPT& part : {RPT{0, 0}, {1, 0}, {0, 1}, {1, 1}})
        box.add(p.at.x + part.x * p.u.x + part.y * p.v.x, p.at.y + part.x * p.u.y + part.y * p.v.y);
    constexpr double reach = 1e6; // Cairo's coordinates end not far behind
    return !box.empty && box.maxX >= 0 && box.maxY >= 0 && box.minX <= frame.width &&
           box.minY <= frame.height && box.minX > -reach && box.minY > -reach && box.maxX < reach &&
           box.maxY < reach && std::fabs(p.u.x * p.v.y - p.u.y * p.v.x) > 1e-6;
}

/// The outline of what shows of a picture, in parts of its width and height.
static void addOutline(cairo_t* cairo, const Bitmap& bitmap) {
    if (bitmap.outline.empty()) {
        cairo_rectangle(cairo, 0, 0, 1, 1);
        return;
    }
    for (const RPT& p : bitmap.outline)
        cairo_line_to(cairo, std::clamp(p.x, -1e3, 1e3), std::clamp(p.y, -1e3, 1e3));
    cairo_close_path(cairo);
}

void Painter::drawBitmap(const Bitmap& bitmap) {
    const Parallelogram p = placeBitmap(bitmap, frame_);
    if (!isShown(p, frame_)) return;
    cairo_surface_t* surface = pictures_.surface(bitmap.file);
    const cairo_matrix_t matrix{p.u.x, p.u.y, p.v.x, p.v.y, p.at.x, p.at.y};
    ink_.save();
    cairo_transform(cairo_, &matrix);
    cairo_new_path(cairo_);
    addOutline(cairo_, bitmap);
    if (surface) {
        ink_.clip();
        cairo_rectangle(cairo_, 0, 0, 1, 1);
        ink_.clip();
        cairo_scale(cairo_, 1.0 / cairo_image_surface_get_width(surface),
                    1.0 / cairo_image_surface_get_height(surface));
        cairo_set_source_surface(cairo_, surface, 0, 0);
        cairo_pattern_set_extend(cairo_get_source(cairo_), CAIRO_EXTEND_PAD);
        cairo_pattern_set_filter(cairo_get_source(cairo_), CAIRO_FILTER_GOOD);
        ink_.paint();
        ink_.restore();
        return;
    }
    ink_.restore();
    // A frame stands for a picture that can't be read.
    setSource(cairo_, {128, 128, 128});
    setDashes(cairo_, {});
    ink_.stroke();
}

void Painter::drawBitmaps(const Pattern& pattern) {
    for (const Bitmap& bitmap : pattern.bitmaps) drawBitmap(bitmap);
    if (!pattern.bitmaps.empty()) pen_ = -1;
}

} // namespace host

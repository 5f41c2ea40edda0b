#include "render/thin_glyphs.h"

#include <polyclipping/clipper.hpp>

#include <algorithm>
#include <cmath>
#include <memory>

namespace host {

using ClipperLib::Path;
using ClipperLib::Paths;

/// Clipper's whole numbers in a unit of the em square.
static constexpr double kFine = 64;

void glyphPath(cairo_t* pen, cairo_t* font, unsigned long index) {
    cairo_set_font_face(pen, cairo_get_font_face(font));
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_set_font_options(pen, options);
    cairo_font_options_destroy(options);
    cairo_set_font_size(pen, ThinGlyphs::kEm);
    const cairo_glyph_t glyph{index, 0, 0};
    cairo_glyph_path(pen, &glyph, 1);
}

/// The glyph as polygons that don't overlap, outer ones and holes of opposite sense.
static Paths polygonsOf(cairo_t* font, unsigned long index) {
    cairo_surface_t* nowhere = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
    cairo_t* pen = cairo_create(nowhere);
    cairo_set_tolerance(pen, 0.5);
    glyphPath(pen, font, index);
    const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> path(cairo_copy_path_flat(pen),
                                                                            cairo_path_destroy);
    Paths polygons;
    for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
        const cairo_path_data_t* data = path->data + i;
        if (data->header.type == CAIRO_PATH_CLOSE_PATH) continue;
        if (data->header.type == CAIRO_PATH_MOVE_TO) polygons.emplace_back();
        polygons.back().emplace_back(std::llround(data[1].point.x * kFine),
                                     std::llround(data[1].point.y * kFine));
    }
    cairo_destroy(pen);
    cairo_surface_destroy(nowhere);
    ClipperLib::SimplifyPolygons(polygons, ClipperLib::pftNonZero);
    return polygons;
}

static std::ptrdiff_t outerCount(const Paths& polygons) {
    return std::count_if(polygons.begin(), polygons.end(),
                         [](const Path& polygon) { return ClipperLib::Orientation(polygon); });
}

static Paths thinned(const Paths& polygons, int less) {
    constexpr double miterLimit = 2, arcTolerance = 0.25 * kFine, straight = 0.2 * kFine;
    Paths result;
    // Where a part of the glyph is thinner than its strokes it may not vanish.
    for (double off = less / ThinGlyphs::kParts; off >= 1; off *= 0.7) {
        ClipperLib::ClipperOffset offset(miterLimit, arcTolerance);
        offset.AddPaths(polygons, ClipperLib::jtRound, ClipperLib::etClosedPolygon);
        offset.Execute(result, -off * kFine);
        ClipperLib::CleanPolygons(result, straight);
        std::erase_if(result, [](const Path& polygon) { return polygon.size() < 3; });
        if (outerCount(result) >= outerCount(polygons)) return result;
    }
    return polygons;
}

const ThinGlyphs::Outline& ThinGlyphs::outline(cairo_t* font, const FontFile& file, unsigned long index,
                                               int less) {
    auto [entry, isNew] = outlines_.try_emplace({&file, index, less});
    if (!isNew) return entry->second;
    for (const Path& polygon : thinned(polygonsOf(font, index), less)) {
        auto& contour = entry->second.emplace_back();
        for (const ClipperLib::IntPoint& p : polygon)
            contour.push_back({static_cast<double>(p.X) / kFine, static_cast<double>(p.Y) / kFine});
    }
    return entry->second;
}

} // namespace host

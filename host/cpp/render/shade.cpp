#include "render/shade.h"

#include "geometry/face_triangles.h"
#include "render/style.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace host {

namespace {

/// A picture in which each place keeps the nearest of what was drawn there.
class DepthPicture {
public:
    DepthPicture(int width, int height)
        : width_(width), height_(height), colors_(static_cast<std::size_t>(width) * height, 0),
          depths_(colors_.size(), -std::numeric_limits<float>::infinity()) {}

    /// Corners in pixels, y down, z toward the viewer.
    void draw(const RPT3 (&t)[3], std::uint32_t color) {
        const double area = (t[1].x - t[0].x) * (t[2].y - t[0].y) - (t[1].y - t[0].y) * (t[2].x - t[0].x);
        if (!(std::fabs(area) > 0) || !std::isfinite(area)) return;
        const auto [lowY, highY] = std::minmax({t[0].y, t[1].y, t[2].y});
        const int last = std::min(pixel(highY, height_), height_ - 1);
        for (int y = pixel(lowY, height_); y <= last; ++y) {
            const auto [lowX, highX] = widthAt(t, std::clamp(y + 0.5, lowY, highY));
            // One more at each end, for the digits that a crossing has lost.
            const int end = std::min(pixel(highX + 1, width_), width_ - 1);
            for (int x = pixel(lowX - 1, width_); x <= end; ++x) drawPixel(t, area, x, y, color);
        }
    }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(colors_.data()); }

private:
    static int pixel(double at, int limit) {
        return static_cast<int>(std::clamp(std::floor(at), 0.0, static_cast<double>(limit)));
    }
    /// Where a level line enters and leaves a triangle.
    static std::pair<double, double> widthAt(const RPT3 (&t)[3], double y) {
        double low = std::numeric_limits<double>::infinity(), high = -low;
        for (int i = 0; i < 3; ++i) {
            const RPT3 &a = t[i], &b = t[(i + 1) % 3];
            if ((a.y < y && b.y < y) || (a.y > y && b.y > y)) continue;
            const double x = a.y == b.y ? a.x : a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
            low = std::min({low, x, a.y == b.y ? b.x : x});
            high = std::max({high, x, a.y == b.y ? b.x : x});
        }
        return {low, high};
    }
    void drawPixel(const RPT3 (&t)[3], double area, int x, int y, std::uint32_t color) {
        const double px = x + 0.5, py = y + 0.5;
        const auto part = [&](const RPT3& a, const RPT3& b) {
            return ((b.x - a.x) * (py - a.y) - (b.y - a.y) * (px - a.x)) / area;
        };
        const double w0 = part(t[1], t[2]), w1 = part(t[2], t[0]), w2 = part(t[0], t[1]);
        if (w0 < 0 || w1 < 0 || w2 < 0) return;
        const auto depth = static_cast<float>(w0 * t[0].z + w1 * t[1].z + w2 * t[2].z);
        const std::size_t at = static_cast<std::size_t>(y) * width_ + x;
        if (depth <= depths_[at]) return;
        depths_[at] = depth;
        colors_[at] = color;
    }

    int width_, height_;
    std::vector<std::uint32_t> colors_; ///< ARGB, 0 where nothing is
    std::vector<float> depths_;
};

/// How bright a face is, from its normal in view coordinates.
double brightness(const SightTriangle& t) {
    const RPT3 corners[3] = {t.a, t.b, t.c};
    const RPT3 n = areaVector(corners, 3);
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    if (!(length > 0)) return 1;
    constexpr RPT3 light{-0.36, 0.48, 0.8};
    const double side = n.z < 0 ? -1 : 1;
    const double lit = side * (n.x * light.x + n.y * light.y + n.z * light.z) / length;
    return 0.35 + 0.65 * std::max(0.0, lit);
}

std::uint32_t lit(const Rgb& color, double brightness) {
    // What is nearly black would show no form.
    const auto channel = [&](int value) {
        return static_cast<std::uint32_t>(std::lround(std::max(value, 90) * brightness));
    };
    return 0xFF000000u | channel(color.r) << 16 | channel(color.g) << 8 | channel(color.b);
}

} // namespace

void paintShaded(cairo_t* cairo, const Drawing& drawing, const Frame& frame, bool dark,
                 const std::vector<SeenTriangle>& triangles) {
    // Twice as fine as the picture, so that borders come out smooth.
    const double fine = std::max(frame.width, frame.height) <= 4000 ? 2 : 1;
    const int width = static_cast<int>(frame.width * fine), height = static_cast<int>(frame.height * fine);
    DepthPicture picture(width, height);
    for (const SeenTriangle& seen : triangles) {
        const auto place = [&](const RPT3& p) {
            const RPT at = frame.map(p.x, p.y);
            return RPT3{at.x * fine, at.y * fine, p.z * frame.scale};
        };
        const SightTriangle& t = seen.triangle;
        picture.draw({place(t.a), place(t.b), place(t.c)},
                     lit(visiblePen(drawing, seen.pen, dark), brightness(t)));
    }
    cairo_surface_t* image =
        cairo_image_surface_create_for_data(picture.bytes(), CAIRO_FORMAT_ARGB32, width, height, 4 * width);
    cairo_save(cairo);
    cairo_scale(cairo, 1 / fine, 1 / fine);
    cairo_set_source_surface(cairo, image, 0, 0);
    cairo_paint(cairo);
    cairo_restore(cairo);
    cairo_surface_finish(image);
    cairo_surface_destroy(image);
}

} // namespace host

#include "render/stroke_raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace host {

/// A line seen along its longer direction: steps go from pixel to pixel along it, at each of them a few
/// pixels across lie within reach.
struct StrokeRaster::Walk {
    RPT a, b;                       ///< ends: x along, y across, a.x <= b.x
    RPT unit;                       ///< direction
    double half;                    ///< of the line's width
    double most;                    ///< coverage of a pixel whose middle the line meets
    int steps, across;              ///< pixels of the picture along and across
    std::ptrdiff_t along_, across_; ///< from a pixel to the next, in bytes
    double reach() const { return half + 0.5; }
};

/// The picture of a context that is drawn on as it is: opaque pixels, no group, no clip, no matrix.
static cairo_surface_t* openPicture(cairo_t* cairo) {
    cairo_surface_t* surface = cairo_get_target(cairo);
    if (surface != cairo_get_group_target(cairo) ||
        cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE ||
        cairo_image_surface_get_format(surface) != CAIRO_FORMAT_RGB24)
        return nullptr;
    cairo_matrix_t matrix;
    cairo_get_matrix(cairo, &matrix);
    const bool isPlain = matrix.xx == 1 && matrix.yx == 0 && matrix.xy == 0 && matrix.yy == 1 &&
                         matrix.x0 == 0 && matrix.y0 == 0;
    cairo_rectangle_list_t* clip = cairo_copy_clip_rectangle_list(cairo);
    const bool isOpen = clip->status == CAIRO_STATUS_SUCCESS && clip->num_rectangles == 1 &&
                        clip->rectangles[0].x <= 0 && clip->rectangles[0].y <= 0 &&
                        clip->rectangles[0].width >= cairo_image_surface_get_width(surface) &&
                        clip->rectangles[0].height >= cairo_image_surface_get_height(surface);
    cairo_rectangle_list_destroy(clip);
    return isPlain && isOpen ? surface : nullptr;
}

StrokeRaster::StrokeRaster(cairo_t* cairo) : picture_(openPicture(cairo)) {
    if (!picture_) return;
    width_ = cairo_image_surface_get_width(picture_);
    height_ = cairo_image_surface_get_height(picture_);
    covered_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    box_ = {width_, height_, 0, 0};
}

/// Cuts the line to the picture and `spare` around it (Liang and Barsky). False when nothing is left.
bool StrokeRaster::clip(RPT& a, RPT& b, double spare) const {
    double from = 0, to = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    const auto cut = [&](double direction, double distance) {
        if (direction == 0) return distance >= 0;
        if (direction < 0)
            from = std::max(from, distance / direction);
        else
            to = std::min(to, distance / direction);
        return from <= to;
    };
    if (!cut(-dx, a.x + spare) || !cut(dx, width_ + spare - a.x) || !cut(-dy, a.y + spare) ||
        !cut(dy, height_ + spare - a.y))
        return false;
    const RPT start = a;
    if (to < 1) b = {start.x + to * dx, start.y + to * dy};
    if (from > 0) a = {start.x + from * dx, start.y + from * dy};
    return true;
}

void StrokeRaster::widen(const RPT& a, const RPT& b, double spare) {
    const auto low = [&](double x, double y) {
        return std::max(0, static_cast<int>(std::min(x, y) - spare));
    };
    const auto high = [&](double x, double y, int most) {
        return std::min(most, static_cast<int>(std::max(x, y) + spare + 1));
    };
    box_.firstX = std::min(box_.firstX, low(a.x, b.x));
    box_.firstY = std::min(box_.firstY, low(a.y, b.y));
    box_.endX = std::max(box_.endX, high(a.x, b.x, width_));
    box_.endY = std::max(box_.endY, high(a.y, b.y, height_));
}

void StrokeRaster::capsule(RPT a, RPT b, double half) {
    if (!clip(a, b, half + 2)) return;
    widen(a, b, half + 2);
    Walk walk;
    walk.half = half;
    walk.most = std::min(1.0, 2 * half);
    const bool isSteep = std::fabs(b.y - a.y) > std::fabs(b.x - a.x);
    walk.steps = isSteep ? height_ : width_;
    walk.across = isSteep ? width_ : height_;
    walk.along_ = isSteep ? width_ : 1;
    walk.across_ = isSteep ? 1 : width_;
    walk.a = isSteep ? RPT{a.y, a.x} : a;
    walk.b = isSteep ? RPT{b.y, b.x} : b;
    if (walk.a.x > walk.b.x) std::swap(walk.a, walk.b);
    const double length = std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
    walk.unit = length > 0 ? RPT{(walk.b.x - walk.a.x) / length, (walk.b.y - walk.a.y) / length} : RPT{1, 0};

    const auto step = [&](double x) { return std::clamp(static_cast<int>(std::floor(x)), 0, walk.steps); };
    const double reach = walk.reach();
    const int first = step(walk.a.x - reach), end = step(walk.b.x + reach + 1);
    const int bodyFirst = std::min(step(walk.a.x + reach + 1), end);
    const int bodyEnd = std::max(step(walk.b.x - reach), bodyFirst);
    coverEnds(walk, first, bodyFirst);
    coverSpan(walk, bodyFirst, bodyEnd);
    coverEnds(walk, bodyEnd, end);
}

/// How much of a pixel is covered, 0 … 255: as of a pixel turned along the line.
static std::uint8_t coverage(double distance, double reach, double most) {
    return static_cast<std::uint8_t>(std::clamp(reach - distance, 0.0, most) * 255 + 0.5);
}

/// Steps at which the line's ends are out of reach: what counts is the distance across.
void StrokeRaster::coverSpan(const Walk& walk, int first, int end) {
    const double slope = walk.unit.y / walk.unit.x, reach = walk.reach(), wide = reach / walk.unit.x;
    const double start = walk.a.y + (0.5 - walk.a.x) * slope;
    for (int i = first; i < end; ++i) {
        const double middle = start + i * slope;
        const int low = std::max(0, static_cast<int>(middle - wide + 0.5));
        const int high = std::min(walk.across - 1, static_cast<int>(std::floor(middle + wide - 0.5)));
        std::uint8_t* pixel = covered_.data() + i * walk.along_ + low * walk.across_;
        double distance = (low + 0.5 - middle) * walk.unit.x;
        for (int j = low; j <= high; ++j, pixel += walk.across_, distance += walk.unit.x)
            *pixel = std::max(*pixel, coverage(std::fabs(distance), reach, walk.most));
    }
}

/// Steps about the line's ends, which are round.
void StrokeRaster::coverEnds(const Walk& walk, int first, int end) {
    const double reach = walk.reach();
    const auto [lowest, highest] = std::minmax(walk.a.y, walk.b.y);
    const double length = (walk.b.x - walk.a.x) * walk.unit.x + (walk.b.y - walk.a.y) * walk.unit.y;
    for (int i = first; i < end; ++i) {
        // Where the line is at this step, or its nearer end.
        const double x = std::clamp(i + 0.5, walk.a.x, walk.b.x);
        const double middle =
            std::clamp(walk.a.y + (x - walk.a.x) * walk.unit.y / walk.unit.x, lowest, highest);
        const double wide = reach / walk.unit.x;
        const int low = std::max(0, static_cast<int>(std::floor(middle - wide)));
        const int high = std::min(walk.across - 1, static_cast<int>(std::floor(middle + wide)));
        for (int j = low; j <= high; ++j) {
            const double dx = i + 0.5 - walk.a.x, dy = j + 0.5 - walk.a.y;
            const double t = std::clamp(dx * walk.unit.x + dy * walk.unit.y, 0.0, length);
            const double offX = dx - t * walk.unit.x, offY = dy - t * walk.unit.y;
            const double distance = std::sqrt(offX * offX + offY * offY);
            std::uint8_t& pixel = covered_[static_cast<std::size_t>(i * walk.along_ + j * walk.across_)];
            pixel = std::max(pixel, coverage(distance, reach, walk.most));
        }
    }
}

void StrokeRaster::curve(const RPT& from, const Bezier& b) {
    constexpr double finest = 0.1; // pixels off the curve
    const double first =
        std::hypot(from.x - 2 * b.control1.x + b.control2.x, from.y - 2 * b.control1.y + b.control2.y);
    const double second =
        std::hypot(b.control1.x - 2 * b.control2.x + b.end.x, b.control1.y - 2 * b.control2.y + b.end.y);
    const double wish = std::ceil(std::sqrt(0.75 * std::max(first, second) / finest));
    const int steps = wish >= 1 ? static_cast<int>(std::min(wish, 4096.0)) : 1;
    RPT at = from;
    for (int i = 1; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps, s = 1 - t;
        const double w0 = s * s * s, w1 = 3 * s * s * t, w2 = 3 * s * t * t, w3 = t * t * t;
        const RPT to = i == steps ? b.end
                                  : RPT{w0 * from.x + w1 * b.control1.x + w2 * b.control2.x + w3 * b.end.x,
                                        w0 * from.y + w1 * b.control1.y + w2 * b.control2.y + w3 * b.end.y};
        line(at, to);
        at = to;
    }
}

/// Lays a colour over pixels: rounded as Cairo does it.
/// No branches: what is covered changes from pixel to pixel.
static void layOver(std::uint32_t* pixels, const std::uint8_t* covered, int count, std::uint32_t color) {
    constexpr std::uint32_t two = 0x00FF00FF, halves = 0x00800080; // two channels in one number
    const std::uint32_t colorOuter = color & two, colorMiddle = color >> 8 & two;
    // a * b / 255, rounded, of both channels.
    const auto product = [](std::uint32_t pair, std::uint32_t factor) {
        const std::uint32_t value = pair * factor + halves;
        return (value + (value >> 8 & two)) >> 8 & two;
    };
    for (int i = 0; i < count; ++i) {
        const std::uint32_t part = covered[i], rest = 255 - part, below = pixels[i];
        const std::uint32_t outer = product(colorOuter, part) + product(below & two, rest);
        const std::uint32_t middle = product(colorMiddle, part) + product(below >> 8 & two, rest);
        pixels[i] = outer | middle << 8;
    }
}

void StrokeRaster::paintRow(int y, std::uint32_t color) {
    std::uint8_t* covered = covered_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
    auto* pixels = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(picture_) +
                                                    static_cast<std::ptrdiff_t>(y) *
                                                        cairo_image_surface_get_stride(picture_));
    int x = box_.firstX;
    for (; x + 8 <= box_.endX; x += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, covered + x, 8);
        if (eight != 0) layOver(pixels + x, covered + x, 8, color);
    }
    layOver(pixels + x, covered + x, box_.endX - x, color);
    std::fill(covered + box_.firstX, covered + box_.endX, std::uint8_t{0});
}

void StrokeRaster::paint(const Rgb& color) {
    if (box_.firstX >= box_.endX || box_.firstY >= box_.endY) return;
    cairo_surface_flush(picture_);
    const auto value = static_cast<std::uint32_t>(color.r << 16 | color.g << 8 | color.b);
    for (int y = box_.firstY; y < box_.endY; ++y) paintRow(y, value);
    cairo_surface_mark_dirty_rectangle(picture_, box_.firstX, box_.firstY, box_.endX - box_.firstX,
                                       box_.endY - box_.firstY);
    box_ = {width_, height_, 0, 0};
}

} // namespace host

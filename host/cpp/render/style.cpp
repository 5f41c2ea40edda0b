#include "render/style.h"

#include "render/render.h"

#include <algorithm>
#include <cmath>

namespace host {

static Rgb rgbOf(int value) {
    return {static_cast<std::uint8_t>(value >> 16 & 0xFF), static_cast<std::uint8_t>(value >> 8 & 0xFF),
            static_cast<std::uint8_t>(value & 0xFF)};
}

static Rgb penColor(const Drawing& drawing, int pen) {
    if (const auto own = drawing.pens.find(pen); own != drawing.pens.end()) return own->second;
    if (const auto look = drawing.penLooks.find(pen); look != drawing.penLooks.end())
        return look->second.trueColor >= 0 ? rgbOf(look->second.trueColor) : dxfColor(look->second.color);
    return paletteColor(std::clamp(pen, 0, 1023));
}

double penWidth(const Drawing& drawing, int pen, double lineWidth) {
    constexpr double usual = 25, thinnest = 0.5; // hundredths of a millimetre; of the usual width
    const auto look = drawing.penLooks.find(pen);
    if (look == drawing.penLooks.end()) return lineWidth;
    return lineWidth * std::max(thinnest, look->second.width / usual);
}

Rgb visiblePen(const Drawing& drawing, int pen, bool dark) {
    const Rgb color = penColor(drawing, pen);
    if (dark && std::max({color.r, color.g, color.b}) < 40) return {255, 255, 255};
    if (!dark && std::min({color.r, color.g, color.b}) > 235) return {0, 0, 0};
    return color;
}

/// Luminance as the eye has it, 0 … 1.
static double luminance(const Rgb& color) {
    const auto linear = [](std::uint8_t value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
}

void makeLegible(Drawing& drawing, bool dark) {
    constexpr double lightest = 0.3, darkest = 0.1; // three times the contrast that no contrast has
    constexpr int penCount = 1024, steps = 64;
    const double goal = dark ? 255 : 0;
    for (int pen = 0; pen < penCount; ++pen) {
        const Rgb color = visiblePen(drawing, pen, dark);
        Rgb tone = color;
        const auto mixed = [&](std::uint8_t value, int step) {
            return static_cast<std::uint8_t>(value + (goal - value) * step / steps);
        };
        const auto isHard = [&] { return dark ? luminance(tone) < darkest : luminance(tone) > lightest; };
        for (int step = 1; step <= steps && isHard(); ++step)
            tone = {mixed(color.r, step), mixed(color.g, step), mixed(color.b, step)};
        drawing.pens[pen] = tone;
    }
}

void setSource(cairo_t* cairo, const Rgb& color, double alpha) {
    cairo_set_source_rgba(cairo, color.r / 255.0, color.g / 255.0, color.b / 255.0, alpha);
}

/// Dashes and gaps in turn, beginning with a dash: neighbours of a kind are joined.
static std::vector<double> alternate(const std::vector<double>& dashes) {
    std::vector<double> lengths;
    for (const double dash : dashes) {
        const bool isGap = dash < 0;
        if (isGap == (lengths.size() % 2 == 1))
            lengths.push_back(std::fabs(dash));
        else if (!lengths.empty())
            lengths.back() += std::fabs(dash);
        else
            lengths = {0, std::fabs(dash)};
    }
    if (lengths.size() % 2 == 1) lengths.push_back(0);
    return lengths;
}

std::vector<double> deviceDashes(const std::vector<double>& dashes, double deviceScale, double lineWidth) {
    std::vector<double> lengths = alternate(dashes);
    double total = 0, gaps = 0;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        lengths[i] *= deviceScale;
        if (i % 2 == 0)
            lengths[i] = std::max(lengths[i], lineWidth); // a dot is as long as the line is wide
        else
            gaps += lengths[i];
        total += lengths[i];
    }
    if (!std::isfinite(total) || total < 4 * lineWidth || gaps < lineWidth || total > 1e6) return {};
    return lengths;
}

std::vector<double> lineTypeDashes(const Drawing& drawing, int lineType, const Frame& frame) {
    const auto found = drawing.lineTypes.find(lineType);
    if (found == drawing.lineTypes.end()) return {};
    return deviceDashes(found->second.dashes, frame.unitsPerMm * frame.scale, frame.lineWidth);
}

void setDashes(cairo_t* cairo, const std::vector<double>& dashes, double phase) {
    cairo_set_dash(cairo, dashes.data(), static_cast<int>(dashes.size()), phase);
}

} // namespace host

// Colours of pens. The pens of the 255 DXF colours have those colours; the others spread over the colour
// space, so that any colour has a pen near it.
#include "drawing/drawing.h"
#include "ds.h"

#include <array>
#include <cmath>

namespace host {
namespace {

constexpr int penCount = 1024;

/// The pen of each DXF colour from 0 (by block) to 255.
constexpr std::array<short, 256> penOfColor = {
    15,  2,    3,   4,    5,   853,  937, 1,   14,  12,  2,   355, 112, 361, 358, 404, 171, 1019, 286, 255,
    391, 397,  396, 403,  400, 388,  405, 431, 411, 255, 7,   439, 113, 445, 442, 267, 447, 473,  474, 255,
    475, 481,  480, 487,  484, 267,  489, 515, 516, 255, 3,   523, 115, 508, 526, 530, 531, 536,  537, 255,
    559, 565,  564, 571,  568, 556,  573, 557, 558, 255, 601, 607, 118, 613, 610, 619, 615, 599,  600, 255,
    643, 649,  648, 655,  652, 682,  657, 641, 663, 339, 4,   691, 690, 697, 694, 656, 699, 683,  705, 340,
    727, 733,  732, 718,  736, 724,  741, 746, 747, 339, 71,  754, 119, 739, 757, 766, 762, 767,  768, 339,
    72,  754,  120, 760,  757, 787,  762, 788, 217, 261, 5,   775, 121, 781, 774, 782, 783, 788,  789, 261,
    74,  796,  122, 802,  799, 787,  804, 788, 789, 261, 790, 796, 206, 823, 799, 205, 192, 809,  199, 261,
    811, 838,  816, 844,  820, 205,  825, 830, 199, 261, 853, 859, 123, 865, 862, 908, 867, 851,  204, 261,
    895, 880,  900, 886,  904, 892,  909, 914, 915, 339, 916, 922, 921, 907, 925, 188, 930, 935,  936, 339,
    77,  922,  124, 928,  925, 188,  930, 956, 957, 338, 937, 6,   942, 949, 946, 950, 951, 956,  957, 338,
    78,  964,  127, 970,  967, 955,  972, 956, 957, 338, 958, 964, 963, 991, 191, 976, 972, 977,  978, 339,
    979, 1006, 984, 1012, 988, 1018, 993, 998, 999, 255, 326, 320, 315, 311, 11,  304};

/// DXF colours 1 … 9 and 250 … 255, which stand outside the rule of hues.
constexpr Rgb baseColors[10] = {{255, 255, 255}, {255, 0, 0},    {255, 255, 0}, {0, 255, 0},
                                {0, 255, 255},   {0, 0, 255},    {255, 0, 255}, {255, 255, 255},
                                {128, 128, 128}, {192, 192, 192}};
constexpr std::uint8_t greys[6] = {51, 91, 132, 173, 214, 255};

std::uint8_t channel(int value) {
    return static_cast<std::uint8_t>(value);
}

/// Colours 10 … 249: tens are hues of 15 degrees, even units saturated, odd ones half, by falling brightness.
Rgb hueColor(int color) {
    constexpr int brightness[5] = {255, 204, 153, 127, 76};
    const int high = brightness[color % 10 / 2];
    const bool pale = color % 2 != 0;
    const int step = color / 10 - 1;                            // 15 degrees each
    const int quarter = step / 4 % 2 ? 4 - step % 4 : step % 4; // of the way to full, within 60 degrees
    const std::uint8_t top = channel(high);
    const std::uint8_t low = channel(pale ? high / 2 : 0);
    const std::uint8_t middle = channel(pale ? (4 * high + high * quarter) / 8 : high * quarter / 4);
    switch (step / 4) {
    case 0: return {top, middle, low};
    case 1: return {middle, top, low};
    case 2: return {low, top, middle};
    case 3: return {low, middle, top};
    case 4: return {middle, low, top};
    default: return {top, low, middle};
    }
}

/// The n-th point of a sequence that fills the colour cube evenly however long it is: each channel grows by
/// a power of the inverse of the root of x^4 = x + 1, so that no two channels ever fall into step.
Rgb spreadColor(int n) {
    constexpr double growth[3] = {0.8191725133961645, 0.6710436067037893, 0.5497004779019703};
    const auto at = [n](double step) {
        const double position = 0.5 + n * step;
        return channel(static_cast<int>((position - std::floor(position)) * 256));
    };
    return {at(growth[0]), at(growth[1]), at(growth[2])};
}

std::array<Rgb, penCount> makePalette() {
    std::array<Rgb, penCount> palette;
    std::array<bool, penCount> named{};
    for (int color = 1; color <= 255; ++color) {
        const auto pen = static_cast<std::size_t>(penOfColor[static_cast<std::size_t>(color)]);
        if (!named[pen]) palette[pen] = dxfColor(color);
        named[pen] = true;
    }
    int spread = 0;
    for (std::size_t pen = 0; pen < penCount; ++pen)
        if (!named[pen]) palette[pen] = spreadColor(spread++);
    return palette;
}

} // namespace

Rgb dxfColor(int color) {
    if (color < 1 || color > 255) return baseColors[0];
    if (color < 10) return baseColors[color];
    if (color >= 250) return {greys[color - 250], greys[color - 250], greys[color - 250]};
    return hueColor(color);
}

Rgb paletteColor(int pen) {
    static const std::array<Rgb, penCount> palette = makePalette();
    if (pen < 0 || pen >= penCount) return baseColors[0];
    return palette[static_cast<std::size_t>(pen)];
}

} // namespace host

int DsPaletteRgb(int color) {
    const host::Rgb rgb = host::dxfColor(color);
    return rgb.r << 16 | rgb.g << 8 | rgb.b;
}

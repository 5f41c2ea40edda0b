#include "dx_true_colors.h"

#include <algorithm>
#include <array>

namespace {

struct Rgb {
    int red, green, blue;
};

/// Colours 1 … 9 stand outside the rule of hues, and so do the greys from 250 on.
constexpr std::array<Rgb, 9> firstColors{{{255, 0, 0},
                                          {255, 255, 0},
                                          {0, 255, 0},
                                          {0, 255, 255},
                                          {0, 0, 255},
                                          {255, 0, 255},
                                          {255, 255, 255},
                                          {128, 128, 128},
                                          {192, 192, 192}}};
constexpr std::array<int, 6> greys{51, 91, 132, 173, 214, 255};

/// Colours 10 … 249: tens are hues of 15 degrees, even units saturated, odd ones half, by falling brightness.
Rgb hueColor(int color) {
    constexpr std::array<int, 5> brightness{255, 204, 153, 127, 76};
    const int high = brightness[static_cast<std::size_t>(color % 10 / 2)];
    const bool isPale = color % 2 != 0;
    const int low = isPale ? high / 2 : 0;
    const int step = color / 10 - 1;
    const int quarter = step / 4 % 2 ? 4 - step % 4 : step % 4; // of the way to full, within 60 degrees
    const int middle = isPale ? (4 * high + high * quarter) / 8 : high * quarter / 4;
    switch (step / 4) {
    case 0: return {high, middle, low};
    case 1: return {middle, high, low};
    case 2: return {low, high, middle};
    case 3: return {low, middle, high};
    case 4: return {middle, low, high};
    default: return {high, low, middle};
    }
}

Rgb rgbOf(int color) {
    if (color < 10) return firstColors[static_cast<std::size_t>(color - 1)];
    if (color < 250) return hueColor(color);
    const int grey = greys[static_cast<std::size_t>(color - 250)];
    return {grey, grey, grey};
}

int distance(Rgb a, Rgb b) {
    const int red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

} // namespace

int DxNearestColor(int rgb) {
    const Rgb wanted{rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF};
    int nearest = 1;
    for (int color = 2; color <= 255; ++color)
        if (distance(rgbOf(color), wanted) < distance(rgbOf(nearest), wanted)) nearest = color;
    return nearest;
}

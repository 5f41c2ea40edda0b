// A picture file for tests, made by hand: an uncompressed TIFF.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// `colour` gives 0xRRGGBB of the pixel in column x and row y from the top.
inline std::string tiffFile(int width, int height, const std::function<std::uint32_t(int, int)>& colour) {
    std::string bytes = "II*";
    const auto put = [&bytes](std::uint32_t value, int width4) {
        for (int i = 0; i < width4; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xff);
    };
    constexpr std::uint32_t entries = 9, directory = 8, bits = directory + 2 + entries * 12 + 4,
                            pixels = bits + 6;
    bytes += '\0';
    put(directory, 4);
    put(entries, 2);
    const auto entry = [&](std::uint32_t tag, std::uint32_t type, std::uint32_t count, std::uint32_t value) {
        put(tag, 2), put(type, 2), put(count, 4), put(value, 4);
    };
    constexpr std::uint32_t shortType = 3, longType = 4;
    const auto w = static_cast<std::uint32_t>(width), h = static_cast<std::uint32_t>(height);
    entry(256, longType, 1, w), entry(257, longType, 1, h), entry(258, shortType, 3, bits);
    entry(259, shortType, 1, 1), entry(262, shortType, 1, 2), entry(273, longType, 1, pixels);
    entry(277, shortType, 1, 3), entry(278, longType, 1, h), entry(279, longType, 1, w * h * 3);
    put(0, 4);
    for (int i = 0; i < 3; ++i) put(8, 2);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (const int shift : {16, 8, 0}) bytes += static_cast<char>(colour(x, y) >> shift & 0xff);
    return bytes;
}

/// Red above green in the left half, blue above white in the right one.
inline std::string fourColours(int width = 4, int height = 2) {
    return tiffFile(width, height, [=](int x, int y) -> std::uint32_t {
        const bool right = x >= width / 2, below = y >= height / 2;
        return right ? (below ? 0xffffffu : 0x0000ffu) : (below ? 0x00ff00u : 0xff0000u);
    });
}

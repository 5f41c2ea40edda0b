// Pictures of very many lines, which are drawn pixel by pixel: they must look as those of few lines do.
#include "render/frame.h"
#include "render/render.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace host {

namespace {

constexpr int kSize = 400;

Element element(ElementType type, double x, double y, int pen, double cx = 0, double cy = 0) {
    return {x, y, cx, cy, pen, 1, type, 0, 1};
}

/// Red, blue and black, and pens of four times the usual width, green and blue; 0 … 100 in both directions.
Drawing sheet() {
    Drawing d;
    d.pens = {{2, {255, 0, 0}}, {3, {0, 0, 255}}, {5, {0, 0, 0}}, {6, {0, 128, 0}}};
    d.penLooks[6].width = 100;
    d.penLooks[6].trueColor = 0x008000;
    d.penLooks[7] = d.penLooks[6];
    d.penLooks[7].trueColor = 0x0000FF;
    Pattern& corners = d.addPattern(false);
    corners.elements = {element(ElementType::Move, 0, 0, 5), element(ElementType::Draw, 0, 0, 5),
                        element(ElementType::Move, 100, 100, 5), element(ElementType::Draw, 100, 100, 5)};
    return d;
}

/// The chain in patterns of at most `most` elements, which end between chains.
Drawing drawingOf(const std::vector<std::vector<Element>>& chains, std::size_t most) {
    Drawing d = sheet();
    Pattern* pattern = &d.addPattern(false);
    for (const std::vector<Element>& chain : chains) {
        if (pattern->elements.size() + chain.size() > most) pattern = &d.addPattern(false);
        pattern->elements.insert(pattern->elements.end(), chain.begin(), chain.end());
    }
    return d;
}

/// Lengths from below a pixel to across the sheet, in all directions; arcs, circles, points.
std::vector<std::vector<Element>> mixture(int count, int pen) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(2, 98), turn(0, 6.28), chance(0, 1);
    std::vector<std::vector<Element>> chains;
    for (int i = 0; i < count; ++i) {
        const double x = place(random), y = place(random), angle = turn(random),
                     r = std::pow(chance(random), 3) * 40;
        const RPT to{std::clamp(x + r * std::cos(angle), 1.0, 99.0),
                     std::clamp(y + r * std::sin(angle), 1.0, 99.0)};
        const Element move = element(ElementType::Move, x, y, pen);
        const double reach = std::min({r / 8, x, y, 100 - x, 100 - y});
        switch (i % 4) {
        case 0:
            chains.push_back({move, element(ElementType::Draw, to.x, to.y, pen),
                              element(ElementType::Draw, to.x, y, pen)});
            break;
        case 1: chains.push_back({move, element(ElementType::Draw, to.x, y, pen)}); break;
        case 2: chains.push_back({element(ElementType::Circle, x + reach, y, pen, x, y)}); break;
        default:
            chains.push_back(
                {move, element(i % 8 == 3 ? ElementType::Point : ElementType::Draw, x, to.y, pen)});
        }
    }
    return chains;
}

class ManyLines : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }
    std::vector<std::uint32_t> picture(const Drawing& d) {
        const std::string path = (folder / "p.png").string();
        RenderOptions options;
        options.size = kSize;
        EXPECT_EQ(renderDrawing(d, path, options), "");
        cairo_surface_t* surface = cairo_image_surface_create_from_png(path.c_str());
        const auto* data = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface));
        const int stride = cairo_image_surface_get_stride(surface) / 4,
                  height = cairo_image_surface_get_height(surface);
        std::vector<std::uint32_t> pixels;
        for (int i = 0; data && i < stride * height; ++i) pixels.push_back(data[i] & 0xFFFFFF);
        cairo_surface_destroy(surface);
        return pixels;
    }
    fs::path folder = fs::temp_directory_path() / ("torva-many-" + std::to_string(getpid()));
};

struct Difference {
    double mean = 0; ///< of all channels, 0 … 255
    int most = 0;
    long drawn = 0; ///< pixels of the first picture that aren't white
};

Difference compare(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    Difference result;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        result.drawn += a[i] != 0xFFFFFF;
        for (int shift = 0; shift < 24; shift += 8) {
            const int off = std::abs(int(a[i] >> shift & 255) - int(b[i] >> shift & 255));
            result.mean += off;
            result.most = std::max(result.most, off);
        }
    }
    result.mean /= 3.0 * static_cast<double>(std::max<std::size_t>(a.size(), 1));
    return result;
}

} // namespace

TEST_F(ManyLines, LookAsFewDo) {
    // Pens thin and wide. Pixels at edges may differ by what 15 scan lines of a pixel can't tell apart.
    for (const int pen : {2, 5, 6}) {
        SCOPED_TRACE(pen);
        const auto chains = mixture(400, pen);
        const auto few = picture(drawingOf(chains, 200)), many = picture(drawingOf(chains, 100'000));
        ASSERT_EQ(few.size(), many.size());
        const Difference off = compare(few, many);
        EXPECT_GT(off.drawn, 2000);
        EXPECT_LT(off.mean, 2.0);
        EXPECT_LT(off.most, 128);
    }
}

TEST_F(ManyLines, OfOneColourCountOnceAndLaterColoursLieAbove) {
    // The same slanting line 300 times is as light at its edges as one.
    const std::vector<Element> line{element(ElementType::Move, 10, 10, 2),
                                    element(ElementType::Draw, 90, 63, 2)};
    const auto often = picture(drawingOf(std::vector(300, line), 100'000));
    std::vector<std::vector<Element>> once{line};
    for (int i = 0; i < 300; ++i) once.push_back({element(ElementType::Move, 50, 50, 2)});
    EXPECT_EQ(compare(often, picture(drawingOf(once, 100'000))).most, 0);
    // Wide blue lines go over the red one and leave no pixel that is more red than blue.
    std::vector<std::vector<Element>> both(300, line);
    std::vector<Element> blue = line;
    blue[0].pen = blue[1].pen = 7;
    both.insert(both.end(), 300, blue);
    const auto picked = picture(drawingOf(both, 100'000));
    EXPECT_GT(std::count(picked.begin(), picked.end(), 0x0000FFu), 50);
    EXPECT_TRUE(std::all_of(picked.begin(), picked.end(),
                            [](std::uint32_t p) { return (p >> 16 & 255) <= (p & 255); }));
}

TEST_F(ManyLines, FromAnywhereTouchNothingButThePicture) {
    for (const double far : {1e3, 1e7, 1e12, 1e300}) {
        SCOPED_TRACE(far);
        std::vector<std::vector<Element>> chains;
        for (int i = 0; i < 300; ++i) {
            const double turn = i * 0.0209;
            chains.push_back(
                {element(ElementType::Move, 50 - far * std::cos(turn), 50 - far * std::sin(turn), 2),
                 element(ElementType::Draw, 50 + far * std::cos(turn), 50 + far * std::sin(turn), 2),
                 element(ElementType::Circle, far, far, 2, 50, 50)});
        }
        const auto pixels = picture(drawingOf(chains, 100'000));
        EXPECT_GT(std::count_if(pixels.begin(), pixels.end(), [](std::uint32_t p) { return p != 0xFFFFFF; }),
                  100);
    }
}

} // namespace host

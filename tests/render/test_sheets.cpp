// Sheets with details of the model, and pictures of the drawing, in pictures.
#include "drawing/drawing.h"
#include "ge.h"
#include "picture_file.h"
#include "render/page.h"
#include "render/render.h"

#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace host {

namespace {

Element step(ElementType type, double x, double y, int pen) {
    Element e;
    e.type = type;
    e.x = x, e.y = y, e.pen = pen;
    return e;
}

/// A filled square about (x, y), of pen 1 red, 3 green, 5 blue in the palette of drawings.
void addSquare(Drawing& d, double x, double y, double side, int pen, const std::string& layer) {
    Pattern& p = d.addPattern(false);
    p.ids.layer = layer;
    Hatch& hatch = p.hatches.emplace_back();
    hatch.fillPen = pen;
    const double h = side / 2;
    Contour& c = hatch.contours.emplace_back();
    c = {step(ElementType::Move, x - h, y - h, pen), step(ElementType::Draw, x + h, y - h, pen),
         step(ElementType::Draw, x + h, y + h, pen), step(ElementType::Draw, x - h, y + h, pen),
         step(ElementType::Draw, x - h, y - h, pen)};
}

/// A rectangle as the outline of a detail; gives its pattern's number.
int addOutline(Drawing& d, double x, double y, double width, double height) {
    Pattern& p = d.addPattern(false);
    p.attributes = {{"object", "detailoutline"}};
    p.elements = {step(ElementType::Move, x - width / 2, y - height / 2, 1),
                  step(ElementType::Draw, x + width / 2, y + height / 2, 1)};
    return p.number;
}

class Sheets : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directories(folder);
        for (const auto& [pen, color] :
             {std::pair{1, Rgb{255, 0, 0}}, {3, Rgb{0, 255, 0}}, {5, Rgb{0, 0, 255}}})
            d.pens[pen] = color;
    }
    void TearDown() override {
        cairo_surface_destroy(surface);
        fs::remove_all(folder);
    }
    void render(const std::string& view, int size = 420) {
        const std::string path = (folder / "p.png").string();
        ASSERT_EQ(renderDrawing(d, path, {size, view}), "");
        cairo_surface_destroy(surface);
        surface = cairo_image_surface_create_from_png(path.c_str());
    }
    /// Colour of a pixel, a letter: r g b w, k black, ? anything else.
    char at(int x, int y) const {
        if (x < 0 || y < 0 || x >= cairo_image_surface_get_width(surface) ||
            y >= cairo_image_surface_get_height(surface))
            return '-';
        std::uint32_t value = 0;
        std::memcpy(
            &value,
            cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) + 4 * x, 4);
        switch (value & 0xffffff) {
        case 0xff0000: return 'r';
        case 0x00ff00: return 'g';
        case 0x0000ff: return 'b';
        case 0xffffff: return 'w';
        case 0x000000: return 'k';
        default: return '?';
        }
    }
    /// An A3 sheet (a millimetre is a pixel at size 420) with a detail of 200 by 100 in its middle.
    View& addSheet(double ratio, double turn = 0) {
        View sheet{"Sheet", 4, 3, 1};
        const int number = d.addView(sheet).number;
        View detail{"Detail", 4, 3, ratio};
        detail.kind = ViewKind::Detail;
        detail.clipped = true;
        detail.workId = 1;
        d.workPlanes[1] = {
            {0, 0, 0}, {std::cos(turn), std::sin(turn), 0}, {-std::sin(turn), std::cos(turn), 0}};
        detail.outline = addOutline(d, 0, 0, 200 / ratio, 100 / ratio);
        d.viewInserts.push_back({1, number, d.addView(detail).number, {210, 148.5, 0}, ratio});
        return d.views.back();
    }

    const fs::path folder = fs::temp_directory_path() / ("torva-sheets-" + std::to_string(getpid()));
    Drawing d;
    cairo_surface_t* surface = nullptr;
};

} // namespace

TEST_F(Sheets, ShowTheModelClippedAndAtItsScale) {
    addSquare(d, 0, 0, 400, 1, "A");
    addSquare(d, 500, 0, 400, 5, "B");
    d.addPattern(false).view = 1;
    addSheet(0.2);
    render("Sheet");
    EXPECT_EQ(cairo_image_surface_get_width(surface), 420);
    EXPECT_EQ(cairo_image_surface_get_height(surface), 297);
    const int x = 210, y = 148;
    EXPECT_EQ(at(x, y), 'r');
    EXPECT_EQ(at(x + 38, y), 'r');
    EXPECT_EQ(at(x + 50, y), 'w') << "400 at 1:5 is 80";
    EXPECT_EQ(at(x + 90, y), 'b');
    EXPECT_EQ(at(x + 110, y), 'w') << "clipped";
    EXPECT_EQ(at(x, y + 45), 'w');
    render("");
    EXPECT_EQ(at(420 / 4, 210 / 4), 'r') << "the model alone, without outlines";
}

TEST_F(Sheets, TurnFilterAndKeepTheirOwnContent) {
    addSquare(d, 300, 0, 100, 1, "A");
    addSquare(d, -300, 0, 100, 5, "B");
    View& detail = addSheet(0.2, std::acos(-1) / 2);
    detail.filter = "layer=\"A\" | layer=\"C\"";
    addSquare(d, 210, 148.5, 10, 3, "A");
    d.patterns.back().view = 1;
    render("Sheet");
    EXPECT_EQ(at(210, 148), 'g');
    EXPECT_EQ(at(270, 148), 'w');
    EXPECT_EQ(at(210, 148 + 60), 'w') << "beyond the frame: turned, the square is 60 below";
    d.views.back().clipped = false;
    render("Sheet");
    EXPECT_EQ(at(210, 148 + 60), 'r');
    EXPECT_EQ(at(210, 148 - 60), 'w') << "its layer doesn't show";
    EXPECT_EQ(filterLayers("layer=\"A \" | b\" | layer=\"C\""),
              (std::unordered_set<std::string>{"A \" | b", "C"}));
    render("");
    EXPECT_EQ(at(210, 35), 'w') << "what stands on a sheet isn't in the model";
}

TEST_F(Sheets, ArePagesInTheirOwnSize) {
    addSquare(d, 0, 0, 400, 1, "A");
    addSheet(0.2);
    View paper{"Letter", 4, 3, 1};
    paper.paperWidth = 216, paper.paperHeight = 279;
    d.addView(paper);
    EXPECT_THAT(pageViews(d), testing::ElementsAre("Default", "Sheet", "Letter"))
        << "a detail shows on its sheet";
    RenderOptions all;
    all.allViews = true;
    const std::string path = (folder / "p.pdf").string();
    ASSERT_EQ(renderDrawing(d, path, all), "");
    std::ifstream in(path, std::ios::binary);
    const std::string pdf((std::istreambuf_iterator<char>(in)), {});
    EXPECT_THAT(pdf, HasSubstr("/Count 3"));
    EXPECT_THAT(pdf, HasSubstr("MediaBox [ 0 0 1190.55"));
    EXPECT_THAT(pdf, HasSubstr("MediaBox [ 0 0 612.28"));
    EXPECT_THAT(renderDrawing(d, (folder / "q.png").string(), {100, "Shet"}),
                HasSubstr("no view named Shet. Its views: \"Default\", \"Sheet\", \"Detail\", \"Letter\""));
}

TEST_F(Sheets, ShowPicturesTurnedMirroredAndClipped) {
    const std::string file = (folder / "p.tif").string();
    std::ofstream(file, std::ios::binary) << fourColours(40, 20);
    Pattern& p = d.addPattern(false);
    p.bitmaps.push_back({file, 40, 20, {0, 100, 0}, {200, 0, 0}, {0, -100, 0}, {}});
    // A frame of 200 by 100 with a margin of 3 % in a picture 400 wide.
    const auto corners = [&] {
        render("", 400);
        const int w = cairo_image_surface_get_width(surface), h = cairo_image_surface_get_height(surface);
        return std::string{at(w / 4, h / 4), at(3 * w / 4, h / 4), at(w / 4, 3 * h / 4),
                           at(3 * w / 4, 3 * h / 4)};
    };
    EXPECT_EQ(corners(), "rbgw");
    p.bitmaps[0] = {file, 40, 20, {200, 100, 0}, {-200, 0, 0}, {0, -100, 0}, {}};
    EXPECT_EQ(corners(), "brwg") << "mirrored";
    p.bitmaps[0] = {file, 40, 20, {0, 0, 0}, {0, 100, 0}, {200, 0, 0}, {}};
    EXPECT_EQ(corners(), "bwrg") << "turned";
    p.bitmaps[0] = {
        file, 40, 20, {0, 100, 0}, {200, 0, 0}, {0, -100, 0}, {{0, 0}, {1, 0}, {1, 0.5}, {0, 0.5}}};
    EXPECT_EQ(corners(), "rbww") << "clipped";
    p.bitmaps[0].file = "/dev/zero";
    p.bitmaps[0].outline.clear();
    EXPECT_EQ(corners(), "wwww");
}

TEST_F(Sheets, DecodeAPictureOnce) {
    const std::string file = (folder / "p.tif").string();
    std::ofstream(file, std::ios::binary) << fourColours(400, 200);
    PictureCache cache;
    cache.wish(file, 40, 10);
    cache.wish(file, 10, 20);
    for (int i = 0; i < 3; ++i) ASSERT_NE(cache.surface(file), nullptr);
    EXPECT_EQ(cache.decoded(), 1);
    EXPECT_EQ(cairo_image_surface_get_width(cache.surface(file)), 64)
        << "as large as it is shown, and a little more";
    EXPECT_EQ(cache.surface("/none"), nullptr);
}

} // namespace host

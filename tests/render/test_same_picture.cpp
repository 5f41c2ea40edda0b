// The picture of a sheet and that of the model show the same geometry where a viewport shows the model.
#include "../import/drawn.h"

#include "drawing/drawing.h"
#include "drawing/host_state.h"
#include "render/render.h"

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>

namespace {

/// Which pixels of a picture are red, and the rectangle that they fill.
class Ink {
public:
    explicit Ink(const std::string& path) : surface_(cairo_image_surface_create_from_png(path.c_str())) {
        width_ = cairo_image_surface_get_width(surface_);
        height_ = cairo_image_surface_get_height(surface_);
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                if (!at(x, y)) continue;
                left = std::min(left, x), right = std::max(right, x);
                top = std::min(top, y), bottom = std::max(bottom, y);
            }
    }
    Ink(const Ink&) = delete;
    Ink& operator=(const Ink&) = delete;
    ~Ink() { cairo_surface_destroy(surface_); }

    bool at(int x, int y) const {
        if (x < 0 || y < 0 || x >= width_ || y >= height_) return false;
        std::uint32_t value = 0;
        std::memcpy(
            &value,
            cairo_image_surface_get_data(surface_) + y * cairo_image_surface_get_stride(surface_) + 4 * x, 4);
        return (value & 0xff0000) == 0xff0000 && (value & 0xff) < 0x80; // half covered by a red line
    }
    bool near(double x, double y, int reach) const {
        const int column = static_cast<int>(std::lround(x)), row = static_cast<int>(std::lround(y));
        for (int j = -reach; j <= reach; ++j)
            for (int i = -reach; i <= reach; ++i)
                if (at(column + i, row + j)) return true;
        return false;
    }

    int left = 1 << 20, right = -1, top = 1 << 20, bottom = -1;

private:
    cairo_surface_t* surface_;
    int width_ = 0, height_ = 0;
};

/// Drawn pixels of one picture that have none within a pixel of the other, laid over it by their rectangles.
int strangers(const Ink& a, const Ink& b) {
    int count = 0;
    const double x = static_cast<double>(b.right - b.left) / (a.right - a.left),
                 y = static_cast<double>(b.bottom - b.top) / (a.bottom - a.top);
    const int reach = static_cast<int>(std::ceil(std::max(x, 1.0)));
    for (int row = a.top; row <= a.bottom; ++row)
        for (int column = a.left; column <= a.right; ++column)
            count += a.at(column, row) &&
                     !b.near(b.left + (column - a.left) * x, b.top + (row - a.top) * y, reach);
    return count;
}

/// Lines, arcs, circles and a spline within a frame of 200 by 120 about (x, y), and a sheet whose viewport
/// shows it at `scale`.
DxfText drawing(double x, double y, double scale) {
    std::mt19937 random(7);
    const auto within = [&](double from, double size) {
        return from + std::uniform_real_distribution<double>(-size / 2, size / 2)(random);
    };
    DxfText text = dxf().header("AC1015").layer("A", 1);
    text.record("BLOCK_RECORD", {{5, "2"}, {2, "*Paper_Space"}, {340, "22"}});
    for (int i = 0; i < 20; ++i)
        text.entity("LINE", DxfGroups{{8, "A"}} + at(10, {within(x, 200), within(y, 120)}) +
                                at(11, {within(x, 200), within(y, 120)}));
    for (int i = 0; i < 5; ++i) {
        const DxfGroups middle = DxfGroups{{8, "A"}, {40, "25"}} + at(10, {within(x, 140), within(y, 60)});
        text.entity("CIRCLE", middle);
        text.entity("ARC", middle + DxfGroups{{40, "28"}, {50, "20"}, {51, "250"}});
    }
    DxfGroups frame = {{8, "A"}, {90, "4"}, {70, "1"}};
    for (const auto& [i, j] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
        frame = frame + at(10, {x + 100 * i, y + 60 * j});
    text.entity("LWPOLYLINE", frame);
    text.entity("VIEWPORT", DxfGroups{{67, "1"}, {69, "2"}} + at(10, {210, 148.5, 0}) +
                                DxfGroups{{40, "320"}, {41, "240"}} + at(12, {x, y}) + at(16, {0, 0, 1}) +
                                at(45, {240 / scale}));
    return text.section("OBJECTS",
                        {{0, "LAYOUT"},
                         {5, "22"},
                         {100, "AcDbPlotSettings"},
                         {44, "420"},
                         {45, "297"},
                         {100, "AcDbLayout"},
                         {1, "Plan"},
                         {330, "2"}},
                        true);
}

} // namespace

TEST(SheetAndModel, AgreeWithinAPixelAtAnyScale) {
    const TempDir folder;
    ImportOptions options = unshifted();
    options.numbers["&DxfParseExt"] = 0;
    options.numbers["&DxfPaper"] = 2;
    options.config = flags("READ_LAYER=ATTR\nPAPER_SIZE=1\n");
    for (const double scale : {1.0, 0.5, 1.37, 1.0 / 0.7}) {
        for (const double far : {0.0, 12'345.6}) {
            ASSERT_EQ(importText(drawing(far, -far, scale).text(), options).stat, 0);
            const auto picture = [&](const std::string& view) {
                const std::string path = folder.file("p" + view + ".png");
                host::RenderOptions as;
                as.size = 1500, as.view = view;
                EXPECT_EQ(host::renderDrawing(host::openDrawing(), path, as), "");
                return path;
            };
            const Ink model(picture("")), sheet(picture("Plan"));
            ASSERT_GT(model.right, model.left + 1000);
            const double expected = 200 * scale * 1500 / 420;
            EXPECT_NEAR(sheet.right - sheet.left, expected, 2) << scale << " " << far;
            EXPECT_EQ(strangers(model, sheet), 0) << scale << " " << far;
            EXPECT_EQ(strangers(sheet, model), 0) << scale << " " << far;
        }
    }
}

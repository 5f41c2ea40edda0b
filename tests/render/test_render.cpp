// Pictures: what stands where, in which colour, and that no drawing whatsoever breaks the drawing of it.
#include "faces.h"
#include "render/curves.h"
#include "render/frame.h"
#include "render/plan_of_space.h"
#include "render/render.h"
#include "render/style.h"

#include "ov_text.h"
#include "text/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <unistd.h>

namespace fs = std::filesystem;
using std::numbers::pi;
using testing::ElementsAre;
using testing::HasSubstr;

namespace host {

namespace {

constexpr int kBlack = 0x000000, kWhite = 0xFFFFFF, kRed = 0xFF0000, kBlue = 0x0000FF;

Element move(double x, double y) {
    return {x, y, 0, 0, 1, 1, ElementType::Move, 0, 0};
}
Element draw(double x, double y, int pen, std::int16_t lineType = 1) {
    return {x, y, 0, 0, pen, lineType, ElementType::Draw, 0, 0};
}
Element arc(double x, double y, double cx, double cy, bool ccw, int pen) {
    return {x, y, cx, cy, pen, 1, ElementType::Arc, 0, ccw};
}
Element circle(double x, double y, double cx, double cy, int pen) {
    return {x, y, cx, cy, pen, 1, ElementType::Circle, 0, 0};
}
Contour square(double low, double high) {
    return {move(low, low), draw(high, low, 1), draw(high, high, 1), draw(low, high, 1), draw(low, low, 1)};
}

/// A drawing of the square 0 … 100 with pens 2 red, 3 blue, 4 white, 5 black.
Drawing sheet() {
    Drawing d;
    d.pens = {{2, {255, 0, 0}}, {3, {0, 0, 255}}, {4, {255, 255, 255}}, {5, {0, 0, 0}}};
    Pattern& p = d.addPattern(false);
    p.elements = {move(0, 0), draw(0, 0, 5), move(100, 100), draw(100, 100, 5)};
    return d;
}

class Pictures : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override {
        cairo_surface_destroy(surface);
        fs::remove_all(folder);
    }
    void render(const Drawing& d, bool dark = false) {
        RenderOptions options;
        options.size = 1000, options.dark = dark;
        render(d, options, d.extents());
    }
    /// `shown`: what the picture shows, as it lies in it.
    void render(const Drawing& d, const RenderOptions& options, const Extents& shown) {
        const std::string path = (folder / "p.png").string();
        ASSERT_EQ(renderDrawing(d, path, options), "");
        cairo_surface_destroy(surface);
        surface = cairo_image_surface_create_from_png(path.c_str());
        ASSERT_EQ(cairo_surface_status(surface), CAIRO_STATUS_SUCCESS);
        frame = fitFrame(shown, options.size);
    }
    /// Colour at a point of the drawing: the strongest difference from the background around it.
    int at(double x, double y, int background = kWhite) const {
        const RPT p = frame.map(x, y);
        int found = background, best = 0;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                const int color = pixel(static_cast<int>(p.x) + dx, static_cast<int>(p.y) + dy);
                int difference = 0;
                for (const int shift : {0, 8, 16})
                    difference += std::abs((color >> shift & 255) - (background >> shift & 255));
                if (difference > best) best = difference, found = color;
            }
        }
        return sharpen(found, background);
    }

    /// Part of the picture's square that isn't background.
    double painted() const {
        const RPT low = frame.map(0, 100), high = frame.map(100, 0);
        int count = 0, all = 0;
        for (int x = static_cast<int>(low.x) + 1; x < static_cast<int>(high.x); ++x)
            for (int y = static_cast<int>(low.y) + 1; y < static_cast<int>(high.y); ++y, ++all)
                count += pixel(x, y) != kWhite;
        return static_cast<double>(count) / all;
    }

    const fs::path folder = fs::temp_directory_path() / ("torva-render-" + std::to_string(getpid()));
    cairo_surface_t* surface = nullptr;
    Frame frame;

private:
    int pixel(int x, int y) const {
        const unsigned char* data = cairo_image_surface_get_data(surface);
        std::uint32_t value = 0;
        std::memcpy(&value, data + y * cairo_image_surface_get_stride(surface) + 4 * x, 4);
        return static_cast<int>(value & 0xFFFFFF);
    }
    /// Lines are smoothed: a channel that differs well from the background's counts as its opposite.
    static int sharpen(int color, int background) {
        int full = 0;
        for (const int shift : {0, 8, 16}) {
            const int channel = background >> shift & 255;
            const bool differs = std::abs((color >> shift & 255) - channel) > 60;
            full |= (differs ? 255 - channel : channel) << shift;
        }
        return full;
    }
};

} // namespace

TEST_F(Pictures, ElementsStandWhereTheyShouldInTheirColours) {
    Drawing d = sheet();
    auto& elements = d.patterns[0].elements;
    elements.insert(elements.end(),
                    {move(10, 10), draw(90, 10, 2), move(30, 50), arc(70, 50, 50, 50, true, 3),
                     circle(55, 80, 50, 80, 2), move(10, 90), draw(10, 90, 2)});
    d.patterns[0].faceLists = {faceList({{80, 40, 9}, {95, 40, 0}, {95, 60, 5}}, 3)};
    render(d);
    EXPECT_EQ(at(50, 10), kRed);
    EXPECT_EQ(at(50, 30), kBlue) << "counter-clockwise from the left: through the bottom";
    EXPECT_EQ(at(50, 75), kRed) << "lowest point of the circle";
    EXPECT_EQ(at(50, 70), kWhite);
    EXPECT_EQ(at(45, 80), kRed);
    EXPECT_EQ(at(10, 90), kRed) << "a point";
    EXPECT_EQ(at(87.5, 50), kBlue) << "the face's closing edge";
    elements[5].pen = 4, elements[7].ccw = 0;
    render(d);
    EXPECT_EQ(at(50, 10), kBlack) << "white lines stay visible";
    EXPECT_EQ(at(50, 70), kBlue) << "clockwise: through the top";
    elements[5].pen = 5;
    render(d, true);
    EXPECT_EQ(at(50, 10, kBlack), kWhite) << "and black ones on black";
    d.addPattern(true).elements = {move(20, 20), draw(80, 20, 2)};
    d.addPattern(false).elements = {move(20, 25), draw(80, 25, 2)};
    d.patterns[2].visible = false;
    render(d);
    EXPECT_EQ(at(50, 20), kWhite) << "scratch patterns are no content";
    EXPECT_EQ(at(50, 25), kWhite) << "hidden";
}

TEST_F(Pictures, InSpaceWhatStandsInFrontHidesTheRest) {
    Drawing d = sheet();
    d.patterns[0].elements.insert(d.patterns[0].elements.end(), {move(40, 90), draw(60, 90, 2)});
    Text& text = d.patterns[0].texts.emplace_back(); // seen from its edge
    text.lines = {"flat"}, text.x = 50, text.y = 20;
    Pattern& space = d.addPattern(false);
    space.faceLists = {faceList({{20, 50, 0}, {80, 50, 0}, {80, 50, 60}, {20, 50, 60}}, 3)};
    space.curves = {{{{0, 80, 30}, {100, 80, 30}}, 2}};
    space.elements = {move(20, 50), draw(80, 50, 2), draw(95, 95, 2)}; // the plan of the face, a line beside
    space.pointClouds = {{{{90, 0, 50}}, {2}}};
    Pattern& upright = d.addPattern(false); // on a plane of its own, in front of the face
    upright.workId = 1;
    d.workPlanes[1] = {{0, 40, 0}, {1, 40, 0}, {0, 40, 1}};
    upright.elements = {move(30, 10), draw(70, 10, 2)};
    RenderOptions options;
    options.size = 1000, options.inSpace = true, options.direction = {0, -5, 0};
    const Extents shown{0, 0, 100, 60, false};
    render(d, options, shown);
    EXPECT_EQ(at(50, 30), kRed) << "a wireframe";
    EXPECT_EQ(at(20, 45), kBlue);
    EXPECT_EQ(at(30, 0), kBlue) << "not its plan, which would lie over it";
    EXPECT_EQ(at(90, 0), kRed) << "but what is flat";
    options.hidden = true;
    render(d, options, shown);
    EXPECT_EQ(at(50, 30), kWhite);
    EXPECT_EQ(at(10, 30), kRed);
    EXPECT_EQ(at(90, 50), kRed) << "a point of a cloud";
    EXPECT_EQ(at(50, 10), kRed) << "what stands on a plane";
    options.hidden = false, options.shade = true;
    render(d, options, shown);
    EXPECT_EQ(at(50, 45), kBlue) << "lit";
    EXPECT_EQ(at(10, 45), kWhite);
    options.view = "Default";
    EXPECT_NE(renderDrawing(d, (folder / "p.png").string(), options), "");
}

TEST_F(Pictures, InSpaceAnArcIsThePlanOfItsWallAlone) {
    const auto arcIsBeside = [](const FaceList& faces) {
        Pattern pattern;
        pattern.faceLists = {faces};
        Element arc = draw(10, 0, 1);
        arc.type = ElementType::Arc, arc.cx = 5, arc.ccw = 0;
        pattern.elements = {move(0, 0), arc};
        PlanOfSpace plan(10);
        plan.add(pattern);
        plan.finish();
        return !plan.elementsBeside(pattern).elements.empty();
    };
    FaceList posts = faceList({{0, 0, 0}, {0, -1, 0}, {0, -1, 3}, {0, 0, 3}});
    addFace(posts, {{10, 0, 0}, {10, -1, 0}, {10, -1, 3}, {10, 0, 3}});
    EXPECT_TRUE(arcIsBeside(posts)) << "between two posts";
    FaceList wall;
    const auto foot = [](int i) {
        const double angle = std::acos(-1) * i / 18;
        return RPT{5 + 5 * std::cos(angle), 5 * std::sin(angle)};
    };
    for (int i = 0; i < 18; ++i) {
        const RPT a = foot(i), b = foot(i + 1);
        addFace(wall, {{a.x, a.y, 0}, {b.x, b.y, 0}, {b.x, b.y, 3}, {a.x, a.y, 3}});
    }
    EXPECT_FALSE(arcIsBeside(wall));
}

TEST_F(Pictures, LineTypesAreDashedAtTheDrawingsScale) {
    Drawing d = sheet();
    d.unit = 5, d.scale = 0.01; // a metre is 10 mm on the sheet
    d.lineTypes[2] = {"DASHED", {100, -100}};
    d.lineTypes[3] = {"DENSE", {0.001, -0.001}};
    auto& elements = d.patterns[0].elements;
    elements.insert(elements.end(), {move(0, 20), draw(100, 20, 2, 2), move(0, 40), draw(100, 40, 2, 3)});
    render(d);
    for (const double x : {5, 25, 45}) EXPECT_EQ(at(x, 20), kRed) << x;
    for (const double x : {15, 35, 55}) EXPECT_EQ(at(x, 20), kWhite) << x;
    for (int x = 1; x < 100; ++x) EXPECT_EQ(at(x, 40), kRed) << "too dense to be told apart: solid";
    EXPECT_THAT(deviceDashes({10, -5}, 2, 1), ElementsAre(20, 10));
    EXPECT_THAT(deviceDashes({-5, 10, 10, -5, 0}, 1, 1), ElementsAre(1, 5, 20, 5, 1, 0));
    for (const auto& solid : {std::vector<double>{}, {5}, {0}, {HUGE_VAL, -1}, {NAN, -2}, {1e300, -1e300}})
        EXPECT_THAT(deviceDashes(solid, 1, 1), ElementsAre());
}

TEST_F(Pictures, HatchesFillEvenOddUnderTheLines) {
    Drawing d = sheet();
    d.addPattern(false).elements = {move(0, 50), draw(100, 50, 3)};
    Hatch& fill = d.addPattern(false).hatches.emplace_back();
    fill.fillPen = 2;
    fill.contours = {square(10, 90), square(30, 70), {circle(60, 50, 50, 50, 1)}};
    render(d);
    EXPECT_EQ(at(20, 20), kRed);
    EXPECT_EQ(at(35, 35), kWhite) << "a contour inside another is a hole";
    EXPECT_EQ(at(50, 55), kRed) << "and a circle in that is filled again";
    EXPECT_EQ(at(20, 50, kRed), kBlue) << "lines lie over fills";
    fill.contours = {square(0, 100)};
    fill.solid = false;
    fill.families = {{0, 10, 0, 5, 0, 2, 1, {}}, {pi / 2, 20, 10, 0, 0, 3, 1, {5, -5}}};
    d.patterns[1].visible = false;
    render(d);
    EXPECT_EQ(at(52, 15), kRed);
    EXPECT_EQ(at(52, 10), kWhite);
    EXPECT_EQ(at(30, 2), kBlue);
    EXPECT_EQ(at(30, 8), kWhite) << "the dashes of the second family begin at its origin";
    fill.families = {{0, 1e-9, 0, 0, 0, 2, 1, {1e-9, -1e-9}}};
    render(d);
    EXPECT_NE(at(52, 12), kWhite) << "too dense: a tone";
}

TEST_F(Pictures, AFillIsAsLargeAsItsArea) {
    Drawing d = sheet();
    Hatch& fill = d.addPattern(false).hatches.emplace_back();
    fill.fillPen = 2;
    fill.contours = {{circle(90, 50, 50, 50, 1)}, {circle(70, 50, 50, 50, 1)}};
    render(d);
    EXPECT_NEAR(painted(), pi * (1600 - 400) / 1e4, 0.01 * pi * 0.12);
}

TEST_F(Pictures, DirectionsOfLinesAndGradients) {
    Drawing d = sheet();
    Hatch& hatch = d.addPattern(false).hatches.emplace_back();
    hatch.solid = false;
    hatch.contours = {square(10, 90)};
    // To the right of the x direction is down: lines at y = 20, 24, 34, 38, 48 …
    hatch.lines = {{0, -20, -4, -10, 1, 1, 2, 1}, {pi / 2, 15, 50, 0, 1, 0, 3, 1}};
    hatch.backPen = 0;
    render(d);
    for (const double y : {20.0, 24.0, 34.0, 38.0, 76.0}) EXPECT_EQ(at(50, y), kRed) << y;
    for (const double y : {22.0, 29.0, 43.0}) EXPECT_EQ(at(50, y), kWhite) << y;
    for (const double x : {15.0, 65.0}) EXPECT_EQ(at(x, 29), kBlue) << x;
    EXPECT_EQ(at(50, 6), kWhite) << "outside";
    hatch.lines = {};
    hatch.solid = true;
    hatch.fillPen = 2;
    for (const int form : {0, 1}) {
        hatch.gradient = {{form, 0, 0, 50, 3, ""}};
        render(d);
        EXPECT_EQ(at(11, 50), kRed);
        EXPECT_EQ(at(form ? 50 : 89, 50), kBlue) << form;
        if (form) EXPECT_EQ(at(89, 50), kRed);
        hatch.gradient[0].angle = pi / 2;
        render(d);
        EXPECT_EQ(at(50, 11), kRed) << "upwards";
    }
}

TEST_F(Pictures, TextStandsOnItsPointAndWidensThePicture) {
    Drawing d = sheet();
    Text& text = d.patterns[0].texts.emplace_back();
    text.lines = {"MMMM", std::string("\xFF\x01"), "MMMM"};
    text.x = 50, text.y = 50, text.height = 10, text.pen = 2;
    const auto inked = [&](double x0, double y0, double x1, double y1) {
        for (double x = x0; x <= x1; x += 0.5)
            for (double y = y0; y <= y1; y += 0.5)
                if (at(x, y) == kRed) return true;
        return false;
    };
    render(d);
    EXPECT_TRUE(inked(51, 51, 80, 59));
    EXPECT_FALSE(inked(10, 10, 49, 48));
    text.origin = 9;
    render(d);
    EXPECT_TRUE(inked(20, 41, 49, 49));
    EXPECT_FALSE(inked(51, 51, 90, 60));
    text.lines = {"\x0Ell ll ll\x0E"}, text.origin = 7, text.lineLength = 1;
    render(d);
    for (const LayoutLine& line : layoutText(text, 1).lines)
        EXPECT_EQ(at(50 + line.x + line.width / 2, 50 + line.baseline - 2.2), kRed) << "underlined";
    text.lineLength = 0, text.origin = 9;
    text.lines = {"lll"}, text.height = 40, text.font = 0, text.face = "osifont";
    const auto dots = [&] {
        int count = 0;
        render(d);
        for (double x = 0; x < 50; x += 0.2) count += at(x, 30) == kRed;
        return count;
    };
    const int plain = dots();
    text.styleBits = 1 << OV_TEXT_BOLD;
    EXPECT_GT(dots(), 1.3 * plain) << "a font that isn't bold is drawn with thicker strokes";
    d.patterns[0].elements.clear();
    render(d);
    EXPECT_EQ(renderDrawing(d, (folder / "t.svg").string(), {}), "");
}

TEST_F(Pictures, WrongWishesAreToldAndLeaveNoFile) {
    Drawing d = sheet();
    EXPECT_THAT(renderDrawing(d, (folder / "p.jpg").string(), {}), HasSubstr(".svg, .png or .pdf"));
    EXPECT_THAT(renderDrawing(d, (folder / "p.png").string(), {100, "Nowhere", false}),
                HasSubstr("no view named Nowhere"));
    EXPECT_THAT(renderDrawing(d, (folder / "none" / "p.png").string(), {}), HasSubstr("Can't write"));
    EXPECT_TRUE(fs::is_empty(folder));
    d.views.push_back({"A1", 2, 3, 1});
    EXPECT_EQ(renderDrawing(d, (folder / "p.png").string(), {100, "A1", false}), "");
}

TEST_F(Pictures, AnyDrawingWhatsoeverBecomesAPicture) {
    const double inf = HUGE_VAL, nan = std::nan(""), huge = std::numeric_limits<double>::max();
    std::vector<Drawing> drawings(1); // an empty one first
    const std::vector<std::vector<double>> points = {{1e15, 1e15, 1e15 + 0.125, 1e15, 1e15, 1e15 + 0.25},
                                                     {5, 5},
                                                     {nan, 0, 1, inf, 2, 2},
                                                     {huge, -huge, -huge, huge, 0, 0},
                                                     {5e-324, 0, 0, 5e-324},
                                                     {1e-3, 1e300, 1, -1e300},
                                                     {0, 0, 1e12, 0, 1e12, 1e-12}};
    for (const auto& list : points) {
        Pattern& p = drawings.emplace_back().addPattern(false);
        p.hatches = {{}, {}};
        p.hatches[1].solid = false;
        p.hatches[1].families = {{nan, 1, 0, 0, 0, 1, 1, {}},
                                 {1, 0, inf, 0, 0, 1, 1, {1, -1}},
                                 {1, 1e-300, 0, 0, huge, 1, 1, {nan}},
                                 {0, 1, 1e18, 1e18, 0, 1, 1, {1e-3, -1e-3}}};
        for (std::size_t i = 0; i + 1 < list.size(); i += 2) {
            const double x = list[i], y = list[i + 1];
            for (Element e : {move(x, y), draw(y, x, 1 << 30, 2), arc(x, y, y, x, true, -5),
                              arc(x, y, nan, 0, false, 1), circle(x, y, 0, 0, 3)}) {
                p.elements.push_back(e);
                p.hatches[0].contours.resize(1);
                p.hatches[0].contours[0].push_back(e);
            }
            p.hatches[1].contours = {square(x, y)};
            p.splines.push_back({{{x, y}, {x, y}, {y, x}, {nan, 1}, {0, 0}}, 3, true, false, nan, inf});
            p.elements.push_back({x, y, static_cast<double>(i / 2), 0, 1, 1, ElementType::Spline, 0, 0});
            p.elements.push_back({x, y, nan, 0, 1, 1, ElementType::Spline, 0, 0});
            p.elements.push_back({x, y, 0, 0, 1, 1, ElementType::Point, 0, 0});
            Text& text = p.texts.emplace_back();
            text.lines = {"x"}, text.x = x, text.y = y, text.height = std::fabs(y), text.width = x,
            text.angle = x;
            p.faceLists.push_back(faceList({{x, y, 0}, {y, x, nan}, {y, x, 1}, {0, 0, 0}}, 7));
            p.pointClouds = {{{{x, y, 0}}, {1}}};
        }
        drawings.back().lineTypes[2] = {"", {nan, -1}};
        drawings.back().scale = list.size() == 2 ? 1e-320 : 1;
        drawings.back().views.push_back({"v", 1, 3, 1});
    }
    for (const Drawing& d : drawings) {
        for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
            const std::string path = (folder / name).string();
            EXPECT_EQ(renderDrawing(d, path, {200, "", false}), "");
            EXPECT_GT(fs::file_size(path), 50U);
            EXPECT_EQ(renderDrawing(d, path, {200, d.views.size() > 1 ? "v" : "", true}), "");
        }
    }
}

TEST(Curves, ArcsMeetTheirEndsAndKeepTheirRadius) {
    for (const double radius : {1e-3, 1.0, 5e4, 1e9}) {
        for (const double sweep : {1e-4, 1.0, -2.5, 6.2}) {
            const RPT start{radius, 0};
            const Element to = arc(radius * std::cos(sweep), radius * std::sin(sweep), 0, 0, sweep > 0, 1);
            RPT last = start;
            double turned = 0;
            for (const Bezier& b : arcToBezier(start, to, 1)) {
                const RPT middle{(last.x + 3 * b.control1.x + 3 * b.control2.x + b.end.x) / 8,
                                 (last.y + 3 * b.control1.y + 3 * b.control2.y + b.end.y) / 8};
                EXPECT_NEAR(std::hypot(middle.x, middle.y), radius, 0.06);
                turned += std::remainder(std::atan2(b.end.y, b.end.x) - std::atan2(last.y, last.x), 2 * pi);
                last = b.end;
            }
            EXPECT_NEAR(turned, sweep, 1e-6) << radius << " " << sweep;
            EXPECT_EQ(last.x, to.x);
        }
    }
}

} // namespace host

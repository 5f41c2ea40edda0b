// HATCH on its way in: loops become one contour whatever their order, patterns fold into two directions.
#include "hatch_text.h"

#include "drawing/host_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using std::numbers::pi;
using testing::HasSubstr;

namespace {

struct Imported {
    ImportResult result;
    std::vector<host::Hatch> hatches;
};
Imported importHatch(const DxfGroups& groups, ImportOptions options = unshifted()) {
    Imported imported;
    imported.result = importText(dxf().header("AC1015").entity("HATCH", groups).text(), options);
    imported.hatches = hatchesNow();
    return imported;
}
ImportOptions configured(const std::string& lines) {
    ImportOptions options = unshifted();
    options.config = flags(lines);
    return options;
}
/// Area of the only hatch.
double importedArea(const DxfGroups& groups, const ImportOptions& options = unshifted()) {
    const Imported imported = importHatch(groups, options);
    EXPECT_EQ(imported.result.stat, 0);
    return imported.hatches.size() == 1 ? areaOf(imported.hatches[0]) : -1;
}

// ---- contours ----------------------------------------------------------------------------------------

TEST(HatchImport, LoopsEncloseTheirArea) {
    const double ellipse = pi * 10 * 5;
    const DxfGroups spline = DxfGroups{{72, "4"}, {94, "2"}, {73, "0"}, {74, "0"}, {95, "6"}, {96, "3"}} +
                             DxfGroups{{40, "0"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {40, "1"}} +
                             at(10, {0, 0}) + at(10, {5, 10}) + at(10, {10, 0});
    const struct {
        const char* what;
        std::vector<DxfGroups> loops;
        double area;
    } cases[] = {
        {"square", {squareLoop(0, 10)}, 100},
        {"half discs by bulges", {polylineLoop({{0, 0, 1}, {10, 0, 1}})}, 25 * pi},
        {"clockwise bulges", {polylineLoop({{0, 0, -1}, {10, 0, -1}})}, 25 * pi},
        {"hole", {squareLoop(0, 10), squareLoop(2, 4)}, 96},
        {"hole ahead of its contour", {squareLoop(2, 4), squareLoop(0, 10)}, 96},
        {"island in a hole", {squareLoop(0, 10), squareLoop(2, 8), squareLoop(4, 5)}, 65},
        {"two apart", {squareLoop(0, 10), squareLoop(20, 25)}, 125},
        {"edges out of order and turned",
         {edgeLoop({lineEdge(0, 0, 10, 0), lineEdge(0, 10, 10, 10), lineEdge(10, 0, 10, 10),
                    lineEdge(0, 10, 0, 0)})},
         100},
        {"an edge of no length",
         {edgeLoop({lineEdge(0, 0, 10, 0), lineEdge(10, 0, 10, 0), lineEdge(10, 0, 10, 10),
                    lineEdge(10, 10, 0, 0)})},
         50},
        {"counter-clockwise arc",
         {edgeLoop({arcEdge(5, 0, 5, 0, 180, true), lineEdge(0, 0, 10, 0)})},
         12.5 * pi},
        {"clockwise arc below",
         {edgeLoop({arcEdge(5, 0, 5, 0, 180, false), lineEdge(0, 0, 10, 0)})},
         12.5 * pi},
        {"whole circle", {edgeLoop({arcEdge(5, 0, 5, 0, 360, true)})}, 25 * pi},
        {"whole circle clockwise", {edgeLoop({arcEdge(5, 0, 5, 0, 360, false)})}, 25 * pi},
        {"whole ellipse", {edgeLoop({ellipseEdge(0, 0, 10, 0, 0.5, 0, 360, true)})}, ellipse},
        {"whole ellipse clockwise", {edgeLoop({ellipseEdge(0, 0, 0, 10, 0.5, 0, 360, false)})}, ellipse},
        {"quarter of an ellipse by angles",
         {edgeLoop(
             {ellipseEdge(0, 0, 10, 0, 0.5, 0, 90, true), lineEdge(0, 5, 0, 0), lineEdge(0, 0, 10, 0)})},
         ellipse / 4},
        {"an ellipse from its lowest point",
         {edgeLoop(
             {ellipseEdge(0, 0, 10, 0, 0.5, 270, 360, true), lineEdge(10, 0, 0, 0), lineEdge(0, 0, 0, -5)})},
         ellipse / 4},
        {"clockwise ellipse, angles counted clockwise",
         {edgeLoop(
             {ellipseEdge(0, 0, 10, 0, 0.5, 270, 360, false), lineEdge(10, 0, 0, 0), lineEdge(0, 0, 0, 5)})},
         ellipse / 4},
        {"spline", {edgeLoop({spline, lineEdge(10, 0, 0, 0)})}, 32.407},
    };
    for (const auto& c : cases)
        for (const bool solid : {true, false})
            EXPECT_NEAR(importedArea(hatchGroups(c.loops, solid)), c.area, c.area * 2e-4)
                << c.what << (solid ? " solid" : " lines");
}

TEST(HatchImport, TheContourIsOneChainWithMarkedJumps) {
    const std::string dump =
        importHatch(hatchGroups({squareLoop(0, 10), squareLoop(2, 4)}, true)).result.dump;
    const char* wanted = "hatch solid pen 1\n"
                         "    contour\n"
                         "      move 0 0\n"
                         "      draw 10 0\n"
                         "      draw 10 10\n"
                         "      draw 0 10\n"
                         "      draw 0 0\n"
                         "    contour\n"
                         "      move 2 2 info 2\n"
                         "      draw 4 2 info 1\n"
                         "      draw 4 4 info 1\n"
                         "      draw 2 4 info 1\n"
                         "      draw 2 2 info 1\n";
    EXPECT_THAT(dump, HasSubstr(wanted));
}

TEST(HatchImport, PlacementActsOnAreaAndLines) {
    const DxfGroups groups = hatchGroups({edgeLoop({arcEdge(5, 0, 5, 0, 180, true), lineEdge(0, 0, 10, 0)})},
                                         false, patternRows({{0, 0, 1, 0, 2, {}}}));
    const auto inserted = [&](const DxfGroups& placing) {
        return dxf()
            .header("AC1015")
            .block("B", DxfGroups{{0, "HATCH"}} + groups)
            .entity("INSERT", DxfGroups{{2, "B"}} + at(10, {100, 50}) + placing);
    };
    const struct {
        const char* what;
        DxfGroups placing;
        double area;
        double angle, base, distance; ///< of its lines, to the right of their direction
    } cases[] = {
        {"plain", {}, 12.5 * pi, 0, -51, 2},
        {"turned", {{50, "90"}}, 12.5 * pi, pi / 2, 99, 2},
        {"doubled", {{41, "2"}, {42, "2"}}, 50 * pi, 0, -52, 4},
        {"mirrored", {{41, "-1"}}, 12.5 * pi, pi, 51, 2},
        {"uneven", {{42, "3"}}, 37.5 * pi, 0, -53, 6},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(importText(inserted(c.placing).text(), unshifted()).stat, 0) << c.what;
        const auto hatches = hatchesNow();
        ASSERT_EQ(hatches.size(), 1u) << c.what;
        EXPECT_NEAR(areaOf(hatches[0]), c.area, c.area * 1e-3) << c.what;
        const host::HatchLines& lines = hatches[0].lines.at(0);
        EXPECT_NEAR(std::remainder(lines.angle - c.angle, 2 * pi), 0, 1e-9) << c.what;
        EXPECT_NEAR(lines.period(), c.distance, 1e-9) << c.what;
        EXPECT_NEAR(std::remainder(lines.base - c.base, c.distance), 0, 1.1e-4) << c.what;
    }
}

/// Under an extrusion to below x is mirrored: centres and senses of all edges turn with it.
TEST(HatchImport, ObjectCoordinatesAreMirroredByTheirExtrusion) {
    const DxfGroups below{{210, "0"}, {220, "0"}, {230, "-1"}};
    const DxfGroups loops[] = {
        edgeLoop({arcEdge(15, 0, 5, 0, 180, true), lineEdge(10, 0, 20, 0)}),
        edgeLoop({ellipseEdge(15, 0, 5, 0, 1, 0, 180, true), lineEdge(10, 0, 20, 0)}),
        polylineLoop({{20, 0, 1}, {10, 0, 0}}),
    };
    for (const DxfGroups& loop : loops) {
        const Imported imported =
            importHatch(hatchGroups({loop}, false, patternRows({{90, 12, 0, 4, 0, {}}}), below));
        ASSERT_EQ(imported.hatches.size(), 1u);
        EXPECT_NEAR(areaOf(imported.hatches[0]), 12.5 * pi, 1e-2);
        host::Extents box;
        for (const host::Element& e : imported.hatches[0].contours.at(0)) box.add(e.x, e.y);
        EXPECT_NEAR(box.minX, -20, 1e-6);
        EXPECT_NEAR(box.maxX, -10, 1e-6);
        const host::HatchLines& lines = imported.hatches[0].lines.at(0);
        EXPECT_NEAR(std::fabs(std::remainder(lines.angle, pi)), pi / 2, 1e-9);
        EXPECT_NEAR(std::remainder(lines.base * std::sin(lines.angle), 4), 0, 1.1e-4) << "a line at x = -12";
    }
}

TEST(HatchImport, FillModeAndContoursDecideWhatIsSeen) {
    const DxfGroups solid = hatchGroups({squareLoop(0, 10), squareLoop(2, 4)}, true);
    const DxfGroups lines =
        hatchGroups({squareLoop(0, 10), squareLoop(2, 4)}, false, patternRows({{0, 0, 0, 0, 2, {}}}));
    const struct {
        const char* options;
        std::size_t fills, lineHatches, borders;
    } cases[] = {
        {"FILLMODE=1\nFILL_CONTOUR=0\n", 1, 1, 0},
        {"FILLMODE=1\nFILL_CONTOUR=1\n", 1, 1, 8},
        {"FILLMODE=0\nFILL_CONTOUR=0\n", 0, 1, 0},
        {"FILLMODE=0\nFILL_CONTOUR=1\n", 0, 1, 8},
    };
    const auto draws = [](const std::string& dump) {
        std::size_t found = 0;
        for (std::size_t i = dump.find("\n  draw"); i != std::string::npos; i = dump.find("\n  draw", i + 1))
            ++found;
        return found;
    };
    for (const auto& c : cases) {
        const Imported fill = importHatch(solid, configured(c.options));
        EXPECT_EQ(fill.hatches.size(), c.fills) << c.options;
        EXPECT_EQ(draws(fill.result.dump), c.fills ? c.borders : 0) << c.options;
        const Imported pattern = importHatch(lines, configured(c.options));
        EXPECT_EQ(pattern.hatches.size(), c.lineHatches) << c.options;
        EXPECT_EQ(draws(pattern.result.dump), c.borders) << c.options;
    }
}

TEST(HatchImport, LoopsThatTakeNoPart) {
    EXPECT_NEAR(importedArea(hatchGroups({squareLoop(0, 10), squareLoop(2, 4, 32 + 2)}, true)), 100, 1e-9);
    EXPECT_NEAR(importedArea(hatchGroups({edgeLoop({lineEdge(1, 1, 1, 1)}), squareLoop(0, 10)}, true)), 100,
                1e-9)
        << "the clean-up left nothing of the first one";
    for (const auto& loops : {std::vector<DxfGroups>{}, {edgeLoop({})}, {edgeLoop({lineEdge(0, 0, 5, 5)})}}) {
        const Imported none = importHatch(hatchGroups(loops, true));
        EXPECT_EQ(none.result.stat, 0);
        EXPECT_TRUE(none.hatches.empty());
    }
}

// ---- lines -------------------------------------------------------------------------------------------

struct Lines {
    double angle, base, d1;
    int c1;
    double d2;
    int c2, lineType;
};
void expectLines(const std::vector<host::HatchLines>& found, const std::vector<Lines>& wanted,
                 const std::string& what) {
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        ASSERT_LT(i, found.size()) << what;
        const host::HatchLines& f = found[i];
        const Lines& w = wanted[i];
        EXPECT_NEAR(f.angle, w.angle * pi / 180, 1e-9) << what;
        EXPECT_NEAR(f.base, w.base, 1e-9) << what;
        EXPECT_EQ(f.c1, w.c1) << what;
        EXPECT_EQ(f.c2, w.c2) << what;
        EXPECT_NEAR(f.d1, w.d1, 1e-9) << what;
        if (w.c2) EXPECT_NEAR(f.d2, w.d2, 1e-9) << what;
        EXPECT_EQ(f.lineType, w.lineType) << what;
    }
}

TEST(HatchImport, PatternsFoldIntoTwoDirections) {
    const Lines standard1{45, 0, 2, 1, 2, 0, 1}, standard2{45, 0, 2, 0, 2, 0, 1};
    const struct {
        const char* what;
        std::vector<Row> rows;
        std::vector<Lines> wanted;
        bool isStandard;
    } cases[] = {
        {"one line", {{0, 0, 1, 0, 5, {}}}, {{0, -1, 5, 1, 0, 0, 1}, standard2}, false},
        {"a base on a multiple", {{0, 0, 10, 0, 5, {}}}, {{0, 1e-4, 5, 1, 0, 0, 1}}, false},
        {"two unequal gaps", {{90, 1, 0, 5, 0, {}}, {90, 3, 0, 5, 0, {}}}, {{90, 1, 2, 1, 3, 1, 1}}, false},
        {"two equal gaps", {{90, 1, 0, 6, 0, {}}, {90, 4, 0, 6, 0, {}}}, {{90, 1, 3, 2, 0, 0, 1}}, false},
        {"crossing",
         {{0, 0, 1, 0, 5, {}}, {90, 1, 0, -4, 0, {}}},
         {{0, -1, 5, 1, 0, 0, 1}, {90, 1, 4, 1, 0, 0, 1}},
         false},
        {"dashes that fit", {{90, 1, 0, 5, 0, {1.5, -1.5}}}, {{90, 1, 5, 1, 0, 0, 2}}, false},
        {"dashes that don't", {{90, 1, 0, 5, 0, {8, -1}}}, {{90, 1, 5, 1, 0, 0, 5}}, false},
        {"other dashes make another direction",
         {{90, 1, 0, 5, 0, {}}, {90, 3, 0, 5, 0, {1.5, -1.5}}},
         {{90, 1, 5, 1, 0, 0, 1}, {90, 3, 5, 1, 0, 0, 2}},
         false},
        {"three directions",
         {{0, 0, 1, 0, 5, {}}, {60, 0, 1, 0, 5, {}}, {120, 0, 1, 0, 5, {}}},
         {standard1, standard2},
         true},
        {"three gaps",
         {{90, 1, 0, 9, 0, {}}, {90, 2, 0, 9, 0, {}}, {90, 4, 0, 9, 0, {}}, {90, 7.5, 0, 9, 0, {}}},
         {standard1, standard2},
         true},
        {"no distance", {{0, 0, 1, 0, 0, {}}}, {standard1, standard2}, true},
        {"no lines", {}, {standard1, standard2}, true},
    };
    for (const auto& c : cases) {
        const Imported imported = importHatch(hatchGroups({squareLoop(0, 10)}, false, patternRows(c.rows)));
        ASSERT_EQ(imported.hatches.size(), 1u) << c.what;
        expectLines(imported.hatches[0].lines, c.wanted, c.what);
        EXPECT_EQ(imported.result.hasMessage("Schraffurmuster ANSI31 wurde als Standardschraffur erzeugt!"),
                  c.isStandard)
            << c.what;
    }
}

TEST(HatchImport, KeptPatternsShowTheirOwnLines) {
    const std::vector<Row> rows{{0, 1, 2, 0, 5, {1, -1}}, {60, 0, 1, -4, 3, {}}, {120, 0, 1, -4, -3, {}}};
    const Imported kept =
        importHatch(hatchGroups({squareLoop(0, 10)}, false, patternRows(rows)), configured("KEEP_HATCH=1\n"));
    ASSERT_EQ(kept.hatches.size(), 1u);
    EXPECT_FALSE(kept.result.hasMessage("Standardschraffur"));
    EXPECT_THAT(kept.result.dump,
                HasSubstr("    family angle 0 distance 5 origin 1 2 pen 1 lt 1 1 -1\n"
                          "    family angle 1.04719755 distance 4.96410162 origin 0 1 offset "
                          "0.598076211 pen 1 lt 1\n"));
    EXPECT_EQ(kept.hatches[0].patternName, "ANSI31");
}

// ---- gradients ---------------------------------------------------------------------------------------

DxfGroups gradient(const std::string& name, double angle, int colors) {
    DxfGroups groups{{450, "1"},
                     {451, "0"},
                     real(460, angle),
                     {461, "0"},
                     {452, "0"},
                     {462, "0"},
                     whole(453, static_cast<std::size_t>(colors))};
    for (int i = 0; i < colors; ++i)
        groups = groups + DxfGroups{real(463, i), whole(63, static_cast<std::size_t>(i) + 1)};
    return groups + DxfGroups{{470, name}};
}

TEST(HatchImport, GradientsByTheirNames) {
    const struct {
        const char* name;
        double angle;
        int form;
        double wanted;
    } cases[] = {
        {"LINEAR", 0.5, 0, 0.5},
        {"linear", 0, 0, 0},
        {"CYLINDER", 0.5, 1, 0.5},
        {"INVCYLINDER", 0.5, 1, 0.5 - pi},
        {"SPHERICAL", 1, 1, 1},
        {"INVSPHERICAL", -1, 1, pi - 1},
        {"HEMISPHERICAL", 1, 0, 1 - pi / 2},
        {"INVHEMISPHERICAL", 0, 0, pi / 2},
        {"CURVED", 1, 0, 1 - pi / 2},
        {"INVCURVED", 1, 0, 1 + pi / 2},
        {"LINEAR", 4, 0, 4 - 2 * pi},
        {"LINEAR", 10, 0, 10 - 4 * pi},
        {"LINEAR", -10, 0, 4 * pi - 10},
    };
    for (const auto& c : cases) {
        const Imported imported =
            importHatch(hatchGroups({squareLoop(0, 10)}, true, gradient(c.name, c.angle, 2)));
        ASSERT_EQ(imported.hatches.size(), 1u) << c.name;
        ASSERT_EQ(imported.hatches[0].gradient.size(), 1u) << c.name;
        EXPECT_EQ(imported.hatches[0].gradient[0].form, c.form) << c.name << c.angle;
        EXPECT_NEAR(imported.hatches[0].gradient[0].angle, c.wanted, 1e-9) << c.name << c.angle;
    }
    EXPECT_TRUE(importHatch(hatchGroups({squareLoop(0, 10)}, true, gradient("LINEAR", 0, 1)))
                    .hatches[0]
                    .gradient.empty())
        << "one colour is a fill";
    EXPECT_EQ(importHatch(hatchGroups({squareLoop(0, 10)}, true, gradient("LINEAR", 0, 5)))
                  .hatches[0]
                  .gradient.size(),
              1u)
        << "further colours don't count";
}

TEST(HatchImport, TransparencyGoesAlong) {
    const DxfGroups half{{440, "33554559"}}; // 0x02000000 + 127
    const auto hatches = importHatch(hatchGroups({squareLoop(0, 10)}, true, {}, half)).hatches;
    ASSERT_EQ(hatches.size(), 1u);
    EXPECT_NEAR(hatches[0].transparency, 50, 1);
}

// ---- bad files ---------------------------------------------------------------------------------------

TEST(HatchImport, CountsThatLieLoseNothingElse) {
    const DxfGroups good =
        hatchGroups({squareLoop(0, 10)}, false, patternRows({{0, 0, 1, 0, 5, {1.5, -1.5}}}));
    for (const int code : {91, 93, 92, 78, 98, 79, 97, 75}) {
        for (const char* value : {"0", "-1", "2147483647", "99999999999", "1e9", "x"}) {
            DxfGroups groups = good;
            for (DxfGroup& g : groups)
                if (g.code == code) g.value = value;
            const std::string text = dxf()
                                         .header("AC1015")
                                         .entity("HATCH", groups)
                                         .entity("LINE", at(10, {1, 2}) + at(11, {3, 4}))
                                         .text();
            const ImportResult result = importText(text, unshifted());
            EXPECT_EQ(result.stat, 0) << code << " " << value;
            EXPECT_THAT(result.dump, HasSubstr("draw 3 4")) << code << " " << value;
        }
    }
}

TEST(HatchImport, ValuesThatCantBe) {
    const std::string nan = "nan", huge = "1e300";
    const DxfGroups loops[] = {
        edgeLoop({arcEdge(5, 0, 0, 0, 360, true)}),
        edgeLoop({ellipseEdge(0, 0, 0, 0, 0.5, 0, 360, true)}),
        edgeLoop({ellipseEdge(0, 0, 10, 0, 0, 0, 360, true)}),
        edgeLoop({DxfGroups{{72, "2"}, {10, nan}, {20, nan}, {40, nan}, {50, "0"}, {51, nan}, {73, "1"}}}),
        edgeLoop({DxfGroups{{72, "2"}, {10, "0"}, {20, "0"}, {40, huge}, {50, "0"}, {51, huge}, {73, "1"}}}),
        edgeLoop({DxfGroups{{72, "4"}, {94, "900"}, {95, "9"}, {96, "9"}, {40, "0"}, {10, "1"}}}),
        edgeLoop({DxfGroups{{72, "9"}, {10, "1"}}}),
        polylineLoop({{0, 0, 1e300}, {10, 0, NAN}, {10, 10, HUGE_VAL}}),
    };
    for (const DxfGroups& loop : loops) {
        const Imported imported = importHatch(hatchGroups(
            {loop, squareLoop(20, 30)}, false,
            patternRows({{NAN, 0, 1, 0, 5, {}}, {0, HUGE_VAL, 1, 0, 5, {NAN, 0}}, {0, 0, 0, 0, 0, {0, 0}}})));
        EXPECT_EQ(imported.result.stat, 0);
        EXPECT_EQ(imported.hatches.size(), 1u) << "the good loop";
    }
}

TEST(HatchImport, AFileMayEndAnywhereInAHatch) {
    const std::string text =
        dxf()
            .header("AC1015")
            .entity("LINE", at(10, {1, 2}) + at(11, {3, 4}))
            .entity("HATCH", hatchGroups({squareLoop(0, 10)}, false, patternRows({{0, 0, 1, 0, 5, {1, -1}}})))
            .text();
    for (std::size_t end = text.find("HATCH") + 6; end < text.size(); end += 7) {
        const ImportResult result = importText(text.substr(0, end), unshifted());
        EXPECT_THAT(result.dump, HasSubstr("draw 3 4")) << end;
    }
}

} // namespace

// Hatches on their way out: which form each target gets, how contours nest, and that all comes back.
#include "../export/exported.h"
#include "drawing/dump.h"
#include "drawing/host_state.h"
#include "hatch_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using std::numbers::pi;
using testing::HasSubstr;
using testing::Not;

namespace {

host::Element arcTo(double x, double y, double cx, double cy, bool ccw = true) {
    return step(host::ElementType::Arc, x, y, cx, cy, ccw);
}
host::Contour square(double low, double high) {
    return {moveTo(low, low), drawTo(high, low), drawTo(high, high), drawTo(low, high), drawTo(low, low)};
}
host::Contour disc(double x, double y, double r) {
    return {moveTo(x + r, y), arcTo(x + r, y, x, y)};
}
host::Contour polygon(const std::vector<RPT>& points) {
    host::Contour contour{moveTo(points[0].x, points[0].y)};
    for (std::size_t i = 1; i <= points.size(); ++i)
        contour.push_back(drawTo(points[i % points.size()].x, points[i % points.size()].y));
    return contour;
}
host::Hatch fill(std::vector<host::Contour> contours) {
    host::Hatch hatch;
    hatch.contours = std::move(contours);
    return hatch;
}
host::Hatch lines(std::vector<host::Contour> contours, std::vector<host::HatchLines> directions) {
    host::Hatch hatch = fill(std::move(contours));
    hatch.solid = false;
    hatch.lines = std::move(directions);
    return hatch;
}
const host::HatchLines spacedByTwo{0, 1, 2, 0, 1, 0, 1, 1};

Exported exported(const host::Hatch& hatch, const std::string& version, const std::string& options) {
    startDrawing();
    addPattern({}).hatches = {hatch};
    return exportDrawing(exportConfig(version, options));
}
const std::string fillsToo = "WRITE_FILL=1\n";
/// Values of a code in an entity.
std::vector<std::string> valuesOf(const DxfGroups& groups, int code) {
    std::vector<std::string> values;
    for (const DxfGroup& g : groups)
        if (g.code == code) values.push_back(g.value);
    return values;
}

class HatchExport : public Export {};

// ---- forms -------------------------------------------------------------------------------------------

TEST_F(HatchExport, OptionsAndTargetsSettleTheForm) {
    const host::Hatch kinds[2] = {fill({square(0, 10)}), lines({square(0, 10)}, {spacedByTwo})};
    const struct {
        const char* version;
        const char* options;
        bool isFill;
        std::size_t hatches, solids, lines, inserts;
    } cases[] = {
        {"ACAD24", "WRITE_HATCH=1\nWRITE_FILL=1\n", true, 1, 0, 0, 0},
        {"ACAD24", "WRITE_HATCH=1\nWRITE_FILL=0\n", true, 0, 0, 0, 0},
        {"ACAD24", "WRITE_HATCH=0\nWRITE_FILL=1\n", true, 0, 0, 0, 0},
        {"ACAD24", "WRITE_HATCH=2\nWRITE_FILL=1\n", true, 1, 0, 0, 1},
        {"ACAD14", "WRITE_HATCH=1\nWRITE_FILL=1\n", true, 1, 0, 0, 0},
        {"ACAD12", "WRITE_HATCH=1\nWRITE_FILL=1\n", true, 0, 1, 0, 0},
        {"ACAD12", "WRITE_HATCH=2\nWRITE_FILL=1\n", true, 0, 1, 0, 1},
        {"ACAD12", "WRITE_HATCH=1\nWRITE_FILL=0\n", true, 0, 0, 0, 0},
        {"EASY", "WRITE_HATCH=1\nWRITE_FILL=1\n", true, 0, 1, 0, 0},
        {"ACAD24", "WRITE_HATCH=1\n", false, 1, 0, 0, 0},
        {"ACAD24", "WRITE_HATCH=0\n", false, 0, 0, 0, 0},
        {"ACAD24", "WRITE_HATCH=2\n", false, 0, 0, 5, 1},
        {"ACAD12", "WRITE_HATCH=1\n", false, 0, 0, 5, 0},
        {"ACAD12", "WRITE_HATCH=2\n", false, 0, 0, 5, 1},
        {"EASY", "WRITE_HATCH=1\n", false, 0, 0, 5, 0},
    };
    for (const auto& c : cases) {
        const Exported file = exported(kinds[c.isFill ? 0 : 1], c.version, c.options);
        const std::string what = std::string(c.version) + " " + c.options + (c.isFill ? "fill" : "lines");
        EXPECT_EQ(file.stat, 0) << what;
        EXPECT_EQ(file.errors(), "") << what;
        EXPECT_EQ(file.count(0, "HATCH"), c.hatches) << what;
        EXPECT_EQ(file.count(0, "SOLID"), c.solids) << what;
        EXPECT_EQ(file.count(0, "LINE"), c.lines) << what;
        EXPECT_EQ(file.count(0, "INSERT"), c.inserts) << what;
        if (c.inserts) EXPECT_EQ(valueOf(file.first(0, "INSERT"), 2), "*X0") << what;
    }
}

TEST_F(HatchExport, EntitiesAsTheyStand) {
    const Exported circle = exported(fill({disc(5, 5, 3)}), "ACAD24", "NO_KOMMA=3\n" + fillsToo);
    EXPECT_EQ(shown(circle.first(0, "HATCH")),
              "0=HATCH 100=AcDbEntity 8=0 62=7 440=0 100=AcDbHatch 10=0.000 20=0.000 30=0.000 210=0.000 "
              "220=0.000 230=1.000 2=SOLID 70=1 71=1 91=1 92=18 72=1 73=0 93=3 10=8.000 20=5.000 42=1.000 "
              "10=2.000 20=5.000 42=1.000 10=8.000 20=5.000 42=0.000 97=0 75=0 76=1 98=0");
    host::HatchLines dashed{pi / 2, 1, 2, 3, 1, 1, 1, 2};
    const Exported pattern =
        exported(lines({square(0, 10), square(2, 4)}, {dashed}), "ACAD15", "NO_KOMMA=3\n");
    EXPECT_THAT(
        shown(pattern.first(0, "HATCH")),
        HasSubstr("92=2 72=1 73=0 93=5 10=2.000 20=2.000 42=0.000 10=4.000 20=2.000 42=0.000 10=4.000 "
                  "20=4.000 42=0.000 10=2.000 20=4.000 42=0.000 10=2.000 20=2.000 42=0.000 97=0 75=0 "
                  "76=0 52=0.000 41=1.000 77=0 78=2 53=90.000 43=1.000 44=-0.000 45=-5.000 46=0.000 "
                  "79=2 49=1.500 49=-1.500 53=90.000 43=3.000 44=-0.000 45=-5.000 46=0.000 79=2 "
                  "49=1.500 49=-1.500 98=0"));
}

TEST_F(HatchExport, AFillBehindLinesGoesAhead) {
    host::Hatch both = lines({square(0, 10)}, {spacedByTwo});
    both.backPen = 3;
    const Exported file = exported(both, "ACAD24", fillsToo);
    ASSERT_EQ(file.count(0, "HATCH"), 2u);
    EXPECT_EQ(valueOf(file.first(0, "HATCH"), 2), "SOLID");
    EXPECT_EQ(valueOf(file.first(0, "HATCH", 1), 2), "_U");
}

TEST_F(HatchExport, GradientsLeaveFromTheVersionThatHasThem) {
    for (const int form : {0, 1}) {
        host::Hatch hatch = fill({square(0, 10)});
        hatch.transparency = 25;
        hatch.gradient = {{form, 0.75, 0, 50, 3, "x"}};
        const Exported file = exported(hatch, "ACAD18", fillsToo);
        EXPECT_EQ(file.errors(), "");
        const DxfGroups groups = file.first(0, "HATCH");
        EXPECT_EQ(valueOf(groups, 470), form ? "CYLINDER" : "LINEAR");
        EXPECT_DOUBLE_EQ(std::stod(valueOf(groups, 460)), 0.75);
        EXPECT_EQ(valuesOf(groups, 63).size(), 2u);
        EXPECT_NE(valueOf(groups, 440), "0");
        const Exported older = exported(hatch, "ACAD15", fillsToo);
        EXPECT_EQ(valueOf(older.first(0, "HATCH"), 450), "none");
        EXPECT_EQ(older.count(0, "HATCH"), 1u);
    }
}

// ---- nesting -----------------------------------------------------------------------------------------

TEST_F(HatchExport, ContoursNest) {
    const host::Contour crossing = polygon({{5, 5}, {15, 5}, {15, 8}, {5, 8}});
    const struct {
        const char* what;
        std::vector<host::Contour> contours;
        std::vector<std::string> loops; ///< group 91 of each HATCH
        const char* told;
    } cases[] = {
        {"one", {square(0, 10)}, {"1"}, ""},
        {"two apart", {square(0, 10), square(20, 30)}, {"1", "1"}, ""},
        {"hole", {square(0, 10), square(2, 4)}, {"2"}, ""},
        {"hole first", {square(2, 4), square(0, 10)}, {"2"}, ""},
        {"three deep", {square(4, 6), square(0, 10), square(2, 8)}, {"2", "1"}, ""},
        {"four deep", {square(0, 10), square(4, 6), square(2, 8), square(4.5, 5)}, {"2", "2"}, ""},
        {"holes that touch",
         {square(0, 10), polygon({{2, 2}, {5, 2}, {5, 5}, {2, 5}}),
          polygon({{5, 2}, {8, 2}, {8, 5}, {5, 5}})},
         {"3"},
         ""},
        {"a hole along the border", {square(0, 10), polygon({{0, 2}, {3, 2}, {3, 5}, {0, 5}})}, {"2"}, ""},
        {"discs", {disc(0, 0, 10), disc(0, 0, 4), disc(0, 0, 2)}, {"2", "1"}, ""},
        {"crossing", {square(0, 10), crossing}, {"1"}, "Füllschraffurkonturen schneiden sich!"},
        {"two lines", {{moveTo(0, 0), drawTo(5, 5), drawTo(0, 0)}, square(0, 10)}, {"1"}, ""},
        {"no area",
         {polygon({{0, 0}, {5, 0}, {9, 0}}), square(20, 30)},
         {"1"},
         "Ungültige Füllschraffurkontur ignoriert!"},
    };
    for (const auto& c : cases) {
        const Exported file = exported(fill(c.contours), "ACAD24", fillsToo);
        std::vector<std::string> loops;
        for (std::size_t i = 0; i < file.count(0, "HATCH"); ++i)
            loops.push_back(valueOf(file.first(0, "HATCH", i), 91));
        EXPECT_EQ(loops, c.loops) << c.what;
        EXPECT_THAT(file.protocol, HasSubstr(c.told)) << c.what;
        if (!*c.told) EXPECT_THAT(file.protocol, Not(HasSubstr("chraffurkontur"))) << c.what;
        EXPECT_EQ(file.errors(), "") << c.what;
    }
}

TEST_F(HatchExport, MarkedContoursAreFilledButNotLined) {
    host::Hatch hatch = fill({square(0, 10), square(20, 30)});
    hatch.exclusions = {{1}};
    EXPECT_EQ(exported(hatch, "ACAD24", fillsToo).count(0, "HATCH"), 2u);
    hatch.solid = false;
    hatch.lines = {spacedByTwo};
    EXPECT_EQ(exported(hatch, "ACAD24", fillsToo).count(0, "HATCH"), 1u);
}

TEST_F(HatchExport, EachInsertNamesTheBlockOfItsHatch) {
    for (const double x : {0.0, 100.0, 200.0}) {
        host::Pattern& pattern = addPattern({});
        pattern.hatches = {fill({square(x, x + 10)}), fill({square(x + 20, x + 30)})};
        if (x == 100) pattern.attributes = {{"insert", "MIDDLE"}}; // a block of its own
    }
    const Exported file = exportDrawing(exportConfig("ACAD24", "WRITE_HATCH=2\nINSERT_ATTR=1\n" + fillsToo));
    EXPECT_EQ(file.errors(), "");
    std::vector<std::string> blocks;
    for (std::size_t i = 0; i < file.count(0, "INSERT"); ++i)
        blocks.push_back(valueOf(file.first(0, "INSERT", i), 2));
    EXPECT_THAT(blocks, testing::UnorderedElementsAre("*X0", "*X1", "*X2", "*X3", "*X4", "*X5", "MIDDLE"));
    std::string block, in;
    std::vector<std::string> inMiddle; // what the block of the middle one inserts
    for (const DxfGroup& g : file.pairs) {
        if (g.code == 0) in = g.value;
        if (g.code == 2 && in == "BLOCK") block = g.value;
        if (g.code == 2 && in == "INSERT" && block == "MIDDLE") inMiddle.push_back(g.value);
        if (g.value == "ENDBLK") block.clear();
    }
    EXPECT_EQ(inMiddle, (std::vector<std::string>{"*X2", "*X3"}));
}

// ---- old targets -------------------------------------------------------------------------------------

double areaOfSolids(const Exported& file) {
    double area = 0;
    for (std::size_t i = 0; i < file.count(0, "SOLID"); ++i) {
        const DxfGroups s = file.first(0, "SOLID", i);
        const auto at = [&](int corner) {
            return RPT{std::stod(valueOf(s, 10 + corner)), std::stod(valueOf(s, 20 + corner))};
        };
        const RPT ring[4] = {at(0), at(1), at(3), at(2)};
        double twice = 0;
        for (int k = 0; k < 4; ++k)
            twice += ring[k].x * ring[(k + 1) % 4].y - ring[(k + 1) % 4].x * ring[k].y;
        area += std::fabs(twice) / 2;
    }
    return area;
}

TEST_F(HatchExport, OldTargetsGetPartsOfTheSameArea) {
    const host::Contour l = polygon({{0, 0}, {10, 0}, {10, 4}, {4, 4}, {4, 10}, {0, 10}});
    const host::Contour arrow = polygon({{0, 0}, {10, 0}, {3, 3}, {0, 10}});
    const struct {
        const char* what;
        std::vector<host::Contour> contours;
        std::size_t solids;
        double area;
    } cases[] = {
        {"triangle", {polygon({{0, 0}, {10, 0}, {0, 10}})}, 1, 50},
        {"square", {square(0, 10)}, 1, 100},
        {"clockwise", {polygon({{0, 0}, {0, 10}, {10, 10}, {10, 0}})}, 1, 100},
        {"quadrangle with an inward corner", {arrow}, 2, 30},
        {"six corners", {l}, 4, 64},
        {"square with a hole", {square(0, 10), square(2, 4)}, 8, 96},
        {"two holes", {square(0, 10), square(2, 4), square(6, 8)}, 14, 92},
        {"island", {square(0, 10), square(2, 8), square(4, 6)}, 9, 68},
    };
    for (const auto& c : cases) {
        const Exported file = exported(fill(c.contours), "ACAD12", "NO_KOMMA=12\n" + fillsToo);
        EXPECT_EQ(file.count(0, "SOLID"), c.solids) << c.what;
        EXPECT_NEAR(areaOfSolids(file), c.area, 1e-9 * c.area) << c.what;
        EXPECT_EQ(file.errors(), "") << c.what;
    }
    // Holes that share corners: as many parts as their heights make.
    for (const host::Contour& second :
         {square(4, 6), polygon({{4, 2}, {6, 2}, {6, 4}, {4, 4}}), polygon({{3, 4}, {6, 5}, {2, 7}})}) {
        const Exported file =
            exported(fill({square(0, 10), square(2, 4), second}), "ACAD12", "NO_KOMMA=12\n" + fillsToo);
        host::Hatch whole = fill({square(0, 10), square(2, 4), second});
        EXPECT_NEAR(areaOfSolids(file), areaOf(whole), 1e-7);
    }
    // 12 chords a quarter turn, in a square with a round hole.
    const Exported round = exported(fill({square(-10, 10), disc(0, 0, 5)}), "ACAD12", fillsToo);
    EXPECT_NEAR(areaOfSolids(round), 400 - 24 * 25 * std::sin(2 * pi / 48), 1e-3);
    EXPECT_EQ(round.count(0, "SOLID"), 4u + 48 + 2 * 2 - 4);
}

TEST_F(HatchExport, DiscsAndRingsAreWideLines) {
    const struct {
        std::vector<host::Contour> contours;
        double width, x;
    } cases[] = {{{disc(5, 5, 3)}, 3, 6.5}, {{disc(5, 5, 3), disc(5, 5, 1)}, 2, 7}};
    for (const auto& [contours, width, x] : cases) {
        const Exported file = exported(fill(contours), "ACAD12", fillsToo);
        ASSERT_EQ(file.count(0, "POLYLINE"), 1u);
        EXPECT_DOUBLE_EQ(std::stod(valueOf(file.first(0, "POLYLINE"), 40)), width);
        EXPECT_DOUBLE_EQ(std::max(std::stod(valueOf(file.first(0, "VERTEX"), 10)),
                                  std::stod(valueOf(file.first(0, "VERTEX", 1), 10))),
                         x);
        EXPECT_EQ(file.count(0, "SOLID"), 0u);
    }
}

TEST_F(HatchExport, WhatCantBeFilledIsTold) {
    const host::Contour eight = polygon({{0, 0}, {10, 10}, {10, 0}, {0, 9}});
    startDrawing();
    host::Pattern& pattern = addPattern({});
    pattern.hatches = {fill({eight}), fill({square(20, 30)})};
    const Exported file = exportDrawing(exportConfig("ACAD12", fillsToo));
    EXPECT_THAT(file.protocol, HasSubstr("Füllschraffurkontur schneidet sich!"));
    EXPECT_THAT(file.protocol, HasSubstr("Koordinaten X=4.736842, Y=4.736842"));
    EXPECT_THAT(file.protocol, HasSubstr("Ungültige Füllschraffurkontur ignoriert!"));
    EXPECT_EQ(file.count(0, "SOLID"), 1u) << "the other one goes out";
}

/// Lines that are too many, or too far from their base to be counted: told, and no endless run.
TEST_F(HatchExport, PatternsThatAreTooFineAreTold) {
    const std::vector<host::HatchFamily> patterns[] = {
        {{0, 1e-9, 0, 0, 0, 1, 1, {}}},
        {{0, 1, 0, 1e18, 0, 1, 1, {}}},
        {{0, 1, 1e18, 0, 0, 1, 1, {1e-3, -1e-3}}},
        {{0, 1, 0, 0, 0, 1, 1, {1e-12, -1e-12}}},
        std::vector<host::HatchFamily>(3'000, {0, 0.01, 0, 0, 0, 1, 1, {}}),
    };
    for (const auto& families : patterns) {
        host::Hatch hatch = lines({square(0, 10)}, {});
        hatch.families = families;
        const Exported file = exported(hatch, "ACAD12", "");
        EXPECT_EQ(file.stat, 0);
        EXPECT_THAT(file.protocol, HasSubstr("1 hatch was not written."));
    }
}

// ---- round trips -------------------------------------------------------------------------------------

struct Drawn {
    double fills = 0, lined = 0;
    std::vector<host::Hatch> hatches;
};
Drawn drawnNow() {
    Drawn drawn;
    drawn.hatches = hatchesNow();
    for (const host::Hatch& h : drawn.hatches) (h.solid ? drawn.fills : drawn.lined) += areaOf(h);
    return drawn;
}

/// Lines lie where they lay: the same direction, period and places.
void expectSameLines(const host::HatchLines& a, const host::HatchLines& b, const std::string& what) {
    const double turn = std::remainder(a.angle - b.angle, 2 * pi);
    const bool isReversed = std::fabs(std::fabs(turn) - pi) < 1e-6;
    EXPECT_NEAR(isReversed ? 0 : turn, 0, 1e-6) << what;
    EXPECT_NEAR(a.period(), b.period(), 1e-6) << what;
    if (a.period() > 0)
        EXPECT_NEAR(std::remainder(a.base - (isReversed ? -b.base : b.base), a.period()), 0, 2.1e-4) << what;
    EXPECT_EQ(a.c1 + a.c2, b.c1 + b.c2) << what;
    EXPECT_EQ(a.lineType, b.lineType) << what;
}

TEST_F(HatchExport, HatchesComeBack) {
    const DxfGroups loops = edgeLoop({arcEdge(5, 0, 5, 180, 360, true), lineEdge(10, 0, 10, 8),
                                      lineEdge(10, 8, 0, 8), lineEdge(0, 8, 0, 0)});
    const std::vector<DxfGroups> area{loops, squareLoop(2, 6), squareLoop(3, 4), squareLoop(30, 40)};
    const DxfGroups hatches[] = {
        hatchGroups(area, true),
        hatchGroups(area, false, patternRows({{30, 1, 2, -1.5, 3, {}}})),
        hatchGroups(area, false,
                    patternRows({{90, 1, 7, 5, 0, {}}, {90, 3, 0, 5, 0, {}}, {10, 0, 0, 0, 2, {}}})),
        hatchGroups(area, false, patternRows({{45, 1, 2, -2, 2, {1.5, -1.5}}})),
    };
    DxfText text = dxf().header("AC1015");
    for (const DxfGroups& groups : hatches) text.entity("HATCH", groups);
    for (const std::string& version : VERSIONS) {
        const TempDir folder;
        folder.write("in.dxf", text.text());
        ASSERT_EQ(importFile(folder, "in.dxf", unshifted()).stat, 0);
        const Drawn before = drawnNow();
        ASSERT_EQ(before.hatches.size(), 4u);
        const Exported file = exportTo(folder, exportConfig(version, "NO_KOMMA=9\n" + fillsToo));
        EXPECT_EQ(file.stat, 0);
        EXPECT_EQ(file.errors(), "") << version;
        ASSERT_EQ(importFile(folder, "out.dxf", unshifted()).stat, 0);
        const Drawn after = drawnNow();
        const bool isOld = version == "ACAD12" || version == "EASY";
        EXPECT_NEAR(after.fills, before.fills, before.fills * (isOld ? 1e-3 : 1e-6)) << version;
        if (isOld) continue;
        EXPECT_NEAR(after.lined, before.lined, before.lined * 1e-6) << version;
        ASSERT_EQ(after.hatches.size(), 12u) << "an outer contour each";
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t k = 0; k < 2; ++k)
                expectSameLines(before.hatches[i + 1].lines[k], after.hatches[3 * (i + 1)].lines[k],
                                version + " hatch " + std::to_string(i));
    }
}

TEST_F(HatchExport, KeptPatternsComeBack) {
    const std::vector<Row> rows{
        {0, 1, 2, 0, 5, {1, -1}}, {60, 0, 1, -4, 3, {}}, {120, 0, 1, -4, -3, {0, -2}}};
    const TempDir folder;
    folder.write("in.dxf", dxf()
                               .header("AC1015")
                               .entity("HATCH", hatchGroups({squareLoop(0, 10)}, false, patternRows(rows)))
                               .text());
    ImportOptions options = unshifted();
    options.config = flags("KEEP_HATCH=1\n");
    ASSERT_EQ(importFile(folder, "in.dxf", options).stat, 0);
    const auto rowsNow = [] {
        const std::string dump = host::dumpDrawing(host::openDrawing());
        const std::size_t from = dump.find("hatch pen");
        return dump.substr(from, dump.find("contour") - from);
    };
    const std::string before = rowsNow();
    const Exported file = exportTo(folder, exportConfig("ACAD24", "NO_KOMMA=12\nKEEP_HATCH=1\n"));
    EXPECT_EQ(valueOf(file.first(0, "HATCH"), 2), "ANSI31");
    ASSERT_EQ(importFile(folder, "out.dxf", options).stat, 0);
    EXPECT_EQ(rowsNow(), before);
}

TEST_F(HatchExport, APatternThatWasEditedIsWrittenAsItIsNow) {
    const std::vector<Row> rows{{45, 1, 2, -2, 2, {}}, {225, 3, 2, -2, 2, {}}, {10, 0, 0, 0, 7, {}}};
    const TempDir folder;
    folder.write("in.dxf", dxf()
                               .header("AC1015")
                               .entity("HATCH", hatchGroups({squareLoop(0, 10)}, false, patternRows(rows)))
                               .text());
    ImportOptions options = unshifted();
    options.config = flags("KEEP_HATCH=1\n");
    const std::pair<double, const char*> turns[] = {{0, "ANSI31"}, {0.5, "_U"}};
    for (const auto& [turn, name] : turns) {
        ASSERT_EQ(importFile(folder, "in.dxf", options).stat, 0);
        for (host::Pattern& pattern : host::openDrawing().patterns)
            for (host::Hatch& hatch : pattern.hatches) hatch.lines.at(0).angle += turn;
        const Exported file = exportTo(folder, exportConfig("ACAD24", "NO_KOMMA=12\nKEEP_HATCH=1\n"));
        EXPECT_EQ(valueOf(file.first(0, "HATCH"), 2), name);
    }
}

} // namespace

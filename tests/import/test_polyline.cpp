#include "drawing/host_state.h"
#include "drawn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

/// Groups of LWPOLYLINE vertices: x, y and bulge.
struct Vertex {
    double x, y, bulge = 0;
};
DxfGroups vertices(std::initializer_list<Vertex> list) {
    DxfGroups groups;
    for (const Vertex& v : list) {
        groups = groups + at(10, {v.x, v.y});
        if (v.bulge != 0) groups = groups + at(42, {v.bulge});
    }
    return groups;
}
std::string lwPolyline(const DxfGroups& groups, ImportOptions options = unshifted()) {
    return drawnEntity("LWPOLYLINE", groups, std::move(options));
}
ImportOptions configured(const std::string& lines) {
    ImportOptions options = unshifted();
    options.config = flags(lines);
    return options;
}
int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) ++found;
    return found;
}

const DxfGroups closedFlag{{70, "1"}};
const DxfGroups corner = vertices({{0, 0}, {10, 0}, {10, 10}});

TEST(LwPolyline, BulgesAreArcs) {
    const struct {
        DxfGroups groups;
        const char* wanted;
    } cases[] = {
        {vertices({{0, 0, 1}, {10, 0}}), "move 0 0\narc ccw 10 0 about 5 0 info 4\n"},
        {vertices({{0, 0, -1}, {10, 0}}), "move 0 0\narc cw 10 0 about 5 0 info 4\n"},
        {vertices({{0, 0, std::tan(std::atan(1.0) / 2)}, {10, 0}}),
         "move 0 0\narc ccw 10 0 about 5 5 info 4\n"},
        {vertices({{0, 0, 1}, {0, 0}, {5, 0}}), "move 0 0\ndraw 5 0 info 4\n"},
        {vertices({{0, 0}, {0, 0}, {5, 0}}), "move 0 0\ndraw 0 0 info 4\ndraw 5 0 info 4\n"},
        {closedFlag + vertices({{0, 0}, {10, 0, 1}}),
         "move 0 0\ndraw 10 0 info 5\narc ccw 0 0 about 5 0 info 5\n"},
        {DxfGroups{{230, "-1"}, {210, "0"}, {220, "0"}} + vertices({{0, 0, 1}, {10, 0}}),
         "move 0 0\narc cw -10 0 about -5 0 info 4\n"},
        {vertices({{3, 4}}), "move 3 4\n"},
        {DxfGroups{{70, "1"}}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(lwPolyline(c.groups), c.wanted);
}

TEST(LwPolyline, CountsThatLie) {
    const std::string all = "move 0 0\ndraw 10 0 info 4\ndraw 10 10 info 4\n";
    for (const char* announced : {"3", "2147483647", "1000000000"})
        EXPECT_EQ(lwPolyline(DxfGroups{{90, announced}} + corner), all) << announced;
    EXPECT_EQ(lwPolyline(corner), all);
    EXPECT_EQ(lwPolyline(DxfGroups{{90, "2"}} + corner + DxfGroups{{42, "1"}}),
              "move 0 0\ndraw 10 0 info 4\n")
        << "what belongs to a vertex too many goes with it";
    EXPECT_EQ(lwPolyline(DxfGroups{{90, "-5"}} + corner), "");
}

TEST(LwPolyline, ARevisionCloudHasItsOwnInfo) {
    const DxfGroups cloud{{1001, "RevcloudProps"}, {1001, "OTHER"}},
        other{{1001, "OTHER"}, {1001, "RevcloudProps"}};
    EXPECT_NE(lwPolyline(closedFlag + corner + cloud).find("draw 0 0 info 12"), std::string::npos);
    EXPECT_NE(lwPolyline(closedFlag + corner + other).find("draw 0 0 info 5"), std::string::npos);
    EXPECT_NE(lwPolyline(corner + cloud).find("draw 10 10 info 4"), std::string::npos);
}

/// The half circle above (0, 0) … (-10, 0) and a line, in a block under this scale.
std::string inserted(const DxfGroups& scale) {
    return drawn(dxf()
                     .header("AC1015")
                     .block("B", DxfGroups{{0, "LWPOLYLINE"}} + vertices({{10, 0, 1}, {0, 0}, {-5, 0}}))
                     .entity("INSERT", DxfGroups{{2, "B"}} + at(10, {0, 0}) + scale));
}

TEST(LwPolyline, BulgesInBlocks) {
    EXPECT_EQ(inserted({{41, "-1"}}), "move -10 0\narc cw 0 0 about -5 0 info 4\ndraw 5 0 info 4\n");
    EXPECT_EQ(inserted({{41, "2"}, {42, "2"}}),
              "move 20 0\narc ccw 0 0 about 10 0 info 4\ndraw -10 0 info 4\n");
}

TEST(LwPolyline, UnevenScalesMakeEllipsePieces) {
    for (const double sign : {1.0, -1.0}) {
        const std::string result = inserted({{42, sign > 0 ? "2" : "-2"}});
        const auto through = result.find("through");
        ASSERT_NE(through, std::string::npos) << result;
        std::istringstream points(result.substr(through + 8));
        double highest = 0;
        for (double x = 0, y = 0; points >> x >> y;) highest = std::max(highest, sign * y);
        EXPECT_NEAR(highest, 10, 1e-6) << "mirrored as a whole, the arc stays on its side\n" << result;
        EXPECT_NE(result.find("draw -5 0 info 4"), std::string::npos) << "the pen is at the piece's end";
    }
}

TEST(LwPolyline, CrossesFromAFullPatternWithAMove) {
    ImportOptions options = unshifted();
    options.config = "ELEMENTS = 2\n";
    options.configName = "test.conf";
    const std::string result = lwPolyline(vertices({{0, 0}, {1, 0}, {2, 0}, {3, 0}}), options);
    EXPECT_NE(result.find("move 1 0\ndraw 2 0"), std::string::npos) << result;
}

DxfGroups vertex(double x, double y, const DxfGroups& more = {}) {
    return DxfGroups{{0, "VERTEX"}} + at(10, {x, y, 99}) + more;
}
std::string polyline(const DxfGroups& head, const DxfGroups& list, ImportOptions options = unshifted()) {
    return drawn(dxf()
                     .header("AC1015")
                     .layer("OFF", -3)
                     .entity("POLYLINE", DxfGroups{{66, "1"}, {10, "5"}, {20, "5"}, {30, "2"}} + head)
                     .raw(list + DxfGroups{{0, "SEQEND"}, {8, "0"}})
                     .entity("LINE", at(10, {7, 7}) + at(11, {8, 8})),
                 std::move(options));
}
const std::string lineBehind = "move 7 7\ndraw 8 8\n";

TEST(Polyline, ItsVerticesAreReadWithIt) {
    const struct {
        DxfGroups head, list;
        std::string wanted;
    } cases[] = {
        {{}, vertex(0, 0, {{42, "1"}}) + vertex(2, 0), "move 0 0\narc ccw 2 0 about 1 0 info 4\n"},
        {closedFlag, vertex(0, 0) + vertex(2, 0) + vertex(2, 2),
         "move 0 0\ndraw 2 0 info 5\ndraw 2 2 info 5\ndraw 0 0 info 5\n"},
        {{}, vertex(0, 0) + vertex(1, 1, {{70, "16"}}) + vertex(2, 0), "move 0 0\ndraw 2 0 info 4\n"},
        {{{70, "64"}},
         vertex(0, 0, {{70, "192"}}) + vertex(2, 0, {{70, "192"}}) + vertex(0, 0, {{70, "128"}}),
         "move 0 0\ndraw 2 0 info 4\n"},
        {{}, vertex(0, 0) + vertex(1, 1, {{8, "OFF"}}) + vertex(2, 0), "move 0 0\ndraw 2 0 info 4\n"},
        {{{8, "OFF"}}, vertex(0, 0) + vertex(2, 0), ""},
        {{}, {}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(polyline(c.head, c.list), c.wanted + lineBehind);
}

TEST(Polyline, OnlyA3dOneIgnoresItsExtrusion) {
    const DxfGroups list = vertex(1, 0, {{70, "32"}}) + vertex(2, 0, {{70, "32"}});
    const DxfGroups down{{210, "0"}, {220, "0"}, {230, "-1"}};
    EXPECT_EQ(polyline(down, list), "move -1 0\ndraw -2 0 info 4\n" + lineBehind);
    EXPECT_EQ(polyline(down + DxfGroups{{70, "8"}}, list), "move 1 0\ndraw 2 0 info 4\n" + lineBehind);
}

TEST(Polyline, HeightsAreTheElevationUnlessTheVertexHasItsOwn) {
    // Looked at from the side: x is the height.
    const DxfGroups aside{{210, "1"}, {220, "0"}, {230, "0"}};
    EXPECT_EQ(polyline(aside, vertex(0, 0) + vertex(1, 0, {{38, "3"}}) + vertex(2, 0, {{70, "32"}})),
              "move 2 0\ndraw 5 1 info 4\ndraw 99 2 info 4\n" + lineBehind);
}

TEST(Polyline, WithoutItsEndTakesTheNextEntity) {
    EXPECT_EQ(drawn(dxf()
                        .header("AC1015")
                        .entity("POLYLINE", {})
                        .raw(vertex(0, 0) + vertex(1, 0))
                        .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}))
                        .entity("POINT", at(10, {9, 9}))),
              "move 0 0\ndraw 1 0 info 4\nmove 9 9\ndraw 9 9\n");
}

const DxfGroups wide = DxfGroups{{43, "2"}} + vertices({{0, 0}, {10, 0}});
const DxfGroups varying = vertices({{0, 0}}) + DxfGroups{{40, "2"}, {41, "4"}} + vertices({{10, 0}});

TEST(WidePolyline, ItsOutlineComesAsTheSwitchesSay) {
    const struct {
        const char* config;
        int outlines, fills;
    } cases[] = {
        {"LINE_AS_HATCH=1\nFILLMODE=0\nFILL_CONTOUR=1\n", 1, 0},
        {"LINE_AS_HATCH=1\nFILLMODE=1\nFILL_CONTOUR=0\n", 0, 1},
        {"LINE_AS_HATCH=1\nFILLMODE=1\nFILL_CONTOUR=1\n", 1, 1},
    };
    for (const DxfGroups& groups : {wide, varying}) {
        const char* corner1 = groups.front().code == 43 ? "10 -1" : "10 -2";
        for (const auto& c : cases) {
            const std::string result = lwPolyline(groups, configured(c.config));
            const auto hatch = std::min(result.find("hatch "), result.size());
            EXPECT_EQ(count(result, "hatch "), c.fills) << c.config << result;
            EXPECT_EQ(count(result.substr(0, hatch), "move "), c.outlines) << c.config << result;
            EXPECT_NE(result.find(corner1), std::string::npos) << c.config << result;
        }
    }
}

TEST(WidePolyline, KeepsItsCentreLineWhenItIsNoHatch) {
    const std::string plain = "move 0 0\ndraw 10 0 info 4\n";
    EXPECT_EQ(lwPolyline(wide, configured("LINE_AS_HATCH=0\nFILLMODE=1\n")), plain);
    EXPECT_EQ(lwPolyline(wide, configured("LINE_AS_HATCH=1\nFILLMODE=0\nFILL_CONTOUR=0\n")), plain);
    ImportOptions noWidth = configured("LINE_AS_HATCH=1\nFILLMODE=1\n");
    noWidth.numbers["&DxfNoPolyWidth"] = 1;
    EXPECT_EQ(lwPolyline(wide, noWidth), plain);
    EXPECT_EQ(count(lwPolyline(varying, noWidth), "hatch "), 1) << "varying widths show all the same";
}

TEST(WidePolyline, LineOutlineAndFillHaveItsColour) {
    for (const DxfGroups& groups : {wide, varying}) {
        for (const char* asHatch : {"0", "1"}) {
            const DxfText text = dxf()
                                     .header("AC1015")
                                     .layer("RED", 1)
                                     .entity("LINE", DxfGroups{{62, "5"}} + at(11, {9, 9}))
                                     .entity("LWPOLYLINE", DxfGroups{{8, "RED"}} + groups);
            const std::string config = std::string("FILLMODE=1\nLINE_AS_HATCH=") + asHatch + "\n";
            const std::string dump = importText(text.text(), configured(config)).dump;
            EXPECT_NE(dump.find("  pen 2 lt 1\n"), std::string::npos) << config << dump;
            EXPECT_EQ(dump.find("hatch solid pen 2\n") != std::string::npos, *asHatch == '1') << dump;
        }
    }
}

/// Heights of the outline at its corners right below and above these places of the x axis.
std::string outlineOfVarying(const DxfGroups& groups, const DxfGroups& insert = {}) {
    DxfText text = dxf().header("AC1015").block("B", DxfGroups{{0, "LWPOLYLINE"}} + groups);
    text.entity("INSERT", DxfGroups{{2, "B"}} + at(10, {0, 0}) + insert);
    return drawn(text, configured("LINE_AS_HATCH=1\nFILLMODE=0\nFILL_CONTOUR=1\n"));
}
DxfGroups widths(double start, double end) {
    return at(40, {start}) + at(41, {end});
}

TEST(WidePolyline, WidthsStayWithTheirPieces) {
    // The piece between equal vertices vanishes, bulge and widths with it.
    const DxfGroups vanishing = at(10, {0, 0}) + widths(0, 2) + at(10, {10, 0}) + at(42, {1}) + widths(9, 9) +
                                at(10, {10, 0}) + widths(2, 4) + at(10, {30, 0});
    const std::string outline = outlineOfVarying(vanishing);
    for (const char* place : {" 10 -1", " 30 -2", " 30 2", " 10 1"})
        EXPECT_NE(outline.find(place), std::string::npos) << place << '\n' << outline;
    // An ellipse piece becomes several elements; the width grows through all of them.
    const DxfGroups round = at(10, {0, 0}) + at(42, {1}) + widths(0, 2) + at(10, {20, 0});
    const std::string half = outlineOfVarying(round, {{41, "1"}, {42, "0.5"}});
    double x = 0, y = 0, lowest = 0;
    for (std::istringstream in(half); in; in.ignore(1000, '\n')) {
        std::string op;
        in >> op >> x >> y;
        lowest = std::min(lowest, y);
    }
    EXPECT_NEAR(lowest, -5.5, 0.02) << "half the mean width below the ellipse's lowest point\n" << half;
}

TEST(WidePolyline, StaysALineWhereItHasNoWidth) {
    // A shaft and the head of an arrow.
    const DxfGroups arrow = at(10, {0, 0}) + at(10, {10, 0}) + widths(4, 0) + at(10, {16, 0});
    for (const char* config : {"FILLMODE=0\nFILL_CONTOUR=1\n", "FILLMODE=1\nFILL_CONTOUR=0\n"}) {
        const std::string result = lwPolyline(arrow, configured(std::string("LINE_AS_HATCH=1\n") + config));
        EXPECT_NE(result.find("move 0 0\ndraw 10 0 info 4\n"), std::string::npos) << config << result;
    }
    const std::string hidden = lwPolyline(arrow, configured("LINE_AS_HATCH=1\nFILLMODE=0\nFILL_CONTOUR=0\n"));
    EXPECT_EQ(hidden, "move 0 0\ndraw 10 0 info 4\ndraw 16 0 info 4\n") << "no width is to be shown";
}

/// Most elements that a pattern of the drawing has.
std::size_t fullestPattern() {
    std::size_t most = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        most = std::max(most, pattern.elements.size());
    return most;
}

TEST(WidePolyline, KeepsToTheLimitOfAPattern) {
    DxfText text = dxf().header("AC1015");
    for (int i = 0; i < 300; ++i) {
        text.entity("LWPOLYLINE", DxfGroups{{43, "2"}} + vertices({{0, 5.0 * i}, {10, 5.0 * i}}));
        text.entity("LINE", at(10, {0, 1.0 * i}) + at(11, {5, 1.0 * i}));
    }
    for (const char* config : {"LINE_AS_HATCH=1\nFILLMODE=1\nFILL_CONTOUR=1\n", "LINE_AS_HATCH=0\n",
                               "LINE_AS_HATCH=1\nFILLMODE=1\nFILL_CONTOUR=1\nREAD_LAYER=ATTR\n"}) {
        const std::string result = drawn(text, configured(config));
        EXPECT_EQ(count(result, "draw 5 "), 300) << config;
        EXPECT_LE(fullestPattern(), 1001u) << config << "with the Move that begins a pattern";
        if (config[14] == '1')
            EXPECT_GT(fullestPattern(), 990u) << config << "what follows an outline fills its pattern up";
    }
}

TEST(WidePolyline, WidthsGrowWithTheBlocksScale) {
    DxfText text = dxf().header("AC1015").block("B", DxfGroups{{0, "LWPOLYLINE"}} + wide);
    text.entity("INSERT", DxfGroups{{2, "B"}, {41, "3"}, {42, "3"}, {43, "3"}} + at(10, {0, 0}));
    text.entity("LINE", at(10, {7, 7}) + at(11, {8, 8}));
    const std::string result = drawn(text, configured("LINE_AS_HATCH=1\nFILLMODE=0\nFILL_CONTOUR=1\n"));
    EXPECT_NE(result.find("30 -3"), std::string::npos) << result;
    EXPECT_NE(result.find(lineBehind), std::string::npos) << "what follows is drawn as ever";
}

TEST(WidePolyline, AWidthOfItsVerticesAloneDoesNotCountForAPolyline) {
    EXPECT_EQ(
        polyline({}, vertex(0, 0, {{40, "2"}, {41, "2"}}) + vertex(2, 0), configured("LINE_AS_HATCH=1\n")),
        "move 0 0\ndraw 2 0 info 4\n" + lineBehind);
}

} // namespace

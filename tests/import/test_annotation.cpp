// LEADER, TOLERANCE, ACAD_TABLE, and the further kinds of MORE_KINDS.
#include "blocks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

DxfText styled(const DxfGroups& more = {}) {
    DxfText file = drawing();
    file.record("STYLE", DxfGroups{{2, "ISO"}, {5, "20"}, {40, "5"}, {3, "txt"}});
    file.record(
        "DIMSTYLE",
        DxfGroups{
            {105, "30"}, {2, "D"}, {40, "2"}, {41, "3"}, {140, "2.5"}, {176, "1"}, {178, "5"}, {340, "20"}} +
            more);
    return file;
}
const DxfGroups bent =
    DxfGroups{{3, "D"}, {76, "3"}} + at(10, {1, 2, 0}) + at(10, {11, 12, 0}) + at(10, {21, 12, 0});
DxfGroups changed(int code, int valueCode, const std::string& value) {
    return {{1001, "ACAD"},     {1000, "DSTYLE"}, {1002, "{"}, {1070, std::to_string(code)},
            {valueCode, value}, {1002, "}"}};
}
std::string leader(const DxfGroups& groups, const DxfGroups& style = {}) {
    return drawn(styled(style).entity("LEADER", groups));
}
ImportOptions further() {
    ImportOptions options = unshifted();
    options.config = flags("MORE_KINDS=1\n");
    return options;
}

TEST(Leader, IsAnArrowWhoseHeadFollowsTheStyle) {
    const std::string plain = leader(bent);
    EXPECT_NE(plain.find("arrow"), std::string::npos) << plain;
    EXPECT_LT(plain.find("21 12"), plain.find("11 12")) << plain;
    EXPECT_LT(plain.find("11 12"), plain.find("1 2\n")) << "the head's vertex comes last: " << plain;
    EXPECT_NE(leader(bent + changed(142, 1040, "1")), plain) << "a tick";
    EXPECT_EQ(leader(bent + changed(142, 1040, "1")), leader(bent, {{142, "1"}}));
    EXPECT_NE(leader(bent + DxfGroups{{71, "0"}}), plain) << "no head";
    EXPECT_NE(leader(bent + changed(41, 1040, "6")), plain) << "a longer head";
    EXPECT_EQ(leader(bent + changed(40, 1040, "4")), leader(bent + changed(41, 1040, "6")));
    EXPECT_EQ(leader(changed(142, 1040, "1") + bent), plain) << "changes ahead of the style's name";
    EXPECT_EQ(leader(bent + DxfGroups{{1000, "OTHER"}, {1070, "142"}, {1040, "1"}}), plain);
}

TEST(Leader, BelievesItsVerticesAndNoCount) {
    const DxfGroups vertices = at(10, {1, 2, 0}) + at(10, {11, 12, 0});
    const std::string right = leader(DxfGroups{{3, "D"}, {76, "2"}} + vertices);
    for (const char* count : {"0", "-3", "1", "2147483647"})
        EXPECT_EQ(leader(DxfGroups{{3, "D"}, {76, count}} + vertices), right) << count;
    EXPECT_EQ(leader(DxfGroups{{3, "D"}} + vertices), right);
    EXPECT_EQ(count(leader(DxfGroups{{3, "D"}} + at(10, {1, 2, 0})), "arrow"), 1);
    EXPECT_EQ(leader({{3, "D"}, {76, "4"}, {20, "7"}}), "");
    EXPECT_EQ(count(leader(DxfGroups{{3, "NONE"}} + vertices), "arrow"), 1) << "no style";
}

std::string tolerance(const std::string& text, const DxfGroups& more = {}) {
    return drawn(styled().entity("TOLERANCE", DxfGroups{{3, "D"}, {1, text}} + more + at(10, {100, 50, 0})));
}

TEST(Tolerance, IsFramesWithCells) {
    const std::string one = tolerance("{\\Fgdt;j}%%v{\\Fgdt;n}0.1%%vA");
    EXPECT_EQ(count(one, "text"), 4) << one;
    EXPECT_EQ(count(one, "draw"), 4 + 2) << one;
    EXPECT_NE(one.find("100 55"), std::string::npos) << "half a row is the height, 2.5 times 2: " << one;
    EXPECT_NE(one.find("AMGDT"), std::string::npos) << one;
    const std::string two = tolerance("A^JB");
    EXPECT_EQ(count(two, "draw"), 8) << two;
    EXPECT_NE(two.find("100 35"), std::string::npos) << two;
    EXPECT_NE(tolerance("A", at(11, {0, 1, 0})).find("95 50"), std::string::npos);
}

TEST(Tolerance, TextsWithoutSenseAreFramesStill) {
    const struct {
        const char* text;
        int texts, lines;
    } cases[] = {
        {"", 0, 4},
        {"^J", 0, 8},
        {"%%v", 0, 5},
        {"\\A1;x", 1, 4},
        {"\\A1", 0, 4},
        {"\\A1%%vx", 1, 5},
        {"{\\Fgdt;", 0, 4},
        {"{\\fgdt;j", 1, 4},
        {"\\", 0, 4},
        {"{\\Fgdt;j}}", 2, 4},
        {"\\A1{\\Fgdt;j}", 1, 4},
    };
    for (const auto& each : cases) {
        const std::string found = tolerance(each.text);
        EXPECT_EQ(count(found, "text"), each.texts) << each.text << "\n" << found;
        EXPECT_EQ(count(found, "draw"), each.lines) << each.text << "\n" << found;
    }
    DxfGroups pieces;
    for (int i = 0; i < 60; ++i) pieces.push_back({1, std::string(200, 'x') + "%%v"});
    EXPECT_EQ(count(tolerance("", pieces), "text"), 11) << "2047 characters, eleven cells";
    EXPECT_EQ(drawn(styled().entity("TOLERANCE", {{3, "OTHER"}, {1, "A"}})), "");
}

TEST(Table, IsItsBlockAndNothingWithoutOne) {
    const auto table = [](const DxfGroups& groups, const DxfGroups& inside = {}) {
        DxfText file = drawing();
        file.block("*T1", line(0, 0, 10, 0) + inside);
        return drawn(file.entity("ACAD_TABLE", groups + at(10, {5, 7, 0})).entity("LINE", at(11, {1, 1})));
    };
    const std::string after = "move 0 0\ndraw 1 1\n";
    EXPECT_EQ(table({{2, "*T1"}, {2, "OTHER"}}), "move 5 7\ndraw 15 7\n" + after);
    EXPECT_EQ(table({{2, "*T2"}}), after);
    EXPECT_EQ(table({}), after);
    const DxfGroups itself = DxfGroups{{0, "ACAD_TABLE"}, {2, "*T1"}};
    EXPECT_EQ(table({{2, "*T1"}}, itself), "move 5 7\ndraw 15 7\n" + after) << "its own block";
}

const DxfGroups mleader =
    DxfGroups{{300, "CONTEXT_DATA{"}, {40, "1"}, {41, "2.5"}, {140, "4"}, {290, "1"}, {304, "note {a}"}} +
    at(12, {40, 30, 0}) + DxfGroups{{171, "1"}, {296, "0"}, {302, "LEADER{"}, {290, "1"}, {291, "1"}} +
    at(10, {30, 30, 0}) + at(11, {1, 0, 0}) + DxfGroups{{40, "8"}, {304, "LEADER_LINE{"}} +
    at(10, {10, 5, 0}) + DxfGroups{{305, "}"}, {303, "}"}, {301, "}"}, {170, "1"}};

TEST(MultiLeader, IsDrawnByItsContextWhenAskedFor) {
    EXPECT_EQ(drawnEntity("MULTILEADER", mleader), "");
    for (const char* name : {"MULTILEADER", "MLEADER"}) {
        const std::string found = drawnEntity(name, mleader, further());
        EXPECT_EQ(count(found, "arrow"), 1) << found;
        EXPECT_NE(found.find("38 30"), std::string::npos) << "the landing's end: " << found;
        EXPECT_LT(found.find("30 30"), found.find("10 5")) << found;
        EXPECT_NE(found.find("note"), std::string::npos) << found;
    }
    EXPECT_EQ(count(drawnEntity("MULTILEADER", mleader + DxfGroups{{170, "0"}}, further()), "arrow"), 0);
}

TEST(MultiLeader, BlocksCarryTheirTexts) {
    DxfText file = drawing();
    file.record("BLOCK_RECORD", {{2, "TAG"}, {5, "40"}});
    file.block("TAG", line(0, 0, 3, 0) + DxfGroups{{0, "ATTDEF"}, {5, "41"}, {2, "NO"}, {1, "?"}, {40, "2"}} +
                          at(10, {1, 1, 0}));
    const DxfGroups groups = DxfGroups{{300, "CONTEXT_DATA{"}, {290, "0"}, {296, "1"}, {341, "40"}} +
                             at(15, {50, 60, 0}) + at(16, {2, 2, 2}) +
                             DxfGroups{{301, "}"}, {330, "41"}, {177, "1"}, {302, "17"}};
    const std::string found = drawn(file.entity("MULTILEADER", groups), further());
    EXPECT_NE(found.find("draw 56 60"), std::string::npos) << found;
    EXPECT_NE(found.find("17"), std::string::npos) << found;
    EXPECT_EQ(found.find("?"), std::string::npos) << found;
}

TEST(MultiLeader, BracesCutAnywhereCostOnlyTheEntity) {
    for (std::size_t length = 0; length <= mleader.size(); ++length) {
        const DxfGroups cut(mleader.begin(), mleader.begin() + static_cast<std::ptrdiff_t>(length));
        const std::string found =
            drawn(drawing().entity("MULTILEADER", cut).entity("LINE", at(11, {1, 1})), further());
        EXPECT_NE(found.find("move 0 0\ndraw 1 1\n"), std::string::npos) << length;
    }
    const DxfGroups stray = {{303, "}"}, {305, "}"}, {304, "LEADER_LINE{"}, {302, "LEADER{"}, {10, "1"}};
    EXPECT_EQ(drawnEntity("MULTILEADER", stray, further()), "");
}

TEST(FurtherKinds, LinesWithoutEndAreClippedToTheExtents) {
    DxfText file = drawing();
    file.entity("LINE", at(10, {0, 0, 0}) + at(11, {100, 0, 0})).entity("LINE", at(11, {0, 100, 0}));
    file.entity("RAY", at(10, {50, 50, 0}) + at(11, {1, 0, 0}));
    file.entity("XLINE", at(10, {50, 50, 0}) + at(11, {0, 1, 0}));
    file.entity("XLINE", at(10, {50, 50, 0}) + at(11, {0, 0, 1})); // seen as a point
    const std::string found = drawn(file, further());
    EXPECT_NE(found.find("move 50 50\ndraw 107.071068"), std::string::npos) << found;
    EXPECT_NE(found.find("move 50 -7.07106781"), std::string::npos) << found;
    EXPECT_EQ(count(found, "draw"), 4) << found;
}

TEST(FurtherKinds, MultilinesAreWhereTheirParametersSay) {
    const auto vertex = [](double x, const DxfGroups& cut) {
        return at(11, {x, 0, 0}) + at(12, {1, 0, 0}) + at(13, {0, 1, 0}) +
               DxfGroups{{74, "2"}, {41, "1"}, {41, "0"}, {75, "0"}, {74, "2"}, {41, "-1"}, {41, "0"}} + cut;
    };
    const DxfGroups two = DxfGroups{{71, "1"}, {72, "99"}} + vertex(0, {}) + vertex(10, {});
    EXPECT_EQ(drawnEntity("MLINE", two, further()), "move 0 1\ndraw 10 1\nmove 0 -1\ndraw 10 -1\n");
    const DxfGroups cut = DxfGroups{{71, "1"}} + vertex(0, {{41, "4"}, {41, "6"}}) + vertex(10, {});
    EXPECT_EQ(drawnEntity("MLINE", cut, further()),
              "move 0 1\ndraw 10 1\nmove 0 -1\ndraw 4 -1\nmove 6 -1\ndraw 10 -1\n");
    EXPECT_EQ(drawnEntity("MLINE", two), "");
}

TEST(FurtherKinds, AHelixIsItsSpline) {
    DxfGroups spline = {{70, "0"}, {71, "3"}, {72, "8"}, {73, "4"}, {74, "0"}};
    for (const char* knot : {"0", "0", "0", "0", "1", "1", "1", "1"}) spline.push_back({40, knot});
    for (const double x : {0.0, 1.0, 2.0, 3.0}) spline = spline + at(10, {x, x * x, 0});
    const DxfGroups ofHelix = DxfGroups{{100, "AcDbHelix"}, {90, "29"}} + at(10, {50, 50, 0}) +
                              at(11, {60, 50, 0}) + at(12, {0, 0, 1}) +
                              DxfGroups{{40, "5"}, {41, "3"}, {42, "1"}, {290, "1"}};
    const std::string found = drawnEntity("SPLINE", spline);
    EXPECT_GT(count(found, "draw"), 2) << found;
    EXPECT_EQ(drawnEntity("HELIX", spline + ofHelix, further()), found);
    EXPECT_EQ(drawnEntity("HELIX", spline + ofHelix), "");
}

} // namespace

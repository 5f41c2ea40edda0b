#include "drawn.h"
#include "dx_report.h"
#include "services/session.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

DxfGroups line(double x0, double y0, double x1, double y1, const DxfGroups& more = {}) {
    return DxfGroups{{0, "LINE"}} + more + at(10, {x0, y0}) + at(11, {x1, y1});
}
DxfGroups insertOf(const std::string& block, double x = 0, double y = 0, const DxfGroups& more = {}) {
    return DxfGroups{{2, block}} + at(10, {x, y, 0}) + more;
}
/// The same as an entity of a block.
DxfGroups nested(const std::string& block, double x = 0, double y = 0, const DxfGroups& more = {}) {
    return DxfGroups{{0, "INSERT"}} + insertOf(block, x, y, more);
}
DxfGroups base(double x, double y) {
    return DxfGroups{{70, "0"}} + at(10, {x, y, 0});
}
DxfText drawing(const DxfGroups& variables = {}) {
    return dxf().header("AC1015", variables);
}
int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) ++found;
    return found;
}

TEST(Insert, PlacesByBaseScaleRotationAndExtrusion) {
    const struct {
        DxfGroups head, placement;
        const char* wanted;
    } cases[] = {
        {base(5, 5), {}, "move 0 0\ndraw 5 0\n"},
        {base(5, 5), {{41, "2"}, {42, "3"}, {50, "90"}}, "move 0 0\ndraw 0 10\n"},
        {base(5, 5), {{41, "0"}, {42, "0"}, {43, "0"}}, "move 0 0\ndraw 5 0\n"},
        {base(5, 5), {{41, "-1"}}, "move 0 0\ndraw -5 0\n"},
        {base(5, 5), {{210, "0"}, {220, "0"}, {230, "-1"}}, "move 0 0\ndraw -5 0\n"},
        {base(5, 5), {{70, "3"}, {71, "2"}, {44, "9"}, {45, "9"}}, "move 0 0\ndraw 5 0\n"},
        {{}, {{50, "180"}}, "move -5 -5\ndraw -10 -5\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(drawn(drawing()
                            .block("B", line(5, 5, 10, 5), c.head)
                            .entity("INSERT", insertOf("B", 0, 0, c.placement))),
                  c.wanted);
    }
}

TEST(Insert, NestedPlacementsMultiplyFromTheInnermostOut) {
    DxfText text = drawing()
                       .block("IN", line(1, 0, 2, 0), base(1, 0))
                       .block("OUT", nested("IN", 10, 0, {{50, "90"}}) + line(0, 0, 1, 0))
                       .entity("INSERT", insertOf("OUT", 100, 0, {{41, "2"}, {42, "2"}}))
                       .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}));
    EXPECT_EQ(drawn(text), "move 120 0\ndraw 120 2\nmove 100 0\ndraw 102 0\nmove 7 7\ndraw 8 8\n")
        << "the scales and the place in the file come back behind each INSERT";
}

TEST(Insert, ArcsFollowMirroringAndUnevenScales) {
    const DxfGroups arc =
        DxfGroups{{0, "ARC"}} + at(10, {0, 0}) + DxfGroups{{40, "1"}, {50, "0"}, {51, "90"}};
    const auto inserted = [&](const DxfGroups& scale) {
        return drawn(drawing().block("B", arc).entity("INSERT", insertOf("B", 0, 0, scale)));
    };
    EXPECT_EQ(inserted({{41, "2"}, {42, "-2"}}), "move 0 -2\narc ccw 2 0 about 0 0\n");
    EXPECT_NE(inserted({{41, "2"}, {42, "1"}}).find("spline"), std::string::npos);
}

/// Pens of the drawing, in their order.
std::string pens(const DxfText& text) {
    std::istringstream lines(importText(text.text(), unshifted()).dump);
    std::string result, line;
    while (std::getline(lines, line))
        if (const auto at = line.find("pen "); at == 2) result += line.substr(6, line.find(' ', 6) - 6) + " ";
    return result;
}

TEST(Insert, ByBlockResolvesThroughAnyDepth) {
    const auto viaTwo = [](const DxfGroups& outer) {
        return pens(drawing()
                        .layer("GREEN", 3)
                        .block("IN", line(0, 0, 1, 0, {{62, "0"}}))
                        .block("MID", nested("IN", 0, 0, {{62, "0"}}))
                        .entity("INSERT", insertOf("MID", 0, 0, outer)));
    };
    const auto plain = [](const char* colour) {
        return pens(drawing().entity("LINE", DxfGroups{{62, colour}} + at(10, {0, 0}) + at(11, {1, 0})));
    };
    EXPECT_EQ(viaTwo({{62, "5"}}), plain("5"));
    EXPECT_EQ(viaTwo({{62, "256"}, {8, "GREEN"}}), plain("3")) << "the layer's colour goes on";
    EXPECT_NE(plain("5"), plain("3"));
}

TEST(Insert, HiddenByItsLayerOrVisibilityIsNotRead) {
    for (const DxfGroups& hidden : {DxfGroups{{8, "OFF"}}, DxfGroups{{60, "1"}}, DxfGroups{{67, "1"}}}) {
        const auto result = importText(drawing()
                                           .layer("OFF", -3)
                                           .block("B", line(0, 0, 1, 0))
                                           .entity("INSERT", insertOf("B", 0, 0, hidden))
                                           .text());
        EXPECT_EQ(elementsOf(result.dump), "");
    }
}

TEST(Insert, UnknownAndRecursiveBlocksAreReportedAndPassedOver) {
    const DxfGroups after = at(10, {0, 0}) + at(11, {9, 0});
    const struct {
        DxfText text;
        std::vector<std::string> lines;
        const char* wanted;
    } cases[] = {
        {drawing().entity("INSERT", insertOf("NONE")),
         {"Block NONE nicht definiert!"},
         "move 0 0\ndraw 9 0\n"},
        {drawing().block("b", line(0, 0, 1, 0)).entity("INSERT", insertOf("B")),
         {"Block B nicht definiert!"},
         "move 0 0\ndraw 9 0\n"},
        {drawing().block("A", line(0, 0, 1, 0) + nested("A")).entity("INSERT", insertOf("A")),
         {"Direkt rekursive INSERTs von Block A.", "Einfügen (INSERT) ignoriert!"},
         "move 0 0\ndraw 1 0\nmove 0 0\ndraw 9 0\n"},
        {drawing()
             .block("A", nested("B") + line(0, 0, 1, 0))
             .block("B", nested("A") + line(0, 0, 2, 0))
             .entity("INSERT", insertOf("A")),
         {"Warnung: Indirekt rekursive INSERTs von Block A.", "Einfügen (INSERT) ignoriert!"},
         "move 0 0\ndraw 2 0\nmove 0 0\ndraw 1 0\nmove 0 0\ndraw 9 0\n"},
    };
    for (const auto& c : cases) {
        const auto result = importText(DxfText(c.text).entity("LINE", after).text(), unshifted());
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), c.wanted);
        for (const std::string& wanted : c.lines) EXPECT_TRUE(result.hasLine(wanted)) << result.protocol;
    }
}

TEST(Insert, EmptyRepeatedAndUnfinishedBlocks) {
    EXPECT_EQ(drawn(drawing()
                        .block("B", line(0, 0, 1, 0))
                        .block("B", line(0, 0, 2, 0))
                        .block("EMPTY", {})
                        .entity("INSERT", insertOf("EMPTY"))
                        .entity("INSERT", insertOf("B"))),
              "move 0 0\ndraw 1 0\n")
        << "the first of two definitions counts";
}

DxfGroups attrib(const std::string& tag, const std::string& value, const DxfGroups& more = {}) {
    return DxfGroups{{0, "ATTRIB"}, {2, tag}, {1, value}, {40, "2"}} + at(10, {1, 1}) + more;
}
/// An INSERT of "B" with these attributes behind it, and a line.
DxfText withAttributes(int attMode, const DxfGroups& attribs, bool ended = true) {
    DxfText text = drawing({{9, "$ATTMODE"}, {70, std::to_string(attMode)}});
    text.block("B", line(0, 0, 1, 0)).entity("INSERT", insertOf("B", 0, 0, {{66, "1"}}) + attribs);
    if (ended) text.raw({{0, "SEQEND"}, {8, "0"}});
    return text.entity("LINE", at(10, {3, 3}) + at(11, {4, 4}));
}

TEST(Attributes, ArriveOnThePatternAndAsTextsAsTheModeSays) {
    const DxfGroups two = attrib("SEEN", "one") + attrib("HIDDEN", "two", {{70, "1"}});
    for (const int mode : {0, 1, 2}) {
        const std::string dump = importText(withAttributes(mode, two).text(), unshifted()).dump;
        EXPECT_NE(dump.find("dxf::SEEN"), std::string::npos) << dump;
        EXPECT_NE(dump.find("dxf::HIDDEN"), std::string::npos) << dump;
        EXPECT_EQ(count(dump, "text "), mode) << dump;
        EXPECT_NE(dump.find("move 3 3"), std::string::npos);
    }
}

TEST(Attributes, WithoutTheirEndStopAtTheNextEntity) {
    const std::string result = drawn(withAttributes(0, attrib("T", "v"), false));
    EXPECT_NE(result.find("move 0 0\ndraw 1 0\nmove 3 3\ndraw 4 4\n"), std::string::npos) << result;
}

TEST(Attributes, BadJustificationIsReportedAndDropped) {
    const auto result = importText(withAttributes(1, attrib("T", "v", {{72, "6"}, {74, "-1"}})).text());
    EXPECT_TRUE(result.hasLine("Ungültige Textausrichtung (72=6)!")) << result.protocol;
    EXPECT_TRUE(result.hasLine("Ungültige Textausrichtung (74=-1)!"));
    EXPECT_EQ(count(result.dump, "text "), 1);
}

TEST(Attributes, ByBlockTakesTheColourOfTheirInsert) {
    const auto penOfText = [](const char* insertColour, const char* attribColour) {
        DxfText text = drawing({{9, "$ATTMODE"}, {70, "1"}});
        text.block("B", {}).entity("INSERT", insertOf("B", 0, 0, {{66, "1"}, {62, insertColour}}) +
                                                 attrib("T", "v", {{62, attribColour}}));
        return importText(text.raw({{0, "SEQEND"}}).text(), unshifted()).dump;
    };
    EXPECT_EQ(penOfText("5", "0"), penOfText("5", "5"));
    EXPECT_NE(penOfText("5", "0"), penOfText("1", "0"));
}

TEST(BlockPatterns, EachInsertHasItsOwnWithItsAttributes) {
    ImportOptions options = unshifted();
    options.config = flags("READ_BLOCK=ATTR\n");
    DxfText text = drawing()
                       .block("IN", line(0, 0, 1, 0))
                       .block("OUT", nested("IN") + line(0, 0, 2, 0))
                       .entity("INSERT", insertOf("OUT", 0, 0, {{66, "1"}}) + attrib("MINE", "v"))
                       .raw({{0, "SEQEND"}});
    const std::string dump = importText(text.text(), options).dump;
    EXPECT_EQ(count(dump, "attribute \"block\""), 2) << dump;
    EXPECT_LT(dump.find("dxf::MINE"), dump.find("draw 1 0")) << "on the outer INSERT's pattern\n" << dump;
}

ImportOptions beside(const std::map<std::string, std::string>& files) {
    ImportOptions options = unshifted();
    options.files = files;
    return options;
}
DxfText referring(const std::string& path) {
    return drawing()
        .block("X", {}, DxfGroups{{70, "4"}, {1, path}} + at(10, {0, 0, 0}))
        .entity("INSERT", insertOf("X", 10, 0))
        .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}));
}

TEST(ExternalReference, ItsFileIsFoundBesideTheDrawing) {
    const std::string other =
        drawing().block("Y", line(0, 0, 1, 0)).entity("INSERT", insertOf("Y", 1, 0)).text();
    for (const char* path : {"other.dxf", "C:\\plans\\other.dxf", "../elsewhere/other.dxf"}) {
        const auto result = importText(referring(path).text(), beside({{"other.dxf", other}}));
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), "move 11 0\ndraw 12 0\nmove 7 7\ndraw 8 8\n") << path;
    }
}

TEST(ExternalReference, MissingCyclicOrEmptyCostsNoMoreThanItself) {
    const std::string rest = "move 7 7\ndraw 8 8\n";
    const auto missing = importText(referring("none.dxf").text(), unshifted());
    EXPECT_EQ(elementsOf(missing.dump), rest);
    EXPECT_TRUE(missing.hasLine("Block X nicht definiert!")) << missing.protocol;
    const auto garbage =
        importText(referring("other.dxf").text(), beside({{"other.dxf", "no DXF\nat all\n"}}));
    EXPECT_EQ(garbage.stat, 0);
    EXPECT_EQ(elementsOf(garbage.dump), rest) << garbage.protocol;
    const auto ring =
        importText(referring("other.dxf").text(), beside({{"other.dxf", referring("other.dxf").text()}}));
    EXPECT_EQ(ring.stat, 0);
    EXPECT_EQ(count(ring.dump, "draw "), 2) << ring.dump;
}

/// Blocks B0 … that each insert the next `copies` times; the last holds a line.
DxfText chain(int levels, int copies) {
    DxfText text = drawing();
    for (int i = 0; i < levels; ++i) {
        DxfGroups inside;
        for (int k = 0; k < copies; ++k) inside = inside + nested("B" + std::to_string(i + 1), 1, 0);
        text.block("B" + std::to_string(i), inside);
    }
    return text.block("B" + std::to_string(levels), line(0, 0, 1, 0))
        .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}))
        .entity("INSERT", insertOf("B0"));
}

TEST(Explosion, StopsInBothPassesAndKeepsWhatWasDrawn) {
    host::resetSession();
    const TempDir folder;
    folder.write("drawing.dxf", chain(20, 10).text());
    host::session().maxElements = 20000;
    ImportOptions options = unshifted();
    options.keepsSession = true;
    const auto result = importFile(folder, "drawing.dxf", options);
    host::resetSession();
    EXPECT_EQ(result.stat, 9009);
    EXPECT_TRUE(result.hasLine("Stopped while block B0 was drawn.")) << result.protocol;
    EXPECT_GT(count(result.dump, "draw "), 5000);
    EXPECT_LT(count(result.dump, "draw "), 12000) << "a line is two elements";
}

TEST(Explosion, DepthEndsAndIsReportedOnce) {
    const auto result = importText(chain(10000, 1).text(), unshifted());
    EXPECT_EQ(result.stat, 0);
    EXPECT_EQ(elementsOf(result.dump), "move 7 7\ndraw 8 8\n");
    EXPECT_EQ(count(result.protocol, "Blocks nest deeper than 200 levels"), 1) << result.protocol;
    EXPECT_EQ(count(drawn(chain(199, 1)), "draw "), 2) << "200 levels are drawn";
}

} // namespace

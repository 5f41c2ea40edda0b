#include "blocks.h"
#include "dx_report.h"
#include "services/session.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

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

DxfGroups arc() {
    return DxfGroups{{0, "ARC"}} + at(10, {0, 0}) + DxfGroups{{40, "1"}, {50, "0"}, {51, "90"}};
}

TEST(Insert, ArcsFollowMirroringAndUnevenScales) {
    const auto inserted = [](const DxfGroups& inner, const DxfGroups& outer) {
        return drawn(drawing()
                         .block("IN", arc())
                         .block("OUT", nested("IN", 0, 0, inner))
                         .entity("INSERT", insertOf("OUT", 0, 0, outer)));
    };
    const DxfGroups wide = {{41, "2"}}, narrow = {{41, "0.5"}}, turnedNarrow = {{41, "0.5"}, {50, "90"}};
    EXPECT_EQ(inserted({}, {{41, "2"}, {42, "-2"}}), "move 0 -2\narc ccw 2 0 about 0 0\n");
    EXPECT_NE(inserted({}, wide).find("spline"), std::string::npos);
    EXPECT_EQ(inserted(narrow, wide), "move 1 0\narc ccw 0 1 about 0 0\n") << "even again";
    EXPECT_NE(inserted(turnedNarrow, wide).find("spline"), std::string::npos)
        << "the scales multiply to one, and yet a rotation stands between them";
}

/// An entity of each kind that may be read once for many INSERTs.
DxfGroups shapes() {
    const DxfGroups seqEnd = {{0, "SEQEND"}};
    const auto vertex = [](double x, double y) {
        return DxfGroups{{0, "VERTEX"}, {42, "0.5"}} + at(10, {x, y});
    };
    const auto text = [](const char* kind) {
        return DxfGroups{{0, kind}, {1, "abc"}, {40, "2"}, {50, "30"}} + at(10, {1, 2});
    };
    return line(0, 1, 2, 3) + arc() + DxfGroups{{0, "CIRCLE"}, {40, "2"}} + at(10, {3, 4}) +
           DxfGroups{{0, "ELLIPSE"}, {40, "0.5"}} + at(10, {1, 1}) + at(11, {3, 1}) +
           DxfGroups{{0, "POINT"}} + at(10, {8, 9}) + DxfGroups{{0, "LWPOLYLINE"}, {90, "2"}, {70, "1"}} +
           at(10, {0, 0}) + DxfGroups{{42, "1"}} + at(10, {4, 1}) + DxfGroups{{0, "POLYLINE"}, {66, "1"}} +
           vertex(1, 1) + vertex(5, 2) + vertex(6, 7) + seqEnd + DxfGroups{{0, "SOLID"}} + at(10, {0, 0}) +
           at(11, {1, 0}) + at(12, {0, 1}) + at(13, {1, 1}) + DxfGroups{{0, "SPLINE"}, {71, "1"}, {74, "2"}} +
           at(11, {0, 0, 0}) + at(11, {5, 5, 0}) + text("TEXT") + text("MTEXT");
}

TEST(Insert, OnATiltedPlaneACircleIsSeenAsAnEllipse) {
    const DxfText text = drawing()
                             .block("B", DxfGroups{{0, "CIRCLE"}, {40, "5"}} + at(10, {0, 0}))
                             .entity("INSERT", insertOf("B", 0, 0, {{210, "1"}, {220, "0"}, {230, "1"}}));
    const std::string result = drawn(text);
    EXPECT_NE(result.find("spline"), std::string::npos) << result;
    EXPECT_NE(result.find("3.5355"), std::string::npos) << "as wide as the tilt leaves it\n" << result;
}

TEST(Insert, DrawnOftenIsDrawnAlike) {
    constexpr int times = 6;
    const auto inserted = [](const DxfGroups& content, int n) {
        DxfText text = drawing().block("IN", line(0, 0, 1, 1)).block("B", content);
        for (int i = 0; i < n; ++i)
            text.entity("INSERT", insertOf("B", 3, 4, {{41, "-2"}, {42, "2"}, {50, "30"}}));
        std::istringstream lines(drawn(text));
        std::map<std::string, int> found; // objects stand behind all elements
        for (std::string one; std::getline(lines, one);) ++found[one];
        return found;
    };
    for (const DxfGroups& content :
         {shapes(), nested("IN") + DxfGroups{{0, "REGION"}} + nested("IN", 1, 1) + DxfGroups{{0, "SEQEND"}},
          DxfGroups{{0, "UNKNOWN"}, {10, "1"}} + shapes()}) {
        auto once = inserted(content, 1);
        for (auto& [one, number] : once) number *= times;
        EXPECT_EQ(inserted(content, times), once);
    }
}

TEST(Insert, MirroredAndUnevenPlacementsUndoEachOther) {
    const struct {
        DxfGroups inner, outer;
    } pairs[] = {
        {{{41, "-1"}}, {{41, "-1"}}},
        {{{42, "-1"}, {50, "90"}}, {{42, "-1"}, {50, "90"}}},
        {{{41, "0.5"}}, {{41, "2"}}},
        {{{41, "-0.25"}, {42, "2"}}, {{41, "-4"}, {42, "0.5"}}},
        {{{210, "0"}, {220, "0"}, {230, "-1"}}, {{210, "0"}, {220, "0"}, {230, "-1"}}},
    };
    const std::string plain = drawn(drawing().block("B", shapes()).entity("INSERT", insertOf("B")));
    for (const auto& pair : pairs) {
        EXPECT_EQ(drawn(drawing()
                            .block("B", shapes())
                            .block("OUT", nested("B", 0, 0, pair.inner))
                            .entity("INSERT", insertOf("OUT", 0, 0, pair.outer))),
                  plain)
            << pair.inner[0].value << " " << pair.outer[0].value;
    }
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

TEST(Insert, LineTypesByBlockAndByLayerToo) {
    ImportOptions options = unshifted();
    options.config = "#LT-DXF-TO-CAD\n3\nCONTINUOUS|1\nDASHED|2\nDOT|3\n#EOF\n";
    const auto lineTypeOf = [&](const DxfGroups& inner, const DxfGroups& outer) {
        const std::string dump = importText(drawing()
                                                .layer("DOTTED", 7, "DOT")
                                                .block("IN", line(0, 0, 1, 0, {{6, "BYBLOCK"}}))
                                                .block("MID", nested("IN", 0, 0, inner))
                                                .entity("INSERT", insertOf("MID", 0, 0, outer))
                                                .text(),
                                            options)
                                     .dump;
        return dump.substr(dump.rfind(" lt ") + 4, 1);
    };
    EXPECT_EQ(lineTypeOf({{6, "ByBlock"}}, {{6, "DASHED"}}), "2");
    EXPECT_EQ(lineTypeOf({{6, "bylayer"}, {8, "DOTTED"}}, {{6, "DASHED"}}), "3");
    EXPECT_EQ(lineTypeOf({}, {{8, "DOTTED"}}), "3") << "layer 0 in a block is the INSERT's";
}

TEST(Insert, LayerZeroIsThatOfTheInnermostInsert) {
    ImportOptions options = unshifted();
    options.config = flags("READ_LAYER=GROUP\n");
    const std::string dump =
        importText(drawing()
                       .block("IN", line(0, 0, 1, 0))
                       .block("MID", nested("IN", 5, 0))
                       .block("OUT", line(0, 0, 2, 0) + nested("MID") + nested("IN", 0, 0, {{8, "B"}}) +
                                         line(0, 0, 3, 0) + line(0, 0, 4, 0, {{8, "C"}}))
                       .layer("A", 1)
                       .layer("B", 2)
                       .entity("INSERT", insertOf("OUT", 0, 0, {{8, "A"}}))
                       .text(),
                   options)
            .dump;
    const auto groupOf = [&](const char* element) {
        const auto head = dump.rfind("group \"", dump.find(element)) + 7;
        return dump.substr(head, dump.find('"', head) - head);
    };
    EXPECT_EQ(groupOf("draw 2 0"), "A");
    EXPECT_EQ(groupOf("draw 6 0"), "A") << "through INSERTs on layer 0";
    EXPECT_EQ(groupOf("draw 1 0"), "B");
    EXPECT_EQ(groupOf("draw 3 0"), "B") << "the nested INSERT's layer goes on to what follows";
    EXPECT_EQ(groupOf("draw 4 0"), "C");
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
    std::string text = drawing()
                           .block("B", line(0, 0, 1, 0))
                           .block("C", line(0, 0, 2, 0))
                           .entity("INSERT", insertOf("C"))
                           .text();
    for (std::size_t end = 0; (end = text.find("  0\nENDBLK\n")) != std::string::npos;) text.erase(end, 11);
    const auto unfinished = importText(text, unshifted());
    EXPECT_EQ(unfinished.stat, 0) << "the section's end is the block's";
    EXPECT_EQ(elementsOf(unfinished.dump), "move 0 0\ndraw 2 0\n");
}

TEST(Insert, NamesCountAsTheyStandUpToTheirLimit) {
    const std::string limit(160, 'n');
    const struct {
        std::string block, insert;
        bool found;
    } cases[] = {
        {"a b", "a b", true},
        {"a b ", "a b", false},
        {"Ab", "AB", false},
        {limit + "x", limit + "y", true},
        {limit, limit.substr(1), false},
    };
    for (const auto& c : cases) {
        const std::string result =
            drawn(drawing().block(c.block, line(0, 0, 1, 0)).entity("INSERT", insertOf(c.insert)));
        EXPECT_EQ(result, c.found ? "move 0 0\ndraw 1 0\n" : "") << c.block << " " << c.insert;
    }
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

TEST(Attributes, InTheOpenAndDefinitions) {
    const DxfGroups defined = {{0, "ATTDEF"}, {2, "TAG"}, {1, "value"}, {40, "2"}};
    const auto constant = defined + DxfGroups{{70, "2"}};
    const auto textsOf = [](DxfText text) {
        std::istringstream lines(elementsOf(importText(text.text(), unshifted()).dump));
        std::string result;
        for (std::string one; std::getline(lines, one);)
            if (one.rfind("text ", 0) == 0) result += one.substr(one.find('"'));
        return result;
    };
    const DxfGroups shown = {{9, "$ATTMODE"}, {70, "1"}};
    EXPECT_EQ(textsOf(drawing(shown).raw(attrib("T", "alone"))), "\"alone\"");
    EXPECT_EQ(textsOf(drawing(shown).raw(defined)), "\"TAG\"") << "a definition in the open shows its tag";
    EXPECT_EQ(textsOf(drawing(shown).raw(defined + DxfGroups{{70, "1"}})), "");
    EXPECT_EQ(textsOf(drawing(shown).block("B", defined).entity("INSERT", insertOf("B"))), "");
    EXPECT_EQ(textsOf(drawing(shown).block("B", constant).entity("INSERT", insertOf("B"))), "\"value\"");
    const std::string alone = importText(drawing(shown).raw(attrib("T", "v")).text()).dump;
    EXPECT_NE(alone.find("dxf::T"), std::string::npos) << alone;
}

TEST(Attributes, StandBackwardAndUpsideDownAsTheirTextsDo) {
    for (const char* generation : {"0", "2", "4", "6"}) {
        const DxfGroups groups = DxfGroups{{1, "abc"}, {40, "2"}, {71, generation}} + at(10, {1, 1});
        const std::string asText = drawn(drawing().entity("TEXT", groups + DxfGroups{{41, "1"}}));
        const auto asAttribute =
            importText(withAttributes(1, DxfGroups{{0, "ATTRIB"}, {41, "1"}} + groups).text(), unshifted());
        EXPECT_NE(asAttribute.dump.find(asText), std::string::npos) << asText << asAttribute.dump;
    }
}

TEST(Attributes, OfAMappedTagGoUnderTheHostsName) {
    ImportOptions options = unshifted();
    options.config = "#ATTR-DXF-TO-CAD\n1\nPART|name\n#EOF\n";
    const auto result =
        importText(withAttributes(0, attrib(" PART ", "v") + attrib("part", "w")).text(), options);
    EXPECT_NE(result.dump.find("dxf::part"), std::string::npos) << result.dump;
    EXPECT_EQ(result.dump.find("dxf::PART"), std::string::npos);
}

TEST(Attributes, OfEachInsertStayTogetherWithInsertAttr) {
    DxfText text = drawing({{9, "$ATTMODE"}, {70, "1"}}).layer("A", 1).layer("B", 2);
    text.block("B", line(0, 0, 1, 0) + DxfGroups{{0, "ATTDEF"}, {2, "FIX"}, {1, "f"}, {70, "2"}, {40, "1"}});
    for (const char* value : {"one", "two"})
        text.entity("INSERT", insertOf("B", 0, 0, {{8, "A"}, {66, "1"}}) + attrib("T", value, {{8, "B"}}))
            .raw({{0, "SEQEND"}});
    ImportOptions options = unshifted();
    options.config = flags("READ_LAYER=ATTR\n");
    const std::string plain = importText(text.text(), options).dump;
    EXPECT_EQ(count(plain, "\"dxf::T\""), 1) << "on one pattern, the last one's value";
    options.config = flags("READ_LAYER=ATTR\nINSERT_ATTR=1\n");
    const std::string dump = importText(text.text(), options).dump;
    EXPECT_EQ(count(dump, "attribute \"insert\" \"B\""), 2) << dump;
    for (const char* value : {"one", "two"}) {
        EXPECT_NE(dump.find("attribute \"dxf::T\" \"" + std::string(value)), std::string::npos) << dump;
        EXPECT_EQ(count(dump, "pen 3 \"" + std::string(value) + "\""), 1) << dump;
    }
    EXPECT_EQ(count(dump, "\"dxf::FIX\""), 2) << "constant ones too\n" << dump;
}

TEST(BlockPatterns, OrdersSayWhereTheNamesGo) {
    const struct {
        const char *flags, *wanted;
    } cases[] = {
        {"READ_BLOCK=GROUP", "group \"OUT\"|group \"IN\""},
        {"READ_BLOCK=NAME", "group \"OUT\" name \"OUT\"|group \"OUT\" name \"IN\""},
        {"READ_BLOCK=ATTR", "group \"OUT\"|group \"OUT\""},
        {"READ_BLOCK=GROUP\nREAD_LAYER=LAYER", "group \"OUT\" level \"A\"|group \"IN\" level \"A\""},
        {"READ_BLOCK=NAME\nREAD_LAYER=GROUP", "group \"A\" name \"OUT\"|group \"A\" name \"IN\""},
        {"READ_BLOCK=NAME\nREAD_LAYER=CLASS",
         "group \"OUT\" class \"A\" name \"OUT\"|group \"OUT\" class \"A\" name \"IN\""},
        {"READ_BLOCK=NAME\nREAD_LAYER=ATTR",
         "group \"OUT\" name \"OUT\" layer \"A\"|group \"OUT\" name \"IN\" layer \"A\""},
    };
    DxfText text = drawing()
                       .layer("A", 1)
                       .block("IN", line(0, 0, 1, 0))
                       .block("OUT", nested("IN") + line(0, 0, 2, 0))
                       .entity("INSERT", insertOf("OUT", 0, 0, {{8, "A"}}));
    for (const auto& c : cases) {
        ImportOptions options = unshifted();
        options.config = flags(std::string(c.flags) + "\n");
        std::istringstream lines(importText(text.text(), options).dump);
        std::string found;
        for (std::string one; std::getline(lines, one);)
            if (one.rfind("pattern ", 0) == 0 && one.find('"') != std::string::npos)
                found += (found.empty() ? "" : "|") + one.substr(one.find(' ', 8) + 1);
        EXPECT_EQ(found, c.wanted) << c.flags;
    }
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

TEST(BlockPatterns, AFullOneIsNotGoneBackTo) {
    DxfText text = drawing();
    DxfGroups lines;
    for (int i = 0; i < 30; ++i) lines = lines + line(i, 0, i, 1);
    text.block("B", lines);
    for (int i = 0; i < 100; ++i)
        text.entity("INSERT", insertOf("B", 0, 0, {{66, "1"}})).raw({{0, "SEQEND"}});
    const std::string dump = importText(text.text(), unshifted()).dump;
    EXPECT_EQ(count(dump, "draw "), 3000);
    EXPECT_EQ(count(dump, "pattern "), 7) << "6000 elements, 1000 a pattern, and the moves between them";
}

TEST(BlockPatterns, OfBothSpacesAreApart) {
    DxfGroups lines;
    for (int i = 0; i < 300; ++i) lines = lines + line(i, 0, i, 1);
    DxfText text = drawing().layer("A", 1).block("IN", lines).block("OUT", nested("IN") + nested("IN"));
    for (const char* space : {"0", "1"})
        for (const char* tag : {"FIRST", "SECOND"})
            text.entity("INSERT", insertOf("OUT", 0, 0, {{66, "1"}, {8, "A"}, {67, space}}) +
                                      attrib(tag + std::string(space), "v"))
                .raw({{0, "SEQEND"}})
                .raw(line(5, 5, 6, 6, {{8, "A"}, {67, space}}));
    for (const char* config :
         {"", "READ_LAYER=GROUP\n", "READ_BLOCK=NAME\n", "READ_BLOCK=NAME\nREAD_LAYER=GROUP\n"}) {
        ImportOptions options = unshifted();
        options.numbers["&DxfParseExt"] = 0;
        options.config = flags(config);
        std::string apart;
        for (const double space : {0.0, 1.0, 2.0}) {
            options.numbers["&DxfPaper"] = space;
            const auto result = importText(text.text(), options);
            EXPECT_EQ(result.stat, 0);
            std::string patterns;
            std::istringstream dump(result.dump);
            for (std::string one; std::getline(dump, one);) {
                if (one.rfind("pattern ", 0) == 0)
                    one = "pattern" + one.substr(std::min(one.find(' ', 8), one.size()));
                if (const std::size_t sheet = one.find(" on \"Plot01\""); sheet != std::string::npos)
                    one.resize(sheet);
                if (one.rfind("pattern", 0) == 0 || one.rfind("  ", 0) == 0) patterns += one + "\n";
            }
            if (const std::string empty = "pattern\n"; patterns.ends_with(empty)) // that of the drawing's end
                patterns.resize(patterns.size() - empty.size());
            if (space < 2)
                apart += patterns;
            else
                EXPECT_TRUE(patterns == apart) << config << result.protocol;
        }
        EXPECT_EQ(count(apart, "draw "), 2404) << config;
    }
}

TEST(Explosion, OfMoreThanAnyoneCanDrawStopsEarly) {
    const auto result = importText(chain(20, 10).text(), unshifted());
    EXPECT_EQ(result.stat, 9009);
    EXPECT_TRUE(result.hasLine("Block B0 inserts so many others that it would never be drawn whole!"))
        << result.protocol;
    EXPECT_GE(count(result.dump, "draw "), 100000);
}

TEST(Explosion, OfBlocksThatHoldNothingCostsNothing) {
    DxfText text = drawing().layer("A", 1).layer("B", 2);
    for (int i = 0; i < 40; ++i) {
        DxfGroups inside;
        for (int k = 0; k < 10; ++k) inside = inside + nested("E" + std::to_string(i + 1), 1, 0);
        text.block("E" + std::to_string(i), inside);
    }
    text.block("E40", {})
        .block("FULL", nested("E0", 0, 0, {{8, "B"}}) + line(0, 0, 1, 0, {{8, "0"}}) + nested("NONE") +
                           nested("FULL"))
        .entity("INSERT", insertOf("E0", 0, 0, {{8, "A"}, {66, "1"}}) + attrib("TAG", "v"))
        .raw({{0, "SEQEND"}})
        .entity("INSERT", insertOf("FULL", 0, 0, {{8, "A"}}));
    ImportOptions options = unshifted();
    options.config = flags("READ_LAYER=GROUP\n");
    const auto result = importText(text.text(), options);
    EXPECT_EQ(result.stat, 0) << result.protocol;
    EXPECT_EQ(count(result.dump, "draw 1 0"), 1);
    EXPECT_GT(result.dump.find("draw 1 0"), result.dump.find("group \"B\""))
        << "the layer of the last INSERT";
    EXPECT_EQ(count(result.dump, "dxf::TAG"), 1);
    EXPECT_TRUE(result.hasLine("Block NONE nicht definiert!"));
    EXPECT_TRUE(result.hasLine("Direkt rekursive INSERTs von Block FULL."));
}

TEST(Explosion, DepthEndsAndIsReportedOnce) {
    const auto result = importText(chain(10000, 1).text(), unshifted());
    EXPECT_EQ(result.stat, 0);
    EXPECT_EQ(elementsOf(result.dump), "move 7 7\ndraw 8 8\n");
    EXPECT_EQ(count(result.protocol, "Blocks nest deeper than 200 levels"), 1) << result.protocol;
    EXPECT_EQ(count(drawn(chain(199, 1)), "draw "), 2) << "200 levels are drawn";
}

} // namespace

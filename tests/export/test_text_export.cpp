// Texts and attributes on their way out.
#include "exported.h"

#include "ov_text.h"

namespace {

host::Text& addText(host::Pattern& pattern, const std::vector<std::string>& lines, int origin = 1) {
    host::Text text;
    text.lines = lines;
    text.origin = origin;
    text.x = 100, text.y = 50;
    text.height = 10, text.width = 6;
    text.spacing = text.lineDistance = 1;
    pattern.texts.push_back(text);
    host::openDrawing().recount();
    return pattern.texts.back();
}
double number(const DxfGroups& groups, int code) {
    return std::atof(valueOf(groups, code).c_str());
}

TEST_F(Export, EachOriginHasItsAlignment) {
    for (int origin = 0; origin <= 9; ++origin) {
        startDrawing();
        addText(addPattern({}), {"HELLO"}, origin);
        const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_TXT_ORG=0\n"));
        EXPECT_EQ(file.errors(), "");
        const DxfGroups text = file.first(0, "TEXT");
        const int column = origin == 0 ? 0 : (origin - 1) % 3;
        const int row = origin == 0 ? 0 : (origin - 1) / 3;
        EXPECT_EQ(valueOf(text, 72), std::to_string(column)) << origin;
        EXPECT_EQ(valueOf(text, 73), std::to_string(row == 0 ? 0 : row + 1)) << origin;
        EXPECT_EQ(number(text, 40), 10);
        EXPECT_EQ(number(text, 20), 50 - row * 5) << origin << ": the lower edge";
        if (origin > 0) {
            EXPECT_NEAR(number(text, 11), 100, 1e-5) << origin;
            EXPECT_NEAR(number(text, 21), 50, 1e-5) << origin;
        }
    }
}

TEST_F(Export, AFitTextEndsAtItsLength) {
    addText(addPattern({}), {"HELLO"}, 3);
    const DxfGroups fit = exportDrawing(exportConfig("ACAD15", "WRITE_TXT_ORG=1\n")).first(0, "TEXT");
    EXPECT_EQ(valueOf(fit, 72), "5");
    EXPECT_EQ(valueOf(fit, 73), "0");
    EXPECT_NEAR(number(fit, 11), 100, 1e-5);
    EXPECT_LT(number(fit, 10), 90);
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD15", "WRITE_TXT_ORG=2\n")).first(0, "TEXT"), 72), "3");
}

TEST_F(Export, LinesGoOutOneByOne) {
    addText(addPattern({}), {"AB", "", "ABCD"}, 9).lineDistance = 2;
    const Exported file = exportDrawing(exportConfig("ACAD15", "WRITE_TXT_ORG=0\n"));
    ASSERT_EQ(file.count(0, "TEXT"), 2u) << "an empty line takes its room only";
    const DxfGroups first = file.first(0, "TEXT");
    const DxfGroups last = file.first(0, "TEXT", 1);
    EXPECT_EQ(valueOf(first, 72), "0") << "from the top left corner";
    EXPECT_NEAR(number(first, 20) - number(last, 20), 40, 1e-5);
    EXPECT_NEAR(number(first, 10), number(last, 10), 1e-5);
}

TEST_F(Export, AFaceMakesAnMtextWhereTheTargetHasIt) {
    host::Text& text = addText(addPattern({}), {"a{b}\\c"}, 1);
    text.font = 0;
    text.face = "Arial";
    text.angle = 0.5;
    const Exported file = exportDrawing(exportConfig("ACAD24"));
    EXPECT_EQ(file.errors(), "");
    const DxfGroups mtext = file.first(0, "MTEXT");
    EXPECT_EQ(valueOf(mtext, 1), "\\W0.6;a\\{b\\}\\\\c") << "6 wide and 10 high";
    EXPECT_EQ(valueOf(mtext, 71), "7");
    EXPECT_NEAR(number(mtext, 50), 28.6479, 1e-9) << "four digits";
    EXPECT_NE(valueOf(file.first(1000, "Arial"), 1000), "none") << "the style names the face";
    EXPECT_EQ(exportDrawing(exportConfig("ACAD12")).count(0, "TEXT"), 1u);
    text.face = "Gr\xC3\xB6\xC3\x9F"
                "e";
    EXPECT_EQ(exportDrawing(exportConfig("ACAD18"))
                  .count(1000, "Gr\xF6\xDF"
                               "e"),
              1u);
    EXPECT_EQ(exportDrawing(exportConfig("ACAD21")).count(1000, "Gr\\U+00F6\\U+00DFe"), 1u)
        << "bytes of a code page aren't UTF-8";
}

TEST_F(Export, NonLatinTextIsWrittenAsTheVersionWants) {
    addText(addPattern({}), {"\xC3\x84 \xE4\xB8\xAD"});
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD24")).first(0, "TEXT"), 1), "\xC3\x84 \xE4\xB8\xAD");
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD18")).first(0, "TEXT"), 1), "\xC4 \\U+4E2D");
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD12")).first(0, "TEXT"), 1), "\xC4 ?");
}

TEST_F(Export, PairsOfCharactersComeBehindSequences) {
    addText(addPattern({}), {"\xC3\x98"
                             "c"});
    const std::string rows = "#CHAR-CAD-TO-DXF\n2\n216|%%c\n99|120\n";
    EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD15", {}, rows)).first(0, "TEXT"), 1), "%%xx")
        << "an import takes the pairs first";
}

TEST_F(Export, ALongMtextIsInPiecesThatAReaderTakes) {
    std::string value;
    for (int i = 0; i < 100; ++i) value += "\xE4\xB8\xAD";
    host::Text& text = addText(addPattern({}), {value});
    text.font = 0;
    text.face = "Arial";
    for (const auto& [version, pieces] : {std::pair("ACAD24", 1U), std::pair("ACAD18", 2U)}) {
        const Exported file = exportDrawing(exportConfig(version));
        std::size_t count = 0;
        std::string all;
        for (const DxfGroup& g : file.first(0, "MTEXT")) {
            if (g.code != 3 && g.code != 1) continue;
            count += g.code == 3 ? 1 : 0;
            all += g.value;
            EXPECT_LE(g.value.size(), 250U) << version;
        }
        EXPECT_EQ(count, pieces) << version;
        EXPECT_EQ(all.size(), std::string(version) == "ACAD24" ? 306U : 706U);
    }
}

TEST_F(Export, TheStateOfAPatternSaysHowItsTextsLook) {
    host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(9, 9, 3, 2)});
    pattern.ids.obstat = "planned";
    host::Text& text = addText(pattern, {"later"});
    text.font = 0, text.face = "Arial";
    text.pen = 3, text.fillPen = 4;
    const auto shownWith = [](const host::StateSettings& settings) {
        host::openDrawing().states["planned"] = settings;
        const Exported file = exportDrawing(exportConfig("ACAD24", "WRITE_TXT_ORG=0\n"));
        const DxfGroups mtext = file.first(0, "MTEXT"), line = file.first(0, "LINE");
        return valueOf(line, 62) + " " + valueOf(mtext, 62) + " " + valueOf(mtext, 63) + " " +
               valueOf(mtext, 7);
    };
    EXPECT_EQ(shownWith({}), "2 2 none Arial") << "a state that leaves all alone";
    EXPECT_EQ(shownWith({2, -1, -1, 5}), "1 4 none Arial");
    EXPECT_EQ(shownWith({-1, -1, -1, -1, -1, 1}), "2 2 3 Arial");
    EXPECT_EQ(shownWith({-1, -1, -1, -1, -1, 1, 1 << OV_TEXT_BOLD, true}), "2 3 2 Arial B");
}

TEST_F(Export, AttributesBecomeAttdefAndAttrib) {
    host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(9, 9)}, "door");
    pattern.attributes = {{"width", "885"}, {"maker", "none"}};
    addText(pattern, {"%width"});
    const std::string lines = "WRITE_BLOCKS=YES\nWRITE_ATTR=1\n";
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, lines));
        EXPECT_EQ(file.errors(), "") << version;
        ASSERT_EQ(file.count(0, "ATTDEF"), 2u) << version;
        ASSERT_EQ(file.count(0, "ATTRIB"), 2u) << version;
        EXPECT_EQ(valueOf(file.first(0, "INSERT"), 66), "1");
        DxfGroups shownText = file.first(0, "ATTRIB");
        EXPECT_EQ(valueOf(shownText, 2), "width");
        EXPECT_EQ(valueOf(shownText, 70), "0");
        EXPECT_EQ(valueOf(file.first(0, "ATTRIB", 1), 70), "1") << "no text shows it";
        EXPECT_EQ(valueOf(file.first(0, "ATTRIB", 1), 1), "none");
        EXPECT_EQ(valueOf(file.first(0, "ATTDEF"), 3), "width");
    }
    const Exported plain = exportDrawing(exportConfig("ACAD15", "WRITE_ATTR=0\n"));
    EXPECT_EQ(plain.count(0, "ATTDEF"), 0u);
    EXPECT_EQ(valueOf(plain.first(0, "TEXT"), 1), "%width") << "it stays a text";
}

TEST_F(Export, AttributesGoOutUnderTheNamesOfAFile) {
    addPattern({moveTo(0, 0), drawTo(1, 0)}, "Q", "BEFORE");
    host::Pattern& pattern = addPattern({}, "P", "ALONE"); // nothing but attributes, which have no rectangle
    pattern.attributes = {{"Raum", "12"}, {"dxf::tag", "a"}, {"dxf", "class"}, {"free", "b"}};
    installation_.with("write_attr", "Raum  ROOM\n\nincomplete\n");
    const std::string lines = "LAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\nWRITE_BLOCKS=YES\n";
    const auto tags = [&](const std::string& more) {
        const Exported file = exportDrawing(exportConfig("ACAD24", lines + more));
        EXPECT_EQ(file.errors(), "");
        std::string all;
        EXPECT_EQ(valueOf(file.first(0, "ATTRIB"), 8), "ALONE");
        for (std::size_t i = 0; i < file.count(0, "ATTRIB"); ++i)
            all +=
                valueOf(file.first(0, "ATTRIB", i), 2) + "=" + valueOf(file.first(0, "ATTRIB", i), 1) + " ";
        return all;
    };
    EXPECT_EQ(tags("WRITE_ATTR=1\n"), "ROOM=12 tag=a free=b ");
    EXPECT_EQ(tags("WRITE_ATTR=0\n"), "tag=a ");
}

} // namespace

// Texts there and back: each line that shows stands where it stood, as long as it was.
#include "round_trip.h"

#include "ov_text.h"

namespace {

struct Look {
    int font = 1;
    const char* face = "";
    double width = 0.25, slant = 0, spacing = 1, distance = 1.66;
    int style = 0;
};

host::Text& addText(host::Pattern& pattern, const std::vector<std::string>& lines, const Look& look,
                    int origin, double angle = 0) {
    host::Text text;
    text.lines = lines;
    text.x = 30.0 * static_cast<double>(pattern.texts.size() % 7);
    text.y = -15.0 * static_cast<double>(pattern.texts.size());
    text.height = 0.5, text.width = look.width;
    text.font = look.font, text.face = look.face;
    text.slant = look.slant, text.angle = angle;
    text.spacing = look.spacing, text.lineDistance = look.distance;
    text.styleBits = look.style;
    text.origin = origin;
    text.pen = 3;
    pattern.texts.push_back(text);
    return pattern.texts.back();
}

std::vector<host::Text> textsOfDrawing() {
    std::vector<host::Text> texts;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        texts.insert(texts.end(), pattern.texts.begin(), pattern.texts.end());
    return texts;
}

void expectTextsComeBack(const std::string& version) {
    const auto before = shownByLayer().at("LAY");
    TempDir folder;
    const Exported file = exportTo(folder, keepConfig(version));
    ASSERT_EQ(file.stat, 0);
    EXPECT_EQ(file.errors(), "") << version;
    ASSERT_EQ(importFile(folder, "out.dxf", keepOptions(version)).stat, 0);
    const bool isOld = version == "ACAD12" || version == "EASY";
    expectEqual(before.lines, shownByLayer()["LAY"].lines, isOld, version);
}

TEST_F(Export, TextsStandWhereTheyStood) {
    const int underlined = 1 << OV_TEXT_UNDERLINE, boldItalic = 1 << OV_TEXT_BOLD | 1 << OV_TEXT_ITALIC;
    const Look looks[] = {{},
                          {10, "", 0.4, 0.3},
                          {1, "", 0.25, 0, 1, 1.66, underlined},
                          {0, "Arial", 0.5},
                          {0, "Arial", 0.8, 0.2, 1.3},
                          {0, "Arial", 0.5, 0, 1, 2.5, boldItalic},
                          {0, "Arial", 0.5, 0, 1, 1, underlined}};
    for (const std::string& version : VERSIONS) {
        startDrawing();
        host::Pattern& pattern = addPattern({});
        for (const Look& look : looks)
            for (int origin = 1; origin <= 9; ++origin)
                addText(pattern, {"A typing pangolin"}, look, origin, origin * 0.3);
        host::openDrawing().recount();
        expectTextsComeBack(version);
        if (HasFatalFailure()) return;
    }
}

TEST_F(Export, LinesOfTextsStandWhereTheyStood) {
    for (const std::string& version : VERSIONS) {
        startDrawing();
        host::Pattern& pattern = addPattern({});
        for (const Look& look : {Look{}, Look{0, "Arial", 0.5}}) {
            for (int origin = 1; origin <= 9; ++origin) {
                for (int justification = 0; justification <= 2; ++justification) {
                    const std::string words = "some words that need more than a line";
                    addText(pattern, {"first", "", "third one"}, look, origin, 0.5).justification =
                        justification;
                    // A stroke font's spacing follows from its table, and moves what a box aligns.
                    if (look.font != 0) continue;
                    for (const std::vector<std::string>& lines :
                         {std::vector<std::string>{"word"}, {words}, {words, "and"}}) {
                        host::Text& text = addText(pattern, lines, look, origin, 0.5);
                        text.justification = justification;
                        text.lineLength = 5;
                    }
                }
            }
        }
        host::openDrawing().recount();
        expectTextsComeBack(version);
        if (HasFatalFailure()) return;
    }
}

TEST_F(Export, ALineThatAnMtextBreaksStaysOneLine) {
    for (const Look& look : {Look{}, Look{0, "Arial", 0.5, 0, 1, 2.5}}) {
        startDrawing();
        host::Text& text = addText(addPattern({}), {"some words that need more than a line"}, look, 7);
        text.lineLength = 5;
        text.justification = 2;
        host::openDrawing().recount();
        const double distance = look.distance;
        TempDir folder;
        ASSERT_EQ(exportTo(folder, keepConfig("ACAD32")).stat, 0);
        ASSERT_EQ(importFile(folder, "out.dxf", keepOptions("ACAD32")).stat, 0);
        const std::vector<host::Text> texts = textsOfDrawing();
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_EQ(texts[0].lines, std::vector<std::string>{"some words that need more than a line"});
        EXPECT_NEAR(texts[0].lineLength, 5, 1e-9);
        EXPECT_NEAR(texts[0].lineDistance, distance, 1e-6);
        EXPECT_EQ(texts[0].justification, 2);
    }
}

TEST_F(Export, BackgroundsAndMarksWithinALineComeBack) {
    const Look arial{0, "Arial", 0.5};
    host::Pattern& pattern = addPattern({});
    addText(pattern, {"on a sheet"}, arial, 1).backOn = true;
    host::Text& red = addText(pattern, {"on red"}, arial, 1);
    red.backOn = true;
    red.fillPen = 1;
    addText(pattern,
            {"a \x0E"
             "b\x0E c{}\\^ \x0F"
             "d"},
            arial, 1);
    const std::vector<std::string> percents = {"100%", "%%c5 %%", "5%\u00b0 %\u00d8% %%%d"};
    for (const std::string& text : percents)
        for (const Look& look : {arial, Look{}}) addText(pattern, {text}, look, 1);
    std::vector<double> lengths;
    for (const host::Text& text : pattern.texts) lengths.push_back(layoutText(text, 1).width);
    host::openDrawing().recount();
    TempDir folder;
    const Exported file = exportTo(folder, keepConfig("ACAD18"));
    EXPECT_NE(file.text.find("a \\Lb\\l c\\{\\}\\\\^  \\Od"), std::string::npos) << "codes of an MTEXT";
    ASSERT_EQ(importFile(folder, "out.dxf", keepOptions("ACAD18")).stat, 0);
    const std::vector<host::Text> texts = textsOfDrawing();
    ASSERT_EQ(texts.size(), 9u);
    EXPECT_NE(file.text.find("\n100%\n"), std::string::npos) << "a single one is no code";
    for (std::size_t i = 3; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].lines[0], percents[(i - 3) / 2]);
        EXPECT_NEAR(layoutText(texts[i], 1).width, lengths[i], 0.04 * lengths[i]) << texts[i].lines[0];
    }
    EXPECT_TRUE(texts[0].backOn && texts[1].backOn);
    EXPECT_EQ(texts[0].fillPen, 0);
    EXPECT_EQ(texts[1].fillPen, 1);
    EXPECT_EQ(texts[2].lines[0], "a \x0E"
                                 "b\x0E c{}\\^ \x0F"
                                 "d");
}

TEST_F(Export, AttributesComeBackWithAndWithoutBlocks) {
    for (const char* blocks : {"NO", "YES"}) {
        for (const std::string& version : VERSIONS) {
            startDrawing();
            host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(9, 9, 3)}, "door");
            pattern.attributes = {{"dxf", ""}, {"dxf::MAKER", "none"}, {"dxf::NOTE", ""}};
            TempDir folder;
            std::string config = keepConfig(version);
            config.insert(config.find("#FLAGS-END"), std::string("WRITE_BLOCKS=") + blocks + "\n");
            const Exported file = exportTo(folder, config);
            EXPECT_EQ(file.errors(), "") << version;
            ASSERT_EQ(importFile(folder, "out.dxf", keepOptions(version)).stat, 0);
            const Shown back = shownByLayer()["LAY"];
            EXPECT_EQ(back.attributes.count("dxf::NOTE"), 1u) << version << " " << blocks;
            EXPECT_EQ(back.attributes.at("dxf::MAKER"), "none") << version << " " << blocks;
            EXPECT_TRUE(back.lines.empty()) << "they don't show";
        }
    }
}

} // namespace

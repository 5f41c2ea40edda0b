// TEXT: characters, fonts, size and place.
#include "text_support.h"

#include "../../dxf/cpp/text/dx_text_fonts.h"
#include "services/session.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

class TextImport : public ::testing::Test {
    InstalledTables tables_;
};

/// A text from (10, 20) whose second point is (30, 20), turned by 30 degrees about the first with both.
DxfGroups alignedText(int hor, int ver, const std::string& font) {
    const double x = 10 + 20 * std::cos(0.5235987755982988), y = 20 + 20 * std::sin(0.5235987755982988);
    return textAt(10, 20, "Hamburg") + DxfGroups{{50, "30"},     {41, "0.8"},  {7, font},   {72, num(hor)},
                                                 {73, num(ver)}, {11, num(x)}, {21, num(y)}};
}

TEST_F(TextImport, EachAlignmentPutsTheCharactersAtItsPoint) {
    const double x2 = 10 + 20 * std::cos(0.5235987755982988), y2 = 20 + 20 * std::sin(0.5235987755982988);
    for (int ver = 0; ver <= 3; ++ver) {
        for (int hor = 0; hor <= 2; ++hor) {
            const auto texts = importTexts(dxf()
                                               .header("AC1015")
                                               .record("STYLE", style("S", "romans.shx"))
                                               .entity("TEXT", alignedText(hor, ver, "s")));
            ASSERT_EQ(texts.size(), 1u);
            const bool atFirst = hor == 0 && ver == 0;
            const double up[] = {0, -(texts[0].lineDistance - 1) / 2, 0.5, 1};
            SCOPED_TRACE("72=" + num(hor) + " 73=" + num(ver));
            EXPECT_AT(inkAt(texts[0], hor / 2.0, up[ver]), atFirst ? 10 : x2, atFirst ? 20 : y2);
            EXPECT_EQ(texts[0].justification, 0);
        }
    }
}

TEST_F(TextImport, FitAndAlignedTextsRunFromPointToPoint) {
    for (const char* text : {"Hamburg", "H"}) {
        const auto fit =
            importTexts(oneText(textAt(0, 0, text) + DxfGroups{{72, "5"}, {11, "0"}, {21, "40"}}));
        ASSERT_EQ(fit.size(), 1u);
        EXPECT_AT(inkAt(fit[0], 0, 0), 0, 0);
        EXPECT_AT(inkAt(fit[0], 1, 0), 0, 40);
        EXPECT_EQ(fit[0].height, 5);
    }
    const auto aligned =
        importTexts(oneText(textAt(0, 0, "Hi") + DxfGroups{{72, "3"}, {11, "-9"}, {21, "0"}}));
    EXPECT_NEAR(std::fabs(aligned.at(0).angle), 3.14159265358979, 1e-12);
    EXPECT_AT(inkAt(aligned[0], 0, 0), 0, 0);
    const auto plain = importTexts(oneText(textAt(0, 0, "Hi")));
    EXPECT_DOUBLE_EQ(aligned[0].width, plain.at(0).width) << "its height gives it its length";
    for (const char* face : {"", "Liberation Serif"}) {
        const auto wide =
            importTexts(dxf()
                            .header("AC1021")
                            .record("STYLE", style("S", *face ? "x.ttf" : "txt", face))
                            .entity("TEXT", textAt(0, 0, "Füße Привет 日本 %%c %%uA%%uB") +
                                                DxfGroups{{7, "S"}, {72, "5"}, {11, "300"}, {21, "0"}}));
        EXPECT_NEAR(inkAt(wide.at(0), 1, 0).x - inkAt(wide[0], 0, 0).x, 300, 1e-6) << face;
    }
}

TEST_F(TextImport, AlignmentsOutsideTheRuleKeepTheirArithmetic) {
    const auto originOf = [](const char* hor, const char* ver) {
        const auto texts =
            importTexts(oneText(textAt(0, 0, "Hi") + DxfGroups{{72, hor}, {73, ver}, {11, "30"}, {21, "0"}}));
        EXPECT_NEAR(texts.at(0).x, 30, 1e-9) << "no shift along the line";
        return texts[0].origin;
    };
    EXPECT_EQ(originOf("3", "1"), 4);
    EXPECT_EQ(originOf("5", "1"), 6);
    EXPECT_EQ(originOf("4", "2"), 8);
    EXPECT_EQ(originOf("1", "3"), 8);
    const auto unset = importTexts(oneText(textAt(50, 50, "Hi") + DxfGroups{{72, "1"}}));
    EXPECT_NEAR(unset.at(0).x, 1, 1e-9) << "the second point's start value";
}

TEST_F(TextImport, MiddleHasTheMiddleOfTheCell) {
    const auto texts =
        importTexts(oneText(textAt(0, 0, "Hamburg") + DxfGroups{{72, "4"}, {11, "7"}, {21, "8"}}));
    EXPECT_EQ(texts.at(0).origin, 5);
    EXPECT_NEAR(texts[0].x, 7, 1e-9);
    EXPECT_NEAR(texts[0].y, 8 + (texts[0].lineDistance - 1) * 5 * 0.25, 1e-9);
}

TEST_F(TextImport, LengthFollowsTheFontsTable) {
    // romans: H is 74 wide with a space of 30, i 13, both in hundredths of the height
    std::ifstream table(std::string(TORVA_SOURCE_DIR) + "/int/dxf/font/romans.chr");
    int h = 0, i = 0, space = 0;
    for (std::string line; std::getline(table, line);) {
        std::sscanf(line.c_str(), "72,%d,%d", &h, &space);
        std::sscanf(line.c_str(), "105,%d,", &i);
    }
    ASSERT_GT(h, i);
    const auto texts =
        importTexts(dxf()
                        .header("AC1015")
                        .record("STYLE", style("R", "ROMANS.SHX"))
                        .entity("TEXT", textAt(0, 0, "Hi") + DxfGroups{{7, "R"}, {41, "0.5"}}));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].font, 3);
    const RPT end = inkAt(texts[0], 1, 0);
    EXPECT_NEAR(end.x, (h + space + i) * 0.01 * 5 * 0.5, 1e-6);
}

TEST(TextTables, AreTheInstallations) {
    TempDir folder;
    folder.write("1700/cad/glob/font/std.7", "P\n*A;65\nW120\n*?;300\nW9\n x\n*a;66;\nW 80\n");
    folder.write("1700/int/dxf/font/own.chr", "40\n256,50,20\n65,60,30,9\n66,70,10\n999,1,1\n");
    setenv("HD_U", folder.path().c_str(), 1);
    DxResetTextState();
    const std::string switches = "\x0e"
                                 "AB\x0e";
    double length = 0;
    int proportional = 0;
    EXPECT_EQ(DxTextGetCadFontLen(switches, 3, &length, &proportional), 1);
    EXPECT_EQ(length, 200) << "no table: each character counts, a switch doesn't";
    EXPECT_EQ(DxTextGetCadFontLen(switches + "C", 7, &length, &proportional), 0);
    EXPECT_EQ(length, 120 + 80 + 100) << "the average of what is there";
    EXPECT_EQ(proportional, 1);
    EXPECT_EQ(DxTextGetCadFontLen("A", 3, &length, &proportional), 0);
    EXPECT_EQ(length, 120) << "the table loaded last";
    DxTextMeasure what;
    what.font = "own";
    what.height = 10;
    DxTextLength measured;
    const auto lengthOf = [&](std::string_view text) {
        what.text = text;
        EXPECT_EQ(DxTextGetDxfFontLen(what, &measured), 0);
        return measured.length;
    };
    EXPECT_DOUBLE_EQ(lengthOf("%%d"), 5) << "256 stands for the degree sign";
    EXPECT_DOUBLE_EQ(lengthOf("BB"), 15);
    EXPECT_DOUBLE_EQ(lengthOf("AB"), 14.5) << "A has no line of three numbers";
    EXPECT_DOUBLE_EQ(lengthOf(""), 0);
    EXPECT_DOUBLE_EQ(measured.lineDistance, 1.3);
    unsetenv("HD_U");
    DxResetTextState();
}

TEST_F(TextImport, FacesKeepTheirProportionsAndStandAFortiethToTheLeft) {
    const auto texts = importTexts(
        dxf()
            .header("AC1015")
            .record("STYLE", style("T", "x.ttf", "Liberation Serif"))
            .entity("TEXT", textAt(10, 0, "Face") + DxfGroups{{7, "T"}, {41, "0.7"}, {51, "15"}}));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].font, 0);
    EXPECT_EQ(texts[0].face, "Liberation Serif");
    EXPECT_DOUBLE_EQ(texts[0].width, 0.7 * 5);
    EXPECT_EQ(texts[0].spacing, 1);
    EXPECT_NEAR(texts[0].slant, 0.2617993877991494, 1e-12);
    EXPECT_AT(inkAt(texts[0], 0, 0), 10 - 5 / 40.0, 0);
}

TEST_F(TextImport, OneFontMayBeNamedTwiceAndTheLaterEntryWins) {
    ImportOptions options = textOptions();
    options.config = "#FONT-DXF-TO-CAD\n3\ntxt|Liberation "
                     "Mono\ntxt|4,0.8\n@|4\n#CHAR-DXF-TO-CAD\n2\n65|66\n%%x|-1\n#EOF\n";
    const auto texts = importTexts(oneText(textAt(0, 0, "AB%%xC")), options);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].font, 4);
    EXPECT_EQ(texts[0].spacing, 0.8);
    EXPECT_EQ(saidBy(texts), "'AB%%xC'") << "font 4 takes the special characters' tables, which are empty";
    options.config.replace(options.config.find("@|4"), 3, "@|5");
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, "AB%%xC")), options)), "'BBC'");
}

TEST_F(TextImport, CodesBecomeCharacters) {
    const std::pair<const char*, const char*> cases[] = {
        {"%%c10 %%D %%p1", "Ø10 ° ±1"},
        {"%%065%%228%%127", "Aä°"},
        {"50%%%", "50%"},
        {"100%", "100%"},
        {"%%", "%%"},
        {"%%6", "%%6"},
        {"%%q", "%%q"},
        {"\\U+00E4\\U+0416", "äЖ"},
        {"\\U+04", "\\U+04"},
        {"\\M+182A0", "あ"},
        {"\\M+1", "\\M+1"},
        {"\\U+D83D\\U+DE00", "😀"},
        {"a\\U+D83Db", "a\\U+D83Db"},
        {"C:\\Users", "C:\\Users"},
        {"%%uA%%uB", "\x0e"
                     "A\x0e"
                     "B"},
    };
    for (const auto& [code, shown] : cases)
        EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, code)))), std::string("'") + shown + "'") << code;
}

TEST_F(TextImport, LinesAlongTheWholeTextAreMarksOfTheText) {
    const auto bits = [](const std::string& text) {
        const auto texts = importTexts(oneText(textAt(0, 0, text)));
        return texts.size() == 1 ? texts[0].styleBits : -1;
    };
    EXPECT_EQ(bits("%%uABC%%u"), 2);
    EXPECT_EQ(bits("%%UABC"), 2);
    EXPECT_EQ(bits("%%oABC%%O"), 16);
    EXPECT_EQ(bits("%%uAB%%uC"), 0);
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, "%%uABC%%u")))), "'ABC'");
}

TEST_F(TextImport, CodePagesReadRight) {
    const auto in = [](const std::string& page, const std::string& bytes,
                       const std::string& version = "AC1015") {
        return saidBy(importTexts(
            dxf().header(version, {{9, "$DWGCODEPAGE"}, {3, page}}).entity("TEXT", textAt(0, 0, bytes))));
    };
    EXPECT_EQ(in("ANSI_1252", "\xC4\x80\xDF"), "'Ä€ß'");
    EXPECT_EQ(in("ANSI_1251", "\xCF\xF0"), "'Пр'");
    EXPECT_EQ(in("ANSI_1251", "%%239%%p"), "'п±'") << "the character of a number is of the page, too";
    EXPECT_EQ(in("ANSI_1253", "\xD9"), "'Ω'");
    EXPECT_EQ(in("ANSI_1250", "\xB3"), "'ł'");
    EXPECT_EQ(in("ANSI_932", "\x83\x5C\x95\x5C%%c1"), "'ソ表Ø1'") << "a trail byte like a backslash";
    EXPECT_EQ(in("ANSI_936", "\xC4\xE3"), "'你'");
    EXPECT_EQ(in("ANSI_1252", "Größe 日本", "AC1021"), "'Größe 日本'") << "UTF-8, beyond the code page too";
    EXPECT_EQ(in("ANSI_874", "\xA1\xE0"), "'กเ'");
    EXPECT_EQ(in("ANSI_949", "\xC7\xD1\x8C\x63%%d"), "'한똠°'");
    EXPECT_EQ(in("ANSI_950", "\xB3\x5C\xA5\x5C\\U+00E4"), "'許功ä'") << "trail bytes like backslashes";
    EXPECT_EQ(in("ANSI_1254", "\xDD\xFE"), "'İş'");
    EXPECT_EQ(in("ANSI_1255", "\xF9"), "'ש'");
    EXPECT_EQ(in("ANSI_1256", "\xD3"), "'س'");
    EXPECT_EQ(in("ANSI_1257", "\xDE"), "'Ž'");
    EXPECT_EQ(in("ANSI_1258", "\xD5"), "'Ơ'");
    EXPECT_EQ(in("ISO8859-5", "\xBF\xE0"), "'Пр'");
    EXPECT_EQ(in("ISO8859-15", "\xA4"), "'€'");
    EXPECT_EQ(in("ANSI_1252", "Gr\xC3\xB6\xC3\x81"), "'GrÃ¶Ã\u0081'")
        << "UTF-8 in an old file is read as its code page says, and no byte of it is lost";
    EXPECT_EQ(in("ANSI_1252", "\xC4 raw", "AC1021"), "'Ä raw'") << "bytes that aren't UTF-8";
}

TEST_F(TextImport, FacesKeepTheirNames) {
    const std::string gothic = "ＭＳ ゴシック",
                      gothic932 = "\x82\x6C\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4E";
    const auto faces = [](const char* version, const char* page, const std::string& face) {
        std::string all;
        for (const host::Text& text :
             importTexts(dxf()
                             .header(version, {{9, "$DWGCODEPAGE"}, {3, page}})
                             .record("STYLE", style("S", "x.ttf", face))
                             .entity("TEXT", textAt(0, 0, "abc") + DxfGroups{{7, "S"}})
                             .entity("MTEXT", textAt(0, 0, "{\\f" + face + "|b0|i0;abc}"))))
            all += text.face + ";";
        return all;
    };
    EXPECT_EQ(faces("AC1015", "ANSI_932", gothic932), gothic + ";" + gothic + ";");
    EXPECT_EQ(faces("AC1027", "ANSI_932", gothic), gothic + ";" + gothic + ";");
    EXPECT_EQ(faces("AC1027", "ANSI_1252", gothic), gothic + ";" + gothic + ";");
    EXPECT_EQ(faces("AC1027", "ANSI_1252",
                    "Gr\xF6\xDF"
                    "e"),
              "Größe;Größe;")
        << "bytes that aren't UTF-8";
}

TEST_F(TextImport, EntriesOfTheFontMapLeadOnToOthers) {
    ImportOptions options = textOptions();
    options.config = "#FONT-DXF-TO-CAD\n3\nHelvetica|9\narial|Helvetica\nHelvetica|5,1.2\n#EOF\n";
    const auto texts = importTexts(dxf()
                                       .header("AC1015")
                                       .record("STYLE", style("S", "arial"))
                                       .entity("TEXT", textAt(0, 0, "abc") + DxfGroups{{7, "S"}}),
                                   options);
    EXPECT_EQ(texts.at(0).font, 5);
    EXPECT_EQ(texts[0].face, "");
}

TEST_F(TextImport, ASignOfTheHostBelowTheBlankIsSeen) {
    ImportOptions options = textOptions();
    options.config = "#CHAR-DXF-TO-CAD\n1\n%%c|29\n#EOF\n";
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, "%%c")), options)), "'\x1d'");
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, " \t")), options)), "");
}

TEST_F(TextImport, AFontWithoutATableIsTold) {
    ImportOptions options;
    options.config = "#EOF\n";
    const auto result = importText(dxf()
                                       .header("AC1015")
                                       .record("STYLE", style("S", "weird.shx"))
                                       .entity("TEXT", textAt(0, 0, "abc") + DxfGroups{{7, "S"}})
                                       .entity("TEXT", textAt(0, 9, "abc") + DxfGroups{{7, "S"}})
                                       .text(),
                                   options);
    EXPECT_EQ(std::count_if(
                  result.messages.begin(), result.messages.end(),
                  [](const std::string& line) { return line.find("für font weird") != std::string::npos; }),
              1);
}

TEST_F(TextImport, TheConfigurationIsInUtf8ForAnyCodePage) {
    ImportOptions options = textOptions();
    options.config = "#FONT-DXF-TO-CAD\n1\nゴシ|ソ\n#EOF\n";
    const auto texts = importTexts(dxf()
                                       .header("AC1015", {{9, "$DWGCODEPAGE"}, {3, "ANSI_932"}})
                                       .record("STYLE", style("S", "x.ttf", "\x83\x53\x83\x56"))
                                       .entity("TEXT", textAt(0, 0, "abc") + DxfGroups{{7, "S"}}),
                                   options);
    EXPECT_EQ(texts.at(0).face, "ソ");
    for (const char* row : {"\xE4!|65", "ä!|65"}) {
        options.config = std::string("#CHAR-DXF-TO-CAD\n1\n") + row + "\n#EOF\n";
        EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, "\xE4!\xE4")), options)), "'Aä'") << row;
    }
}

TEST_F(TextImport, FontFilesHaveNamesOfAnyCharacters) {
    ImportOptions options = textOptions();
    options.config = "#FONT-DXF-TO-CAD\n2\ntxt|2\nソゴ|5\n#EOF\n";
    const auto fontOf = [&](const char* version, const std::string& file) {
        return importTexts(dxf()
                               .header(version, {{9, "$DWGCODEPAGE"}, {3, "ANSI_932"}})
                               .record("STYLE", style("S", file))
                               .entity("TEXT", textAt(0, 0, "abc") + DxfGroups{{7, "S"}}),
                           options)
            .at(0)
            .font;
    };
    EXPECT_EQ(fontOf("AC1015", "C:\\F\\\x83\x5C\x83\x53.SHX"), 5) << "trail bytes like a backslash and an S";
    EXPECT_EQ(fontOf("AC1027", "C:\\F\\ソゴ.shx"), 5);
    EXPECT_EQ(fontOf("AC1015", "C:\\F\\TXT.SHX"), 2);
}

TEST_F(TextImport, CharactersMayBeDividedBetweenThePiecesOfAText) {
    const auto divided = [](const std::string& page, const std::string& version, const std::string& text,
                            std::size_t at) {
        const DxfGroups pieces{{10, "0"}, {40, "1"}, {3, text.substr(0, at)}, {1, text.substr(at)}};
        return saidBy(
            importTexts(dxf().header(version, {{9, "$DWGCODEPAGE"}, {3, page}}).entity("MTEXT", pieces)));
    };
    EXPECT_EQ(divided("ANSI_932", "AC1015", "a\x95\x5C{b}\x83\x5C", 2), "'a表bソ'");
    for (std::size_t at = 1; at < 12; ++at)
        EXPECT_EQ(divided("ANSI_1252", "AC1027", "ö日本\\U+2205x", at), "'ö日本Øx'") << at;
}

TEST_F(TextImport, LongEmptyAndBrokenTexts) {
    const std::string longText(2047, 'x');
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, longText)))), "'" + longText + "'");
    EXPECT_EQ(saidBy(importTexts(oneText(textAt(0, 0, longText + "yz")))), "'" + longText + "'");
    std::string wide;
    for (int i = 0; i < 2047; ++i) wide += "日";
    const auto unicode = [](const char* kind, const DxfGroups& groups) {
        return saidBy(importTexts(dxf().header("AC1027").entity(kind, groups)));
    };
    EXPECT_EQ(unicode("TEXT", textAt(0, 0, wide + "本x")), "'" + wide + "'");
    EXPECT_EQ(unicode("ATTRIB", textAt(0, 0, wide) + DxfGroups{{2, "A"}}), "'" + wide + "'");
    EXPECT_EQ(unicode("ATTDEF", textAt(0, 0, "x") + DxfGroups{{2, wide}}),
              "'" + wide.substr(0, 160 * 3) + "'")
        << "a name has 160 characters";
    EXPECT_TRUE(importTexts(oneText(textAt(0, 0, "   "))).empty());
    EXPECT_TRUE(importTexts(oneText(textAt(0, 0, ""))).empty());
    const auto noWidth = importTexts(oneText(textAt(0, 0, "abc") + DxfGroups{{41, "0"}}));
    EXPECT_GT(noWidth.at(0).width, 1) << "a width factor of 0 counts as 1";
    EXPECT_EQ(importTexts(oneText(textAt(0, 0, "abc") + DxfGroups{{51, "360"}})).at(0).slant, 0);
}

TEST_F(TextImport, BadAlignmentsAndHeightsAreReported) {
    const auto result = importText(oneText(textAt(0, 0, "abc") + DxfGroups{{72, "6"}, {73, "-1"}})
                                       .entity("TEXT", {{10, "0"}, {40, "1e20"}, {1, "gone"}})
                                       .entity("TEXT", {{10, "0"}, {40, "-3"}, {1, "gone"}})
                                       .text(),
                                   textOptions());
    EXPECT_EQ(result.stat, 0);
    EXPECT_TRUE(result.hasMessage("Ungültige Textausrichtung (72=6)!"));
    EXPECT_TRUE(result.hasMessage("Ungültige Textausrichtung (73=-1)!"));
    EXPECT_TRUE(result.hasMessage("Texthöhe zu klein! Text wurde nicht erzeugt!"));
    EXPECT_NE(result.dump.find("abc"), std::string::npos);
    EXPECT_EQ(result.dump.find("gone"), std::string::npos);
}

TEST_F(TextImport, MirroredTextsCoverTheirPlaceAndRead) {
    struct Case {
        const char *generation, *normal;
        double start, end; // of the text's line, from left to right as it is read; 0: where the text is held
        double up;         // the side of its line that the characters stand on
    };
    const Case cases[] = {{"0", "1", 0, 1, 1},   {"0", "-1", -1, 0, 1}, {"2", "1", -1, 0, 1},
                          {"2", "-1", 0, 1, 1},  {"4", "1", 1, 0, -1},  {"6", "1", 0, -1, -1},
                          {"4", "-1", 0, -1, -1}};
    for (const Case& c : cases) {
        const auto texts =
            importTexts(oneText(textAt(0, 0, "Hamburg") + DxfGroups{{71, c.generation}, {230, c.normal}}));
        ASSERT_EQ(texts.size(), 1u);
        SCOPED_TRACE(std::string("71=") + c.generation + " 230=" + c.normal);
        const RPT start = inkAt(texts[0], 0, 0), end = inkAt(texts[0], 1, 0);
        const double length = std::hypot(end.x - start.x, end.y - start.y);
        EXPECT_NEAR(start.x / length, c.start, 1e-6);
        EXPECT_NEAR(end.x / length, c.end, 1e-6);
        EXPECT_NEAR(start.y, 0, 1e-6);
        EXPECT_NEAR(inkAt(texts[0], 0, 1).y / 5, c.up, 1e-6);
    }
}

TEST_F(TextImport, InsertsTurnAndScaleTheirTexts) {
    struct Case {
        const char *scaleX, *scaleY, *rotation;
        double angle, height; // of a text that the block turns by 20 degrees
    };
    const Case cases[] = {{"1", "1", "30", 50, 5},
                          {"-1", "-1", "30", -130, 5},
                          {"-2", "-1", "0", -160, 10},
                          {"3", "3", "-20", 0, 15}};
    for (const Case& c : cases) {
        const auto texts = importTexts(
            dxf()
                .header("AC1015")
                .block("B", DxfGroups{{0, "TEXT"}} + textAt(0, 0, "Hamburg") + DxfGroups{{50, "20"}})
                .entity("INSERT",
                        {{2, "B"}, {10, "0"}, {20, "0"}, {41, c.scaleX}, {42, c.scaleY}, {50, c.rotation}}));
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_NEAR(std::remainder(texts[0].angle - c.angle * 0.017453292519943295, 6.283185307179586), 0,
                    1e-9)
            << c.scaleX << " " << c.rotation;
        EXPECT_EQ(texts[0].height, c.height);
    }
}

TEST_F(TextImport, NumbersBeyondAllBoundsAreLeftOut) {
    ImportOptions options = textOptions();
    options.texts["$DxfMatrix"] = "0,1e300,1e300";
    const auto result =
        importText(oneText(textAt(0, 0, "abc") + DxfGroups{{30, "1e18"}})
                       .entity("TEXT", textAt(1e18, 1e18, "far") + DxfGroups{{41, "1e19"}, {50, "1e18"}})
                       .text(),
                   options);
    EXPECT_EQ(result.stat, 0);
}

} // namespace

// MTEXT: codes, layout, place.
#include "text_support.h"

#include "../../dxf/cpp/text/dx_mtext.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

class Mtext : public ::testing::Test {
protected:
    static std::vector<host::Text> texts(const std::string& text, const DxfGroups& more = {}) {
        DxfGroups groups{{8, "0"}, {10, "0"}, {20, "0"}, {40, "1"}};
        for (std::size_t at = 0; at + 250 < text.size(); at += 250)
            groups.push_back({3, text.substr(at, 250)});
        groups.push_back({1, text.substr(text.empty() ? 0 : (text.size() - 1) / 250 * 250)});
        return importTexts(oneMtext(groups + DxfGroups{{71, "1"}} + more));
    }
    static std::string said(const std::string& text) { return saidBy(texts(text)); }
    /// Left end of each text's baseline.
    static std::vector<RPT> places(const std::vector<host::Text>& texts) {
        std::vector<RPT> all;
        for (const host::Text& text : texts) all.push_back(inkAt(text, 0, 0));
        return all;
    }
    static double right(const host::Text& text) { return inkAt(text, 1, 0).x; }

private:
    InstalledTables tables_;
};

TEST(MtextFlatten, GroupsAreReplacedByCodesThatRestore) {
    const auto flat = [](std::string text) {
        DxMtextFlatten(text, {7, -1, "txt", false, 2.5, 0, 1, 1});
        return text;
    };
    EXPECT_EQ(flat("{\\H2x;AB}CD"), "\\H2x;AB\\H2.500000;CD");
    EXPECT_EQ(flat("{\\C1;\\Q15;a{\\C2;b}c}d"), "\\C1;\\Q15;a\\C2;b\\C1;c\\C7;\\Q0.000000;d");
    EXPECT_EQ(flat("{\\Fromans.shx;a}b"), "\\Fromans.shx;a\\Ftxt;b");
    EXPECT_EQ(flat("{\\fArial|b1;a{\\W0.8;b}}c"), "\\fArial|b1;a\\W0.8;b\\W1.000000;\\Ftxt;c");
    EXPECT_EQ(flat("\\{a\\}{b}"), "\\{a\\}b");
    EXPECT_EQ(flat("{\\H5"), "\\H5") << "a code without its end";
    EXPECT_EQ(flat("a}b\\"), "ab\\") << "a brace that closes nothing";
}

TEST_F(Mtext, BehindAGroupTheFontIsTheSameAsBefore) {
    const auto all = texts("\\Fweird.shx;a{\\Fromans.shx;b}c");
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[2].font, all[0].font);
    EXPECT_EQ(all[2].face, all[0].face);
    EXPECT_NE(all[1].font, 0);
}

TEST_F(Mtext, CodesThatStandForCharacters) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"\\A1;abc", "'abc'"},
        {"a\\~b\\\\c\\{d\\}", "'a b\\c{d}'"},
        {"\\U+2205 10\\U+0416", "'Ø 10Ж'"},
        {"a^Ib^ c", "'a\tb^c'"},
        {"%%c %%p", "'Ø ±'"},
        {"\\S1#2;", "'1/2'"},
        {"\\Sabc;d", "'abc;d'"},
        {"\\Lunder\\l plain", "'\x0eunder\x0e plain'"},
        {"\\Oover\\o", "'over'"},
        {"\\Kgone\\k", "'\x10gone\x10'"},
        {"a{\\Lb\\C1;c}d", "'a\x0e"
                           "b' 'c' 'd'"},
        {"\\Zx\\", "'\\Zx\\'"},
        {"a\\H3", "'a3'"},
        {"\\H;a\\C;b\\f;c\\W0,8;d", "'abc' 'd'"},
        {"ab\\pqc", "'ab'"},
        {"ab\\pqc cd", "'ab cd'"},
        {"a\\pqc b; c\\C1 no end; d\\H2\\C1;e", "'a b; c1 no end; d2' 'e'"},
        {"x\\U+22", "'x\\U+22'"},
        {"x\\M+1", "'x\\M+1'"},
        {"\\L^^I\\l", "'^\t'"},
        {"abc\\", "'abc\\'"},
        {"x\\Py\\Nz^Jw", "'x' 'y' 'z' 'w'"},
        {"\\pi-2,l2,qc,t4,c8;abc", "'abc'"},
    };
    for (const auto& [code, shown] : cases) EXPECT_EQ(said(code), shown) << code;
}

TEST_F(Mtext, ARunOfItsOwnFormatStandsBehindTheOneBefore) {
    const auto runs = texts("ab{\\H2x;CD}{\\C3;\\Q20;\\W0.5;ef}{\\fLiberation Serif|c238|b1|i0;gh}ij");
    ASSERT_EQ(saidBy(runs), "'ab' 'CD' 'ef' 'gh' 'ij'");
    const auto at = places(runs);
    for (std::size_t i = 1; i < runs.size(); ++i) {
        EXPECT_GT(at[i].x, right(runs[i - 1])) << i;
        EXPECT_LT(at[i].x, right(runs[i - 1]) + 0.7) << i;
        EXPECT_NEAR(at[i].y, at[0].y, 1e-9) << "on one baseline";
    }
    EXPECT_EQ(runs[1].height, 2);
    EXPECT_NEAR(inkAt(runs[1], 0, 1).y, 0, 1e-9) << "the highest run touches the insertion point";
    EXPECT_EQ(runs[2].pen, 3);
    EXPECT_NEAR(runs[2].slant, 0.3490658503988659, 1e-12);
    EXPECT_EQ(runs[3].face, "Liberation Serif");
    EXPECT_EQ(runs[3].styleBits, 8);
    EXPECT_EQ(runs[4].font, runs[0].font);
    EXPECT_EQ(runs[4].pen, runs[0].pen);
    EXPECT_EQ(runs[4].slant, 0);
}

TEST_F(Mtext, AGroupEndsWithTheWidthOfItsStyle) {
    DxfGroups narrow = style("NARROW", "txt");
    narrow[3].value = "0.5";
    const DxfGroups text{{8, "0"},  {7, "NARROW"}, {10, "0"},
                         {20, "0"}, {40, "1"},     {1, "x{\\W2;x}x{\\W1;x}x"}};
    const auto runs = importTexts(dxf().header("AC1015").record("STYLE", narrow).entity("MTEXT", text));
    ASSERT_EQ(runs.size(), 5u);
    for (const std::size_t i : {2U, 4U}) EXPECT_NEAR(runs[i].width, runs[0].width, 1e-9) << i;
    EXPECT_NEAR(runs[3].width, 2 * runs[0].width, 1e-9);
}

TEST_F(Mtext, ATabTakesTheRoomThatItIsDrawnIn) {
    for (const char* font : {"\\Ftxt;", "\\Fisocp;", "\\Fmonotxt;", "\\fDejaVu Sans;"}) {
        const auto runs = texts(std::string(font) + "a^Ib{\\C1;c}");
        ASSERT_EQ(runs.size(), 2u) << font;
        EXPECT_GT(inkAt(runs[1], 0, 0).x, right(runs[0]) - 1e-6) << font;
        EXPECT_NEAR(right(runs[0]), inkAt(runs[1], 0, 0).x, 0.4) << font;
    }
}

TEST_F(Mtext, TrueColoursAreDrawnInTheNearestOfThePaletteWithinTheirGroup) {
    const auto runs =
        texts("{\\c255;a}b{\\C1;\\c16711680;c{\\C5;\\c65280;d}{\\C2;e}f}{\\c8355840;g}\\C3;h", {{62, "6"}});
    const int pens[] = {1, 6, 5, 3, 2, 5, 136, 3};
    ASSERT_EQ(runs.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(runs[i].pen, pens[i]) << runs[i].lines[0];
}

TEST_F(Mtext, CharacterSpacingHoldsWithinItsGroup) {
    const auto runs = texts("a{\\T2;b}c");
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_NEAR(runs[1].spacing, 1.25 * 0.46153846153846156 + 1, 1e-12);
    EXPECT_NEAR(runs[2].spacing, runs[0].spacing, 1e-12);
}

TEST_F(Mtext, EachAttachmentHoldsTheBlockAtItsPointUnderRotation) {
    for (int attachment = 1; attachment <= 9; ++attachment) {
        const auto lines = texts("wide line\\Pab", {{71, num(attachment)}, {50, "90"}});
        ASSERT_EQ(lines.size(), 2u);
        const int column = (attachment + 2) % 3, row = (attachment - 1) / 3;
        SCOPED_TRACE(attachment);
        // turned by 90 degrees, the text's x runs along y and its top is on the left
        EXPECT_NEAR(inkAt(lines[0], column / 2.0, 0).y, 0, 1e-6);
        EXPECT_NEAR(inkAt(lines[1], column / 2.0, 0).y, 0, 1e-6);
        const double top = inkAt(lines[0], 0, 1).x, bottom = inkAt(lines[1], 0, 0).x;
        EXPECT_NEAR(bottom - top, 1 + 5.0 / 3, 1e-6) << "two lines";
        EXPECT_NEAR(row == 0 ? top : row == 1 ? (top + bottom) / 2 : bottom, 0, 1e-6);
    }
    EXPECT_EQ(texts("a", {{71, "0"}}).at(0).origin, 7) << "attachment 0 is the first";
}

TEST_F(Mtext, TheXAxisTurnsTheText) {
    EXPECT_NEAR(texts("a", {{11, "0"}, {21, "1"}}).at(0).angle, 1.5707963267948966, 1e-12);
    EXPECT_NEAR(texts("a", {{11, "0"}, {21, "1"}, {50, "30"}}).at(0).angle, 0.5235987755982988, 1e-12);
    const auto over = texts("ab{\\C1;cd}", {{11, "-1"}, {21, "0"}, {230, "-1"}});
    ASSERT_EQ(saidBy(over), "'ab' 'cd'");
    EXPECT_NEAR(std::remainder(over[0].angle, 6.283185307179586), 0, 1e-9);
    EXPECT_NEAR(right(over[1]), 0, 1e-6)
        << "a plane that is turned over: the block covers its place and reads";
    EXPECT_LT(right(over[0]), inkAt(over[1], 0, 0).x);
}

TEST_F(Mtext, StackedTextsHaveTheirBarAtTheLongerPart) {
    const auto shorter = texts("a\\S1/22;b");
    ASSERT_EQ(saidBy(shorter), "'a' '1' '22' 'b'");
    EXPECT_EQ(shorter[1].styleBits, 0);
    EXPECT_EQ(shorter[2].styleBits, 16) << "overlined";
    EXPECT_NEAR((inkAt(shorter[1], 0.5, 0).x), inkAt(shorter[2], 0.5, 0).x, 1e-6)
        << "centred above each other";
    EXPECT_NEAR(inkAt(shorter[1], 0, 0).y - inkAt(shorter[2], 0, 0).y, 5.0 / 3, 1e-6);
    EXPECT_GT(places(shorter)[3].x, right(shorter[2]));
    EXPECT_EQ(texts("\\S333/22;").at(0).styleBits, 2) << "underlined";
    EXPECT_EQ(texts("\\S5/7;").at(1).styleBits, 16) << "equal lengths give the overline";
    const auto tolerance = texts("\\S+0.1^ -0.2;");
    ASSERT_EQ(saidBy(tolerance), "'+0.1' '-0.2'");
    EXPECT_EQ(tolerance[0].styleBits + tolerance[1].styleBits, 0);
}

TEST_F(Mtext, ParagraphsAreJustifiedInTheirBox) {
    const auto lines = texts("\\pqr;right\\P\\pqc;centre\\P\\pql;left", {{41, "40"}});
    ASSERT_EQ(lines.size(), 3u);
    const double halfSpaces = 0.3; // at the ends of a line
    EXPECT_NEAR(inkAt(lines[0], 1, 0).x, 40, halfSpaces);
    EXPECT_NEAR(inkAt(lines[1], 0.5, 0).x, 20, halfSpaces);
    EXPECT_NEAR(inkAt(lines[2], 0, 0).x, 0, 1e-6);
    const auto runs = texts("\\pqr;two {\\C1;runs}", {{41, "40"}});
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_NEAR(right(runs[1]), 40, 1e-6) << "runs of one line are moved together";
}

TEST_F(Mtext, ParagraphsAreJustifiedHoweverTheBlockIsAttached) {
    for (const int column : {0, 1, 2}) {
        const double left = -20.0 * column; // of the box
        SCOPED_TRACE(column);
        const DxfGroups box{{41, "40"}, {71, num(1 + column)}};
        const auto lines =
            texts("\\pql;the left side of the box is where all of this stands\\Pnext\\P\\pq*;reset", box);
        ASSERT_EQ(lines.size(), 3u);
        for (std::size_t line = 0; line < shown(lines[0]).lines.size(); ++line)
            EXPECT_NEAR(inkAt(lines[0], 0, 0, line).x, left, 1e-6) << line;
        EXPECT_NEAR(inkAt(lines[1], 0, 0).x, left, 1e-6);
        EXPECT_NEAR(inkAt(lines[2], column / 2.0, 0).x, 0, 1e-6);
        const auto runs =
            texts("\\pqr;some {\\C1;words} of several formats are broken, the last one: x", box);
        ASSERT_GT(runs.size(), 3u);
        EXPECT_NEAR(right(runs.back()), left + 40, 1e-6) << "a run that is alone in its line";
    }
}

TEST_F(Mtext, LinesThatAreBrokenKeepTheirBaseline) {
    const auto runs = texts("a\\Pb {\\H0.5x;small small small} tall {\\H0.5x;all by themselves, in lines "
                            "that are closer together}",
                            {{41, "16"}});
    ASSERT_EQ(
        saidBy(runs),
        "'a' 'b ' 'small small small' ' tall ' 'all by' 'themselves, in lines that are closer' 'together'");
    const auto at = places(runs);
    EXPECT_NEAR(at[2].y, at[1].y, 1e-9);
    EXPECT_NEAR(at[4].y, at[3].y, 1e-9);
    EXPECT_NEAR(at[5].y - at[6].y, 7.0 / 3 / 2, 1e-6) << "small lines follow each other closely";
}

TEST_F(Mtext, ABoxThatIsNarrowerThanTheTextIsHighBreaksNothing) {
    const auto high = texts("\\H4;two words\\Pnext", {{41, "3"}});
    const auto low = texts("\\H0.2;two words\\Pnext", {{41, "0.8"}});
    ASSERT_EQ(high.size() + low.size(), 4u);
    EXPECT_EQ(high[0].lineLength, 0);
    ASSERT_EQ(shown(low[0]).lines.size(), 2u);
    EXPECT_NEAR(inkAt(high[0], 0, 0).y - inkAt(high[1], 0, 0).y, 4 * 17.0 / 12, 1e-6);
    EXPECT_NEAR(inkAt(low[0], 0, 0, 1).y - inkAt(low[1], 0, 0).y, 0.2 * 13.0 / 3, 1e-6);
}

/// Breaks follow the block, whatever its scales make of the height.
TEST_F(Mtext, UnderUnevenScalesLinesBreakAsInTheBlock) {
    const std::pair<const char*, const char*> scales[] = {{"1", "1"}, {"2", "1"}, {"1", "2"}, {"-2", "0.5"}};
    for (const char* format : {"", "{\\C1;}", "\\pqr;", "the quick {\\C1;brown} "}) {
        std::vector<std::string> first;
        for (const auto& [x, y] : scales) {
            const DxfGroups text{{8, "0"},
                                 {10, "0"},
                                 {20, "0"},
                                 {40, "1"},
                                 {41, "20"},
                                 {71, "1"},
                                 {1, std::string(format) + "fox jumps over the lazy dog and so on\\Pnext"}};
            const auto pieces = importTexts(dxf()
                                                .header("AC1015")
                                                .block("B", DxfGroups{{0, "MTEXT"}} + text)
                                                .entity("INSERT", {{8, "0"}, {2, "B"}, {41, x}, {42, y}}));
            std::vector<std::string> lines;
            double baseline = HUGE_VAL;
            for (const host::Text& piece : pieces) {
                const auto layout = shown(piece);
                for (std::size_t i = 0; i < layout.lines.size(); ++i) {
                    const RPT at = inkAt(piece, 0, 0, i);
                    if (std::fabs(at.y - baseline) > 1e-6) lines.emplace_back();
                    baseline = at.y;
                    lines.back() += layout.lines[i].text;
                    const double width = 20 * std::fabs(std::stod(x));
                    EXPECT_NEAR(at.x, std::copysign(width / 2, std::stod(x)), width / 2 + 0.7);
                }
            }
            for (std::string& line : lines) line.erase(line.find_last_not_of(' ') + 1);
            if (first.empty()) first = lines;
            EXPECT_EQ(lines, first) << format << " " << x << ":" << y;
        }
        EXPECT_GT(first.size(), 2u);
    }
}

TEST_F(Mtext, ABoxBreaksLinesAndReservesTheirRoom) {
    const auto lines = texts("the quick brown fox jumps over the lazy dog\\Pnext", {{41, "14"}});
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].lineLength, 14);
    const auto layout = shown(lines[0]);
    ASSERT_GT(layout.lines.size(), 2u);
    for (std::size_t i = 0; i < layout.lines.size(); ++i)
        EXPECT_NEAR(inkAt(lines[0], 0, 0, i).y, -1 - 5.0 / 3 * static_cast<double>(i), 1e-6);
    EXPECT_NEAR(inkAt(lines[1], 0, 0).y, -1 - 5.0 / 3 * static_cast<double>(layout.lines.size()), 1e-6);

    const auto runs = texts("the quick {\\C1;brown fox jumps} over the lazy dog", {{41, "14"}});
    for (const host::Text& run : runs) EXPECT_LE(right(run), 14.001) << run.lines[0];
    EXPECT_GT(runs.size(), 3u);

    const auto heights =
        texts("the quick brown {\\H0.5x;fox} jumps {\\H2x;over} the {\\H0.4x;lazy} dog", {{41, "14"}});
    for (std::size_t i = 1; i < heights.size(); ++i) {
        const double step = inkAt(heights[i - 1], 0, 0).y - inkAt(heights[i], 0, 0).y;
        EXPECT_TRUE(std::fabs(step) < 1e-6 || step > 1)
            << heights[i].lines[0] << " stands on the line, " << step;
    }
}

TEST_F(Mtext, AWordDoesntPartWhereItsFormatChanges) {
    const auto lines = [&](const std::string& text) {
        std::string all;
        double y = 0;
        for (const host::Text& run : texts(text, {{41, "7.5"}})) {
            const double baseline = inkAt(run, 0, 0).y;
            if (!all.empty() && y - baseline > 0.5) all += '/';
            y = baseline;
            all += run.lines[0];
        }
        return all;
    };
    EXPECT_EQ(lines("abcd ef{\\C1;gh{\\C2;ij}} k"), "abcd/efghij k");
    EXPECT_EQ(lines("abcd ef{\\C1; gh}"), "abcd ef/gh") << "a blank begins the run";
    EXPECT_EQ(lines("a bcdef{\\C1;ghijk{\\C2;lmnop} q}"), "a bcdef/ghijk/lmnop q") << "wider than the line";
}

TEST_F(Mtext, TheHostBreaksALineWhereItsRoomWasReserved) {
    const std::string words = "the quick brown fox jumps over the lazy dog, iiiii MMMMM iiiii MMMMM %%c10 ";
    for (const char* font : {"", "\\fDejaVu Sans;", "\\T2;"}) {
        for (const double box : {9.0, 20.0, 33.3}) {
            for (const int attachment : {1, 5, 7}) {
                const auto pieces = texts(font + words + words + words + "\\Pnext " + words,
                                          {{41, num(box)}, {71, num(attachment)}});
                SCOPED_TRACE(font + num(box) + " " + num(attachment));
                std::vector<double> baselines;
                for (const host::Text& piece : pieces)
                    for (std::size_t line = 0; line < shown(piece).lines.size(); ++line)
                        baselines.push_back(inkAt(piece, 0, 0, line).y);
                for (std::size_t i = 1; i < baselines.size(); ++i)
                    ASSERT_NEAR(baselines[i - 1] - baselines[i], 5.0 / 3, 1e-6) << i;
                const double top = baselines.front() + 1, bottom = baselines.back();
                const int row = (attachment - 1) / 3;
                EXPECT_NEAR(row == 0   ? top
                            : row == 1 ? (top + bottom) / 2
                                       : bottom,
                            0, 0.4)
                    << "descenders count a little";
            }
        }
    }
}

TEST_F(Mtext, NoPieceIsLongerThan160CharactersAndNothingIsLost) {
    std::string words;
    for (int i = 0; i < 100; ++i) words += "word" + std::to_string(i) + " ";
    const auto withoutBlanks = [](std::string text) {
        std::erase(text, ' ');
        return text;
    };
    for (const char* box : {"0", "30"}) {
        for (const std::string& part : {words, std::string(500, 'x')}) {
            std::string all;
            for (const host::Text& piece : texts(part + "{\\C1;" + part + "}", {{41, box}})) {
                EXPECT_LE(piece.lines.at(0).size(), 160u);
                all += piece.lines[0];
            }
            EXPECT_EQ(withoutBlanks(all), withoutBlanks(part + part)) << box;
        }
        const auto one = texts(words, {{41, box}});
        EXPECT_EQ(one.front().lines.at(0).substr(0, 12), "word0 word1 ");
        EXPECT_EQ(one.back().lines.at(0).substr(one.back().lines.at(0).size() - 7), "word99 ");
        for (const host::Text& piece : one)
            EXPECT_EQ(piece.lines.at(0).substr(0, 4), "word") << "broken at blanks";
    }
}

TEST_F(Mtext, TheBackgroundIsThatOfTheEntity) {
    const auto colour = texts("a", {{90, "1"}, {63, "5"}, {45, "1.5"}});
    EXPECT_TRUE(colour.at(0).backOn);
    EXPECT_EQ(colour[0].fillPen, 5);
    const auto sheet = texts("a", {{90, "3"}});
    EXPECT_TRUE(sheet.at(0).backOn);
    EXPECT_EQ(sheet[0].fillPen, 0);
    EXPECT_FALSE(texts("a").at(0).backOn);
    for (const char* attachment : {"1", "5", "9"}) {
        const auto lines = texts("a\\Pb", {{90, "1"}, {63, "5"}, {44, "1.4"}, {71, attachment}});
        EXPECT_NEAR(lines.at(0).y + shown(lines[0]).bottom,
                    lines.at(1).y + shown(lines[1]).bottom + shown(lines[1]).height, 1e-6)
            << "no gap between the grounds of lines";
    }
    EXPECT_EQ(said("abc"), saidBy(texts("abc", {{101, "Embedded Object"}, {1, "other"}, {40, "9"}})));
}

TEST_F(Mtext, PiecesOfOneFormatAreJoinedWhenAskedFor) {
    ImportOptions options = textOptions();
    options.numbers["&DxfJoinTexts"] = 1;
    const auto joined =
        importTexts(oneMtext({{10, "0"}, {40, "1"}, {71, "5"}, {1, "first\\Psecond line\\Pthird"}}), options);
    ASSERT_EQ(joined.size(), 1u);
    EXPECT_EQ(joined[0].lines.size(), 3u);
    EXPECT_NEAR(inkAt(joined[0], 0.5, 0, 1).x, 0, 1e-6);
    const auto withGaps =
        importTexts(oneMtext({{10, "0"}, {40, "1"}, {1, "\\Pa\\P\\Pb{\\C1;}\\Pc"}}), options);
    ASSERT_EQ(withGaps.size(), 1u);
    EXPECT_EQ(withGaps[0].lines, (std::vector<std::string>{"", "a", "", "b", "c"})) << "empty lines count";
    EXPECT_NEAR(inkAt(withGaps[0], 0, 1, 1).y, -5.0 / 3, 1e-6);
    EXPECT_EQ(saidBy(importTexts(oneMtext({{10, "0"}, {40, "1"}, {1, "a\\P\\P\\C1;b"}}), options)),
              "'a' 'b'");
}

TEST_F(Mtext, HostileTextsEndInTime) {
    const auto start = std::chrono::steady_clock::now();
    const auto repeated = [](const std::string& part, int count) {
        std::string all;
        for (int i = 0; i < count; ++i) all += part;
        return all;
    };
    for (const std::string& text :
         {repeated("{", 29000), repeated("{\\H2;", 5000) + "x", repeated("\\~", 14000),
          repeated("{\\C1;a}", 4000), repeated("\\S1/2;", 4000), repeated("\\fA|b1;", 4000),
          repeated("a\\H9999x;", 3000), std::string(29000, ';'), repeated("\\U+", 9000),
          "\\f" + repeated("日本", 26) + "x;cut within a character", repeated("\\pq", 9000),
          repeated("\\S", 14000), repeated("{\\fqqqqqqqqqqq;}", 1800)}) {
        texts(text);
        texts(text, {{41, "3"}});
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

TEST(MtextEscape, APlainTextIsSafe) {
    std::string text = "a{b}\\c^";
    int bits[DX_BIT_COUNT] = {};
    DxMtextEscapeCharacters(text, bits);
    EXPECT_EQ(text, "a\\{b\\}\\\\c^ ");
    bits[DX_BIT_UNDERLINE] = bits[DX_BIT_OVERLINE] = bits[DX_BIT_STRIKE] = 1;
    text = "xy";
    DxMtextEscapeCharacters(text, bits);
    EXPECT_EQ(text, "\\L\\Ox\\U+0336y\\o\\l");
}

} // namespace

// The reader of group-code pairs, on files.
#include "dxf_text.h"
#include "services/session.h"
#include "session/dx_documents.h"
#include "session/session_state.h"
#include "temp_dir.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

using Pairs = std::vector<std::pair<int, std::string>>;

class ReaderTest : public testing::Test {
protected:
    ReaderTest() {
        host::resetSession();
        DxResetSessionState(0);
        DxLineTrim = 0;
    }
    ~ReaderTest() override {
        DxReadClose();
        DxLineTrim = 0;
    }

    void open(const std::string& text) {
        DxReadClose();
        ASSERT_EQ(DxReadOpen(folder.write("in.dxf", text).c_str()), 0);
    }
    /// The next pair as "code|text", "end" at the end.
    static std::string next(int maxLength = 161) {
        DxPair pair;
        const int error = DxReadPair(pair, maxLength);
        return error ? "end" : std::to_string(pair.code) + "|" + std::string(pair.text);
    }
    Pairs all(const std::string& text) {
        open(text);
        Pairs pairs;
        DxPair pair;
        while (DxReadPair(pair, 161) == 0) pairs.emplace_back(pair.code, std::string(pair.text));
        return pairs;
    }

    TempDir folder;
};

TEST_F(ReaderTest, LinesEndAsTheCLibrarySeesThem) {
    const Pairs expected = {{0, "LINE"}, {10, "1.5"}};
    EXPECT_EQ(all("  0\nLINE\n 10\n1.5\n"), expected);
    EXPECT_EQ(all("  0\r\nLINE\r\n 10\r\n1.5\r\n"), expected);
    EXPECT_EQ(all("  0\nLINE\r\n 10\r\r\n1.5"), expected);
    EXPECT_EQ(all("0\nLINE\n10\n1.5\n 20\n"), expected) << "a code without a value is no pair";
    EXPECT_EQ(all("  1\n a  \n  2\n\n"), (Pairs{{1, " a  "}, {2, ""}}));
    EXPECT_EQ(all("  1\na\rb\r\n"), (Pairs{{1, "a\rb"}})) << "a lone carriage return ends no line";
    EXPECT_EQ(all(std::string("  1\nab\0cd\r\n  2\nx\n", 16)), (Pairs{{1, "ab"}, {2, "x"}}));
    const std::string bom = "\xEF\xBB\xBF  0\nSECTION\n";
    EXPECT_EQ(all(bom), (Pairs{{0, "SECTION"}}));
    EXPECT_EQ(all(""), Pairs{});
}

TEST_F(ReaderTest, CodesAreReadAsIntegersWithAnythingBehind) {
    const std::pair<const char*, int> codes[] = {{"+5", 5},
                                                 {"-3", -3},
                                                 {"\t 7", 7},
                                                 {"10.9", 10},
                                                 {"1071 x", 1071},
                                                 {"x", 0},
                                                 {"", 0},
                                                 {"  ", 0},
                                                 {"1 0", 1},
                                                 {"99999999999", INT_MAX},
                                                 {"-99999999999", INT_MIN},
                                                 {"00012", 12},
                                                 {"12345", 12345}};
    for (const auto& [line, code] : codes) {
        EXPECT_EQ(all(std::string(line) + "\nvalue\n"), (Pairs{{code, "value"}})) << line;
        EXPECT_EQ(all(std::string(line) + "\r\nsomewhat longer value\n"),
                  (Pairs{{code, "somewhat longer value"}}));
    }
}

TEST_F(ReaderTest, AnEndlessLineCountsAsSeveral) {
    const std::size_t limit = 1'048'575;
    open("  1\n" + std::string(limit, 'a') + "42\n" + "value\n");
    EXPECT_EQ(next(1'048'576), "1|" + std::string(limit, 'a'));
    EXPECT_EQ(next(), "42|value");
    EXPECT_EQ(next(), "end");
}

TEST_F(ReaderTest, APairHandedBackIsCutOnlyOnce) {
    open("  1\nabcdefgh\n  1\nabcdefgh\n  2\nx\n");
    EXPECT_EQ(next(5), "1|abcd");
    DxUnGetLine();
    DxUnGetLine();
    EXPECT_EQ(next(100), "1|abcd");
    EXPECT_EQ(next(100), "1|abcdefgh");
    DxUnGetLine();
    char buffer[3];
    int code = 0;
    UtCString whole;
    EXPECT_EQ(DxGetLineVar(&code, buffer, sizeof buffer, false, &whole), 0);
    EXPECT_STREQ(buffer, "ab") << "never more than the buffer holds";
    EXPECT_EQ(whole, "abcdefgh");
    DxUnGetLine();
    EXPECT_EQ(next(100), "1|abcdefgh");
    EXPECT_EQ(next(1), "2|");
    EXPECT_EQ(next(), "end");
    EXPECT_EQ(next(), "end");
}

TEST_F(ReaderTest, StringsOfNewFilesAreUtf8) {
    DxFileVersion = 1021;
    const std::string text = "Ä中😀";
    open(dxfLines({{1, text}, {300, text}, {2, "\xC4"}, {1, text}}));
    EXPECT_EQ(next(), "1|" + text);
    DxUnGetLine();
    EXPECT_EQ(next(), "1|" + text) << "once only";
    DxUnGetLine();
    DX_SAVE save;
    DxSaveActPos(&save);
    EXPECT_EQ(next(), "1|" + text);
    EXPECT_EQ(next(), "300|" + text);
    EXPECT_EQ(DxRestoreActPos(&save), 0);
    EXPECT_EQ(next(), "1|" + text) << "a pair that waited at a place is whole there";
    EXPECT_EQ(next(), "300|" + text);
    EXPECT_EQ(next(), "2|Ä") << "bytes that aren't UTF-8 are of the file's code page";
    EXPECT_EQ(next(3), "1|Ä中") << "the limit counts characters";
}

TEST_F(ReaderTest, StringsOfOldFilesAreOfTheirCodePage) {
    DxFileVersion = 1015;
    DxCodePage = 1250;
    open(dxfLines({{1, "\xE8"}, {300, "\xE8"}, {1, "\xC3\x84"}})); // č in 1250
    EXPECT_EQ(next(), "1|č");
    EXPECT_EQ(next(), "300|\xE8") << "as it stands";
    EXPECT_EQ(DxReadDecoded("\xE8"), "č");
    EXPECT_EQ(next(), "1|Ă„") << "even where its bytes could be UTF-8";
}

TEST_F(ReaderTest, NamesHaveOneForm) {
    DxFileVersion = 1015;
    open(dxfLines({{8, "\\U+0416\\u+D83D\\U+DE00"}, {2, "\\M+182A0"}, {1, "\\U+0416"}, {8, "\\U+D83D"}}));
    EXPECT_EQ(next(), "8|Ж😀");
    EXPECT_EQ(next(), "2|あ") << "of code page 932";
    EXPECT_EQ(next(), "1|\\U+0416") << "a text has its codes taken apart later";
    EXPECT_EQ(next(), "8|\\U+D83D") << "half a character";
}

TEST_F(ReaderTest, TrimChangesWhatIsDeliveredOnly) {
    const std::pair<int, const char*> modes[] = {{0, "1|  a  "}, {1, "1|  a"}, {2, "1|a  "}, {4, "1|a"}};
    for (const auto& [mode, delivered] : modes) {
        DxLineTrim = mode;
        open("  1\n  a  \n");
        EXPECT_EQ(next(), delivered);
        DX_SAVE save;
        DxSaveActPos(&save);
        EXPECT_EQ(save.text.view(), "  a  ");
    }
}

TEST_F(ReaderTest, PlacesAreRegainedAcrossDocuments) {
    open(dxfLines({{1, "a"}, {2, "b"}, {3, "c"}}));
    DxfDocument* const mainFile = DxDocuments.current_;
    next();
    next();
    DxUnGetLine();
    DX_SAVE save;
    DxSaveActPos(&save);
    ASSERT_NE(DxDocuments.open(
                  folder.write("other.dxf", dxfLines({{7, "x"}, {0, "ENDBLK"}, {8, "y"}})).c_str(), "rb"),
              nullptr);
    EXPECT_EQ(DxDocuments.current_->prefix, "other");
    FILE* const other = DxDocuments.currentStream();
    EXPECT_EQ(DxReadSeek(0), 0) << "which forgets the pair handed back";
    EXPECT_EQ(next(), "7|x");
    EXPECT_EQ(DxRestoreActPos(&save), 0);
    EXPECT_EQ(DxDocuments.current_, mainFile);
    EXPECT_EQ(next(), "2|b") << "it still waited to be delivered again";
    {
        const DxfEntityFilePosition there(other, 0, "c", 3);
        EXPECT_EQ(next(), "7|x");
    }
    EXPECT_EQ(DxDocuments.current_, mainFile);
    EXPECT_EQ(next(), "end") << "the ticket has read on to its marker";
    EXPECT_EQ(DxRestoreActPos(nullptr), 3011);
    EXPECT_EQ(DxReadSeek(-1), 9005);
    EXPECT_EQ(DxReadSeek(1000), 9005);
}

TEST_F(ReaderTest, SearchesTakeSettingsFromComments) {
    open(dxfLines(
        {{999, "SCALE 1:50"}, {999, "FORMAT  A3 x"}, {999, "SCALE 1:0"}, {0, "section"}, {0, " SECTION "}}));
    EXPECT_EQ(DxReadUntil(0, "SECTION"), 0);
    EXPECT_EQ(DxFileScale, 0.02);
    EXPECT_EQ(DxFileFormat, "A3");
    EXPECT_EQ(DxReadUntil(0, "SECTION"), 9003);
}

TEST_F(ReaderTest, OneUnknownSectionIsPassedOver) {
    open(dxfLines({{2, "CLASSES"},
                   {0, "CLASS"},
                   {0, "ENDSEC"},
                   {0, "SECTION"},
                   {2, "OTHER"},
                   {0, "SECTION"},
                   {2, "TABLES"}}));
    EXPECT_EQ(DxIgnoreSections(), 0);
    EXPECT_EQ(next(), "2|OTHER");
    EXPECT_EQ(DxReadUntil(0, "SECTION"), 0);
    EXPECT_EQ(DxIgnoreSections(), 0);
    EXPECT_EQ(next(), "2|TABLES");
}

TEST_F(ReaderTest, ProgressGrowsByPercents) {
    DxfGroups groups(5000, DxfGroup{10, "1.0"});
    open(dxfLines(groups));
    std::vector<std::string> shown;
    host::session().onStatus = [&](const std::string& text) { shown.push_back(text); };
    DxPair pair;
    while (DxReadPair(pair, 161, true) == 0) {
    }
    ASSERT_EQ(shown.size(), 100U);
    EXPECT_EQ(shown.front(), "DXF Datei zu 1% eingelesen ...");
    EXPECT_EQ(shown.back(), "DXF Datei zu 100% eingelesen ...");
    DxReadSeek(0);
    DxReadPair(pair, 161, true);
    EXPECT_EQ(shown.size(), 100U) << "it doesn't go back within a pass";
    host::session().onStatus = nullptr;
}

TEST_F(ReaderTest, WhatIsNoDrawingFileIsRefused) {
    EXPECT_EQ(DxReadOpen("/nowhere/at/all.dxf"), 9001);
    EXPECT_EQ(DxReadOpen(folder.path().c_str()), 9001);
    const std::string huge = folder.write("huge.dxf", "");
    std::filesystem::resize_file(huge, 0x80000000U); // sparse
    EXPECT_EQ(DxReadOpen(huge.c_str()), 9001);
    EXPECT_NE(host::session().messageArea.back().find("too large"), std::string::npos);
}

TEST(Numbers, AreThoseOfTheCLibrary) {
    const char* const texts[] = {"0",
                                 "-0",
                                 "1",
                                 "+1.5",
                                 " \t-2.25",
                                 "1.",
                                 ".5",
                                 "-.5e1",
                                 "1e",
                                 "1e+",
                                 "1e5x",
                                 "1,5",
                                 "",
                                 "-",
                                 "+-1",
                                 ".",
                                 "abc",
                                 "1e400",
                                 "-1e400",
                                 "1e-400",
                                 "4.9e-324",
                                 "inf",
                                 "-INFINITY",
                                 "0x1.8p3",
                                 "0x",
                                 "0xg",
                                 "-0X10",
                                 "0x.8",
                                 "infx",
                                 "1e22",
                                 "1e23",
                                 "0.1",
                                 "123456789012345678901234567890",
                                 "0.000000000000000000000000000001",
                                 "9007199254740993",
                                 "3.4028234663852886e38",
                                 "00000000000000000000001.5",
                                 "2.5e-3",
                                 "1e99999999999",
                                 "0e99999999999",
                                 "0x1p99999"};
    for (const char* text : texts) {
        char* end = nullptr;
        const double expected = std::strtod(text, &end);
        double value = -1;
        EXPECT_EQ(DxScanNumber(text, value), static_cast<std::size_t>(end - text)) << text;
        EXPECT_EQ(value, expected) << text;
        EXPECT_EQ(std::signbit(value), std::signbit(expected)) << text;
    }
    EXPECT_TRUE(std::isnan(DxAtof("nan")));
    std::uint64_t seed = 1;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        char text[64];
        const double scale = std::pow(10.0, static_cast<double>(seed % 30) - 15);
        std::snprintf(text, sizeof text, "%.*f", static_cast<int>(seed >> 60),
                      static_cast<double>(seed >> 20) * scale);
        ASSERT_EQ(DxAtof(text), std::strtod(text, nullptr)) << text;
    }
}

TEST(Numbers, OfGroupsAreFinite) {
    EXPECT_EQ(DxfReadConvDouble("1e300"), 0);
    EXPECT_EQ(DxfReadConvDouble("nan"), 0);
    EXPECT_EQ(DxfReadConvDouble("-inf"), 0);
    EXPECT_EQ(DxfReadConvDouble("-1e19"), -1e19);
    EXPECT_EQ(DxHexToU32("1F"), 0x1FU);
    EXPECT_EQ(DxHexToU32(" 123456789aX"), 0x3456789AU) << "a long handle loses its high part";
}

} // namespace

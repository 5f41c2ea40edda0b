#include "host_fixture.h"
#include "os.h"

#include <random>

using testing::StrEq;

TEST(UtCString, BytesOfEveryCodePageBecomeUtf8AndGoBack) {
    struct Row {
        int page;
        const char* bytes;
        const char* utf8;
    };
    const Row rows[] = {{1252, "\x80\xfc", "€ü"},
                        {1250, "\xb3\xf8", "łř"},
                        {1251, "\xc0\xff", "Ая"},
                        {1253, "\xc1", "Α"},
                        {1254, "\xfe", "ş"},
                        {1255, "\xe0", "א"},
                        {1256, "\xc7", "ا"},
                        {1257, "\xe0", "ą"},
                        {1258, "\xd5", "Ơ"},
                        {874, "\xa1", "ก"},
                        {437, "\x84\xe1", "äß"},
                        {850, "\x9b", "ø"},
                        {852, "\x88", "ł"},
                        {28592, "\xb1", "ą"},
                        {28605, "\xa4", "€"},
                        {932, "\x93\xfa\x96{\xb1", "日本ｱ"},
                        {936, "\xd6\xd0", "中"},
                        {949, "\xb0\xa1", "가"},
                        {950, "\xa4\xa4\x5c", "中\\"},
                        {65001, "ü€😀", "ü€😀"},
                        {20866, "\xc1", "а"}};
    for (const Row& row : rows) {
        const UtCString text(std::string_view(row.bytes), row.page);
        EXPECT_THAT(text.c_str(), StrEq(row.utf8)) << row.page;
        EXPECT_EQ(text.Ansi(row.page), row.bytes) << row.page;
        EXPECT_EQ(OsUserCodePageIdToTorvaCodePage(row.page), row.page);
    }
    EXPECT_EQ(OsUserCodePageIdToTorvaCodePage(4711), 1252);
    EXPECT_THAT(UtCString(std::string_view("\xfc"), 4711).c_str(), StrEq("ü"))
        << "unknown pages count as 1252";
    const std::string utf16("a\0\x3d\xd8\0\xde", 6);
    EXPECT_THAT(UtCString(utf16, 1200).c_str(), StrEq("a😀"));
    EXPECT_EQ(UtCString("a😀").Ansi(1200), utf16);
}

TEST(UtCString, BytesWithoutMeaningAreReplacedAndLackingCharactersEscaped) {
    EXPECT_THAT(UtCString(std::string_view("a\xc3(\xed\xa0\x80"), 65001).c_str(),
                StrEq("a\uFFFD(\uFFFD\uFFFD\uFFFD"))
        << "cut sequence, surrogate";
    EXPECT_THAT(UtCString(std::string_view("\x3d\xd8x", 3), 1200).c_str(), StrEq("\uFFFD\uFFFD"));
    EXPECT_EQ(UtCString("ü中😀!").Ansi(1252), "\xfc\\U+4E2D\\U+D83D\\U+DE00!");
    EXPECT_EQ(UtCString("ü日").Ansi(932), "\\U+00FC\x93\xfa");
    EXPECT_EQ(UtCString("plain").Ansi(932), "plain");
    unsigned char byte = 0;
    EXPECT_TRUE(UtCUtf_Unicode2Ansi(0x20ac, 1252, byte));
    EXPECT_EQ(byte, 0x80);
    EXPECT_FALSE(UtCUtf_Unicode2Ansi(0x4e2d, 1252, byte));
    EXPECT_FALSE(UtCUtf_Unicode2Ansi(0x4e2d, 936, byte)) << "two bytes there";
    EXPECT_TRUE(OsIsLeadByte(0x81, 932));
    EXPECT_FALSE(OsIsLeadByte(0xb1, 932)) << "half-width katakana";
    EXPECT_TRUE(OsIsLeadByte(0xb1, 936));
    EXPECT_FALSE(OsIsLeadByte(0xb1, 1252));
}

TEST(UtCString, NoByteOfACodePageIsLost) {
    const auto backAndForth = [](const std::string& bytes, int page) {
        const UtCString text(bytes, page);
        EXPECT_EQ(UtCString(text.str(), UT_CP_UTF8), text) << page;
        EXPECT_EQ(text.Ansi(page), bytes) << page;
        return text;
    };
    std::string all;
    for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
    for (const int page :
         {874,   1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,  1258,  28591, 28592, 28593,
          28594, 28595, 28596, 28597, 28598, 28599, 28600, 28601, 28603, 28604, 28605, 850,   20866})
        backAndForth(all, page);
    EXPECT_THAT(backAndForth("a\x81\xaa", 1253).c_str(), StrEq("a\u0081\uF8AA")) << "undefined bytes";
    EXPECT_THAT(backAndForth("ok\x93", 932).c_str(), StrEq("ok\u0093")) << "half a character";
    for (const int page : {932, 936, 949, 950}) {
        backAndForth("Gr\xc3\xb6\xc3\x9f"
                     "e",
                     page); // UTF-8 where there should be none
        backAndForth("x\xff\xfe", page);
    }
}

TEST(UtCString, RandomBytesAlwaysGiveWellFormedText) {
    std::mt19937 random(7);
    for (const int page : {1252, 1255, 1258, 932, 936, 949, 950, 54936, 65001, 1200}) {
        std::string bytes(997, '\0');
        for (char& c : bytes) c = static_cast<char>(random());
        const UtCString text(bytes, page);
        EXPECT_EQ(UtCString(text.str(), UT_CP_UTF8), text) << page << ": repairing changes nothing any more";
    }
}

TEST(UtText, NumbersCaseAndCutting) {
    EXPECT_TRUE(UtCString(" -12 ").IsNumber());
    for (const char* text : {"", "-", "1.5", "1 2", "0x1"}) EXPECT_FALSE(UtCString(text).IsNumber()) << text;
    EXPECT_EQ(UtCString("AbÄ").Lower(), "abÄ");
    std::string text = " \t a b\r\n";
    UtTrim(text);
    EXPECT_EQ(text, "a b");
    char buffer[] = "  x  ";
    UtTrim(buffer);
    EXPECT_STREQ(buffer, "x");
    char blank[] = " \t";
    UtTrim(blank);
    EXPECT_STREQ(blank, "");
    std::string line = "a|b|c";
    std::string part;
    UtGetNextPart(line, '|', part);
    EXPECT_EQ(part + "," + line, "a,b|c");
    UtGetNextPart(line, ';', part);
    EXPECT_EQ(part + "," + line, "b|c,");
    EXPECT_EQ(UtPos("abc", "c"), 2);
    EXPECT_EQ(UtPos("abc", "d"), -1);
    UtCStringList list;
    EXPECT_TRUE(list.AddUnique("a"));
    EXPECT_FALSE(list.AddUnique("a"));
    list.Empty();
    EXPECT_TRUE(list.AddUnique("a"));
}

TEST(UtText, TranslationsWithOtherConversionsAreNotUsed) {
    EXPECT_EQ(UtFormatMsg("Block %s (%d%%)", "%s: %d", "A", 5), "Block A (5%)");
    for (const char* wrong : {"%d %s", "%s", "%s %d %s", "%s %n", "%s %ld", "%s %*d", "%2$s %1$d", "%s %"})
        EXPECT_EQ(UtFormatMsg(wrong, "%s: %d", "A", 5), "A: 5") << wrong;
    EXPECT_EQ(UtFormat("%s", std::string(5000, 'x').c_str()).Len(), 5000U);
}

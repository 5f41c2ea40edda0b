// The host's texts: parameters, layout, measuring, joining.
#include "text_support.h"

#include "ci_text.h"
#include "ov.h"
#include "services/session.h"
#include "uo.h"

#include <array>
#include <gtest/gtest.h>

namespace {

class HostText : public ::testing::Test {
protected:
    HostText() {
        host::resetSession();
        int code = 211;
        ovpat(&code, &pat_);
    }
    host::Text& add(const std::string& text, double x = 0, double y = 0) {
        EXPECT_EQ(ovtextparamsttf(6, &parm_), 0);
        EXPECT_EQ(ovaddtext(text, x, y), 0);
        return host::openDrawing().find(pat_)->texts.back();
    }
    double widthOf(const std::string& text) {
        double width = 0, height = 0;
        ovtextparamsttf(6, &parm_);
        EXPECT_EQ(ovtextsize(text, &width, &height), 0);
        return width;
    }
    DsCsr cursor(int row) const {
        DsDpatCsr parts;
        parts.SetPatNo(pat_);
        parts.SetElRow(row);
        parts.SetDtype(D_TEXT);
        return {parts, 0};
    }

    InstalledTables tables_;
    int pat_ = 0;
    OV_TEXT_PARM parm_;
};

TEST_F(HostText, TheOriginIsThatPointOfTheBlockUnderRotationAndScale) {
    double scale = 0.5;
    int format = -1; // the sheet stays
    ovform(7, &format, &scale, nullptr);
    parm_.angle = 0.7;
    for (int origin = 1; origin <= 9; ++origin) {
        parm_.origin = origin;
        const host::TextCorners corners = host::textCorners(add("first\nsecond line", 3, 4), 0.5);
        const double u = (origin - 1) % 3 / 2.0, v = (origin - 1) / 3 / 2.0;
        const RPT &a = corners.p[0], &b = corners.p[1], &d = corners.p[3];
        EXPECT_AT((RPT{a.x + u * (b.x - a.x) + v * (d.x - a.x), a.y + u * (b.y - a.y) + v * (d.y - a.y)}), 3,
                  4);
        EXPECT_NEAR(std::hypot(d.x - a.x, d.y - a.y), 2 * 1.88 * 2.5 / 0.5, 1e-9) << "two lines high";
    }
}

TEST_F(HostText, LinesAreJustifiedAndBrokenToTheirLength) {
    parm_.spacing = 1;
    parm_.face = "DejaVu Sans";
    parm_.font = 0;
    for (int just = 0; just <= 2; ++just) {
        parm_.justification = just;
        host::Text text = add("a long line\nshort");
        const auto layout = host::layoutText(text, 1);
        EXPECT_NEAR(layout.lines[1].x - layout.lines[0].x,
                    just * (layout.lines[0].width - layout.lines[1].width) / 2, 1e-9);
    }
    host::Text text = add("the quick brown fox");
    text.lineLength = widthOf("the quick brow");
    const auto broken = host::layoutText(text, 1);
    ASSERT_EQ(broken.lines.size(), 2u);
    EXPECT_EQ(broken.lines[0].text, "the quick");
    EXPECT_EQ(broken.lines[1].text, "brown fox");
    text.lineLength = 0.1;
    EXPECT_EQ(host::layoutText(text, 1).lines.size(), 4u) << "a word is never divided";
    const std::string under = "\x0E", over = "\x0F";
    add("a " + under + "b " + over + "c" + under + " d" + over + " e\nf").lineLength = 0.1;
    OV_TEXT read;
    int row = static_cast<int>(host::openDrawing().find(pat_)->texts.size()) - 1;
    ASSERT_EQ(ovtext(20, 0x8014, pat_, &row, &read), 0);
    const std::vector<UtCString> pieces{"a", under + "b", under + over + "c" + under, over + "d" + over,
                                        "e", "f"};
    EXPECT_EQ(read.shownLines, pieces) << "lines along the text go on behind a break";
}

TEST_F(HostText, WidthsComeFromTablesForNumbersAndFromFilesForFaces) {
    parm_.spacing = 1;
    parm_.font = 9;
    parm_.width = 3;
    EXPECT_NEAR(widthOf("iiii"), 12, 1e-9) << "fixed pitch";
    parm_.font = 0;
    parm_.face = "Liberation Sans";
    parm_.width = 1409; // capital letters of that font are 1409 units high
    EXPECT_NEAR(widthOf("H"), 1479, 1e-6);
    EXPECT_NEAR(widthOf("Hi"), widthOf("H") + widthOf("i"), 1e-6);
    parm_.spacing = 1.5;
    EXPECT_NEAR(widthOf("HH"), 2 * 1479 + 2 * 0.5 * 1409, 1e-6);
    EXPECT_GT(widthOf("\u65E5"), 1000) << "another font serves what this one lacks";
}

/// What is drawn of a glyph beyond the left and the right end of its cell.
std::array<double, 2> overhang(const host::Glyph& glyph, char32_t c) {
    const host::FileGlyph own = host::FontFile::open(glyph.file->path(), glyph.file->faceIndex())->glyph(c);
    const double left = glyph.offset + own.left * glyph.scale;
    return {-left, left + own.ink * glyph.scale - glyph.cell};
}

TEST_F(HostText, GlyphsStandInTheMiddleOfTheirCellAndOffTheirNeighbours) {
    for (const int number : {1, 2, 3, 4, 9, 25}) {
        host::TextFont& font = host::textFonts().resolve({number, "", false, false});
        for (const char32_t c : U"AjMWm1%@&#\u00c6\u00d8\u20ac\u2030\u0416\u0449\u56f3\u2260") {
            if (c == 0) continue;
            const auto beyond = overhang(font.glyph(c), c);
            EXPECT_NEAR(beyond[0], beyond[1], 1e-9) << number << " " << static_cast<unsigned>(c);
            EXPECT_LT(beyond[0], 0.11) << number << " " << static_cast<unsigned>(c);
        }
    }
}

TEST_F(HostText, FilesThatLackACharacterOrAStyle) {
    host::TextFonts& fonts = host::textFonts();
    const auto face = [&](const char* name, bool bold) -> host::TextFont& {
        return fonts.resolve({0, name, bold, false});
    };
    host::TextFont& iso = face("osifont", false);
    EXPECT_EQ(iso.glyph(U'\u0451').index, iso.glyph(U'\u00eb').index) << "a block of its own in that file";
    host::TextFont& sans = face("Liberation Sans", false);
    for (const char32_t c : U"\u9762\u8868\u793a") // the first two are in osifont too
        if (c) EXPECT_EQ(sans.glyph(c).file, sans.glyph(U'\u8bf4').file) << static_cast<unsigned>(c);
    EXPECT_TRUE(face("osifont", true).thickened()) << "it comes in one weight";
    EXPECT_FALSE(face("osifont", false).thickened());
    EXPECT_FALSE(face("Liberation Sans", true).thickened());
    const auto file = [&](const char* name, bool bold) { return face(name, bold).glyph(U'A').file; };
    for (const char* name : {"arialbd", "timesbd", "courbd"})
        EXPECT_TRUE(file(name, false)->bold()) << name << " is the file of a bold face";
    EXPECT_TRUE(file("ariali", false)->italic());
    const auto shows = [&](char32_t c, char32_t sign) {
        return face("Symbol", false).glyph(c).index == face("DejaVu Sans", false).glyph(sign).index;
    };
    for (const auto& [c, sign] : {std::pair{U'a', U'\u03b1'},
                                  {U'W', U'\u03a9'},
                                  {U'\u00a3', U'\u2264'},
                                  {U'\u00b0', U'\u00b0'},
                                  {U'\u00e5', U'\u2211'},
                                  {U'1', U'1'}})
        EXPECT_TRUE(shows(c, sign)) << static_cast<unsigned>(c);
    EXPECT_EQ(file("courier new", false), file("Liberation Mono", false));
    EXPECT_EQ(file("cour", true), file("Liberation Mono", true));
}

TEST_F(HostText, AMissingFaceIsToldOnce) {
    parm_.font = 0;
    parm_.spacing = 1;
    parm_.face = "Arial Narrow";
    const double narrow = widthOf("abc");
    widthOf("def");
    parm_.face = "Arial";
    const double arial = widthOf("RAY");
    parm_.face = "Liberation Sans";
    EXPECT_NEAR(narrow, 0.788 * widthOf("abc"), 1e-9);
    EXPECT_NEAR(arial, parm_.width * (0.722 + 2 * 0.667) / 0.716, 0.01 * arial)
        << "as wide as the face, whose capital letters are higher than the stand-in's";
    const auto& area = host::session().messageArea;
    ASSERT_EQ(area.size(), 2u);
    EXPECT_NE(area[0].find("Arial Narrow"), std::string::npos);
    EXPECT_NE(area[0].find("Liberation Sans"), std::string::npos);
}

TEST_F(HostText, ParametersAreReadBackSavedAndRefused) {
    parm_ = {5, 3, 2, 4, 0.1, 0.2, 8, 1, 1.7, 1.1, "Face", {0, 1, 0, 1, 0, 0, 0, 0}};
    add("x\ny");
    UoTextParSave(1);
    OV_TEXT_PARM bad = parm_;
    bad.height = -1;
    EXPECT_EQ(ovtextparamsttf(6, &bad), 3011);
    bad.height = NAN;
    EXPECT_EQ(ovtextparamsttf(6, &bad), 3011);
    OV_TEXT_PARM other;
    ovtextparamsttf(6, &other);
    UoTextParSave(2);
    OV_TEXT text;
    int row = -1, length = 0;
    ASSERT_EQ(ovtext(24, 1, pat_, &row, nullptr), 0);
    ASSERT_EQ(ovtext(20, 0x8014, pat_, &row, &text), 0);
    EXPECT_EQ(ovtextstringlen(pat_, row, &length), 0);
    EXPECT_EQ(length, 3);
    OV_TEXT_PARM current;
    ovtextparamsttf(5, &current);
    for (const OV_TEXT_PARM* parm : {&text.parm, &current}) {
        EXPECT_EQ(parm->height, 3);
        EXPECT_EQ(parm->width, 2);
        EXPECT_EQ(parm->origin, 8);
        EXPECT_EQ(parm->bits[1] + 2 * parm->bits[3] + 4 * parm->bits[2], 3);
    }
    EXPECT_EQ(ovtext(24, 2, pat_, &row, nullptr), 1005);
}

TEST_F(HostText, TextsOfOneKindAreJoined) {
    parm_.lineDistance = 1.66;
    const RPT first = inkAt(add("one", 0, 0), 0, 0);
    add("two", 0, -5);
    add("three", 0, -10);
    DsCsr target = cursor(-1);
    const DsCsr all[] = {cursor(2), cursor(0), cursor(1)};
    ASSERT_EQ(CiText(0).JoinTexts(all, 3, 4, target), 0);
    const auto& texts = host::openDrawing().find(pat_)->texts;
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].lines, (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_AT(inkAt(texts[0], 0, 0), first.x, first.y);
    EXPECT_AT(inkAt(texts[0], 0, 0, 2), first.x, first.y - 10);

    parm_.height = 4;
    add("another height", 0, -15);
    const DsCsr two[] = {cursor(0), cursor(1)};
    EXPECT_EQ(CiText(0).JoinTexts(two, 2, 4, target), 2360);
    EXPECT_EQ(texts.size(), 2u) << "nothing is lost when they don't fit";
}

TEST(CharacterTables, AreThoseThatTheScriptMakes) {
    const std::string script = std::string(TORVA_SOURCE_DIR) + "/int/dxf/font/make_tables.py --check";
    EXPECT_EQ(std::system(script.c_str()), 0);
}

} // namespace

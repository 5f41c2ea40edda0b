// The layer over the host: element counting, the element queue, messages.
#include "drawing/dump.h"
#include "host/dx_host.h"
#include "import_text.h"
#include "ov.h"
#include "services/session.h"
#include "session/dx_messages.h"
#include "session/dx_protocol.h"
#include "session/dx_unicode.h"
#include "session/session_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

DxfGroups line(const std::string& layer, const std::string& x) {
    return {{8, layer}, {10, "-" + x}, {20, "-1"}, {11, x}, {21, "1"}};
}

TEST(ElementCount, AFullPatternGoesOverToANewOne) {
    ImportOptions options;
    options.configName = "old.conf";
    options.config = "ELEMENTS = 4\nLAYER->PATTERN NAME\n";
    const std::string dump = importText(dxf()
                                            .layer("A", 1)
                                            .layer("B", 2)
                                            .entity("LINE", line("A", "1"))
                                            .entity("LINE", line("B", "2"))
                                            .entity("LINE", line("A", "3"))
                                            .entity("LINE", line("A", "4"))
                                            .entity("LINE", line("B", "5"))
                                            .text(),
                                        options)
                                 .dump;
    const std::size_t full = dump.find("draw 3 1"), next = dump.find("draw 4 1");
    ASSERT_NE(full, std::string::npos);
    ASSERT_NE(next, std::string::npos);
    const std::string between = dump.substr(full, next - full);
    EXPECT_THAT(between, HasSubstr("pattern ")) << "the fifth element stands in another pattern\n" << dump;
    EXPECT_THAT(between, HasSubstr("move 3 1")) << "which continues where the first has got to\n" << dump;
    EXPECT_THAT(between, HasSubstr("\"A\"")) << "and has its attributes\n" << dump;
}

class QueueTest : public testing::Test {
protected:
    QueueTest() {
        host::resetSession();
        DxResetHostState();
        DxResetSessionState(0);
        EXPECT_EQ(DxCiInit(), 0);
        DxCiElemSetPenLt(4, 1);
    }
    ~QueueTest() override { DxResetHostState(); }

    static std::string patterns() {
        EXPECT_EQ(DxCiElemDrawPat(), 0);
        const std::string dump = host::dumpDrawing(host::openDrawing());
        return dump.substr(dump.find("pattern "));
    }
};

TEST_F(QueueTest, AFigureGoesOnInAnotherPattern) {
    DxNewPat(0);
    const int first = DxActPat;
    EXPECT_EQ(Dxovdraw(2, 0, 0), 0);
    EXPECT_EQ(Dxovdraw(1, 1, 1, 4), 0);
    DxNewPat(0);
    EXPECT_EQ(Dxovdraw(1, 2, 2, 4), 0);
    DxActPat = first;
    EXPECT_EQ(Dxovdraw(2, 8, 8), 0);
    EXPECT_EQ(Dxovarc(22, 8, 8, 7, 8), 0);
    EXPECT_EQ(patterns(),
              "pattern 1\n  pen 4 lt 1\n  move 0 0\n  draw 1 1 info 4\n  move 8 8\n  arc cw 8 8 about 7 8\n"
              "pattern 2\n  pen 4 lt 1\n  move 1 1 info 4\n  draw 2 2 info 4\n");
}

TEST_F(QueueTest, HoldsAnyNumberOfElements) {
    DxNewPat(0);
    DxHatchActive = 1; // not counted, so that all go into one pattern
    for (int i = 0; i < 70000; ++i) ASSERT_EQ(Dxovdraw(i % 2 ? 1 : 2, i, 0), 0);
    EXPECT_EQ(DxCiElemDrawPat(), 0);
    const auto& elements = host::openDrawing().find(DxActPat)->elements;
    ASSERT_EQ(elements.size(), 70000U);
    for (int i = 0; i < 70000; i += 999) ASSERT_EQ(elements[static_cast<std::size_t>(i)].x, i);
    EXPECT_EQ(DxPatTable[0].elements, 0);
}

TEST_F(QueueTest, AnUnknownOperationIsAMoveAndTold) {
    DxNewPat(0);
    EXPECT_EQ(DxCiElemAddElem(9, 0, 0, 3, 4, 0), 0);
    EXPECT_THAT(patterns(), HasSubstr("move 3 4"));
    EXPECT_THAT(host::session().messageArea, testing::Contains("Warning: Illegal Element type 9!"));
    DxProtoClose(0, 0);
}

TEST_F(QueueTest, ElementsOfALostPatternAreToldOf) {
    DxNewPat(0);
    EXPECT_EQ(Dxovdraw(2, 0, 0), 0);
    int pattern = DxActPat;
    EXPECT_EQ(Dxovpat(17, &pattern), 0);
    EXPECT_NE(DxCiElemDrawPat(), 0);
    EXPECT_EQ(DxCiElemDrawPat(), 0) << "they are gone";
}

TEST(Transparency, CountsOpacity) {
    DX_ENTITY_BASE_TYPE base{};
    int percent = -1;
    EXPECT_EQ(DxCiTransparencyToCAD(base, &percent), 3011);
    EXPECT_EQ(percent, 0);
    const std::pair<int, int> values[] = {{0x2000000, 100}, {0x20000FF, 0}, {0x200007F, 50}, {-1, 0}};
    for (const auto& [value, expected] : values) {
        base.transparency = value;
        EXPECT_EQ(DxCiTransparencyToCAD(base, &percent), 0);
        EXPECT_EQ(percent, expected) << value;
    }
    int value = -1;
    EXPECT_EQ(DxCiTransparencyToDXF(0, &value), 0);
    EXPECT_EQ(value, 0);
    for (int p = 1; p <= 100; ++p) {
        DxCiTransparencyToDXF(p, &base.transparency);
        DxCiTransparencyToCAD(base, &percent);
        EXPECT_EQ(percent, p);
    }
}

TEST(Messages, ABadTranslationIsNotUsed) {
    const TempDir folder;
    folder.write("cad_msg.en.txt", "5703\tBlock %s isn't defined!\n5705\tEnded with %s!\n5721\tcolour %d\n");
    host::resetSession();
    host::session().language = "en";
    host::session().cataloguePaths = {folder.path()};
    EXPECT_EQ(DxMsg(5703, "A"), "Block A isn't defined!");
    EXPECT_EQ(DxMsg(5705, 7), "Mit Fehler 7 beendet!");
    EXPECT_EQ(DxMsg(5721, 1, 2), "DXF-Farbe 1 unbekannt, wird zu Stift 2.");
    EXPECT_STREQ(DxMsgDefault(4711), "");
    host::resetSession();
}

TEST(HostText, ResolvesEscapes) {
    DxCodePage = 1252;
    EXPECT_EQ(DxHostText("\xC4 \\U+4E2D\\u+D83D\\U+DE00"), "\xC3\x84 \xE4\xB8\xAD\xF0\x9F\x98\x80");
    EXPECT_EQ(DxHostText("\\U+D83D \\U+12 \\U+00G0 \\U"), "\\U+D83D \\U+12 \\U+00G0 \\U")
        << "what is none stays";
}

} // namespace

// Whole imports through DxfSelect: outcomes, protocol, what a session leaves behind.
#include "drawing/dump.h"
#include "dx_select.h"
#include "import_text.h"
#include "services/failure.h"
#include "services/session.h"
#include "session/dx_documents.h"
#include "session/session_state.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::Not;

DxfGroups line(const std::string& x1, const std::string& y1, const std::string& x2, const std::string& y2,
               const std::string& layer = "0") {
    return {{8, layer}, {10, x1}, {20, y1}, {11, x2}, {21, y2}};
}

/// Extents about the origin in the header: with &DxfExt they count, and nothing is measured or moved.
const DxfGroups EXTENTS = {{9, "$EXTMIN"}, {10, "-9"}, {20, "-9"}, {9, "$EXTMAX"}, {10, "9"}, {20, "9"}};

DxfText smallDrawing() {
    return dxf().header("AC1015", EXTENTS).entity("LINE", line("-5", "-3", "5", "3"));
}

int scaledTo(const ImportResult& result, const std::string& scale) {
    EXPECT_THAT(result.dump, HasSubstr("scale " + scale + " "));
    return static_cast<int>(result.stat);
}

TEST(Outcome, IsToldInWordsAndInTheMacroVariable) {
    const std::string whole = smallDrawing().text();
    const std::string random = "\x7F"
                               "ELF\x02\x01\x01\0\0\0\n\n\xFF\xFE\0\0\n\n\n"; // cut at its first 0 byte
    std::string utf16;
    for (const char c : whole) (utf16 += c) += '\0';
    struct Case {
        const char* what;
        std::string text;
        double stat;
        bool draws; ///< what stands ahead of the error stays
        const char* words;
    };
    const Case cases[] = {
        {"whole", whole, 0, true, "erfolgreich eingelesen!"},
        {"lines ended by CRLF", smallDrawing().lineEnd("\r\n").text(), 0, true, "erfolgreich eingelesen!"},
        {"empty", "", 9003, false, "Keine Section gefunden!"},
        {"random", random, 9003, false, "Keine Section gefunden!"},
        {"UTF-16", utf16, 9003, false, "Keine Section gefunden!"},
        {"cut in ENTITIES", whole.substr(0, whole.size() - 12), 9003, true,
         "End-Of-File vor logischem Ende -> Fehler!"},
        {"no HEADER", dxf().entity("LINE", line("-5", "-3", "5", "3")).text(), 0, true,
         "Warnung: Keine HEADER-Section gefunden..."},
        {"another section between", smallDrawing().section("CLASSES", {{0, "CLASS"}}).text(), 0, true,
         "erfolgreich eingelesen!"},
        {"junk behind EOF", whole + "junk\n\n\n999\nx\n", 0, true, "erfolgreich eingelesen!"},
    };
    for (const Case& c : cases) {
        const ImportResult result = importText(c.text, {.numbers = {{"&DxfExt", 1}}});
        EXPECT_EQ(result.stat, c.stat) << c.what;
        EXPECT_TRUE(result.hasLine(c.words)) << c.what << "\n" << result.protocol;
        EXPECT_EQ(result.dump.find("draw 5 3") != std::string::npos, c.draws) << c.what;
    }
}

TEST(Outcome, OfFilesThatCannotBeRead) {
    const TempDir folder;
    ImportResult result = importFile(folder, "missing.dxf");
    EXPECT_EQ(result.stat, 9001);
    EXPECT_TRUE(result.hasLine("Datei " + folder.file("missing.dxf") + " konnte nicht geöffnet werden!"));
    EXPECT_EQ(importFile(folder, ".").stat, 9001);
    EXPECT_NE(importFile(folder, "").stat, 0) << "the user refused to name a file";
    folder.write("cut.dxf", "  0\nSECTION\n  2");
    result = importFile(folder, "cut.dxf");
    EXPECT_EQ(result.stat, 9003);
    EXPECT_TRUE(result.hasLine("The reading ended in line 3 of file " + folder.file("cut.dxf") + "."))
        << result.protocol;
    EXPECT_FALSE(DxDocuments.byName.empty());
    importText(smallDrawing().text());
    EXPECT_TRUE(DxDocuments.byName.empty()) << "the next session closes what an error left open";
}

TEST(Outcome, BinaryDxfIsKnownByItsFirstLine) {
    const std::string pairs("\0SECTION\0\2ENTITIES\0\0POINT\0\0ENDSEC\0\0EOF", 38);
    const TempDir folder;
    folder.write("a.bin", std::string("AutoCAD Binary DXF\r\n\x1A\0", 22) + pairs + '\0');
    EXPECT_EQ(importFile(folder, "a.bin").stat, 0);
    EXPECT_FALSE(std::filesystem::exists(DxFileName.c_str())) << "the text made of it is gone";
    EXPECT_EQ(DxSourceFileName, folder.file("a.bin").c_str());
}

TEST(Outcome, AStoppedImportKeepsWhatWasDrawn) {
    DxfText drawing = dxf().header("AC1015", EXTENTS);
    for (int i = 0; i < 300; ++i) drawing.entity("LINE", line("-1", "-1", "1", std::to_string(i)));
    const TempDir folder;
    folder.write("in.dxf", drawing.text());
    host::resetSession();
    host::session().wantsAbort = [] { return true; };
    const ImportResult result =
        importFile(folder, "in.dxf", {.numbers = {{"&DxfExt", 1}}, .keepsSession = true});
    EXPECT_EQ(result.stat, 9009);
    EXPECT_TRUE(result.hasLine("aborted .. "));
    EXPECT_THAT(result.dump, HasSubstr("draw 1 50"));
    EXPECT_THAT(result.dump, Not(HasSubstr("draw 1 250")));
}

TEST(Outcome, ARecoveredTwinIsReadAndTold) {
    const TempDir folder;
    folder.write("a_recovered.dxf", smallDrawing().text());
    const ImportResult result = importFile(folder, "a.dxf");
    EXPECT_EQ(result.stat, 0);
    ASSERT_EQ(host::session().dialogs.size(), 1U);
    EXPECT_THAT(host::session().dialogs[0], HasSubstr("Korrigierte Datei(en):\n" + folder.file("a.dxf")));
}

TEST(Protocol, OneRunAfterTheOther) {
    const TempDir folder;
    folder.write("in.dxf", dxf().text()); // a warning in each pass, told once
    importFile(folder, "in.dxf");
    const std::string one = importFile(folder, "in.dxf").protocol;
    const std::string rule(42, '-');
    const std::string name = "DXF-IMPORT: " + folder.file("in.dxf") + "\n";
    EXPECT_EQ(one.find(rule + "\n"), 0U);
    EXPECT_THAT(one, HasSubstr(rule + "\n" + name + "DATUM: "));
    EXPECT_THAT(one, HasSubstr("erfolgreich eingelesen!\n" + rule + "\n" + rule + "\n" + name)) << "appended";
    const std::string warning = "Warnung: Keine HEADER-Section gefunden...\n";
    const std::size_t first = one.find(warning);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(one.find(warning, first + 1), std::string::npos) << "again in the next run";
    EXPECT_EQ(one.find(warning, one.find(warning, first + 1) + 1), std::string::npos) << "but once in each";
}

TEST(Protocol, ABadConfigurationEndsTheRunWithoutAName) {
    ImportOptions options;
    options.config = "#FLAGS-START\n"; // no #EOF
    const ImportResult result = importText(smallDrawing().text(), options);
    EXPECT_NE(result.stat, 0);
    EXPECT_TRUE(result.hasMessage("Error in Configurefile"));
    EXPECT_THAT(result.protocol, Not(HasSubstr("DXF-IMPORT")));
    EXPECT_THAT(result.protocol, HasSubstr("beendet!"));
}

TEST(Protocol, ARunGoesOnWithoutIt) {
    const TempDir folder;
    folder.write("in.dxf", smallDrawing().text());
    folder.write("dxf.proto/in_the_way", "");
    const ImportResult result = importFile(folder, "in.dxf");
    EXPECT_EQ(result.stat, 0);
    EXPECT_TRUE(result.hasMessage("Kann Protokoll-Datei '" + folder.file("dxf.proto") + "' nicht anlegen!"));
}

TEST(Session, LeavesNothingForTheNext) {
    const std::string a = smallDrawing().text();
    const std::string b =
        dxf()
            .header("AC1032", {{9, "$DWGCODEPAGE"}, {3, "ANSI_932"}, {9, "$INSUNITS"}, {70, "6"}})
            .layer("L", -3)
            .entity("CIRCLE", {{8, "M"}, {10, "100"}, {20, "200"}, {40, "7"}, {62, "5"}})
            .text();
    const ImportResult first = importText(a);
    importText(b, {.in3d = true,
                   .config = "#FLAGS-START\nREAD_LAYER=ATTR\nALL_LAYERS=1\nMODUS_3D=2\n#FLAGS-END\n#EOF\n"});
    importText(a.substr(0, a.size() / 2));
    EXPECT_EQ(importText(a).dump, first.dump);
}

TEST(Session, GivesPensUnitsAndMacroVariablesBack) {
    host::resetSession();
    host::session().pen = 7;
    host::session().lineType = 3;
    ImportOptions options;
    options.keepsSession = true;
    options.numbers = {{"&DxfUnit", 3}, {"&DxfInsbase", 1}, {"&DxfVerbose", 1}};
    options.texts = {{"$DxfUnit", "mm"}, {"$DxfMatrix", "0,0,1"}};
    host::openDrawing().unit = 5;
    const ImportResult result = importText(smallDrawing().text(), options);
    EXPECT_EQ(host::session().pen, 7);
    EXPECT_EQ(host::session().lineType, 3);
    EXPECT_EQ(host::openDrawing().unit, 5);
    EXPECT_THAT(result.dump, HasSubstr("draw 0.005 0.003")) << "read in millimetres, then shown in metres";
    EXPECT_TRUE(result.hasMessage("Start DXF-Import"));
    EXPECT_TRUE(result.hasMessage("Ende  DXF-Import"));
    EXPECT_EQ(host::session().texts["$DxfUnit"], "");
    EXPECT_EQ(host::session().numbers["&DxfInsbase"], 0);
    EXPECT_EQ(host::session().texts["$DxfMatrix"], "0,0,1") << "stands until the host changes it";
}

TEST(Session, TheMatrixVariableIsAnExtrusionDirection) {
    ImportOptions options;
    options.texts["$DxfMatrix"] = "0,0,-1";
    const ImportResult mirrored = importText(smallDrawing().text(), options);
    EXPECT_TRUE(mirrored.hasLine("Matrix - X0 Y0 Z-1"));
    EXPECT_THAT(mirrored.dump, HasSubstr("move 5 -3\n  draw -5 3"));
    options.texts["$DxfMatrix"] = "0,0";
    EXPECT_THAT(importText(smallDrawing().text(), options).dump, HasSubstr("move -5 -3\n  draw 5 3"));
}

TEST(Scale, IsTheFirstAtWhichTheDrawingFits) {
    const auto drawing = [](const std::string& half) {
        return dxf().entity("LINE", line("-" + half, "-1", half, "1")).text();
    };
    EXPECT_EQ(scaledTo(importText(drawing("841")), "1"), 0);
    EXPECT_EQ(scaledTo(importText(drawing("842")), "0.5"), 0);
    EXPECT_EQ(scaledTo(importText(drawing("2100")), "0.4"), 0);
    EXPECT_EQ(scaledTo(importText(drawing("8000")), "0.1"), 0);
    EXPECT_EQ(scaledTo(importText(drawing("1e9")), "1e-05"), 0) << "the last candidate where none will do";
    ImportOptions options;
    options.texts["$DxfLoadInto"] = "True";
    EXPECT_EQ(scaledTo(importText(drawing("8000"), options), "1"), 0);
    EXPECT_EQ(scaledTo(importText("999\nSCALE 1:200\n999\nFORMAT A3\n" + drawing("10")), "0.005"), 0);
    const ImportResult refused = importText("999\nSCALE -1:2\n999\nFORMAT A3\n" + drawing("10"));
    EXPECT_TRUE(refused.hasMessage("Scale too small!"));
    EXPECT_TRUE(refused.stat == 2030 || refused.stat == 3012);
}

TEST(Scale, TheMiddleOfTheDrawingIsItsOrigin) {
    const ImportResult both = importText(dxf().entity("LINE", line("10", "20", "30", "60")).text());
    EXPECT_THAT(both.dump, HasSubstr("move -10 -20\n  draw 10 20"));
    EXPECT_TRUE(both.hasLine("Verschiebung X:20.000000 Y:40.000000"));
    const ImportResult one = importText(dxf().entity("LINE", line("10", "-5", "30", "5")).text());
    EXPECT_THAT(one.dump, HasSubstr("move -10 -5"));
    EXPECT_THAT(one.protocol, Not(HasSubstr("Verschiebung")));
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    const std::string based = dxf()
                                  .header("AC1015", {{9, "$INSBASE"}, {10, "1"}, {20, "2"}})
                                  .entity("LINE", line("10", "20", "30", "60"))
                                  .text();
    EXPECT_THAT(importText(based, options).dump, HasSubstr("move 9 18\n  draw 29 58"));
}

/// Each call of the host fails in turn. Whatever comes of the import, the host has its settings back, and the
/// next import is like the first.
TEST(Session, SurvivesEachFailureOfTheHost) {
    const std::string drawing =
        dxf()
            .header("AC1015")
            .layer("A", 3)
            .entity("SOLID", {{8, "A"},
                              {10, "0"},
                              {20, "0"},
                              {11, "1"},
                              {21, "0"},
                              {12, "0"},
                              {22, "1"},
                              {13, "1"},
                              {23, "1"}})
            .entity("ARC", {{8, "B"}, {10, "0"}, {20, "0"}, {40, "2"}, {50, "0"}, {51, "90"}})
            .text();
    ImportOptions options;
    options.config = "#FLAGS-START\nREAD_LAYER=ATTR\n#FLAGS-END\n#EOF\n";
    const std::string expected = importText(drawing, options).dump;
    const TempDir folder;
    folder.write("in.dxf", drawing);
    options.keepsSession = true;
    int pensLost = 0;
    for (long n = 1; n < 5000; ++n) {
        host::resetSession();
        host::session().pen = 7;
        host::failCall(n);
        importFile(folder, "in.dxf", options);
        const bool hasFailed = host::callCount() >= n;
        host::failCall(0);
        if (!hasFailed) break;
        pensLost += host::session().pen != 7;
        ASSERT_LT(n, 4999);
        if (n % 10) continue; // a clean run behind each takes long
        ASSERT_EQ(importText(drawing, {.config = options.config}).dump, expected) << "behind failure " << n;
    }
    EXPECT_LE(pensLost, 1) << "only where giving the pen back is the call that fails";
}

TEST(EntryDeathTest, StartsOnceAndOnlyForItsOperations) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto shown = [](int operation) {
        host::resetSession();
        DxfSelect(0, operation, "");
        return host::session().statusLine;
    };
    const auto check = [&] {
        const bool isRight = shown(0).empty() && shown(1000).empty() && shown(-1).empty() &&
                             shown(500) == "DXF 1700 - 15" && shown(500).empty();
        std::exit(isRight ? 0 : 1);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

TEST(Entry, RemembersTheNamesOfTheLastRun) {
    host::resetSession();
    ImportOptions options;
    options.keepsSession = true;
    options.texts = {{"$DxfActName", "last.dxf"}, {"$DxfActConf", ""}};
    importText(smallDrawing().text(), options);
    EXPECT_EQ(host::session().partner["cad/glob/dxf.act_name"], "last.dxf");
    EXPECT_EQ(host::session().partner.count("cad/glob/dxf.act_config"), 0U) << "an empty one isn't stored";
}

} // namespace

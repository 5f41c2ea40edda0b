#include "drawing/host_state.h"
#include "drawn.h"
#include "dx_report.h"
#include "services/failure.h"
#include "services/session.h"

#include <gtest/gtest.h>

namespace {

DxfGroups line(double x0, double x1) {
    return at(10, {x0, 0}) + at(11, {x1, 0});
}

DxfGroups extents(double min, double max) {
    return DxfGroups{{9, "$EXTMIN"}} + at(10, {min, 0, 0}) + DxfGroups{{9, "$EXTMAX"}} + at(10, {max, 0, 0});
}

ImportOptions withNumber(const std::string& name, double value) {
    ImportOptions options;
    options.numbers[name] = value;
    return options;
}

/// &DxfPaper: 0 model space, 1 paper space, 2 both.
ImportOptions ofSpace(int space) {
    ImportOptions options = unshifted();
    options.numbers["&DxfParseExt"] = 0;
    options.numbers["&DxfPaper"] = space;
    return options;
}

TEST(Extents, AreMeasuredAndTheMiddleBecomesTheOrigin) {
    EXPECT_EQ(drawn(dxf().header("AC1015", extents(0, 1000)).entity("LINE", line(10, 20)), {}),
              "move -5 0\ndraw 5 0\n")
        << "the file's extents don't count unless they are asked for";
}

TEST(Extents, OfTheHeaderRuleWhenTheyAreUsable) {
    const auto shifted = [](const DxfGroups& header) {
        return drawn(dxf().header("AC1015", header).entity("LINE", line(10, 20)), withNumber("&DxfExt", 1));
    };
    EXPECT_EQ(shifted(extents(0, 1000)), "move -490 0\ndraw -480 0\n");
    EXPECT_EQ(shifted(extents(1e20, -1e20)), "move -5 0\ndraw 5 0\n");
    EXPECT_EQ(shifted(DxfGroups{{9, "$EXTMIN"}} + at(10, {0, 0, 0})), "move -5 0\ndraw 5 0\n");
    EXPECT_EQ(shifted(DxfGroups{{9, "$EXTMIN"}, {10, "nan"}, {20, "0"}, {9, "$EXTMAX"}} + at(10, {9, 9, 9})),
              "move -5 0\ndraw 5 0\n");
}

TEST(Spaces, AreReadAsTheOptionSays) {
    const DxfText both =
        dxf().header("AC1015").entity("LINE", line(1, 2)).entity("LINE", DxfGroups{{67, "1"}} + line(3, 4));
    EXPECT_EQ(drawn(both, ofSpace(0)), "move 1 0\ndraw 2 0\n");
    EXPECT_EQ(drawn(both, ofSpace(1)), "move 3 0\ndraw 4 0\n");
    EXPECT_EQ(drawn(both, ofSpace(2)), "move 1 0\ndraw 2 0\nmove 3 0\ndraw 4 0\n");
    const DxImportReport report = DxGetImportReport();
    EXPECT_EQ(report.entities.at("LINE").read, 2) << "read twice, counted once";
    EXPECT_EQ(report.entities.at("LINE").drawn, 2);
}

TEST(Section, MissingIsAWarningAndEmptyIsFine) {
    const std::string noEntities = dxfLines({{0, "SECTION"},
                                             {2, "HEADER"},
                                             {0, "ENDSEC"},
                                             {0, "SECTION"},
                                             {2, "OBJECTS"},
                                             {0, "ENDSEC"},
                                             {0, "EOF"}});
    const ImportResult missing = importText(noEntities);
    EXPECT_EQ(missing.stat, 0);
    for (const char* name : {"TABLE", "BLOCKS", "ENTITY"}) {
        EXPECT_TRUE(missing.hasLine("Warnung: Keine " + std::string(name) + "-Section gefunden..."))
            << missing.protocol;
    }
    const ImportResult empty = importText(dxf().header("AC1015").text());
    EXPECT_EQ(empty.stat, 0);
    EXPECT_EQ(elementsOf(empty.dump), "");
}

TEST(Section, UnknownKindsCostOnlyTheirLines) {
    DxfText text = dxf().header("AC1015");
    for (int i = 0; i < 3000; ++i)
        text.entity("KIND" + std::to_string(i), {{8, "A"}, {10, "5e5"}, {100, "LINE"}, {0x7fffffff, "x"}});
    EXPECT_EQ(drawn(text.entity("LINE", line(1, 2))), "move 1 0\ndraw 2 0\n");
    const DxImportReport report = DxGetImportReport();
    EXPECT_LE(report.entities.size(), 1010u) << "names are bounded";
    EXPECT_EQ(report.entities.at("KIND7").skipped, 1);
    EXPECT_EQ(report.entities.at("…").read, 2000);
}

TEST(Section, RegionsAreCountedOnceInTwoDimensions) {
    const DxfText text = dxf()
                             .header("AC1015")
                             .entity("REGION", {{1, "x"}})
                             .entity("BODY", {})
                             .entity("REGION", {})
                             .entity("LINE", line(1, 2));
    const std::string warning = "Warnung: 2 REGION-Objekte wurden beim 2D Lesen ignoriert!";
    EXPECT_TRUE(importText(text.text()).hasLine(warning));
    ImportOptions in3d;
    in3d.in3d = true;
    EXPECT_FALSE(importText(text.text(), in3d).hasLine(warning));
}

TEST(Section, TheReportSaysWhatBecameOfTheEntities) {
    importText(
        dxf()
            .header("AC1027",
                    DxfGroups{
                        {9, "$INSUNITS"}, {70, "6"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_1250"}, {9, "$INSBASE"}} +
                        at(10, {1, 2, 3}))
            .layer("OFF", -1)
            .entity("LINE", line(1, 2))
            .entity("LINE", DxfGroups{{8, "OFF"}} + line(1, 2))
            .entity("MLINE", {})
            .entity("CIRCLE", at(40, {0}))
            .text());
    const DxImportReport report = DxGetImportReport();
    EXPECT_EQ(report.version, "AC1027");
    EXPECT_EQ(report.insUnits, 6);
    EXPECT_EQ(report.codePage, 1250);
    EXPECT_EQ(report.insBase.z, 3);
    const auto isCount = [&](const char* name, long read, long drawnCount, long skipped) {
        const DxEntityTally& count = report.entities.at(name);
        return count.read == read && count.drawn == drawnCount && count.skipped == skipped;
    };
    EXPECT_TRUE(isCount("LINE", 2, 1, 1));
    EXPECT_TRUE(isCount("MLINE", 1, 0, 1));
    EXPECT_TRUE(isCount("CIRCLE", 1, 0, 1));
    EXPECT_EQ(report.entities.size(), 3u);
    importText(dxf().text());
    EXPECT_TRUE(DxGetImportReport().entities.empty()) << "each import starts a new report";
}

TEST(Section, TheReportCountsPartsWithTheirWhole) {
    const DxfGroups vertex = DxfGroups{{0, "VERTEX"}} + at(10, {1, 2});
    const DxfGroups parts = vertex + at(20, {5}) + vertex + DxfGroups{{0, "SEQEND"}};
    importText(dxf()
                   .header("AC1015")
                   .block("B", DxfGroups{{0, "LINE"}} + line(1, 2) + DxfGroups{{0, "CIRCLE"}})
                   .entity("POLYLINE", parts)
                   .entity("POLYLINE", DxfGroups{{67, "1"}} + parts)
                   .entity("INSERT", DxfGroups{{2, "B"}, {66, "1"}, {0, "ATTRIB"}, {0, "SEQEND"}})
                   .text());
    const auto counts = DxGetImportReport().entities;
    EXPECT_EQ(counts.at("VERTEX").read, 4);
    EXPECT_EQ(counts.at("VERTEX").drawn, 2);
    EXPECT_EQ(counts.at("SEQEND").read, 3);
    EXPECT_EQ(counts.at("ATTRIB").read, 1);
    EXPECT_EQ(counts.at("INSERT").drawn, 1) << "its line is drawn, though its circle has no size";
    EXPECT_EQ(counts.count("LINE"), 0u) << "what stands in blocks isn't counted";
}

TEST(Section, TheUserIsAskedEveryHundredEntities) {
    DxfText text = dxf().header("AC1015");
    for (int i = 0; i < 150; ++i) text.entity("LINE", line(i, i + 1));
    TempDir folder;
    folder.write("a.dxf", text.text());
    host::resetSession();
    int asked = 0;
    host::session().wantsAbort = [&] { return ++asked == 2; };
    ImportOptions options = withNumber("&DxfInsbase", 1);
    options.keepsSession = true;
    const ImportResult result = importFile(folder, "a.dxf", options);
    EXPECT_EQ(result.stat, 9009);
    const std::string elements = elementsOf(result.dump);
    // 150 entities measured, so the second question comes behind the fiftieth that is drawn.
    EXPECT_EQ(std::count(elements.begin(), elements.end(), '\n'), 100);
}

TEST(Section, StoppedWhileItIsMeasuredDrawsNothing) {
    DxfText text = dxf().header("AC1015");
    for (int i = 0; i < 250; ++i) text.entity("LINE", line(i, i + 1));
    TempDir folder;
    folder.write("a.dxf", text.text());
    host::resetSession();
    int asked = 0;
    host::session().wantsAbort = [&] { return ++asked == 1; };
    ImportOptions options = unshifted();
    options.keepsSession = true;
    const ImportResult result = importFile(folder, "a.dxf", options);
    host::resetSession();
    EXPECT_EQ(result.stat, 9009);
    EXPECT_EQ(elementsOf(result.dump), "");
}

TEST(Section, RegionsOfBothSpacesAreCountedOnce) {
    DxfText text = dxf().header("AC1015").block("B", {{0, "REGION"}});
    text.entity("REGION", {}).entity("REGION", {{67, "1"}});
    text.entity("INSERT", DxfGroups{{2, "B"}} + at(10, {0, 0}));
    text.entity("INSERT", DxfGroups{{2, "B"}, {67, "1"}} + at(10, {0, 0}));
    const ImportResult result = importText(text.text(), ofSpace(2));
    EXPECT_TRUE(result.hasLine("Warnung: 4 REGION-Objekte wurden beim 2D Lesen ignoriert!"))
        << result.protocol;
}

TEST(Section, ACommentSettlesSheetAndScale) {
    const std::string comment = dxfLines({{999, "SCALE 1:50"}, {999, "FORMAT A3"}});
    importText(comment + dxf().header("AC1015").entity("LINE", line(0, 1)).text(), unshifted());
    EXPECT_EQ(host::openDrawing().format, 4);
    EXPECT_DOUBLE_EQ(host::openDrawing().scale, 0.02);
}

TEST(Section, TheUserIsAskedWithinALongPolyline) {
    DxfText text = dxf().header("AC1015");
    DxfGroups vertices;
    for (int i = 0; i < 5000; ++i) vertices = std::move(vertices) + at(10, {1.0 * i, 0});
    text.entity("LWPOLYLINE", vertices);
    TempDir folder;
    folder.write("a.dxf", text.text());
    host::resetSession();
    int asked = 0;
    host::session().wantsAbort = [&] { return ++asked == 7; }; // five times while it is measured
    ImportOptions options = unshifted();
    options.keepsSession = true;
    const ImportResult result = importFile(folder, "a.dxf", options);
    EXPECT_EQ(result.stat, 9009);
    const std::string elements = elementsOf(result.dump);
    EXPECT_NE(elements.find("draw 1500 0"), std::string::npos) << "what was drawn stays";
    EXPECT_EQ(elements.find("draw 4000 0"), std::string::npos);
}

TEST(Section, ACutFileKeepsWhatWasDrawn) {
    const ImportResult result = importText(
        dxfLines(
            {{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {10, "1"}, {11, "2"}, {0, "LINE"}, {10, "5"}}),
        withNumber("&DxfInsbase", 1));
    EXPECT_EQ(result.stat, 9003);
    EXPECT_TRUE(result.hasLine("End-Of-File vor logischem Ende -> Fehler!")) << result.protocol;
    EXPECT_EQ(elementsOf(result.dump), "move 1 0\ndraw 2 0\n")
        << "though the measuring pass met the end, too";
}

std::string everyKind() {
    const DxfGroups corners = at(10, {0, 0, 1}) + at(11, {4, 0, 1}) + at(12, {0, 4, 1}) + at(13, {4, 4, 1});
    return dxf()
        .header("AC1015", extents(0, 9))
        .layer("A", 3)
        .record("STYLE", {{2, "S"}, {3, "TXT.SHX"}})
        .record("DIMSTYLE", {{2, "D"}, {140, "2.5"}})
        .record("VIEW", {{2, "V"}, {10, "1"}})
        .entity("LINE", line(0, 9))
        .entity("POINT", at(10, {1, 1}))
        .entity("ARC", at(10, {0, 0}) + at(40, {3}) + at(50, {0}) + at(51, {90}))
        .entity("CIRCLE", at(10, {2, 2}) + at(40, {2}) + at(210, {0, 0.6, 0.8}))
        .entity("ELLIPSE", at(10, {0, 0}) + at(11, {5, 0, 0}) + at(40, {0.5}))
        .entity("SOLID", DxfGroups{{8, "A"}} + corners)
        .entity("LWPOLYLINE",
                at(10, {0, 0}) + at(40, {2}) + at(41, {1}) + at(42, {1}) + at(10, {9, 0}) + at(10, {9, 9}))
        .entity("SPLINE", at(74, {3}) + at(11, {0, 0, 1}) + at(11, {4, 4, 2}) + at(11, {8, 0, 3}))
        .text();
}

TEST(Section, AFileMayBeCutBehindAnyLine) {
    const std::string text = everyKind();
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', end + 1)) {
        const double stat = importText(text.substr(0, end + 1)).stat;
        ASSERT_TRUE(stat == 0 || stat == 9003) << "cut at " << end << ": " << stat;
    }
}

TEST(Section, AnyCallOfTheHostMayFail) {
    TempDir folder;
    folder.write("a.dxf", everyKind());
    for (long n = 1;; ++n) {
        host::resetSession();
        ImportOptions options = withNumber("&DxfModus", n % 2 ? 2 : 3);
        options.config = flags("READ_LAYER=ATTR\nLINE_AS_HATCH=1\n");
        options.numbers["&Dxf3dLines"] = 1;
        options.keepsSession = true;
        host::failCall(n);
        const ImportResult result = importFile(folder, "a.dxf", options);
        const bool reached = host::callCount() >= n;
        host::failCall(0);
        if (!reached) break;
        ASSERT_LT(n, 100000);
    }
}

TEST(Section, AnImportDoesNotColourTheNextOne) {
    const std::string plain =
        dxf().header("AC1015").entity("LINE", line(1, 2)).entity("CIRCLE", at(40, {3})).text();
    const std::string first = importText(plain).dump;
    importText(everyKind(), withNumber("&DxfExt", 1));
    EXPECT_EQ(importText(plain).dump, first);
}

TEST(Section, LayersBecomePatterns) {
    ImportOptions options = unshifted();
    options.config = flags("READ_LAYER=LAYER\n");
    const std::string dump = importText(dxf()
                                            .header("AC1015")
                                            .layer("A", 1)
                                            .layer("B", 2)
                                            .entity("LINE", DxfGroups{{8, "B"}} + line(1, 2))
                                            .entity("LINE", DxfGroups{{8, "NEW"}} + line(3, 4))
                                            .text(),
                                        options)
                                 .dump;
    EXPECT_NE(dump.find("level \"B\""), std::string::npos) << dump;
    EXPECT_NE(dump.find("level \"NEW\""), std::string::npos) << dump;
    EXPECT_EQ(dump.find("level \"A\""), std::string::npos) << "a pattern that stays empty is deleted";
}

} // namespace

// Blocks and their INSERTs, the template of layers and line types, the kept header.
#include "exported.h"

namespace {

const std::string BLOCKS = "LAYER_ELEM=ATTR\nWRITE_BLOCKS=YES\n";

TEST_F(Export, PatternsBecomeBlocks) {
    addPattern({moveTo(0, 0), drawTo(4, 0)}, "door", "A");
    addPattern({moveTo(0, 0), drawTo(9, 0)}, "DOOR", "B");
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, BLOCKS));
        EXPECT_EQ(file.errors(), "") << version;
        ASSERT_EQ(file.count(0, "INSERT"), 2u) << version;
        const std::string first = valueOf(file.first(0, "INSERT"), 2);
        const std::string second = valueOf(file.first(0, "INSERT", 1), 2);
        EXPECT_EQ(second, "DOOR-2") << "names that differ in case only are one";
        EXPECT_EQ(first, version == "ACAD12" || version == "EASY" ? "DOOR" : "door");
        EXPECT_EQ(valueOf(file.first(0, "INSERT", 1), 8), "B");
        EXPECT_EQ(file.count(66, "1"), 0u) << "no attributes follow";
        const bool old = version == "ACAD12" || version == "EASY";
        const std::size_t spaces = file.count(0, "BLOCK") - 2;
        const DxfGroups block = file.first(0, "BLOCK", spaces);
        EXPECT_EQ(valueOf(block, 70), "66");
        EXPECT_EQ(valueOf(block, 3), "none");
        EXPECT_EQ(file.count(0, "BLOCK_RECORD"), old ? 0u : file.count(0, "BLOCK")) << version;
    }
}

std::vector<host::Element> chairAt(double x, double y) {
    return {moveTo(x, y), drawTo(x + 2, y), drawTo(x + 2, y + 1)};
}

TEST_F(Export, EqualBodiesShareABlock) {
    host::session().numbers["&DxfBlockCopies"] = 1;
    addPattern(chairAt(0, 0), "chair");
    addPattern(chairAt(0, 0), "seat");
    addPattern(chairAt(0, 1), "other");
    const Exported file = exportDrawing(exportConfig("ACAD24", BLOCKS));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(file.count(0, "INSERT"), 3u);
    EXPECT_EQ(file.count(2, "chair"), 4u) << "BLOCK, BLOCK_RECORD and two INSERTs";
    EXPECT_EQ(file.count(2, "seat"), 0u);
    EXPECT_EQ(file.count(2, "other"), 3u);
    EXPECT_EQ(exportDrawing(exportConfig("ACAD12", BLOCKS)).count(2, "SEAT"), 2u) << "newer targets only";
}

TEST_F(Export, NamesThatAFileCantHoldStayApart) {
    std::string umlauts = "x";
    for (int i = 0; i < 200; ++i) umlauts += "\xC3\xA4"; // cut where a character would be halved
    const std::vector<std::string> names = {"a/b",       "a:b", "",      "a_b", "\xE4\xB8\xAD", "\x01\x1B",
                                            "\xC4\xFFx", "*",   umlauts, "A_B", "*Model_Space"};
    for (const std::string& name : names) {
        addPattern({moveTo(0, 0), drawTo(4, 0)}, name, std::string(400, 'x') + name);
        addPattern({moveTo(0, 0), drawTo(4, 0)}, umlauts + name, name);
    }
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, BLOCKS));
        EXPECT_EQ(file.stat, 0);
        EXPECT_EQ(file.errors(), "") << version;
        EXPECT_EQ(file.count(0, "INSERT"), 2 * names.size());
    }
}

TEST_F(Export, AnEmptyDrawingIsAValidFile) {
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version));
        EXPECT_EQ(file.stat, 0) << version;
        EXPECT_EQ(file.errors(), "") << version;
    }
}

// ---- template and kept header ------------------------------------------------------------------------

TEST_F(Export, TheTemplateGivesLayersAndDashes) {
    const TempDir folder;
    const std::string path = folder.write(
        "template.dxf",
        dxf()
            .record(
                "LTYPE",
                {{2, "Dash"}, {70, "0"}, {3, "- -"}, {72, "65"}, {73, "2"}, {40, "3"}, {49, "2"}, {49, "-1"}})
            .layer("LAY", 3, "DASH")
            .layer("UNUSED", -5)
            .text());
    addPattern({moveTo(0, 0), drawTo(4, 0)});
    const std::string lines = "LAYER_ELEM=ATTR\nUSE_TEMPLATE=1\nTEMPLATE_NAME=" + path + "\n";
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version, lines));
        EXPECT_EQ(file.errors(), "") << version;
        EXPECT_NE(shown(file.first(2, "LAY")).find("70=0 62=3 6=DASH"), std::string::npos)
            << shown(file.first(2, "LAY"));
        EXPECT_EQ(valueOf(file.first(2, "UNUSED"), 62), "-5");
        const std::string dashes = shown(file.first(2, "Dash"));
        EXPECT_TRUE(file.count(2, "Dash") + file.count(2, "DASH") == 1) << version;
        if (version == "ACAD15") {
            EXPECT_NE(dashes.find("73=2 40=3.000000 49=2.000000 74=0 49=-1.000000 74=0"), std::string::npos)
                << dashes;
        }
    }
    const Exported without =
        exportDrawing(exportConfig("ACAD15", "USE_TEMPLATE=1\nTEMPLATE_NAME=/no/such.dxf\n"));
    EXPECT_EQ(without.stat, 0);
    EXPECT_NE(without.protocol.find("/no/such.dxf konnte nicht"), std::string::npos);
}

TEST_F(Export, KeptHeaderVariablesComeBack) {
    TempDir folder;
    folder.write("in.dxf", dxf()
                               .header("AC1015", {{9, "$LIMMAX"},
                                                  {10, "123.5"},
                                                  {20, "77"},
                                                  {9, "$AUPREC"},
                                                  {70, "6"},
                                                  {9, "$CLAYER"},
                                                  {8, "WALL"}})
                               .entity("LINE", {{8, "A"}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "1"}})
                               .text());
    ImportOptions options;
    options.keepsSession = true;
    options.numbers["&DxfHeader"] = 1;
    ASSERT_EQ(importFile(folder, "in.dxf", options).stat, 0);
    const Exported file = exportDrawing(exportConfig("ACAD24"));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(shown(file.first(9, "$LIMMAX")), "9=$LIMMAX 10=123.5 20=77");
    EXPECT_EQ(valueOf(file.first(9, "$AUPREC"), 70), "6");
    EXPECT_EQ(valueOf(file.first(9, "$CLAYER"), 8), "0") << "not one of those that are kept";
    EXPECT_EQ(file.count(0, "MTEXT") + file.count(0, "TEXT"), 0u) << "their text is no content";
    EXPECT_LE(host::openDrawing().extents().maxX, 5.001) << "nor does it widen the drawing";
}

TEST_F(Export, TheUnitStandsInTheHeader) {
    addPattern({moveTo(0, 0), drawTo(4, 0)});
    for (const auto& [unit, value] : {std::pair{3, "4"}, {5, "6"}, {7, "1"}}) {
        host::openDrawing().unit = unit;
        EXPECT_EQ(valueOf(exportDrawing(exportConfig("ACAD24")).first(9, "$INSUNITS"), 70), value);
    }
}

} // namespace

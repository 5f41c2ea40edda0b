// HEADER, TABLES and OBJECTS on their way out.
#include "exported.h"

#include <algorithm>

namespace {

std::string variable(const Exported& file, const std::string& name) {
    return shown(file.first(9, name));
}

TEST_F(Export, KeptHeaderVariablesReplaceTheTemplates) {
    TempDir folder;
    ImportOptions options;
    options.numbers["&DxfHeader"] = 1;
    folder.write("in.dxf", dxf()
                               .header("AC1015", {{9, "$LIMMAX"},
                                                  {10, "7.0"},
                                                  {20, "8.0"},
                                                  {30, "9.0"},
                                                  {9, "$LUNITS"},
                                                  {70, "4"},
                                                  {9, "$CLAYER"},
                                                  {8, "WALL"}})
                               .entity("LINE", {{8, "0"}, {10, "1"}, {20, "2"}, {11, "3"}, {21, "4"}})
                               .text());
    ASSERT_EQ(importFile(folder, "in.dxf", options).stat, 0);
    const Exported file = exportTo(folder, exportConfig("ACAD15"));
    EXPECT_EQ(variable(file, "$LIMMAX"), "9=$LIMMAX 10=7.0 20=8.0") << "the template has two values for it";
    EXPECT_NE(file.protocol.find("Zu viele Werte für $LIMMAX"), std::string::npos);
    EXPECT_NE(variable(file, "$ORTHOMODE"), "") << "what follows isn't lost";
    EXPECT_EQ(variable(file, "$LUNITS"), "9=$LUNITS 70=4");
    EXPECT_EQ(variable(file, "$CLAYER"), "9=$CLAYER 8=0") << "not one of the variables that are kept";
    EXPECT_EQ(file.count(0, "TEXT"), 0u) << "their pattern is no content";
    EXPECT_EQ(file.errors(), "");
}

TEST_F(Export, PlaceholdersOfTheHeaderAreFilledIn) {
    addPattern({moveTo(-1, 2), drawTo(30, 4)});
    host::openDrawing().scale = 0.01;
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version));
        EXPECT_EQ(variable(file, "$EXTMIN"), "9=$EXTMIN 10=-1.000000 20=2.000000 30=0.000000") << version;
        EXPECT_EQ(variable(file, "$EXTMAX"), "9=$EXTMAX 10=30.000000 20=4.000000 30=0.000000") << version;
        EXPECT_EQ(variable(file, "$LTSCALE"), "9=$LTSCALE 40=1000.000000") << version;
        const bool hasUnit = version != "ACAD12" && version != "EASY";
        EXPECT_EQ(variable(file, "$INSUNITS"), hasUnit ? "9=$INSUNITS 70=4" : "") << version;
        const auto isPlaceholder = [](const DxfGroup& g) { return g.value.size() > 1 && g.value[0] == '#'; };
        EXPECT_EQ(std::count_if(file.pairs.begin(), file.pairs.end(), isPlaceholder), 0) << version;
    }
}

TEST_F(Export, AnEmptyDrawingHasNoExtents) {
    const Exported file = exportDrawing(exportConfig("ACAD24"));
    EXPECT_EQ(std::atof(valueOf(file.first(9, "$EXTMIN"), 10).c_str()), 1e20);
    EXPECT_EQ(std::atof(valueOf(file.first(9, "$EXTMAX"), 30).c_str()), -1e20);
    EXPECT_EQ(file.errors(), "");
}

// ---- tables ----------------------------------------------------------------------------------------------

std::string templateTables() {
    return dxf()
        .record("LTYPE", {{2, "OFTEN"}, {3, "- -"}, {73, "2"}, {40, "3"}, {49, "2"}, {49, "-1"}})
        .record("LTYPE", {{2, "NEVER"}, {73, "0"}})
        .record("LTYPE", {{2, "often"}, {73, "0"}})
        .record("LAYER", {{2, "cold"}, {70, "1"}, {62, "5"}, {6, "OFTEN"}, {370, "25"}})
        .record("LAYER",
                {{2, "DefPoints"}, {70, "0"}, {62, "-3"}, {6, "CONTINUOUS"}, {290, "1"}, {370, "17"}})
        .text();
}

TEST_F(Export, TablesOfATemplateGoOutAsTheyCame) {
    addPattern({moveTo(0, 0), drawTo(1, 1)});
    TempDir folder;
    const std::string lines =
        "USE_TEMPLATE=1\nTEMPLATE_NAME=" + folder.write("template.dxf", templateTables()) + "\n";
    const Exported file = exportTo(folder, exportConfig("ACAD24", lines));
    EXPECT_EQ(file.errors(), "");
    EXPECT_NE(shown(file.first(2, "cold")).find("70=1 62=5 6=OFTEN 370=25 390="), std::string::npos)
        << "frozen isn't off";
    EXPECT_NE(shown(file.first(2, "DefPoints")).find("62=-3 6=CONTINUOUS 290=0 370=-3"), std::string::npos)
        << "never plotted, and with a weight that the format has";
    EXPECT_NE(
        shown(file.first(2, "OFTEN")).find("3=- - 72=65 73=2 40=3.000000 49=2.000000 74=0 49=-1.000000"),
        std::string::npos);
    EXPECT_EQ(file.count(2, "NEVER"), 0u) << "neither the host nor a layer uses it";
    EXPECT_EQ(file.count(2, "often"), 0u) << "one record a name";

    const Exported old = exportTo(folder, exportConfig("ACAD12", lines));
    EXPECT_EQ(shown(old.first(2, "COLD")), "2=COLD 70=1 62=5 6=OFTEN");
    for (const int code : {5, 100, 290, 370, 390, 1001, 330})
        EXPECT_TRUE(std::none_of(old.pairs.begin(), old.pairs.end(), [&](const DxfGroup& g) {
            return g.code == code && g.value != "0" && !g.value.empty();
        })) << code;
}

TEST_F(Export, EachVersionHasItsTables) {
    for (const std::string& version : VERSIONS) {
        const Exported file = exportDrawing(exportConfig(version));
        std::string tables;
        for (std::size_t i = 0; i < file.count(0, "TABLE"); ++i)
            tables += valueOf(file.first(0, "TABLE", i), 2) + " ";
        std::string expected = "VPORT LTYPE LAYER STYLE DIMSTYLE VIEW UCS APPID ";
        if (version == "EASY") expected = "LTYPE LAYER STYLE VIEW UCS APPID ";
        if (version != "EASY" && version != "ACAD12") expected += "BLOCK_RECORD ";
        EXPECT_EQ(tables, expected) << version;
        EXPECT_EQ(file.count(2, "OBJECTS"), version == "EASY" || version == "ACAD12" ? 0u : 1u) << version;
    }
}

// ---- what is lost ----------------------------------------------------------------------------------------

TEST_F(Export, WhatATargetCannotHoldIsToldOnceAKind) {
    host::Pattern& pattern = addPattern({});
    for (int i = 0; i < 3; ++i) {
        host::Text& text = pattern.texts.emplace_back();
        text.lines = {i ? "plain" : "\xE4\xB8\xAD\xE6\x96\x87"};
        text.font = 0;
        text.face = "Arial";
        text.backOn = i == 1;
    }
    host::openDrawing().unit = 5;
    const Exported old = exportDrawing(exportConfig("ACAD12"));
    EXPECT_TRUE(old.protocol.find("3 texts in TrueType fonts were written in a stroke font.") !=
                std::string::npos);
    EXPECT_NE(old.protocol.find("1 background of a text was not written."), std::string::npos);
    EXPECT_NE(old.protocol.find("2 characters that the code page lacks"), std::string::npos);
    EXPECT_NE(old.protocol.find("The file doesn't say its unit: m."), std::string::npos);
    const Exported newer = exportDrawing(exportConfig("ACAD24"));
    for (const char* words : {"TrueType", "backgrounds", "characters", "unit"})
        EXPECT_EQ(newer.protocol.find(words), std::string::npos) << words;
}

} // namespace

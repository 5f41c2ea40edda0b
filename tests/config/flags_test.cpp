#include "config_fixture.h"
#include "dx_select.h"
#include "import_text.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Flags = ConfigSession;

TEST_F(Flags, ValuesReachTheirVariables) {
    ASSERT_EQ(
        readFlags("ALL_LAYERS=1\nEXO_DFLT=1.25mm\nFILL_SEGVAL=7.5\nNO_KOMMA=8\nWRITE_HATCH= 2\nUSE_UCS=x\n"
                  "all_layers=5\nUNKNOWN=1\nno key at all\n=3\nWRITE_BLOCKS=YES\nREAD_LAYER=ATTR"),
        0);
    EXPECT_EQ(DxAllLayers, 1) << "keys are case-sensitive";
    EXPECT_EQ(DxExoDefault, 1.25);
    EXPECT_EQ(DxFillSegValue, 7.5);
    EXPECT_EQ(DxDigits, 8);
    EXPECT_EQ(DxWriteHatch, 2);
    EXPECT_EQ(DxUseUcs, 0);
    EXPECT_EQ(DxPatternToBlock, 1);
    EXPECT_EQ(DxLayerToPattern, 1);
    EXPECT_EQ(DxLayerOrder, DX_ORDER_ATTR);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(Flags, DirectionOfAKeyIsHonoured) {
    readFlags("WRITE_MODUS_3D=1\nEXPORT_VIEW=on");
    EXPECT_EQ(DxModus, 2);
    EXPECT_EQ(DxExportView, 0);
    readFlags("MODUS_3D=2\nFILLMODE=1");
    EXPECT_EQ(DxModus, 3);
    EXPECT_EQ(Dx3dLines, 1);
    EXPECT_EQ(DxFillMode, 1);
    readFlags("MODUS_3D=1\nFILLMODE=1", 1);
    EXPECT_EQ(DxModus, 2);
    EXPECT_EQ(DxFillMode, 2);
    readFlags("WRITE_MODUS_3D=1\nEXPORT_VIEW=on", 1);
    EXPECT_EQ(DxModus, 3);
    EXPECT_EQ(DxExportView, 1);
    readFlags("EXPORT_VIEW=1\nEXPORT_VIEW=yes", 1);
    EXPECT_EQ(DxExportView, 0);
}

TEST_F(Flags, UnitsAndSpacesCountOnlyIfAsked) {
    const std::string lines = "READ_UNIT=m\nREAD_PAPER_UNIT=inch\nSPACE=2\nCHECK_EXT=1";
    readFlags(lines);
    EXPECT_EQ(DxReadSpace, 0);
    EXPECT_EQ(DxUnit, 3);
    UoPutMacVarD("&DxfParseExt", 1);
    readFlags(lines);
    EXPECT_EQ(DxReadSpace, 2);
    EXPECT_EQ(DxUnit, 5);
    EXPECT_EQ(DxPaperUnit, 7);
    EXPECT_EQ(host::session().texts["$DxfUnit"], "m");
    EXPECT_EQ(host::session().numbers["&DxfUnit"], 5);
    EXPECT_EQ(host::session().numbers["&DxfPaper"], 2);
    EXPECT_EQ(host::session().numbers["&DxfExt"], 1);
    EXPECT_THAT(protocol(), HasSubstr("Modus MODELSPACE + PAPERSPACES aktiv"));
    EXPECT_THAT(messages(), IsEmpty()) << "no warning";
    const char* const words[] = {"act", "nm", "ym", "mm", "cm", "m", "km", "inch", "feet"};
    for (int unit = 0; unit < 9; ++unit) EXPECT_EQ(DxUnitNameToCAD(words[unit]), unit) << words[unit];
}

TEST_F(Flags, Versions) {
    const std::pair<const char*, int> rows[] = {
        {"ACAD32", 1},  {"ACAD27", 2}, {"ACAD24", 3}, {"ACAD21", 4}, {"ACAD18", 5},
        {"ACAD15", 6},  {"ACAD14", 6}, {"ACAD13", 7}, {"ACAD12", 7}, {"ACAD11", 7},
        {"ACAD11X", 7}, {"EASY", 8},   {"ACAD16", 3}, {"", 3},
    };
    for (const auto& [word, level] : rows) {
        readFlags(std::string("VERSION=ACAD24\nVERSION=") + word);
        EXPECT_EQ(DxWriteVersion, level) << word;
    }
}

TEST_F(Flags, DimensionModes) {
    const int rows[][3] = {{-1, 2, 0}, {0, 1, 0}, {1, 0, 0}, {2, 0, 1}};
    for (const auto& row : rows) {
        readFlags("ASO_DIM=" + std::to_string(row[0]));
        EXPECT_EQ(DxDimMode, row[1]);
        EXPECT_EQ(DxDimStyleCompat, row[2]);
    }
}

TEST_F(Flags, LayersOfElementClasses) {
    readFlags("");
    EXPECT_THAT(DxLayerKinds, ElementsAre(1, 5, 5, 5, 5));
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_TEXT], "") << "a section without a name for it";
    readFlags("LAYERFLAG_TEXT=0\nLAYER_TEXT=T\nLAYER_HATCH=\nLAYER_DIM=D\nLAYER_ELEM=ATTR\nLAYER_ELEM=NONE");
    EXPECT_THAT(DxLayerKinds, ElementsAre(4, 4, 5, 5, 5));
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_HATCH], "0");
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_DIMENSION], "D");
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_ARROW], "");
    start(0);
    readDxd("#EOF\n");
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_TEXT], "TEXT") << "no flags section";
}

TEST_F(Flags, PathsAreExpanded) {
    readFlags("TEMPLATE_NAME=$HD_U\\plan.dxf\nBYLAYER_NAME=");
    EXPECT_EQ(DxTemplateName.str(), folder.string() + "/plan.dxf");
    EXPECT_EQ(DxByLayerFile.str(), folder.string() + "/ve/int/dxf/dflt/layerconv.xls");
    readFlags("TEMPLATE_NAME=Pl\xE4ne.dxf\n");
    EXPECT_EQ(DxTemplateName.str(), "Pl\xC3\xA4ne.dxf") << "of the code page of the configuration";
}

TEST_F(Flags, WhatWasSetAheadOfTheConfiguration) {
    DxUseInsBase = 1;
    readFlags("");
    EXPECT_EQ(DxUseInsBase, 1) << "the driver's answer to &DxfInsbase stands";
    readFlags("USE_REF=0");
    EXPECT_EQ(DxUseInsBase, 0);
    for (const char* scale : {"0", "-3", "nan", "x"}) {
        readFlags(std::string("LT_SCALE=") + scale);
        EXPECT_EQ(DxLtScale, 1.0);
    }
    UoPutMacVarD("&DxfUserLtScale", 0);
    readFlags("LT_SCALE=0.5");
    EXPECT_EQ(DxLtScale, 0.5);
    UoPutMacVarD("&DxfUserLtScale", 3);
    readFlags("LT_SCALE=0.5");
    EXPECT_EQ(DxLtScale, 3);
}

TEST_F(Flags, HostileValues) {
    EXPECT_EQ(readFlags("NO_KOMMA=2147483648\nEXO_DFLT=1e999\nASO_DIM=-99999999999\nTEMPLATE_NAME=" +
                        std::string(200'000, '$') + "\nALL_LAYERS=1"),
              0);
    EXPECT_EQ(DxDigits, 99);
    EXPECT_EQ(DxAllLayers, 1);
    EXPECT_LT(DxTemplateName.Len(), 70'000u) << "an endless line is cut";
}

using Switches = ConfigSession;

TEST_F(Switches, SpacesOfAnImport) {
    const auto spacesFor = [&](double paper, const char* loadInto) {
        start(0);
        UoPutMacVarD("&DxfPaper", paper);
        UoPutMacVarS("$DxfLoadInto", loadInto);
        DxReadSwitches(0);
        return DxReadSpace;
    };
    EXPECT_EQ(spacesFor(1, ""), 0) << "&DxfParseExt isn't there";
    UoPutMacVarD("&DxfParseExt", 0);
    EXPECT_EQ(spacesFor(0, ""), 0);
    EXPECT_EQ(spacesFor(1, ""), 1);
    EXPECT_EQ(spacesFor(-4, ""), 2);
    EXPECT_EQ(spacesFor(1, "True"), 0);
    EXPECT_THAT(protocol(), HasSubstr("Modus PAPERSPACE aktiv"));
    UoPutMacVarD("&DxfParseExt", 1);
    EXPECT_EQ(spacesFor(1, ""), 0);
}

TEST_F(Switches, NumbersAndTruths) {
    DxReadSwitches(0);
    EXPECT_EQ(DxDimUsrTxt, 1) << "unset";
    const std::pair<const char*, double> values[] = {
        {"&DxfReadPdMode", 1.6},  {"&DxfJoinTexts", 1e300}, {"&DxfDimUsrTxt", 0},
        {"&DxfNoPolyWidth", 0.1}, {"&DxfByLayer", 1},       {"&DxfColAttr", -1},
    };
    for (const auto& [name, value] : values) UoPutMacVarD(name, value);
    DxReadSwitches(0);
    EXPECT_EQ(DxPdMode, 2);
    EXPECT_EQ(DxJoinTexts, 0) << "no int";
    EXPECT_EQ(DxDimUsrTxt, 0);
    EXPECT_EQ(DxNoPolyWidth, 1);
    EXPECT_EQ(DxUseByLayer, 1);
    EXPECT_EQ(DxColAttr, 1);
    EXPECT_THAT(messages(), ElementsAre("Modus BYLAYER aktiv", "Modus Farbattribut aktiv"));
}

TEST_F(Switches, BlockCopiesNeedTheRightExport) {
    UoPutMacVarD("&DxfBlockCopies", 0.7);
    const auto copiesWith = [&](const std::string& lines) {
        readFlags("WRITE_BLOCKS=YES\nVERSION=ACAD14\n" + lines, 1);
        DxReadBlockCopies();
        return DxBlockCopies;
    };
    EXPECT_EQ(copiesWith(""), 1);
    EXPECT_THAT(messages(), Contains("Modus BLOCK-COPY aktiv"));
    for (const char* spoiler :
         {"WRITE_BLOCKS=NO", "VERSION=ACAD13", "WRITE_MODUS_3D=1", "DIM_IN_BLOCK=1", "WRITE_HATCH=2"})
        EXPECT_EQ(copiesWith(spoiler), 0) << spoiler;
}

TEST(BlockCopies, EqualPatternsShareABlock) {
    const TempDir folder;
    const auto line = [](const std::string& layer, const std::string& x) {
        return DxfGroups{{8, layer}, {10, "-" + x}, {20, "-1"}, {11, x}, {21, "1"}};
    };
    importText(dxf()
                   .entity("LINE", line("A", "5"))
                   .entity("LINE", line("B", "5"))
                   .entity("LINE", line("C", "4"))
                   .text(),
               {.config = "#FLAGS-START\nREAD_LAYER=NAME\n#FLAGS-END\n#EOF\n"});
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    UoPutMacVarS("$DxfConfig",
                 folder.write("w.dxd", "#FLAGS-START\nWRITE_BLOCKS=YES\nVERSION=ACAD14\n#FLAGS-END\n#EOF\n"));
    UoPutMacVarD("&DxfBlockCopies", 1);
    DxfSelect(0, DX_EXPORT_2D, folder.file("out.dxf"));
    unsetenv("HD_WORK_DIR");
    const std::string out = folder.read("out.dxf");
    const auto count = [&out](const std::string& part) {
        int n = 0;
        for (std::size_t at = 0; (at = out.find(part, at)) != std::string::npos; ++at) ++n;
        return n;
    };
    EXPECT_EQ(count("\nLINE\n"), 2) << out.substr(0, 200);
    EXPECT_EQ(count("\nINSERT\n"), 3);
    EXPECT_EQ(count("AcDbBlockReference\n  2\nA\n"), 2) << "the second INSERT is of the first one's block";
    EXPECT_THAT(folder.read("dxf.proto"), HasSubstr("BLOCK A referenziert von 2 INSERTs"));
}

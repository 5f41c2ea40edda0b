#include "config_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Sections = ConfigSession;

namespace {

std::string dumpPairs(const DxTable<DX_COLOR_PAIR>& pairs) {
    std::string out;
    for (const auto& pair : pairs) out += std::to_string(pair.color) + ">" + std::to_string(pair.pen) + " ";
    return out;
}
std::string dumpChars(int set) {
    std::string out;
    for (const auto& pair : DxCharPairs[set])
        out += std::to_string(pair.dxf) + "=" + std::to_string(pair.host) + " ";
    for (const auto& text : DxCharTexts[set])
        out += std::string(text.text.view()) + "=" + std::to_string(text.code) + " ";
    return out;
}
std::string dumpFonts() {
    std::string out;
    for (const auto& font : DxFonts)
        out += UtFormat("%s:%d:%s:%g ", font.font.c_str(), font.number, font.hostFont.c_str(), font.factor)
                   .str();
    return out;
}

} // namespace

TEST_F(Sections, MissingFileIsReportedAndDefaultsStand) {
    EXPECT_EQ(DxReadConfig((folder / "none.dxd").string(), 0), 0);
    EXPECT_EQ(DxReadConfig(folder.string(), 0), 0) << "a folder";
    ASSERT_THAT(messages(), SizeIs(2));
    EXPECT_EQ(messages()[0], "Can't open Configurefile " + folder.string() + "/none.dxd !");
}

TEST_F(Sections, EndOfFileMustBeMarked) {
    EXPECT_NE(readDxd(""), 0);
    EXPECT_NE(readDxd("#FLAGS-START\nALL_LAYERS=1\n"), 0);
    EXPECT_NE(readDxd("#PEN-DXF-TO-CAD"), 0) << "cut at the count";
    EXPECT_NE(readDxd("#PEN-DXF-TO-CAD\n2147483647\n1|2\n#EOF\n"), 0) << "a count that lies";
    start(0);
    EXPECT_EQ(readDxd("#EOF\n#PEN-DXF-TO-CAD\n1\n1|2\n"), 0);
    EXPECT_EQ(readDxd("\xEF\xBB\xBF#PEN-DXF-TO-CAD\r\n1\r\n1|2\r\n#EOF\r\n"), 0) << "as some editors write";
    EXPECT_EQ(dumpPairs(DxPenToCad), "1>2 ");
}

TEST_F(Sections, LinesOfASectionAreCounted) {
    EXPECT_EQ(readDxd("1|9\n#PEN-DXF-TO-CAD\n4\n1|2\nno bar\n2|3|4\n3|1024\n4|5\n#SOMETHING\n2\n5|6\n6|7\n"
                      "#PEN-CAD-TO-DXF\n1\n7|8\n#PEN-DXF-TO-CAD\n-3\n8|9\n#PEN-DXF-TO-CAD\n1\n#EOF\n#EOF\n"),
              0);
    EXPECT_EQ(dumpPairs(DxPenToCad), "1>2 2>3 ")
        << "comments, other sections and the other direction add nothing";
    EXPECT_EQ(DxPenToDxf[7], 30);
}

TEST_F(Sections, ColoursAndPens) {
    readDxd("#PEN-DXF-TO-CAD\n8\n 7 |1\n0|4\n256|4\n255|1023\n-1|4\n3|-4\nDEF|12\nDEF|1024\n"
            "#FILL-DXF-TO-CAD\n2\n9|3\nDEF|0\n#EOF\n");
    EXPECT_EQ(dumpPairs(DxPenToCad), "7>1 255>1023 ");
    EXPECT_EQ(DxDefaultPen, 12);
    EXPECT_EQ(dumpPairs(DxFillToCad), "9>3 ");
    EXPECT_EQ(DxDefaultFill, 0);
    start(1);
    readDxd("#PEN-CAD-TO-DXF\n6\n0|12\n1023|255\n1024|3\n-1|3\n2|256\n3|-1\n#FILL-CAD-TO-DXF\n2\n8|0\n8|"
            "256\n#EOF\n",
            1);
    EXPECT_EQ(DxPenToDxf[0], 12);
    EXPECT_EQ(DxPenToDxf[1023], 255);
    EXPECT_EQ(DxPenToDxf[2], 1);
    EXPECT_EQ(DxPenToDxf[3], -1);
    EXPECT_EQ(dumpPairs(DxFillToDxf), "0>8 ");
}

TEST_F(Sections, ASpaceThatIsNoneIsTold) {
    EXPECT_EQ(readConf("READSPACE = 3\n"), 0);
    EXPECT_EQ(DxReadSpace, 0);
    EXPECT_THAT(messages(), ElementsAre("READSPACE = 3 is no space: 0 model, 1 paper, 2 both."));
}

TEST_F(Sections, LinetypesLayersAndAttributes) {
    const std::string longName(300, 'x');
    readDxd("#LT-DXF-TO-CAD\n2\nDASHED|2\nDASHED|3\n#ATTR-DXF-TO-CAD\n1\nPARTNO|Teil\n#LAYER-DXF-TO-CAD\n2\n"
            "WALL|Wand\n" +
            longName + "|" + longName + "\n#EOF\n");
    ASSERT_THAT(DxLtToCad, SizeIs(2));
    EXPECT_EQ(*DxLtToCadIndex.find(DxLtToCad, "DASHED"), 2) << "the first wins";
    EXPECT_EQ(DxAttrMap[0].host.view(), "Teil");
    EXPECT_EQ(DxLayerMap[0].dxf.view(), "WALL");
    EXPECT_EQ(DxLayerMap[1].dxf.view().size(), 160u);
    EXPECT_EQ(DxLayerMap[1].host.view().size(), 59u);
    start(1);
    readDxd("#LT-CAD-TO-DXF\n1\n2|DASHED\n#LAYER-CAD-TO-DXF\n1\nWand|WALL\n#EOF\n", 1);
    const DX_LTYPE_TYPE& lineType = DxDocuments.tables.lineTypes[0];
    EXPECT_EQ(lineType.number, 2);
    EXPECT_EQ(lineType.name.view(), "DASHED");
    EXPECT_EQ(lineType.alignment, 65);
    EXPECT_EQ(DxLayerMap[0].host.view(), "Wand");
}

TEST_F(Sections, FontsStandOnTheSideTheyAreConvertedFrom) {
    readDxd("#FONT-DXF-TO-CAD\n4\nromans|3,0.8\ntxt|1\narial.ttf|Arial,1.1\n@|7\n#EOF\n");
    EXPECT_EQ(dumpFonts(), "romans:3::0.8 txt:1::0 arial.ttf:0:Arial:1.1 ");
    EXPECT_EQ(DxSpecialCadFont, 7);
    start(1);
    readDxd("#FONT-CAD-TO-DXF\n3\n3|romans\nArial|arial.ttf\n@|gdt\n#EOF\n", 1);
    EXPECT_EQ(dumpFonts(), "romans:3::0 arial.ttf:0:Arial:0 ");
    EXPECT_EQ(DxSpecialDxfFont, "gdt");
}

TEST_F(Sections, CharactersAndTheSpecialFile) {
    write("ve/int/dxf/dflt/spezfont.dxd",
          "#FLAGS-START\nALL_LAYERS=1\n#FLAGS-END\n#PEN-DXF-TO-CAD\n1\n3|3\n#CHAR-DXF-TO-CAD\n1\n200|65\n"
          "#CHAR-CAD-TO-DXF\n2\n^5|end\n66|%%201\n#EOF\n#CHAR-DXF-TO-CAD\n1\n1|1\n");
    readDxd("#CHAR-DXF-TO-CAD\n3\n 127 | 176 \n%%c|216\n%%x|-1\n#EOF\n");
    EXPECT_EQ(dumpChars(0), "127=176 %%c=216 %%x=-1 ");
    EXPECT_EQ(dumpChars(1), "200=65 ");
    EXPECT_EQ(DxAllLayers, 0);
    EXPECT_THAT(dumpPairs(DxPenToCad), IsEmpty());
    start(1);
    readDxd("#CHAR-CAD-TO-DXF\n3\n176|127\n216 | %%c \n^217|%%217\n#EOF\n", 1);
    EXPECT_EQ(dumpChars(0), "127=176 %%c=216 ");
    EXPECT_EQ(DxFinishCode, 217);
    EXPECT_EQ(DxFinishText.view(), "%%217");
    EXPECT_EQ(dumpChars(1), "%%201=66 ");
}

TEST_F(Sections, BytesOfAnyKind) {
    std::string bytes;
    for (unsigned i = 0, x = 1; i < 100'000; ++i)
        bytes += static_cast<char>((x = x * 1664525 + 1013904223) >> 24);
    EXPECT_NE(readDxd(bytes), 0);
    readConf(bytes);
    EXPECT_EQ(readDxd("#LAYER-DXF-TO-CAD\n3\nx|" + bytes.substr(0, 50) + "\n" +
                      std::string("A\0B|C\0D\n", 8) + std::string(3'000'000, '|') + "\n"),
              9003);
}

using Keywords = ConfigSession;

TEST_F(Keywords, AllOfThem) {
    ASSERT_EQ(readConf("! comment\n\n  ALL_LAYER\nWRITE_POLY\nFREE_DIMS_ONLY\nPATTERN->BLOCK\nELEMENTS = 50\n"
                       "LAYER->PATTERN CLASS\nBLOCK->PATTERN LEVEL and NAME\nREADSPACE=2\n"),
              1006)
        << "READSPACE=2 is one word, which is no keyword";
    ASSERT_EQ(
        readConf("ALL_LAYER\nELEMENTS = 50\nLAYER->PATTERN CLASS\nBLOCK->PATTERN LEVEL NAME\nREADSPACE = 2\n"
                 "TEXTFACTOR = .75e0\nDIGITS =4\nCOLOR_NO 30 = 7\nCOLOR_NO none\nFILLCOLOR 5= 6\n"
                 "LINETYPE->NUMBER DASHED = 2\nNUMBER->LINETYPE 3 = MITTE , CENTER\nTRIM BOTH\nLANGUAGE x\n"
                 "NUMBER->LINETYPE 4 = PUNKT, DOT\nASCII 127 <-> 176\nTEXT '%%c' --> 216\n"
                 "ATTR PARTNO, Teil"),
        0)
        << testing::PrintToString(messages());
    EXPECT_EQ(DxAllLayers, 1);
    EXPECT_EQ(DxMaxElements, 50);
    EXPECT_EQ(DxLayerOrder, DX_ORDER_CLASS);
    EXPECT_EQ(DxBlockOrder, DX_ORDER_NAME);
    EXPECT_EQ(DxReadSpace, 2);
    EXPECT_EQ(DxTextFactor, 0.75);
    EXPECT_EQ(DxDigits, 4);
    EXPECT_EQ(dumpPairs(DxPenToCad), "30>7 ");
    EXPECT_EQ(dumpPairs(DxFillToCad), "5>6 ");
    EXPECT_EQ(*DxLtToCadIndex.find(DxLtToCad, "DASHED"), 2);
    EXPECT_EQ(DxDocuments.tables.lineTypes[0].name.view(), "MITTE");
    EXPECT_EQ(DxDocuments.tables.lineTypes[1].name.view(), "PUNKT");
    EXPECT_EQ(DxLineTrim, 4);
    EXPECT_EQ(dumpChars(0), "127=176 %%c=216 ");
    EXPECT_EQ(DxAttrMap[0].host.view(), "Teil") << "the last line needs no line end";
    DxLineTrim = 0;
}

TEST_F(Keywords, Order) {
    EXPECT_EQ(readConf("ORDER GROUP, ' MY TEXT ', what, ATTR\n"), 0);
    EXPECT_THAT(DxLayerKinds, ElementsAre(0, 5, 5, 4, 5));
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_TEXT], "MY TEXT");
    EXPECT_EQ(DxLayerFixedNames[DX_CLASS_HATCH], "HATCH");
    for (const char* bad : {"GROUP, 'TEXT'", "A, B, C, D, E", "A,, C, D", ""})
        EXPECT_EQ(readConf(std::string("ORDER ") + bad + "\n"), 1006) << bad;
}

TEST_F(Keywords, PensInARow) {
    const std::string nine = "COLOR->PEN 1, 2, 3, 4, 5, 6, 7, 8, 9";
    EXPECT_EQ(readConf(nine + ", DEFAULT 33\n"), 0);
    EXPECT_EQ(dumpPairs(DxPenToCad), "1>1 2>2 3>3 4>4 5>5 6>6 7>7 8>8 9>9 ");
    EXPECT_EQ(DxDefaultPen, 33);
    EXPECT_EQ(readConf(nine + "\n"), 0);
    EXPECT_EQ(DxDefaultPen, -1);
    EXPECT_EQ(readConf("PEN->COLOR 9, 8, 7, 6, 5, 4, 3, 2, 1, 255, 256\n", 1), 0);
    EXPECT_EQ(DxPenToDxf[9], 255);
    EXPECT_EQ(DxPenToDxf[10], 41) << "no colour";
}

TEST_F(Keywords, LinesThatDontMatch) {
    for (const char* bad :
         {"ELEMENTS 5", "READSPACE = x", "TEXTFACTOR = ,5", "DIGITS", "COLOR->PEN 1, 2, 3", "PEN->COLOR 1, 2",
          "ATTR one", "FILLCOLOR 1 2", "LINETYPE->NUMBER DASHED 2", "NUMBER->LINETYPE DASHED", "ASCII 1 <- 2",
          "TEXT %%c -> 5", "TEXT '' -> 5", "TEXT 'a' 5", "TEXT 'a' -> b", "ALL_LAYERS", "all_layer"}) {
        host::session().messageArea.clear();
        EXPECT_EQ(readConf(std::string(bad) + "\nALL_LAYER\n"), 1006) << bad;
        EXPECT_THAT(messages(), ElementsAre(std::string("Error in Defaultfile: ") + bad));
        EXPECT_EQ(DxAllLayers, 0) << "the reading has ended";
    }
}

TEST_F(Keywords, FileOfTheDirectionComesFirst) {
    write("Dxf.conf.read", "ELEMENTS = 11\n");
    write("Dxf.conf.write", "ELEMENTS = 22\n");
    readConf("ELEMENTS = 33\n");
    EXPECT_EQ(DxMaxElements, 11);
    readConf("ELEMENTS = 33\n", 1);
    EXPECT_EQ(DxMaxElements, 22);
    EXPECT_EQ(DxReadDefaultFile((folder / "none").string(), 0), 0);
    EXPECT_THAT(messages().back(), HasSubstr("Can't open Configurefile"));
}

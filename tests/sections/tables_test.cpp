#include "dxf_text.h"
#include "sections/dx_tables_import.h"
#include "session/dx_session.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

namespace {

/// Tables as they stand behind the TABLES section of a file.
class Tables : public testing::Test {
protected:
    const DxTables& read(const DxfText& text, unsigned long mode = DX_TABLES_IMPORT) {
        return readText(text.text(), mode);
    }
    const DxTables& readText(const std::string& text, unsigned long mode = DX_TABLES_IMPORT) {
        folder_.write("a.dxf", text);
        DxfInit(folder_.write("a.dxd", "#EOF\n").c_str(), 0);
        EXPECT_EQ(DxReadOpen(folder_.file("a.dxf").c_str()), 0);
        EXPECT_EQ(DxReadUntil(0, "SECTION"), 0);
        result_ = DxReadTableSection(mode);
        return DxDocuments.currentTables();
    }
    static const DX_LAYER_TYPE* layer(const DxTables& tables, std::string_view name) {
        for (const DX_LAYER_TYPE& row : tables.layers) {
            if (row.name.view() == name) return &row;
        }
        return nullptr;
    }
    void TearDown() override {
        DxClose();
        DxReadClose();
    }

    int result_ = -1;

private:
    TempDir folder_;
};

TEST_F(Tables, LayersAreOffByNegativeColours) {
    const DxTables& tables = read(dxf()
                                      .record("LAYER", {{2, "NONE"}})
                                      .layer("ZERO", 0)
                                      .layer("FROZEN", 5, "DASHED", 1)
                                      .layer("OFF", -5, "CONTINUOUS", 0)
                                      .layer("BOTH", -5, "CONTINUOUS", 5));
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(layer(tables, "NONE")->color, 7);
    EXPECT_EQ(layer(tables, "NONE")->lineWeight, -3);
    EXPECT_EQ(layer(tables, "NONE")->plot, 1);
    EXPECT_EQ(layer(tables, "ZERO")->color, 7);
    EXPECT_EQ(layer(tables, "FROZEN")->color, -5);
    EXPECT_EQ(layer(tables, "FROZEN")->lineType.view(), "DASHED");
    EXPECT_EQ(layer(tables, "OFF")->color, -5);
    EXPECT_EQ(layer(tables, "BOTH")->color, -5);
}

TEST_F(Tables, ALaterLayerOfTheNameWins) {
    const DxTables& tables = read(dxf()
                                      .record("LAYER", {{5, "A1"}, {2, "X"}, {62, "1"}})
                                      .record("LAYER", {{5, "12345678B2"}, {2, "X"}, {62, "2"}})
                                      .layer("x", 3));
    EXPECT_EQ(layer(tables, "X")->color, 2);
    EXPECT_EQ(layer(tables, "X")->handle, 0x345678B2u) << "the high part of a long handle is lost";
    EXPECT_EQ(layer(tables, "x")->color, 3) << "case counts";
}

TEST_F(Tables, StylesAreCleanedAndTakeTheirFaceFromExtendedData) {
    const DxTables& tables =
        read(dxf()
                 .record("STYLE", {{2, "Txt"}, {3, "C:/FONTS/TXT.SHX"}, {41, "0"}, {40, "2.5"}, {50, "15"}})
                 .record("STYLE", {{2, "Face"},
                                   {3, "\\Arial.ttf"},
                                   {1001, "OTHER"},
                                   {1000, "no"},
                                   {1001, "ACAD"},
                                   {1000, "Arial"},
                                   {1071, "50331682"},
                                   {1001, "MORE"},
                                   {1000, "no"},
                                   {1071, "0"}})
                 .record("STYLE", {{2, "txt"}, {3, "roman.shx.old"}, {41, "0.8"}}));
    ASSERT_EQ(tables.styles.size(), 3u) << "STANDARD, TXT, FACE";
    EXPECT_EQ(tables.styles[1].name.view(), "TXT");
    EXPECT_EQ(tables.styles[1].fontFile.view(), "roman") << "the later style of the name wins";
    EXPECT_EQ(tables.styles[1].widthFactor, 0.8);
    EXPECT_EQ(tables.styles[2].fontFile.view(), "\\arial.ttf") << "a separator in front stays";
    EXPECT_EQ(tables.styles[2].fontFamily.view(), "Arial");
    EXPECT_EQ(tables.styles[2].italic, 1);
    EXPECT_EQ(tables.styles[2].bold, 1);
    DX_NAME font;
    DxConvStyleFilename("C:/FONTS/TXT.SHX", &font);
    EXPECT_EQ(font.view(), "txt");
    int index = -1;
    EXPECT_EQ(DxTableGetStyleIndex(tables.styles[2], index), 0);
    EXPECT_EQ(index, 2);
    DX_STYLE_TYPE other = tables.styles[2];
    other.bold = 0;
    EXPECT_EQ(DxTableGetStyleIndex(other, index), 1005);
}

TEST_F(Tables, AWidthFactorOfZeroIsOne) {
    EXPECT_EQ(read(dxf().record("STYLE", {{2, "A"}, {41, "0"}})).styles[1].widthFactor, 1.0);
}

TEST_F(Tables, LineTypesAreReadFromTemplatesOnly) {
    DxfGroups many = {{2, "MANY"}, {49, "9"}, {73, "20"}};
    for (int i = 0; i < 20; ++i) many.push_back({49, std::to_string(i + 1)});
    const DxfText text = dxf()
                             .record("LTYPE", many)
                             .record("LTYPE", {{2, "ByLayer"}})
                             .record("LTYPE", {{2, "many"}, {73, "1"}})
                             .record("LTYPE", {{2, "BAD"}, {73, "-1"}, {49, "1"}})
                             .record("STYLE", {{2, "S"}})
                             .layer("L", 2);
    const DxTables& tables = read(text, DX_TABLES_TEMPLATE);
    const auto& types = tables.lineTypes;
    ASSERT_GE(types.size(), 2u);
    const DX_LTYPE_TYPE& row = types[types.size() - 2];
    EXPECT_EQ(row.name.view(), "MANY");
    EXPECT_EQ(row.elementCount, 16);
    EXPECT_EQ(row.dashes[0], 1) << "what stands ahead of the count is dropped";
    EXPECT_EQ(row.dashes[15], 16);
    EXPECT_EQ(types[types.size() - 1].elementCount, 0);
    EXPECT_NE(layer(tables, "L"), nullptr);
    EXPECT_EQ(tables.styles.size(), 1u);
    const std::size_t before = types.size() - 2;
    EXPECT_EQ(read(text).lineTypes.size(), before);
}

TEST_F(Tables, DimensionStylesStoreByNumber) {
    const DxTables& tables = read(dxf().record("DIMSTYLE", {{105, "2F"},
                                                            {2, "iso"},
                                                            {3, "<>mm"},
                                                            {41, "2"},
                                                            {140, "1e30"},
                                                            {148, "9"},
                                                            {71, "1"},
                                                            {179, "2"},
                                                            {270, "3"},
                                                            {289, "4"},
                                                            {344, "FFFFFFFF"},
                                                            {372, "5"},
                                                            {290, "6"}}));
    ASSERT_EQ(tables.dimStyles.size(), 1u);
    const DX_DIM_STYLE& style = tables.dimStyles[0];
    EXPECT_EQ(style.name.view(), "ISO");
    EXPECT_EQ(style.strings[0].view(), "<>mm");
    EXPECT_EQ(style.handle, 0x2Fu);
    EXPECT_EQ(style.reals[0], 1.0) << "the start value";
    EXPECT_EQ(style.reals[1], 2.0);
    EXPECT_EQ(style.reals[9], 1e30) << "no limit here";
    EXPECT_EQ(style.reals[17], 9.0);
    EXPECT_EQ(style.integers[0], 1);
    EXPECT_EQ(style.integers[18], 2);
    EXPECT_EQ(style.integers[19], 3);
    EXPECT_EQ(style.integers[38], 4);
    EXPECT_EQ(style.integers[43], -1);
    EXPECT_EQ(style.integers[45], 5);
}

TEST_F(Tables, ViewsAndBlockRecordsAreAppended) {
    const DxTables& tables = read(
        dxf()
            .record(
                "VIEW",
                {{2, "top"}, {70, "1"}, {10, "1"}, {20, "2"}, {31, "3"}, {12, "4"}, {44, "5"}, {281, "6"}})
            .record("VIEW", {{2, "top"}})
            .record("BLOCK_RECORD", {{2, "*Paper_Space"}, {5, "1F"}, {340, "2E"}})
            .record("BLOCK_RECORD", {{2, "*Paper_Space"}}));
    ASSERT_EQ(tables.views.size(), 2u);
    const DX_VIEW_TYPE& view = tables.views[0];
    EXPECT_EQ(view.name.view(), "TOP");
    EXPECT_EQ(view.flags, 1);
    EXPECT_EQ(view.centreY, 2);
    EXPECT_EQ(view.directionZ, 3);
    EXPECT_EQ(view.targetX, 4);
    EXPECT_EQ(view.backClip, 5);
    EXPECT_EQ(view.mode281, 6);
    ASSERT_EQ(tables.blockRecords.size(), 2u);
    EXPECT_EQ(tables.blockRecords[0].handle, 0x1Fu);
    EXPECT_EQ(tables.blockRecords[0].layoutHandle, 0x2Eu);
}

TEST_F(Tables, BrokenTablesCostNoMoreThanThemselves) {
    const DxfGroups tables = {{0, "SECTION"},
                              {2, "TABLES"},
                              {0, "TABLE"},
                              {2, "APPID"},
                              {0, "ENDTAB"},
                              {0, "TABLE"},
                              {2, "LAYER"},
                              {0, "LAYER"},
                              {2, "A"},
                              {0, "VPORT"},
                              {2, "X"},
                              {0, "LAYER"},
                              {2, std::string(300, 'n')},
                              {0, "ENDSEC"},
                              {0, "SECTION"},
                              {2, "BLOCKS"}};
    const DxTables& read = readText(dxfLines(tables));
    EXPECT_EQ(result_, 0) << "ENDSEC ends a table that has no ENDTAB";
    EXPECT_NE(layer(read, "A"), nullptr);
    EXPECT_NE(layer(read, std::string(160, 'n')), nullptr);
}

} // namespace

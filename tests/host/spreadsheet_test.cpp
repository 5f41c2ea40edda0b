// Spreadsheet files, with the rules that the installation ships as the sample.
#include "ut_excel.h"

#include "temp_dir.h"

#include <gtest/gtest.h>

static const std::string RULES = TORVA_SOURCE_DIR "/int/dxf/dflt/layerconv.xls";

TEST(Spreadsheet, CellsAreReadByRowAndColumn) {
    UtExcel sheet;
    ASSERT_EQ(sheet.Open(RULES), 0);
    ASSERT_EQ(sheet.Load(), 0);
    EXPECT_NE(sheet.SetActWorksheet(2), 0) << "there is one sheet";
    ASSERT_EQ(sheet.SetActWorksheet(1), 0);
    UtCString text;
    EXPECT_EQ(sheet.ReadCellString(2, 1, &text), 0);
    EXPECT_EQ(text, "windowaxis");
    EXPECT_EQ(sheet.ReadCellString(9, 3, &text), 0);
    EXPECT_EQ(text, "1,2");
    EXPECT_NE(sheet.ReadCellString(2, 2, &text), 0) << "empty";
    EXPECT_NE(sheet.ReadCellString(1000, 1, &text), 0);
    EXPECT_NE(sheet.ReadCellString(0, 1, &text), 0);
}

TEST(Spreadsheet, WhatIsNoneIsRefused) {
    TempDir dir;
    dir.write("a.xls", "Key;Layer\n");
    dir.write("b.xls", std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + std::string(3000, '\7'));
    UtExcel sheet;
    EXPECT_NE(sheet.Open(dir.file("a.xls")), 0);
    EXPECT_NE(sheet.Open(dir.file("b.xls")), 0);
    EXPECT_NE(sheet.Open(dir.file("none.xls")), 0);
    UtCString text;
    EXPECT_NE(sheet.ReadCellString(1, 1, &text), 0);
}

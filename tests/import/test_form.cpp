// Sheet and scale of an import.
#include "import_text.h"

#include <gtest/gtest.h>

namespace {

std::string formAfter(const std::string& comment) {
    const DxfGroups line{{8, "A"}, {10, "0"}, {20, "0"}, {11, "9000"}, {21, "10"}};
    DxfText text = dxf();
    text.header("AC1015").entity("LINE", line);
    std::string file = text.text();
    file.insert(0, comment);
    const ImportResult result = importText(file);
    EXPECT_EQ(result.stat, 0);
    return result.dump.substr(0, result.dump.find('\n'));
}

TEST(Form, CommentsOfTheFileSetSheetAndScale) {
    EXPECT_EQ(formAfter("999\nSCALE 1:100\n999\nFORMAT A3\n"), "drawing unit mm scale 0.01 format 4");
    EXPECT_EQ(formAfter("999\nSCALE 1:100\n999\nFORMAT A00\n"), "drawing unit mm scale 0.01 format 0");
    EXPECT_EQ(formAfter("999\nSCALE 1:100\n999\nFORMAT X\n"), "drawing unit mm scale 0.01 format 1")
        << "an unknown word leaves the sheet";
    EXPECT_EQ(formAfter("999\nFORMAT A3\n"), formAfter("")) << "without a scale the drawing is fitted";
}

} // namespace

// All roads into the host share one frame: the unit of the space that is read, behind the drawing shift.
#include "drawn.h"

#include <gtest/gtest.h>

namespace {

/// A drawing in metres whose sheet is in millimetres.
ImportOptions sheetInMillimetres(double space) {
    ImportOptions options = unshifted();
    options.texts["$DxfUnit"] = "m";
    options.numbers["&DxfUnit"] = 5;
    options.numbers["&DxfParseExt"] = 0;
    options.numbers["&DxfPaper"] = space;
    return options;
}

const DxfGroups onSheet{{67, "1"}};
const DxfGroups line = at(10, {0, 0}) + at(11, {297, 210});
const DxfGroups ellipse = DxfGroups{{40, "0.5"}} + at(10, {50, 50}) + at(11, {40, 0});
const DxfGroups solid = at(10, {0, 0}) + at(11, {100, 0}) + at(12, {0, 50}) + at(13, {100, 50});
const DxfGroups wide = DxfGroups{{43, "20"}} + at(10, {0, 0}) + at(10, {100, 0});
const DxfGroups text = DxfGroups{{1, "A"}, {40, "5"}} + at(10, {10, 20});

DxfText sheet() {
    DxfText file = dxf().header("AC1015");
    for (const auto& [name, groups] : {std::pair{"LINE", line},
                                       {"ELLIPSE", ellipse},
                                       {"SOLID", solid},
                                       {"LWPOLYLINE", wide},
                                       {"TEXT", text}})
        file.entity(name, onSheet + groups);
    return file;
}

TEST(Frame, ASheetInAnotherUnitIsConvertedOnEveryRoad) {
    ImportOptions options = sheetInMillimetres(1);
    options.config = flags("FILLMODE=1\nLINE_AS_HATCH=1\n");
    const std::string found = drawn(sheet(), options); // the drawing has its own unit again, millimetres
    options.texts["$DxfUnit"] = "mm";
    options.numbers["&DxfUnit"] = 3;
    EXPECT_EQ(found, drawn(sheet(), options));
    for (const char* wanted :
         {"draw 297 210\n", "through 90 50 ", "hatch", "draw 100 -10 info 5", "height 5 "})
        EXPECT_NE(found.find(wanted), std::string::npos) << wanted << " isn't in\n" << found;
}

} // namespace

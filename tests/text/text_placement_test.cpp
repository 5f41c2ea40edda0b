// Where the lines of a text stand in a file.
#include "text/dx_text_placement.h"

#include <gtest/gtest.h>

#include <string>

namespace {

DX_TEXT_SHAPE shapeAt(int origin) {
    DX_TEXT_SHAPE shape;
    shape.height = 10, shape.width = 6, shape.step = 20;
    shape.origin = origin;
    return shape;
}

std::string shown(const DX_LINE_PLACE& place) {
    const auto text = [](const RPT& p) {
        return std::to_string(static_cast<int>(p.x)) + "," + std::to_string(static_cast<int>(p.y));
    };
    return text(place.first) + " " + text(place.second) + " " + std::to_string(place.hor) + "/" +
           std::to_string(place.ver);
}

// A line that is 60 long for the host and 48 in the file's font, at (100, 200).
TEST(TextPlacement, PointsFollowTheOrigin) {
    const char* const fonts[] = {"124,200 124,200 0/0", "100,200 100,200 0/0", "70,200 94,200 1/0",
                                 "40,200 88,200 2/0",   "100,190 100,195 0/2", "70,190 94,195 1/2",
                                 "40,190 88,195 2/2",   "100,180 100,190 0/3", "70,180 94,190 1/3",
                                 "40,180 88,190 2/3"};
    const char* const faces[] = {"124,200 124,200 0/0", "100,200 100,200 0/0", "70,200 100,200 1/0",
                                 "40,200 100,200 2/0",  "100,190 100,195 0/2", "70,190 100,195 1/2",
                                 "40,190 100,195 2/2",  "100,180 100,190 0/3", "70,180 100,190 1/3",
                                 "40,180 100,190 2/3"};
    for (int origin = 0; origin <= 9; ++origin) {
        DX_TEXT_SHAPE shape = shapeAt(origin);
        EXPECT_EQ(shown(DxPlaceLine(shape, {100, 200}, {60, 48}, 0)), fonts[origin]) << origin;
        shape.isFace = true;
        EXPECT_EQ(shown(DxPlaceLine(shape, {100, 200}, {60, 48}, 0)), faces[origin]) << origin;
        shape.isFace = false, shape.pointsMode = 1;
        const DX_LINE_PLACE fit = DxPlaceLine(shape, {100, 200}, {60, 48}, 0);
        EXPECT_EQ(fit.hor, 5);
        EXPECT_EQ(fit.second.x - fit.first.x, 48) << origin;
    }
}

TEST(TextPlacement, ABlockBeginsAtItsTopLine) {
    // Three lines of 20, 60 wide.
    const RPT expected[] = {{100, 240}, {100, 240}, {70, 240},  {40, 240}, {100, 210},
                            {70, 210},  {40, 210},  {100, 180}, {70, 180}, {40, 180}};
    for (int origin = 0; origin <= 9; ++origin) {
        DX_TEXT_SHAPE shape = shapeAt(origin);
        const RPT top = DxTextTopLine(shape, {100, 200}, 3, 60);
        EXPECT_EQ(top.x, expected[origin].x) << origin;
        EXPECT_EQ(top.y, expected[origin].y) << origin;
        EXPECT_EQ(shape.origin, origin == 0 ? 0 : 1);
    }
    DX_TEXT_SHAPE shape = shapeAt(1);
    for (const auto& [justification, x] : {std::pair{0, 100}, {1, 115}, {2, 130}}) {
        shape.justification = justification;
        EXPECT_EQ(DxTextJustified(shape, {100, 200}, 60, 30).x, x);
    }
}

TEST(TextPlacement, CharactersStandInsideTheirCells) {
    DX_TEXT_SHAPE shape = shapeAt(1);
    shape.padX = 3, shape.padY = 5;
    EXPECT_EQ(shown(DxPlaceLine(shape, {100, 200}, {60, 48}, 0)), "103,205 103,205 0/0");
    shape.angle = 1.5707963267948966;
    EXPECT_NEAR(DxPlaceLine(shape, {100, 200}, {60, 48}, 0).first.x, 95, 1e-9);
    shape.angle = 0, shape.isFace = shape.isMtext = true;
    EXPECT_NEAR(DxPlaceLine(shape, {100, 200}, {60, 48}, 0.3).second.y, 202, 1e-9) << "hangs on its bottom";
    shape.origin = 7;
    EXPECT_NEAR(DxPlaceLine(shape, {100, 200}, {60, 48}, 0.3).second.y, 195, 1e-9) << "on its top";
}

TEST(TextPlacement, AttachmentsAreOriginsUpsideDown) {
    const int attachments[] = {7, 7, 8, 9, 4, 5, 6, 1, 2, 3};
    for (int origin = 0; origin <= 9; ++origin)
        EXPECT_EQ(DxTextAttachment(shapeAt(origin)), attachments[origin]) << origin;
}

} // namespace

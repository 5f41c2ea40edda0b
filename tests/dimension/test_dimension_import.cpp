// What becomes of the dimensions of a file, by what its blocks hold.
#include "dimension_text.h"
#include "import_text.h"

#include "drawing/drawing.h"
#include "text/layout.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

/// All dimensions of the open drawing by their text.
std::map<std::string, const host::Dimension*> dimensionsByText() {
    std::map<std::string, const host::Dimension*> found;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Dimension& dimension : pattern.dimensions) {
            std::string text;
            for (const int row : {dimension.textRow, dimension.tolRow})
                if (row >= 0)
                    for (const std::string& line : pattern.texts[static_cast<std::size_t>(row)].lines)
                        text += (text.empty() ? "" : "|") + line;
            found[text] = &dimension;
        }
    return found;
}

std::string layoutOf(const host::Dimension& dimension) {
    std::string layout;
    for (const RPT3& p : dimension.points) layout += std::to_string(static_cast<int>(p.z));
    return layout;
}

/// Blocks that arrows may be INSERTs of.
DxfText fileWithArrowBlocks() {
    DxfText file = dxf();
    file.header("AC1015").layer("DIM", 3).layer("OTHER", 4);
    file.block("ARROW", {{0, "SOLID"},
                         {8, "0"},
                         {10, "2.5"},
                         {20, "0.5"},
                         {11, "2.5"},
                         {21, "-0.5"},
                         {12, "0"},
                         {22, "0"},
                         {13, "0"},
                         {23, "0"}});
    file.block("DOT", {{0, "CIRCLE"}, {8, "0"}, {10, "0"}, {20, "0"}, {40, "2.5"}});
    return file;
}

std::vector<DimShape> allShapes() {
    std::vector<DimShape> shapes;
    for (const double degrees : {0.0, 30.0, 89.95, 135.0, 200.0, 300.0})
        for (const DimArrow arrow : {DimArrow::None, DimArrow::Filled, DimArrow::Tick, DimArrow::Dot})
            for (const int line : {1, 2, 3, 4, 5}) // one, two, three pieces; gap; outside
                for (const int bits : {0, 1, 2, 3, 4, 5, 6, 7}) {
                    DimShape shape;
                    shape.degrees = degrees, shape.arrow = arrow;
                    shape.pieces = line <= 3 ? line : 1;
                    shape.hasGap = line == 4, shape.isOutside = line == 5;
                    shape.hasExtensions = (bits & 1) == 0;
                    shape.noise = bits & 2 ? 1e-5 : 0;
                    shape.textFirst = (bits & 4) != 0;
                    shape.asMtext = line % 2 == 0;
                    shape.asBlocks = line != 2;
                    shape.text = "T" + std::to_string(shapes.size());
                    shapes.push_back(shape);
                }
    return shapes;
}

void check(const DimShape& shape, const host::Dimension& made) {
    EXPECT_EQ(layoutOf(made), shape.isOutside ? "11112332" : shape.hasGap ? "11113223" : "111133");
    const int kinds[] = {0, 1, 3, 2};
    EXPECT_EQ(made.arrow.kind[0], kinds[static_cast<int>(shape.arrow)]);
    const bool hasArrow = shape.arrow != DimArrow::None;
    const double perUnit = host::sheetMillimetres(host::openDrawing());
    EXPECT_NEAR(made.arrow.length[0] / perUnit, hasArrow ? 2.5 : 0, 1e-4);
    EXPECT_NEAR(made.arrow.width[0] / perUnit, shape.arrow == DimArrow::Dot ? 2.5 : hasArrow ? 1.0 : 0, 1e-4);
    EXPECT_EQ(made.txt.place[0], shape.hasGap ? 5 : 2);
    const RPT3 &e1 = made.points[0], &e2 = made.points[1];
    EXPECT_NEAR(std::hypot(e1.x - e2.x, e1.y - e2.y), shape.hasExtensions ? 16 : 0, 1e-4);
    EXPECT_NEAR(std::hypot(made.refs[0].x - made.refs[1].x, made.refs[0].y - made.refs[1].y), 40, 1e-6);
}

} // namespace

TEST(DimensionImport, LinearBlocksOfAllShapesAreRecognised) {
    const std::vector<DimShape> shapes = allShapes();
    DxfText file = fileWithArrowBlocks();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const auto place = static_cast<double>(i);
        addDimension(file, "*D" + std::to_string(i), linearDimension(shapes[i], 300 * place, 177 * place));
    }
    const ImportResult result = importText(file.text());
    const auto found = dimensionsByText();
    ASSERT_EQ(found.size(), shapes.size()) << result.protocol.substr(0, 500);
    for (const DimShape& shape : shapes) {
        SCOPED_TRACE(shape.text + " at " + std::to_string(shape.degrees) + " noise " +
                     std::to_string(shape.noise) + " arrow " + std::to_string(static_cast<int>(shape.arrow)));
        ASSERT_TRUE(found.count(shape.text));
        check(shape, *found.at(shape.text));
        if (testing::Test::HasFailure()) return;
    }
}

TEST(DimensionImport, EachKindHasItsLayout) {
    DimShape plain, gap, outside;
    plain.text = "plain", gap.text = "gap", outside.text = "outside";
    gap.hasGap = outside.isOutside = true;
    struct Row {
        DimEntity dimension;
        const char* text;
        int kind;
        const char* layout; ///< "lines": made of lines
    };
    const std::vector<Row> rows{
        {angularDimension(plain), "plain", 4, "113311"}, {angularDimension(gap), "gap", 4, "11322311"},
        {diameterDimension(plain), "plain", 6, "33"},    {diameterDimension(gap), "gap", 6, "3223"},
        {radiusDimension(plain), "plain", 5, "32"},      {radiusDimension(outside), "outside", 5, "23"},
        {ordinateDimension(true), "12.50", 1, ""},       {ordinateDimension(false), "12.50", 2, ""},
        {linearDimension(plain), "plain", 21, "111133"},
    };
    for (const Row& row : rows) {
        DxfText file = fileWithArrowBlocks();
        addDimension(file, "*D1", row.dimension);
        importText(file.text());
        const auto found = dimensionsByText();
        ASSERT_EQ(found.count(row.text), 1U) << row.kind << row.layout;
        EXPECT_EQ(found.at(row.text)->kind, row.kind) << row.text;
        EXPECT_EQ(layoutOf(*found.at(row.text)), row.layout) << row.kind << row.text;
    }
}

TEST(DimensionImport, SmallerTextsAndSignsAreTolerances) {
    struct Row {
        std::vector<std::string> tolerances;
        std::string text;
        int kind;
    };
    const Row rows[] = {
        {{"+0.1"}, "12.50|+0.1", 1}, {{"+0.1", "-0.2"}, "12.50|+0.1|-0.2", 2}, {{"H7"}, "12.50|H7", 1}};
    for (const Row& row : rows) {
        DimShape shape;
        shape.tolerances = row.tolerances;
        DxfText file = fileWithArrowBlocks();
        addDimension(file, "*D1", linearDimension(shape));
        importText(file.text());
        const auto found = dimensionsByText();
        ASSERT_EQ(found.count(row.text), 1U)
            << row.text << " is " << (found.empty() ? "" : found.begin()->first);
        EXPECT_EQ(found.at(row.text)->tol.kind, row.kind);
        EXPECT_NEAR(found.at(row.text)->tol.height, 1.25, 1e-9);
    }
    DimShape many;
    many.tolerances = {"+1", "-1", "+2"};
    DxfText file = fileWithArrowBlocks();
    addDimension(file, "*D1", linearDimension(many));
    const ImportResult result = importText(file.text());
    EXPECT_TRUE(dimensionsByText().empty()); // the content of its block
    EXPECT_NE(result.dump.find("-1"), std::string::npos);
}

TEST(DimensionImport, DimensionsThatTouchMakeAChain) {
    const auto placesOf = [](const std::vector<std::pair<double, std::string>>& parts) {
        DxfText file = fileWithArrowBlocks();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            DimShape shape;
            shape.text = std::to_string(i) + ".5" + std::string(i, '0');
            addDimension(file, "*D" + std::to_string(i), linearDimension(shape, parts[i].first),
                         parts[i].second);
        }
        importText(file.text());
        std::string places;
        for (const host::Pattern& pattern : host::openDrawing().patterns) {
            for (const host::Dimension& d : pattern.dimensions)
                places += std::to_string(d.place) + "/" + std::to_string(d.txt.decimals) + " ";
            if (!pattern.dimensions.empty()) places += "; ";
        }
        return places;
    };
    EXPECT_EQ(placesOf({{40, "DIM"}, {0, "DIM"}, {80, "DIM"}}), "1/3 2/3 6/3 ; "); // the most decimals of all
    EXPECT_EQ(placesOf({{0, "DIM"}, {41, "DIM"}}), "5/1 5/2 ; ");
    EXPECT_EQ(placesOf({{0, "DIM"}, {40, "OTHER"}}), "5/1 ; 5/2 ; ");
}

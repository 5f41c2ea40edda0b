// Dimensions whose blocks aren't plain: mirrored, nested, with areas as arrows, hostile; and what the entity
// changes of its style.
#include "dimension_text.h"
#include "import_text.h"

#include "dimension/dim_drawing.h"
#include "drawing/drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

std::vector<const host::Dimension*> dimensionsNow() {
    std::vector<const host::Dimension*> found;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Dimension& dimension : pattern.dimensions) found.push_back(&dimension);
    return found;
}

DxfText file() {
    DxfText text = dxf();
    text.header("AC1015").layer("DIM", 3);
    return text;
}

DxfGroups groupsOf(const char* entity, const std::vector<std::pair<int, std::string>>& groups) {
    DxfGroups made{{0, entity}, {8, "0"}};
    for (const auto& [code, value] : groups) made.push_back({code, value});
    return made;
}
DxfGroups lineOf(const char* x0, const char* y0, const char* x1, const char* y1) {
    return groupsOf("LINE", {{10, x0}, {20, y0}, {11, x1}, {21, y1}});
}
void append(DxfGroups& to, const DxfGroups& more) {
    to.insert(to.end(), more.begin(), more.end());
}

const char* const KEEP = "#FLAGS-START\nKEEP_DIM=1\n#FLAGS-END\n#EOF\n";

} // namespace

TEST(DimensionBlocks, AMirroredOneMeasuresTheSame) {
    DimShape shape;
    DimEntity dimension = linearDimension(shape);
    append(dimension.entity, {{210, "0"}, {220, "0"}, {230, "-1"}});
    // Points of the entity are world ones but for that of the text; the block is mirrored as a whole.
    for (DxfGroup& group : dimension.entity)
        if (group.code == 10 || group.code == 13 || group.code == 14)
            group.value = std::to_string(-std::stod(group.value));
    DxfText text = file();
    addDimension(text, "*D1", dimension);
    importText(text.text());
    const auto made = dimensionsNow();
    ASSERT_EQ(made.size(), 1U);
    ASSERT_EQ(made[0]->points.size(), 6U);
    EXPECT_NEAR(std::fabs(made[0]->refs[0].x - made[0]->refs[1].x), 40, 1e-9);
    EXPECT_NEAR(std::fabs(made[0]->points[0].y - made[0]->points[1].y), 16, 1e-9);
    EXPECT_EQ(made[0]->arrow.kind[0], 1);
}

TEST(DimensionBlocks, ExtendedDataChangesAStyleThatIsThere) {
    struct Row {
        const char* style;
        double offset; ///< of the extension lines, on the sheet
    };
    for (const Row& row : {Row{"STANDARD", 3.5}, Row{"MISSING", 0}}) {
        DimEntity dimension = linearDimension(DimShape{});
        append(dimension.entity, {{1001, "ACAD"},
                                  {1000, "DSTYLE"},
                                  {1002, "{"},
                                  {1070, "42"},
                                  {1040, "3.5"},
                                  {1070, "44"},
                                  {1040, "1.25"},
                                  {1002, "}"}});
        DxfText text = file();
        text.record("DIMSTYLE", {{0, "DIMSTYLE"}, {2, "Standard"}, {42, "0.5"}, {44, "0.75"}});
        text.block("*D1", dimension.block);
        DxfGroups groups{{8, "DIM"}, {2, "*D1"}, {3, row.style}};
        append(groups, dimension.entity);
        text.entity("DIMENSION", groups);
        EXPECT_EQ(importText(text.text()).stat, 0);
        const auto made = dimensionsNow();
        ASSERT_EQ(made.size(), 1U) << row.style;
        EXPECT_EQ(made[0]->points.size(), 6U) << row.style;
        EXPECT_DOUBLE_EQ(made[0]->arrow.extOffset, row.offset) << row.style;
    }
}

TEST(DimensionBlocks, AreasAndNestedInsertsAreArrowsToo) {
    DimShape shape;
    shape.arrow = DimArrow::None;
    DimEntity dimension = linearDimension(shape);
    // One head as an area of its own, the other within a block in a block.
    append(dimension.block, groupsOf("HATCH", {{2, "SOLID"},
                                               {70, "1"},
                                               {71, "0"},
                                               {91, "1"},
                                               {92, "3"},
                                               {72, "0"},
                                               {73, "1"},
                                               {93, "3"},
                                               {10, "0"},
                                               {20, "15"},
                                               {10, "2.5"},
                                               {20, "15.5"},
                                               {10, "2.5"},
                                               {20, "14.5"},
                                               {97, "0"},
                                               {75, "0"},
                                               {76, "1"},
                                               {98, "0"}}));
    append(dimension.block, groupsOf("INSERT", {{2, "OUTER"}, {10, "40"}, {20, "15"}, {50, "180"}}));
    DxfText text = file();
    text.block("HEAD", groupsOf("HATCH", {{2, "SOLID"}, {70, "1"},   {91, "1"},    {92, "1"},   {93, "3"},
                                          {72, "1"},    {10, "0"},   {20, "0"},    {11, "2.5"}, {21, "0.5"},
                                          {72, "1"},    {10, "2.5"}, {20, "0.5"},  {11, "2.5"}, {21, "-0.5"},
                                          {72, "1"},    {10, "2.5"}, {20, "-0.5"}, {11, "0"},   {21, "0"},
                                          {97, "0"},    {75, "0"},   {76, "1"},    {98, "0"}}));
    text.block("OUTER", groupsOf("INSERT", {{2, "HEAD"}, {10, "0"}, {20, "0"}}));
    addDimension(text, "*D1", dimension);
    importText(text.text());
    const auto made = dimensionsNow();
    ASSERT_EQ(made.size(), 1U);
    EXPECT_EQ(made[0]->points.size(), 6U);
    EXPECT_EQ(made[0]->arrow.kind[0], 1);
    EXPECT_NEAR(made[0]->arrow.length[0], 2.5, 1e-6);
    EXPECT_NEAR(made[0]->arrow.width[0], 1, 1e-6);
}

TEST(DimensionBlocks, LinesThatPointsCantTellAreKept) {
    // A leader with a knee, in lines or in an old polyline.
    DxfGroups knee = lineOf("50", "20", "50", "10"), chain = groupsOf("POLYLINE", {{66, "1"}, {70, "0"}});
    append(knee, lineOf("50", "10", "60", "5"));
    append(knee, lineOf("60", "5", "60", "-5"));
    for (const auto& [x, y] : {std::pair("50", "20"), {"50", "10"}, {"60", "5"}, {"60", "-5"}})
        append(chain, groupsOf("VERTEX", {{10, x}, {20, y}}));
    append(chain, {{0, "SEQEND"}, {8, "0"}});
    append(chain, lineOf("50", "20", "50", "19"));
    for (const bool keeps : {false, true})
        for (const DxfGroups& lines : {knee, chain}) {
            DimEntity dimension = ordinateDimension(true);
            const DxfGroups text(dimension.block.begin() + 6, dimension.block.end());
            dimension.block = lines;
            append(dimension.block, text);
            for (DxfGroup& group : dimension.entity) {
                if (group.code == 14) group.value = "60";
                if (group.code == 24) group.value = "-5";
            }
            DxfText drawing = file();
            addDimension(drawing, "*D1", dimension);
            ImportOptions options;
            options.config = keeps ? KEEP : "";
            importText(drawing.text(), options);
            const auto made = dimensionsNow();
            ASSERT_EQ(made.size(), 1U);
            double length = 0;
            const auto drawn = host::drawDimension(*made[0], 1).lines;
            for (std::size_t i = 1; i < drawn.size(); ++i)
                if (drawn[i].type == host::ElementType::Draw)
                    length += std::hypot(drawn[i].x - drawn[i - 1].x, drawn[i].y - drawn[i - 1].y);
            const double wanted = keeps ? 20 + std::hypot(10, 5) : std::hypot(10, 25);
            EXPECT_NEAR(length, wanted, keeps ? 1.001 : 1e-9) << keeps;
        }
}

TEST(DimensionBlocks, HostileOnesAreToldAndDrawnAsFarAsTheyAreSound) {
    DimShape shape;
    shape.text = "sound";
    DimEntity sound = linearDimension(shape, 1000);
    DimEntity itself = linearDimension(DimShape{}), infinite = itself, large = itself;
    append(itself.block, groupsOf("INSERT", {{2, "*D1"}, {10, "0"}, {20, "0"}}));
    append(infinite.block, lineOf("1e308", "-1e308", "nan", "inf"));
    for (int i = 0; i < 30'000; ++i) append(large.block, lineOf("0", "0", "1", "1"));
    DxfText text = file();
    addDimension(text, "*D1", itself);
    addDimension(text, "*D2", infinite);
    addDimension(text, "*D3", large);
    addDimension(text, "*D4", sound);
    const ImportResult result = importText(text.text());
    EXPECT_EQ(result.stat, 0);
    EXPECT_TRUE(result.hasMessage("*D3 wurde nur als Linie erzeugt")) << result.protocol;
    std::size_t sounds = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Dimension& made : pattern.dimensions) {
            for (const RPT3& p : made.points) EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
            const host::Text& shown = pattern.texts.at(static_cast<std::size_t>(made.textRow));
            sounds += made.points.size() == 6 && shown.lines.at(0) == "sound";
        }
    EXPECT_EQ(sounds, 1U);
}

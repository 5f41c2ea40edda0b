#include "host_fixture.h"

#include <set>
#include <tuple>

using testing::ElementsAre;

namespace {

std::vector<int> contentNumbers() {
    std::vector<int> numbers;
    int code = 145;
    for (int number = -1; ovpat(&code, &number) == 0;) numbers.push_back(number);
    return numbers;
}

} // namespace

TEST_F(HostTest, PatternNumbersAscendAndAreNotUsedTwice) {
    EXPECT_EQ(control(5, 0), 1005) << "no active pattern yet";
    EXPECT_EQ(newPattern(), 1);
    EXPECT_EQ(newPattern(11), 2);
    EXPECT_EQ(newPattern(), 3);
    EXPECT_EQ(control(17, 3), 0);
    EXPECT_EQ(control(5, 0), 1005) << "the active pattern is gone";
    EXPECT_EQ(control(17, 3), 1005);
    EXPECT_EQ(newPattern(), 4) << "3 was used";
    EXPECT_EQ(newPattern(), 5);
    EXPECT_EQ(control(17, 4), 0);
    EXPECT_THAT(contentNumbers(), ElementsAre(1, 5)) << "neither scratch nor deleted patterns";
    EXPECT_EQ(control(23, 4), 1005);
    EXPECT_EQ(control(23, 1), 0);
    int code = 5;
    int active = 0;
    EXPECT_EQ(ovpat(&code, &active), 0);
    EXPECT_EQ(active, 1);
    for (const int unknown : {0, -5, 99, 2147483647}) EXPECT_EQ(control(23, unknown), 1005) << unknown;
}

TEST_F(HostTest, PatternsThatComeAndGoLeaveNoMemoryBehind) {
    const int kept = newPattern();
    for (int i = 0; i < 10000; ++i) control(17, newPattern());
    EXPECT_EQ(host::openDrawing().patterns.size(), 1U);
    EXPECT_EQ(newPattern(), kept + 10001);
    ovdraw(1, 1, 1, 0);
    EXPECT_EQ(host::openDrawing().find(kept + 10001)->elements.size(), 1U);
    EXPECT_EQ(host::openDrawing().find(kept + 10000), nullptr);
    EXPECT_THAT(contentNumbers(), ElementsAre(kept, kept + 10001));
}

TEST_F(HostTest, IdentifyingStringsAndAttributesTravelTogether) {
    const int from = newPattern();
    const int to = newPattern();
    UtCString level("L");
    UtCString cls("C");
    UtCString group("G");
    UtCString name("N");
    int code = 21;
    int number = from;
    ASSERT_EQ(ovpatinfo(&code, &number, &level, &cls, &group, &name), 0);
    UtCString value;
    for (const auto& [key, expected] : {std::pair{"#G", "G"}, {"#E", "L"}, {"#K", "C"}, {"#M", "N"}}) {
        EXPECT_EQ(UoGetSingleAttr(from, key, &value), 0);
        EXPECT_EQ(value, expected);
    }
    UoSetSingleAttr(from, "layer", "Wände");
    UoSetSingleAttr(from, "b", "1");
    UoSetSingleAttrInt(from, "a", -7);
    UoSetSingleAttr(from, "b", "2");
    UoSetSingleAttr(to, "a", "old");
    EXPECT_EQ(UoCopyAllAttrs(from, to), 0);
    UtCString key;
    ASSERT_EQ(UoGetAttr(from, 0, &key, &value), 0) << "in the order of their first setting";
    EXPECT_EQ(key + "=" + value, "b=2");
    EXPECT_EQ(UoGetAttr(from, 2, &key, &value), 1005);
    int integer = 0;
    EXPECT_EQ(UoGetSingleAttrInt(to, "a", &integer), 0);
    EXPECT_EQ(integer, -7);
    EXPECT_EQ(UoGetSingleAttr(to, "missing", &value), 1005);
    EXPECT_EQ(UoGetSingleAttr(to, "obstat", &value), 1005);
    EXPECT_EQ(UoCopyAllAttrs(from, 99), 1005);
    EXPECT_EQ(patterns(), "pattern 1 group \"G\" level \"L\" class \"C\" name \"N\" layer \"Wände\"\n"
                          "  attribute \"b\" \"2\"\n  attribute \"a\" \"-7\"\n"
                          "pattern 2 group \"G\" level \"L\" class \"C\" name \"N\" layer \"Wände\"\n"
                          "  attribute \"a\" \"-7\"\n  attribute \"b\" \"2\"\n");
}

TEST_F(HostTest, DeclaredAttributesKeepTheirLength) {
    int context = 0;
    CiContext::Add(&context);
    const DsCsr cursor = cursorOf(newPattern());
    EXPECT_NE(DsAttrSetSingle(&cursor, "dxf", ""), 0) << "not declared";
    ASSERT_EQ(CiContext::DefParamAttrLong(context, "dxf", "DXF", 3), 0);
    EXPECT_EQ(DsAttrSetSingle(&cursor, "dxf", "äöü"), 0) << "characters count, not bytes";
    EXPECT_NE(DsAttrSetSingle(&cursor, "dxf", "long"), 0);
    EXPECT_NE(DsAttrSetSingleCheckFree(&cursor, "", "x", 1), 0);
    EXPECT_NE(DsAttrSetSingleCheckFree(&cursor, std::string(256, 'n'), "x", 1), 0);
    EXPECT_EQ(DsAttrSetSingleCheckFree(&cursor, std::string(256, 'n'), "x", 0), 0);
}

TEST_F(HostTest, PatternsFollowTheVisibilityOfTheirLayer) {
    const int number = newPattern();
    ovdraw(1, 5, 5, 0);
    const DsCsr cursor = cursorOf(number);
    EXPECT_TRUE(DsVisTest2d(&cursor)) << "without a layer";
    UoSetSingleAttr(number, "layer", "A");
    EXPECT_TRUE(DsVisTest2d(&cursor)) << "with a layer that nobody knows";
    DsLayerApi::AddDXFLayer("B", true, false);
    DsLayerApi::AddDXFLayer("A", false, true);
    EXPECT_FALSE(DsVisTest2d(&cursor));
    EXPECT_TRUE(host::openDrawing().extents().empty);
    DsLayerApi::AddDXFLayer("A", true, true);
    EXPECT_TRUE(DsVisTest2d(&cursor));
    EXPECT_EQ(host::openDrawing().layers.size(), 2U);
}

TEST_F(HostTest, ObjectsOfDeletedPatternsPointNowhere) {
    const int number = newPattern();
    _ObObject* object = DsObListGetOb(number);
    DsCsr cursor(object);
    EXPECT_EQ(DsCursorToPatNo(&cursor), number);
    CiDrawing(0).SetLastInterfaceIds(&object, 1);
    EXPECT_THAT(host::openDrawing().lastInterfaceIds, ElementsAre(number));
    control(17, number);
    EXPECT_EQ(DsObListGetOb(number), nullptr);
    RPT3 low{};
    RPT3 high{};
    EXPECT_EQ(CiPat(0).GetBox(cursor, &low, &high), 1005);
}

TEST_F(HostTest, HatchesBecomePatternsOfTheirOwn) {
    const int number = newPattern();
    ovdraw(1, 1, 1, 0);
    UoSetSingleAttr(number, "layer", "H");
    host::openDrawing().find(number)->hatches.resize(2);
    const int alone = newPattern();
    host::openDrawing().find(alone)->hatches.resize(1);
    ASSERT_EQ(CiPat(0).SplitByHatchs(65535, 1, 1), 0);
    EXPECT_EQ(host::countDrawing(host::openDrawing()).patterns, 4);
    EXPECT_EQ(host::openDrawing().find(number)->hatches.size(), 0U);
    EXPECT_EQ(host::openDrawing().find(alone)->hatches.size(), 1U);
    EXPECT_EQ(host::openDrawing().find(4)->ids.layer, "H");
    CiDrawing drawing(0);
    drawing.StoreWorkFile(4);
    control(17, number);
    EXPECT_EQ(drawing.ReadWorkFile(drawing.GetLastWorkFileName(), 0), 0);
    EXPECT_NE(host::openDrawing().find(number), nullptr);
}

TEST_F(HostTest, PaletteHasTheDxfColoursOnTheirPensAndNeighboursForAll) {
    const auto rgb = [](host::Rgb c) { return std::tuple{c.r, c.g, c.b}; };
    EXPECT_EQ(rgb(host::dxfColor(11)), std::tuple(255, 127, 127));
    EXPECT_EQ(rgb(host::dxfColor(25)), std::tuple(153, 95, 76));
    EXPECT_EQ(rgb(host::dxfColor(182)), std::tuple(51, 0, 204));
    EXPECT_EQ(rgb(host::dxfColor(249)), std::tuple(76, 38, 47));
    EXPECT_EQ(rgb(host::dxfColor(254)), std::tuple(214, 214, 214));
    EXPECT_EQ(rgb(host::paletteColor(1)), rgb(host::dxfColor(7)));
    EXPECT_EQ(rgb(host::paletteColor(355)), rgb(host::dxfColor(11)));
    EXPECT_EQ(rgb(host::paletteColor(2)), rgb(host::dxfColor(1)))
        << "colour 10 shares the pen and comes later";
    EXPECT_EQ(rgb(host::paletteColor(304)), rgb(host::dxfColor(255)));
    int farthest = 0;
    for (int sample = 0; sample < 512; ++sample) {
        const int want[3] = {(sample & 7) * 36, (sample >> 3 & 7) * 36, (sample >> 6) * 36};
        int nearest = 1 << 20;
        for (int pen = 0; pen < 1024; ++pen) {
            const host::Rgb c = host::paletteColor(pen);
            const int d[3] = {c.r - want[0], c.g - want[1], c.b - want[2]};
            nearest = std::min(nearest, d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        }
        farthest = std::max(farthest, nearest);
    }
    EXPECT_LT(farthest, 40 * 40) << "every colour has a pen near it";
}

// Objects: materials and the georeference.
#include "../import/drawn.h"

#include "drawing/drawing.h"
#include "sections/sections_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace {

DxfText drawing(const DxfGroups& objects) {
    return dxf()
        .header("AC1024")
        .entity("LINE", at(10, {100, 50}) + at(11, {110, 50}))
        .section("OBJECTS", objects, true);
}

DxfGroups geoData(int type, double z = 0) {
    return DxfGroups{{0, "GEODATA"}, {5, "1"}, {70, std::to_string(type)}} + at(10, {100, 50, z}) +
           at(11, {4000, 9000, 12.345}) + at(12, {1, 0});
}

std::string georeference(const std::string& dump) {
    const std::size_t at = dump.find("georeference");
    return at == std::string::npos ? "" : dump.substr(at, dump.find('\n', at) - at);
}

} // namespace

TEST(Materials, AreKeptByHandleAndCountTheirGroups) {
    importText(drawing({{0, "MATERIAL"},
                        {5, "A"},
                        {1, "Glas"},
                        {90, "255"},
                        {90, "7"},
                        {270, "2"},
                        {270, "3"},
                        {270, "4"},
                        {44, "9"},
                        {3, "t.jpg"},
                        {0, "MATERIAL"},
                        {5, "A"},
                        {1, "Zweite"}})
                   .text());
    ASSERT_EQ(DxMaterials.size(), 1u);
    const DX_MATERIAL_TYPE& m = DxMaterials.at(0xA);
    EXPECT_EQ(m.name, "Glas") << "the first of a handle stays";
    EXPECT_EQ(m.diffuseFile, "t.jpg");
    EXPECT_EQ(std::make_tuple(m.ambientColor, m.illumination[0], m.bumpProjection, m.further[0], m.further[2],
                              m.gloss),
              std::make_tuple(255, 7, 2, 3, 4, 9.0));
    EXPECT_EQ(std::make_tuple(m.opacity, m.bumpTiling, m.refractionIndex), std::make_tuple(1.0, 1, 1.0));
}

TEST(GeoReferences, AreGivenToADrawingWithoutOne) {
    const auto of = [](const DxfGroups& data, ImportOptions options = unshifted()) {
        return importText(drawing(data).text(), options);
    };
    EXPECT_EQ(georeference(of(geoData(1)).dump), "georeference 100 50 is 4000000 9000000 angle -1.57079633")
        << "metres in a drawing of millimetres; north points along x";
    EXPECT_EQ(georeference(of(geoData(2)).dump), "georeference 100 50 is 100000 50000 angle -1.57079633");
    EXPECT_EQ(georeference(of(geoData(0)).dump), "");
    EXPECT_EQ(georeference(of(geoData(1), {}).dump), "georeference -5 0 is 4000000 9000000 angle -1.57079633")
        << "behind the shift of the model";
    EXPECT_TRUE(of(geoData(1, 5)).hasMessage("Meereshöhe (m): 12.35"));
    ImportOptions off = unshifted();
    off.config = flags("USE_GEOREF=0\n");
    EXPECT_EQ(georeference(of(geoData(1), off).dump), "");
}

TEST(GeoReferences, MoveWhatComesIntoADrawingThatHasOne) {
    importText(drawing(geoData(1)).text(), unshifted());
    ImportOptions again = unshifted();
    again.keepsSession = true;
    DxfGroups moved = geoData(1);
    for (DxfGroup& group : moved)
        if (group.code == 11) group.value = "4000.01";
    const ImportResult result = importText(drawing(moved).text(), again);
    EXPECT_TRUE(result.hasMessage("Georeferenzierung ist bereits vorhanden"));
    EXPECT_THAT(result.dump, HasSubstr("move 100 50\n  draw 110 50\n"));
    EXPECT_THAT(result.dump, HasSubstr("georeference 100 50 is 4000000 9000000"));
    EXPECT_THAT(result.dump, HasSubstr("move 100 40\n  draw 110 40\n"))
        << "ten millimetres to the east, which is downward where north is to the right";
}

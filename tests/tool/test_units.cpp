// Units of files and of drawings: named or not, the host's or not, relabelled or converted.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A line to (3, 4) and a text of height 2 in a file of a unit.
std::string drawingIn(const char* insUnits) {
    return dxf()
        .header("AC1015", {{9, "$INSUNITS"}, {70, insUnits}, {9, "$INSBASE"}, {10, "0"}, {20, "0"}})
        .entity("LINE", {{8, "0"}, {10, "0"}, {20, "0"}, {11, "3"}, {21, "4"}})
        .entity("TEXT", {{8, "0"}, {10, "0"}, {20, "0"}, {40, "0.5"}, {1, "ABC"}})
        .text();
}

} // namespace

TEST_F(Tool, AFileWithoutAUnitStaysOne) {
    dir.write("none.dxf", drawingIn("0"));
    dir.write("mm.dxf", drawingIn("4"));
    EXPECT_THAT(run("info none.dxf").out, HasSubstr("unit none, taken as mm"));
    EXPECT_THAT(run("info mm.dxf").out, AllOf(HasSubstr("unit mm"), Not(HasSubstr("none"))));
    ASSERT_EQ(run("import none.dxf -o none.tdw").status, 0);
    for (const char* line : {"convert none.dxf o.dxf", "export none.tdw o.dxf"}) {
        ASSERT_EQ(run(line).status, 0);
        EXPECT_EQ(info("o.dxf")["unit_given"], false) << line;
        EXPECT_EQ(info("o.dxf")["extents"], info("none.dxf")["extents"]) << line;
    }
    for (const char* line : {"convert mm.dxf o.dxf", "convert none.dxf o.dxf --unit mm"}) {
        ASSERT_EQ(run(line).status, 0);
        EXPECT_EQ(info("o.dxf")["unit_given"], true) << line;
    }
}

TEST_F(Tool, UnitsThatTheHostLacksAreScaled) {
    const struct {
        const char* insUnits;
        const char* unit;
        double x; ///< of 3 in the file's unit
    } units[] = {
        {"10", "m", 2.7432}, {"14", "cm", 30}, {"9", "µm", 76.2}, {"3", "km", 4.828032}, {"13", "µm", 3}};
    for (const auto& [insUnits, unit, x] : units) {
        dir.write("a.dxf", drawingIn(insUnits));
        const auto before = info("a.dxf");
        EXPECT_EQ(before["unit"], unit);
        EXPECT_NEAR(before["extents"][2].get<double>(), x, 1e-9 * x) << insUnits;
        ASSERT_EQ(run("convert a.dxf b.dxf").status, 0);
        const auto after = info("b.dxf");
        EXPECT_EQ(after["unit"], unit);
        EXPECT_NEAR(after["extents"][2].get<double>(), x, 1e-9 * x) << insUnits;
    }
    // A text is as large beside its drawing as ever, on the sheet too.
    dir.write("yards.dxf", drawingIn("10"));
    dir.write("metres.dxf", drawingIn("6"));
    const auto heightOf = [&](const char* file) {
        const std::string text = run(std::string("dump ") + file).out;
        return std::stod(text.substr(text.find(" height ") + 8)) / info(file)["scale"].get<double>();
    };
    EXPECT_NEAR(heightOf("yards.dxf") / heightOf("metres.dxf"), 0.9144, 1e-9);
}

TEST_F(Tool, AUnitIsPutOnOrConvertedTo) {
    dir.write("a.dxf", drawingIn("4"));
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    EXPECT_EQ(info("a.dxf --unit inch")["extents"][2], 3);
    EXPECT_EQ(info("a.dxf --convert-unit cm")["extents"][2], 0.3);
    EXPECT_EQ(info("a.tdw --convert-unit cm")["extents"][2], 0.3);
    EXPECT_EQ(info("a.dxf --unit m --convert-unit mm")["extents"][2], 3000);
    ASSERT_EQ(run("convert a.dxf b.dxf --convert-unit inch").status, 0);
    EXPECT_EQ(info("b.dxf")["unit"], "inch");
    EXPECT_NEAR(info("b.dxf")["extents"][2].get<double>(), 3 / 25.4, 1e-12);
    EXPECT_THAT(run("info a.tdw --unit cm").out, HasSubstr("--convert-unit"));
}

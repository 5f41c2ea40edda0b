// What `info` tells of a drawing beyond its entities.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

using json = nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;

TEST_F(Tool, InfoIsAPassport) {
    dir.write("there.dxf", dxf().header("AC1015").text());
    const std::string text =
        dxf()
            .header("AC1015", {{9, "$DWGCODEPAGE"}, {3, "ANSI_1252"}})
            .record("LAYER", {{2, "W\xe4nde"}, {70, "5"}, {62, "-3"}, {6, "DASHED"}, {290, "0"}, {370, "35"}})
            .record("LTYPE", {{2, "DASHED"}, {70, "0"}, {3, "__ __"}, {72, "65"}, {73, "0"}, {40, "0"}})
            .record("STYLE", {{2, "Plain"}, {70, "0"}, {40, "0"}, {3, "txt.shx"}, {4, "big.shx"}})
            .record("STYLE", {{2, "Face"},
                              {70, "0"},
                              {40, "0"},
                              {3, "dejavusans.ttf"},
                              {1001, "ACAD"},
                              {1000, "DejaVu Sans"}})
            .record("STYLE", {{2, "Gone"}, {70, "0"}, {40, "0"}, {3, "Unheard.ttf"}})
            .block("DOOR", {{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}})
            .entity("INSERT", {{8, "0"}, {2, "Door"}, {10, "0"}, {20, "0"}})
            .entity("INSERT", {{8, "0"}, {2, "DOOR"}, {10, "5"}, {20, "0"}})
            .text();
    dir.write("a.dxf", "999\nMade by hand\n" + text);
    const json a = info("a.dxf");
    EXPECT_EQ(a["comments"], json{"Made by hand"});
    EXPECT_EQ(a["layers"], json::parse(R"([{"name": "Wände", "color": 3, "weight": 35, "line_type": "DASHED",
                                            "states": ["off", "frozen", "locked", "not plotted"]}])"));
    EXPECT_EQ(a["line_types"], json::parse(R"([{"name": "DASHED", "description": "__ __"}])"));
    EXPECT_EQ(a["styles"][0]["big_font"], "big.shx");
    EXPECT_EQ(a["styles"][1]["found"], true);
    EXPECT_EQ(a["styles"][2]["found"], false);
    EXPECT_TRUE(a["styles"][2].contains("stand_in"));
    EXPECT_EQ(a["blocks"], json::parse(R"([{"name": "DOOR", "inserted": 2}])"));
    const Outcome people = run("info a.dxf");
    EXPECT_THAT(people.out,
                AllOf(HasSubstr("Made by hand"),
                      HasSubstr("Wände: colour 3, weight 0.35 mm, DASHED, off, frozen"),
                      HasSubstr("DOOR: inserted 2 times"), HasSubstr("Unheard (not found, drawn with")));
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    EXPECT_THAT(info("a.tdw")["layers"].dump(), HasSubstr("Wände"));
}

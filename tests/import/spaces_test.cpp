// Layouts, views and viewports: sheets and detail views of the host.
#include "drawn.h"

#include "drawing/drawing.h"
#include "drawing/host_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;

namespace {

ImportOptions allSpaces(const std::string& more = {}) {
    ImportOptions options = unshifted();
    options.numbers["&DxfParseExt"] = 0;
    options.numbers["&DxfPaper"] = 2;
    options.config = flags("READ_LAYER=ATTR\n" + more);
    return options;
}

DxfGroups line(double x, double y, const DxfGroups& more = {}) {
    return DxfGroups{{8, "A"}} + more + at(10, {0, 0, 0}) + at(11, {x, y, 0});
}

/// A viewport of 100 by 50 about (60, 40) that shows `height` of the model about (10, 5).
DxfGroups viewport(int id, double height, const DxfGroups& more = {}) {
    return DxfGroups{{67, "1"}} + at(10, {60, 40, 0}) +
           DxfGroups{{40, "100"}, {41, "50"}, {69, std::to_string(id)}} + at(12, {10, 5}) +
           at(16, {0, 0, 1}) + at(45, {height}) + more;
}

DxfGroups layout(const std::string& name, const std::string& handle, const std::string& record,
                 const DxfGroups& plot = {{44, "297.0"}, {45, "210.0"}}) {
    return DxfGroups{{0, "LAYOUT"}, {5, handle}, {330, "FF"}, {100, "AcDbPlotSettings"}} + plot +
           DxfGroups{{100, "AcDbLayout"}, {1, name}, {330, record}};
}

DxfText drawing(const DxfGroups& objects, const std::string& version = "AC1015",
                const DxfGroups& variables = {}) {
    DxfText text = dxf().header(version, variables).layer("A", 1).layer("B", 2);
    for (const auto& [name, handle, of] :
         {std::tuple{"*Model_Space", "1", "21"}, {"*Paper_Space", "2", "22"}, {"*PAPER_SPACE0", "3", "23"}})
        text.record("BLOCK_RECORD", {{5, handle}, {2, name}, {340, of}});
    return text.section("OBJECTS", objects, true);
}

std::string views(const std::string& dump) {
    std::istringstream lines(dump);
    std::string found;
    for (std::string text; std::getline(lines, text);)
        if (text.starts_with("view ") || text.starts_with("detail ")) found += text + "\n";
    return found;
}

} // namespace

TEST(Sheets, AreMadeOfLayoutsAndKeepTheirContentApart) {
    const std::string dump =
        importText(drawing(layout("Plan", "22", "2") +
                           layout("Detail", "23", "3", {{44, "200"}, {45, "290"}, {73, "1"}}))
                       .entity("LINE", line(1, 1))
                       .entity("LINE", line(2, 2, {{67, "1"}}))
                       .block("*PAPER_SPACE0", DxfGroups{{0, "LINE"}} + line(3, 3))
                       .text(),
                   allSpaces())
            .dump;
    EXPECT_EQ(views(dump), "view \"Default\" format 1 unit mm scale 1\n"
                           "view \"Plan\" format 4 unit mm scale 1\n"
                           "view \"Detail\" format 5 unit mm scale 1\n")
        << "a format must be larger than the paper; a turned paper changes its sides";
    EXPECT_THAT(dump, HasSubstr("layer \"A\"\n  pen 2 lt 1\n  move 0 0\n  draw 1 1\n"));
    EXPECT_THAT(dump, HasSubstr("layer \"A\" on \"Plan\"\n  pen 2 lt 1\n  move 0 0\n  draw 2 2\n"));
    EXPECT_THAT(dump, HasSubstr("layer \"A\" on \"Detail\"\n  pen 2 lt 1\n  move 0 0\n  draw 3 3\n"));
    EXPECT_EQ(host::openDrawing().activeView, 0) << "the model is shown again";
}

TEST(Sheets, TakeNamesThatAreFreeAndCopeWithoutLayouts) {
    const auto sheetsOf = [](const DxfGroups& objects, const std::string& config = {}) {
        return views(importText(drawing(objects).text(), allSpaces(config)).dump);
    };
    EXPECT_THAT(sheetsOf({}), HasSubstr("view \"Plot01\""));
    EXPECT_THAT(sheetsOf({}), HasSubstr("view \"Plot02\""));
    const std::string same = sheetsOf(layout("Plot02", "22", "2") + layout("Plot02", "23", "3"));
    EXPECT_THAT(same, HasSubstr("view \"Plot02\""));
    EXPECT_THAT(same, HasSubstr("view \"Plot02 (2)\"")) << same;
    EXPECT_THAT(sheetsOf(layout("Default", "22", "2")), HasSubstr("view \"Default (2)\""));
    EXPECT_THAT(sheetsOf(layout("Gone", "22", "99")), Not(HasSubstr("Gone"))) << "of no block record";
    EXPECT_THAT(sheetsOf(layout("Tiny", "22", "2", {})), HasSubstr("\"Tiny\" format 6"));
    EXPECT_THAT(sheetsOf(layout("Vast", "22", "2", {{44, "9000"}, {45, "9000"}})),
                HasSubstr("\"Vast\" format 0"));
    EXPECT_THAT(sheetsOf(layout("Own", "22", "2"), "PAPER_SIZE=1\n"), HasSubstr("scale 1 paper 297 210"));
}

TEST(Viewports, BecomeDetailsAtTheirScale) {
    const auto detailOf = [](double height, const DxfGroups& variables = {}) {
        return views(importText(drawing(layout("Plan", "22", "2"), "AC1015", variables)
                                    .entity("LINE", line(20, 10))
                                    .entity("VIEWPORT", viewport(1, 50))
                                    .entity("VIEWPORT", viewport(2, height))
                                    .text(),
                                allSpaces())
                         .dump);
    };
    EXPECT_THAT(detailOf(100),
                HasSubstr("view \"Plot01::Ausschnitt##DXF01\" format 1 unit mm scale 0.5 detail outline"));
    EXPECT_THAT(detailOf(100), HasSubstr("clipped\n"));
    EXPECT_THAT(detailOf(100),
                HasSubstr("detail \"Plot01::Ausschnitt##DXF01\" on \"Plan\" at 60 40 ratio 0.5\n"));
    EXPECT_THAT(detailOf(50 * 49.9995), HasSubstr("ratio 0.02\n")) << "nearly 1:50 is 1:50";
    EXPECT_THAT(detailOf(50 * 49.99), HasSubstr("ratio 0.0200040008\n")) << "else it is as it is";
    EXPECT_THAT(detailOf(10), HasSubstr("ratio 5\n")) << "enlarged";
    for (const double none : {0.0, 1e300})
        EXPECT_THAT(detailOf(none), Not(HasSubstr("detail outline"))) << none;
    EXPECT_THAT(detailOf(5e-5), HasSubstr("ratio 1000000\n"));
}

TEST(Viewports, SeeTheModelInItsOwnUnit) {
    const auto ratioIn = [](int unit) {
        ImportOptions options = allSpaces();
        options.texts["$DxfUnit"] = "other";
        options.numbers["&DxfUnit"] = unit;
        const std::string dump = importText(drawing(layout("Plan", "22", "2"))
                                                .entity("LINE", line(20, 10))
                                                .entity("LINE", line(297, 210, {{67, "1"}}))
                                                .entity("VIEWPORT", viewport(2, 5))
                                                .text(),
                                            options)
                                     .dump;
        return views(dump) + dump.substr(dump.find("on \"Plan\"\n  pen"));
    };
    EXPECT_THAT(ratioIn(5), HasSubstr("at 60 40 ratio 0.01\n")) << "metres: 50 mm of paper show 5 m";
    EXPECT_THAT(ratioIn(5), HasSubstr("draw 297 210\n"));
    EXPECT_THAT(ratioIn(8), HasSubstr("ratio 0.032808399\n")) << "feet";
}

TEST(Viewports, HideFrozenLayersAndTurn) {
    const auto dumpOf = [](const DxfGroups& more, const std::string& version = "AC1015") {
        return importText(drawing(layout("Plan", "22", "2"), version)
                              .record("LAYER", {{5, "A1"}, {2, "C"}, {62, "3"}})
                              .record("LAYER", {{5, "B1"}, {2, "D"}, {62, "3"}})
                              .entity("LINE", line(20, 10))
                              .entity("VIEWPORT", viewport(2, 50, more))
                              .text(),
                          allSpaces())
            .dump;
    };
    EXPECT_THAT(
        dumpOf({{331, "A1"}}),
        HasSubstr("filter \"layer=\\\"0\\\" | layer=\\\"A\\\" | layer=\\\"B\\\" | layer=\\\"D\\\"\""));
    EXPECT_THAT(dumpOf({}), Not(HasSubstr("filter")));
    EXPECT_THAT(dumpOf({{331, "A1"}, {331, "B1"}, {331, "0"}}), Not(HasSubstr("filter"))) << "all are frozen";
    EXPECT_THAT(dumpOf({{51, "90"}}), HasSubstr("work 1 0 0 0 0 -1 0 1 0 0\n"));
    const DxfGroups old = {{1001, "ACAD"}, {1000, "MVIEW"}, {1010, "1"}, {1020, "2"}, {1030, "0"},
                           {1010, "0"},    {1020, "0"},     {1030, "1"}, {1040, "0"}, {1040, "100"},
                           {1040, "10"},   {1040, "5"},     {1003, "C"}};
    const std::string r12 = dumpOf(old, "AC1009");
    EXPECT_THAT(r12, HasSubstr("work 1 1 2 0 2 2 0 1 3 0\n")) << "the view stands in the extended data";
    EXPECT_THAT(r12, HasSubstr("ratio 0.5\n"));
    EXPECT_THAT(r12, HasSubstr("filter"));
}

TEST(Viewports, OfLayoutsInBlocksAreFoundAndNumbered) {
    const DxfGroups blocks =
        DxfGroups{{0, "VIEWPORT"}} + viewport(1, 50) + DxfGroups{{0, "VIEWPORT"}} + viewport(3, 100);
    const std::string dump = importText(drawing(layout("Plan", "22", "2") + layout("Two", "23", "3"))
                                            .entity("LINE", line(20, 10))
                                            .block("*PAPER_SPACE0", blocks)
                                            .text(),
                                        allSpaces())
                                 .dump;
    EXPECT_THAT(views(dump),
                HasSubstr("detail \"Plot02::Ausschnitt##DXF02\" on \"Two\" at 60 40 ratio 0.5\n"));
    // Without group 69 they count from 1, and the first is the paper.
    const auto bare = [](double height) {
        DxfGroups groups = viewport(0, height);
        std::erase_if(groups, [](const DxfGroup& group) { return group.code == 69; });
        return groups;
    };
    const std::string counted = views(importText(drawing(layout("Plan", "22", "2"))
                                                     .entity("VIEWPORT", bare(50))
                                                     .entity("VIEWPORT", bare(25))
                                                     .text(),
                                                 allSpaces())
                                          .dump);
    EXPECT_THAT(counted, HasSubstr("detail \"Plot01::Ausschnitt##DXF01\" on \"Plan\" at 60 40 ratio 2\n"));
    EXPECT_THAT(counted, Not(HasSubstr("DXF00")));
}

TEST(Views, AreMarkedRectanglesWhenAskedFor) {
    DxfText text = dxf().header("AC1015").entity("LINE", line(20, 10)).entity("VIEWPORT", viewport(2, 50));
    text.record("VIEW", DxfGroups{{2, "Kitchen"}, {70, "0"}, {40, "4"}, {41, "6"}} + at(10, {5, 5}) +
                            at(11, {0, 0, 1}) + at(12, {100, 0, 0}));
    const std::string without = importText(text.text(), unshifted()).dump;
    EXPECT_THAT(without, Not(HasSubstr("ZOOM")));
    ImportOptions options = unshifted();
    options.config = flags("VIEWS=1\n");
    const std::string dump = importText(text.text(), options).dump;
    EXPECT_THAT(dump, HasSubstr("level \"ZOOM\" class \"VIEW\" name \"KITCHEN\" work"));
    EXPECT_THAT(dump, HasSubstr("  attribute \"Nv\" \"0,0,1\"\n  attribute \"classctrl\" \"PI:C,L\"\n"));
    EXPECT_THAT(
        dump,
        HasSubstr("move 2 3\n  draw 8 3 info 5\n  draw 8 7 info 5\n  draw 2 7 info 5\n  draw 2 3 info 5\n"));
    EXPECT_THAT(dump, HasSubstr("name \"Layout1 Viewport2\""));
    EXPECT_THAT(views(importText(text.text(), allSpaces()).dump), HasSubstr("view \"KITCHEN\""));
}

// What the command keeps of a drawing beyond its lines: states of layers, looks, arrays, sections in any
// order.
#include "dxf_text.h"
#include "entity_count.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

using json = nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

DxfGroups line(const std::string& layer, double y, const DxfGroups& more = {}) {
    DxfGroups groups = {{8, layer}, {10, "0"}, {20, std::to_string(y)}, {11, "5"}, {21, std::to_string(y)}};
    groups.insert(groups.end(), more.begin(), more.end());
    return groups;
}

/// The groups of the n-th entity of a kind in a DXF text, from its 0 to the next.
std::string entityOf(const std::string& dxf, const std::string& kind, int n) {
    std::size_t at = dxf.find("\nENTITIES\n");
    for (int i = 0; i <= n && at != std::string::npos; ++i) at = dxf.find("\n" + kind + "\n", at + 1);
    return at == std::string::npos ? "" : dxf.substr(at, dxf.find("\n  0\n", at) - at) + "\n";
}

std::string recordOf(const std::string& dxf, const std::string& layer) {
    const std::size_t at = dxf.find("\n  2\n" + layer + "\n", dxf.find("AcDbLayerTableRecord"));
    return at == std::string::npos ? "" : dxf.substr(at, dxf.find("\n  0\n", at) - at) + "\n";
}

/// Removes blanks ahead of lines, so that texts compare whatever the columns.
std::string flat(std::string text) {
    std::string out;
    bool atStart = true;
    for (const char c : text) {
        if (c == '\r' || (atStart && c == ' ')) continue;
        out += c;
        atStart = c == '\n';
    }
    return out;
}

DxfText hiddenThings() {
    return dxf()
        .header("AC1018")
        .layer("ON", 3)
        .layer("OFF", -4)
        .layer("ICE", 5, "CONTINUOUS", 1)
        .layer("LOCKED", 6, "CONTINUOUS", 4)
        .record("LAYER", {{0, "LAYER"}, {2, "NOPLOT"}, {70, "0"}, {62, "1"}, {6, "CONTINUOUS"}, {290, "0"}})
        .block("B", {{0, "LINE"}, {8, "ON"}, {10, "0"}, {20, "50"}, {11, "5"}, {21, "50"}})
        .entity("LINE", line("ON", 0))
        .entity("LINE", line("OFF", 1))
        .entity("LINE", line("ICE", 2))
        .entity("LINE", line("LOCKED", 3))
        .entity("LINE", line("NOPLOT", 4))
        .entity("LINE", line("ON", 5, {{60, "1"}}))
        .entity("INSERT", {{8, "ICE"}, {2, "B"}});
}

} // namespace

TEST_F(Tool, HiddenThingsArriveUnseenAndLeaveInTheirState) {
    dir.write("a.dxf", hiddenThings().text());
    const json a = info("a.dxf");
    EXPECT_EQ(a["entities"]["LINE"]["hidden"], 3);
    EXPECT_EQ(a["entities"]["INSERT"]["hidden"], 1);
    EXPECT_EQ(a["lost"].size(), 0u) << a["lost"];
    EXPECT_EQ(a["elements"]["draw"], 7);
    EXPECT_EQ(a["extents"], (json{0, 0, 5, 4})) << "what isn't seen doesn't count";
    EXPECT_EQ(info("--plain a.dxf")["elements"]["draw"], 3) << "the module's own way";

    ASSERT_EQ(run("convert a.dxf b.dxf --format ACAD18").status, 0);
    const std::string b = dir.read("b.dxf");
    const std::map<std::string, EntityCount> counts = countEntities(dir.file("b.dxf"));
    EXPECT_EQ(counts.at("LINE").all, 7);
    EXPECT_EQ(counts.at("LINE").hidden, 4);
    EXPECT_THAT(flat(recordOf(b, "ICE")), AllOf(HasSubstr("\n70\n1\n"), HasSubstr("\n62\n5\n")));
    EXPECT_THAT(flat(recordOf(b, "OFF")), HasSubstr("\n62\n-4\n"));
    EXPECT_THAT(flat(recordOf(b, "LOCKED")), HasSubstr("\n70\n4\n"));
    EXPECT_THAT(flat(recordOf(b, "NOPLOT")), HasSubstr("\n290\n0\n"));

    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    ASSERT_EQ(run("export a.tdw c.dxf --format ACAD18").status, 0);
    EXPECT_EQ(countEntities(dir.file("c.dxf")).at("LINE").hidden, 4) << "the drawing file keeps the states";
}

TEST_F(Tool, PicturesShowWhatAPlotShows) {
    dir.write("a.dxf", hiddenThings().text());
    const auto strokes = [&](const std::string& arguments) {
        run("render a.dxf a.svg " + arguments);
        const std::string svg = dir.read("a.svg");
        std::ptrdiff_t count = 0;
        for (std::size_t at = svg.find(" d=\""); at != std::string::npos; at = svg.find(" d=\"", at + 1)) {
            const std::string path = svg.substr(at + 4, svg.find('"', at + 4) - at - 4);
            count += std::count_if(path.begin(), path.end(), [](char c) { return c == 'M' || c == 'm'; });
        }
        return count;
    };
    EXPECT_EQ(strokes(""), 2) << "the visible one and the locked one";
    EXPECT_EQ(strokes("--all-layers"), 7);
}

TEST_F(Tool, LooksComeBack) {
    DxfText text = dxf().header("AC1018");
    text.layer("A", 3)
        .record("LAYER", {{0, "LAYER"},
                          {2, "THICK"},
                          {70, "0"},
                          {62, "2"},
                          {420, "1193046"},
                          {6, "CONTINUOUS"},
                          {370, "70"}})
        .entity("LINE", line("A", 0))
        .entity("LINE", line("A", 1, {{62, "5"}}))
        .entity("LINE", line("A", 2, {{62, "30"}, {420, "16744448"}}))
        .entity("LINE", line("A", 3, {{62, "1"}, {370, "50"}}))
        .entity("LINE", line("THICK", 4))
        .entity("CIRCLE", {{8, "A"}, {10, "0"}, {20, "0"}, {40, "2"}, {370, "13"}});
    dir.write("a.dxf", text.text());
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    ASSERT_EQ(run("export a.tdw b.dxf --format ACAD18").status, 0);
    const std::string b = dir.read("b.dxf");
    std::multiset<std::string> found;
    for (int i = 0; i < 5; ++i) {
        const std::string entity = flat(entityOf(b, "LINE", i));
        std::string look;
        for (const char* code : {"62", "370", "420"}) {
            const std::size_t at = entity.find(std::string("\n") + code + "\n");
            if (at == std::string::npos) continue;
            const std::size_t value = entity.find('\n', at + 1) + 1;
            look += std::string(code) + "=" + entity.substr(value, entity.find('\n', value) - value) + " ";
        }
        found.insert(look);
    }
    EXPECT_EQ(found, (std::multiset<std::string>{"", "", "62=5 ", "62=30 420=16744448 ", "62=1 370=50 "}));
    EXPECT_THAT(flat(entityOf(b, "CIRCLE", 0)), AllOf(HasSubstr("\n370\n13\n"), Not(HasSubstr("\n62\n"))));
    EXPECT_THAT(flat(recordOf(b, "THICK")), AllOf(HasSubstr("\n420\n1193046\n"), HasSubstr("\n370\n70\n")));
    ASSERT_EQ(run("export a.tdw old.dxf --format ACAD12").status, 0);
    EXPECT_THAT(flat(dir.read("old.dxf")), Not(HasSubstr("\n420\n")));
}

TEST_F(Tool, MoreLooksThanPensAreTold) {
    DxfText text = dxf().header("AC1018");
    for (int i = 0; i < 1000; ++i)
        text.entity("LINE", line("A", i, {{62, "30"}, {420, std::to_string(i * 1000)}}));
    dir.write("a.dxf", text.text());
    const json a = info("--lang en a.dxf");
    EXPECT_EQ(a["elements"]["draw"], 1000);
    EXPECT_THAT(a["messages"].dump(), HasSubstr("Not enough pens"));
}

TEST_F(Tool, ArraysOfInsertsAreDrawnWhole) {
    dir.write("a.dxf", dxf()
                           .header("AC1015")
                           .block("B", {{0, "LINE"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "0"}})
                           .entity("INSERT", {{8, "A"},
                                              {2, "B"},
                                              {10, "100"},
                                              {20, "200"},
                                              {50, "90"},
                                              {70, "3"},
                                              {71, "2"},
                                              {44, "10"},
                                              {45, "50"}})
                           .text());
    const json a = info("a.dxf");
    EXPECT_EQ(a["elements"]["draw"], 6);
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(a["extents"][static_cast<std::size_t>(i)].get<double>(),
                    (std::array{50, 200, 100, 221})[static_cast<std::size_t>(i)], 1e-6)
            << "columns go along the turned x axis, rows along the turned y axis";
    EXPECT_EQ(info("--plain a.dxf")["elements"]["draw"], 1);
}

TEST_F(Tool, SectionsAreReadInAnyOrderAndAllOfThem) {
    const std::string one = "0\nLINE\n8\nA\n10\n0\n20\n0\n11\n5\n21\n0\n";
    const auto section = [](const std::string& name, const std::string& content) {
        return "0\nSECTION\n2\n" + name + "\n" + content + "0\nENDSEC\n";
    };
    const std::string insert = "0\nINSERT\n8\nA\n2\nB\n10\n7\n20\n7\n";
    const std::string block = "0\nBLOCK\n2\nB\n10\n0\n20\n0\n" + one + "0\nENDBLK\n";
    dir.write("a.dxf", section("ENTITIES", one + insert) + section("BLOCKS", block) +
                           section("ENTITIES", one) + section("HEADER", "9\n$ACADVER\n1\nAC1015\n") +
                           "0\nEOF\n" + section("ENTITIES", one) + "0\nEOF\n");
    const json a = info("a.dxf");
    EXPECT_EQ(a["stat"], 0);
    EXPECT_EQ(a["version"], "AC1015");
    EXPECT_EQ(a["entities"]["LINE"]["drawn"], 3);
    EXPECT_EQ(a["entities"]["INSERT"]["drawn"], 1);
    EXPECT_EQ(a["elements"]["draw"], 4);
}

TEST_F(Tool, PicturesOnPaperHaveTheirTrueSize) {
    dir.write("a.dxf", dxf()
                           .header("AC1015", {{9, "$INSUNITS"}, {70, "6"}}) // metres
                           .entity("LINE", {{8, "A"}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "0"}})
                           .text());
    ASSERT_EQ(run("render a.dxf a.svg --paper A4 --landscape --scale 1:50").status, 0);
    const std::string svg = dir.read("a.svg");
    EXPECT_THAT(svg, HasSubstr("width=\"841.8"));
    const std::size_t path = svg.find("d=\"m");
    ASSERT_NE(path, std::string::npos);
    double x = 0, y = 0, length = 0;
    ASSERT_EQ(std::sscanf(svg.c_str() + path, "d=\"m%lf %lfh%lf", &x, &y, &length), 3);
    EXPECT_NEAR(length / 100, 100 * 72 / 25.4, 0.01) << "5 m at 1:50 are 100 mm, in hundredths of points";
    ASSERT_EQ(run("render a.dxf a.pdf --paper 300x200").status, 0);
    EXPECT_THAT(dir.read("a.pdf"), HasSubstr("/MediaBox [ 0 0 850.39"));
    EXPECT_EQ(run("render a.dxf a.pdf --paper A9").status, 2);
    EXPECT_EQ(run("render a.dxf a.pdf --scale 1:50").status, 2) << "a scale is one of a paper";
}

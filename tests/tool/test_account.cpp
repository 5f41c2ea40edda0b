// What became of each entity: nothing is lost without being told.
#include "dxf_text.h"
#include "entity_count.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

using json = nlohmann::json;
using testing::HasSubstr;
using testing::Not;

namespace {

DxfGroups line(const std::string& layer, const DxfGroups& more = {}) {
    DxfGroups groups = {{8, layer}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "1"}};
    groups.insert(groups.end(), more.begin(), more.end());
    return groups;
}

/// A drawing with an entity for each reason.
DxfText drawing() {
    return dxf()
        .header("AC1015")
        .layer("OFF", -1)
        .layer("ICE", 3, "CONTINUOUS", 1)
        .block("MIXED", {{0, "LINE"},
                         {8, "0"},
                         {10, "0"},
                         {20, "0"},
                         {11, "5"},
                         {21, "1"},
                         {0, "LINE"},
                         {8, "OFF"},
                         {0, "ODD"},
                         {5, "B1"},
                         {0, "ATTDEF"},
                         {2, "TAG"},
                         {40, "1"}})
        .block("SHELF", {{0, "LINE"}, {8, "0"}})
        .block("*D7", {{0, "LINE"}, {8, "0"}})
        .entity("LINE", line("A"))
        .entity("LINE", line("OFF"))
        .entity("LINE", line("ICE"))
        .entity("LINE", line("ICE"))
        .entity("LINE", line("A", {{60, "1"}}))
        .entity("LINE", line("A", {{67, "1"}}))
        .entity("ODD", {{8, "A"}, {5, "2F"}})
        .entity("TEXT", {{8, "A"}, {1, ""}, {40, "1"}})
        .entity("INSERT", {{8, "A"}, {2, "MIXED"}})
        .entity("INSERT", {{8, "A"}, {2, "MIXED"}})
        .entity("INSERT", {{8, "A"}, {2, "NOWHERE"}});
}

/// "kind count reason", with "in blocks" behind it where it is of these.
std::vector<std::string> rows(const json& list) {
    std::vector<std::string> texts;
    for (const json& row : list)
        texts.push_back(row["kind"].get<std::string>() + " " + row["count"].dump() + " " +
                        row["reason"].get<std::string>() +
                        (row["in_blocks"].get<bool>() ? " in blocks" : ""));
    return texts;
}

/// Counts of one kind in the rows that aren't of blocks.
long sumOf(const json& list, const std::string& kind) {
    long sum = 0;
    for (const json& row : list)
        if (row["kind"] == kind && !row["in_blocks"].get<bool>()) sum += row["count"].get<long>();
    return sum;
}

/// Each entity that is counted in the file by itself is read, and is drawn, hidden or lost.
void expectAccount(const json& info, const std::filesystem::path& path, bool ofModel) {
    std::map<std::string, EntityCount> counted;
    if (!isBinaryDxf(path)) {
        counted = countEntities(path);
        EXPECT_EQ(info["entities"].size(), counted.size()) << path;
    }
    for (const auto& [kind, tally] : info["entities"].items()) {
        const std::string where = kind + " of " + path.string();
        EXPECT_EQ(tally["drawn"].get<long>() + tally["hidden"].get<long>() + tally["lost"].get<long>(),
                  tally["read"].get<long>())
            << where;
        EXPECT_EQ(sumOf(info["lost"], kind), tally["lost"]) << where;
        EXPECT_EQ(sumOf(info["hidden"], kind), tally["hidden"]) << where;
        if (counted.empty()) continue;
        EXPECT_EQ(tally["read"], counted[kind].all) << where;
        const bool isWhole = kind != "VERTEX" && kind != "SEQEND" && kind != "ATTRIB" && kind != "VIEWPORT";
        const bool isDrawable = tally["drawn"] != 0;
        if (ofModel && isWhole && isDrawable) EXPECT_EQ(tally["hidden"], counted[kind].hidden) << where;
    }
}

} // namespace

TEST_F(Tool, EveryReasonIsTold) {
    dir.write("a.dxf", drawing().text());
    const json a = info("a.dxf");
    EXPECT_THAT(rows(a["hidden"]), testing::ElementsAre("LINE 1 layer off", "LINE 2 layer frozen",
                                                        "LINE 1 invisible", "LINE 1 layer off in blocks",
                                                        "ATTDEF 1 attribute definition in blocks"));
    EXPECT_THAT(rows(a["lost"]),
                testing::ElementsAre("LINE 1 other space", "ODD 1 no reader", "TEXT 1 nothing to draw",
                                     "ODD 1 no reader in blocks", "INSERT 1 block not found",
                                     "BLOCK 1 inserted nowhere"));
    EXPECT_EQ(a["lost"][1]["example"]["handle"], "2F");
    std::istringstream file(drawing().text());
    std::string text;
    for (int i = a["lost"][1]["example"]["line"]; i > 0; --i) std::getline(file, text);
    EXPECT_EQ(text, "ODD");
    EXPECT_EQ(a["lost"][5]["example"]["name"], "SHELF");
    expectAccount(a, dir.file("a.dxf"), true);
    const json all = info("--space all a.dxf");
    EXPECT_EQ(all["entities"]["LINE"]["drawn"], 2);
    EXPECT_EQ(all["entities"]["LINE"]["lost"], 0);
    expectAccount(all, dir.file("a.dxf"), false);
}

TEST_F(Tool, ALossEndsTheRunInOneLine) {
    dir.write("a.dxf", drawing().text());
    dir.write("whole.dxf", dxf().header("AC1015").entity("LINE", line("0")).text());
    const Outcome converted = run("convert a.dxf b.dxf --lang en");
    EXPECT_EQ(converted.status, 0);
    EXPECT_THAT(converted.err, HasSubstr("a.dxf: lost: 1 entities of paper space, 1 ODD (no reader), "));
    EXPECT_THAT(converted.err, HasSubstr("in blocks 1 ODD (no reader)"));
    EXPECT_THAT(converted.err, HasSubstr("a.dxf: hidden in the file: 2 LINE (layer frozen), "));
    EXPECT_THAT(run("render a.dxf a.svg --lang de").err, HasSubstr("nicht übernommen: "));
    EXPECT_THAT(run("convert whole.dxf b.dxf --lang en").err, Not(HasSubstr("lost")));
    EXPECT_EQ(run("convert --strict whole.dxf b.dxf").status, 0);
    const Outcome strict = run("convert --strict a.dxf c.dxf -q");
    EXPECT_EQ(strict.status, 1);
    EXPECT_THAT(dir.read("c.dxf"), HasSubstr("EOF")) << "the work is done all the same";
}

TEST_F(Tool, AccountsOfRealDrawingsAddUp) {
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    const std::vector<std::filesystem::path> drawings = drawingsIn(folder);
    std::string inputs;
    for (const std::filesystem::path& path : drawings) inputs += " '" + path.string() + "'";
    for (const char* space : {"model", "all"}) {
        std::istringstream lines(run(std::string("info --json --space ") + space + inputs).out);
        std::string line;
        for (const std::filesystem::path& path : drawings) {
            ASSERT_TRUE(std::getline(lines, line)) << path;
            expectAccount(json::parse(line), path, std::string_view(space) == "model");
        }
    }
}

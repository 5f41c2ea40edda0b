// What blocks come to: the command's counts against those of a script that expands the INSERTs by itself.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class BlockCounts : public Tool {
protected:
    void SetUp() override {
        dir.write("settings", "");
        dir.write("settings.read", "ELEMENTS = 100000000\n"); // no pattern is ever full
    }

    /// Elements and texts of a file's known entities: by hand, and as the command draws them.
    void compare(const std::string& path) {
        const std::string script = TORVA_SOURCE_DIR "/tests/scripts/count_by_hand.py";
        const std::string line = "python3 " + script + " '" + path + "' --strip " + dir.file("known.dxf") +
                                 " >" + dir.file("count.json");
        ASSERT_EQ(std::system(line.c_str()), 0) << path;
        const auto byHand = nlohmann::json::parse(dir.read("count.json"));
        const auto drawn = info("--config settings known.dxf");
        for (const char* kind : {"move", "draw", "arc", "spline"})
            EXPECT_EQ(drawn["elements"][kind], byHand[kind]) << kind << " in " << path;
        EXPECT_EQ(drawn["texts"], byHand["texts"]) << path;
        drawnSoFar += drawn["elements"]["draw"].get<int>();
    }

    int drawnSoFar = 0;
};

DxfGroups line(const std::string& layer) {
    return {{0, "LINE"}, {8, layer}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "1"}};
}
DxfGroups insert(const std::string& block, const std::string& layer, const DxfGroups& more = {}) {
    DxfGroups groups = {{0, "INSERT"}, {8, layer}, {2, block}, {10, "1"}, {20, "2"}};
    groups.insert(groups.end(), more.begin(), more.end());
    return groups;
}
DxfGroups operator+(DxfGroups a, const DxfGroups& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST_F(BlockCounts, OfADrawingWithAllThatCounts) {
    const DxfGroups arc = {{0, "ARC"}, {10, "0"}, {20, "0"}, {40, "2"}, {50, "10"}, {51, "80"}};
    const DxfGroups bent = {{0, "LWPOLYLINE"}, {90, "3"}, {70, "1"}, {10, "0"}, {20, "0"},
                            {42, "0.5"},       {10, "4"}, {20, "0"}, {10, "4"}, {20, "4"}};
    const DxfGroups label = {{0, "ATTRIB"}, {2, "TAG"}, {1, "text"}, {40, "2"}, {10, "0"}, {20, "0"}};
    DxfText text = dxf().header("AC1015", {{9, "$ATTMODE"}, {70, "1"}});
    text.layer("OFF", -1)
        .block("LEAF", line("0") + arc + bent + line("OFF"))
        .block("MID", insert("LEAF", "0") + insert("LEAF", "OFF") + line("0") +
                          insert("LEAF", "0", {{41, "-1"}, {42, "2"}}) + insert("MID", "0") +
                          insert("NONE", "0"))
        .block("EMPTY", {})
        .raw(insert("MID", "A", {{41, "2"}, {42, "-2"}, {50, "30"}}))
        .raw(insert("LEAF", "0", {{70, "3"}, {71, "2"}, {44, "9"}, {45, "9"}}))
        .raw(insert("EMPTY", "0", {{66, "1"}}) + label + label + DxfGroups{{70, "1"}, {0, "SEQEND"}})
        .raw(insert("LEAF", "0", {{67, "1"}}))
        .raw(insert("LEAF", "OFF"));
    dir.write("blocks.dxf", text.text());
    compare(dir.file("blocks.dxf"));
    EXPECT_GT(drawnSoFar, 0);
}

/// True for a text DXF that inserts blocks.
bool hasInserts(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    const std::string text = content.str();
    return text.rfind("AutoCAD Binary DXF", 0) != 0 && text.find("\nINSERT") != std::string::npos;
}

TEST_F(BlockCounts, OfRealDrawings) {
    const char* corpus = std::getenv("TORVA_CORPUS");
    if (!corpus) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() != ".dxf" || !hasInserts(entry.path())) continue;
        compare(entry.path().string());
        ++files;
    }
    EXPECT_GE(files, 5);
    EXPECT_GT(drawnSoFar, 1000);
}

} // namespace

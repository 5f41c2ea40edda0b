// Drawings by other people, from the folder that TORVA_CORPUS names: each is imported, and its entities are
// counted once more by nothing but the texts of group 0.
#include "tool_fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string trimmed(std::string line) {
    line.erase(line.find_last_not_of(" \t\r") + 1);
    return line.erase(0, line.find_first_not_of(" \t"));
}

bool isBinary(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string line;
    std::getline(file, line);
    return line.starts_with("AutoCAD Binary DXF");
}

/// Entities of the section ENTITIES, by their names.
std::map<std::string, int> entitiesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::map<std::string, int> counts;
    std::string code, value;
    bool isSection = false, isInside = false;
    while (std::getline(file, code) && std::getline(file, value)) {
        code = trimmed(code);
        value = trimmed(value);
        if (code == "2" && isSection) isInside = value == "ENTITIES";
        isSection = code == "0" && value == "SECTION";
        if (code != "0") continue;
        if (value == "ENDSEC") isInside = false;
        if (isInside) ++counts[value];
    }
    return counts;
}

std::map<std::string, int> countsIn(const nlohmann::json& info) {
    std::map<std::string, int> counts;
    for (const auto& [name, count] : info["entities"].items()) counts[name] = count["read"];
    return counts;
}

std::vector<fs::path> realDrawings(const char* folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension();
        if (extension == ".dxf" || extension == ".DXF") found.push_back(entry.path());
    }
    return found;
}

} // namespace

TEST_F(Tool, RealDrawingsAreReadEntityByEntity) {
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    const std::vector<fs::path> drawings = realDrawings(folder);
    EXPECT_FALSE(drawings.empty());
    for (const fs::path& path : drawings) {
        const Outcome outcome = run("info --json '" + path.string() + "'");
        ASSERT_EQ(outcome.status, 0) << path << "\n" << outcome.err;
        if (isBinary(path)) continue;
        EXPECT_EQ(countsIn(nlohmann::json::parse(outcome.out)), entitiesOf(path)) << path;
    }
}

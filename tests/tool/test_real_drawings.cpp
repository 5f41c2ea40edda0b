// Drawings by other people, from the folder that TORVA_CORPUS names: each is imported, and its entities are
// counted once more by nothing but the texts of group 0.
#include "entity_count.h"
#include "tool_fixture.h"

#include <cstdlib>

namespace {

std::map<std::string, int> entitiesOf(const std::filesystem::path& path) {
    std::map<std::string, int> counts;
    for (const auto& [name, count] : countEntities(path)) counts[name] = count.all;
    return counts;
}

std::map<std::string, int> countsIn(const nlohmann::json& info) {
    std::map<std::string, int> counts;
    for (const auto& [name, count] : info["entities"].items()) counts[name] = count["read"];
    return counts;
}

} // namespace

TEST_F(Tool, RealDrawingsAreReadEntityByEntity) {
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    const std::vector<std::filesystem::path> drawings = drawingsIn(folder);
    EXPECT_FALSE(drawings.empty());
    for (const std::filesystem::path& path : drawings) {
        const Outcome outcome = run("info --json '" + path.string() + "'");
        ASSERT_EQ(outcome.status, 0) << path << "\n" << outcome.err;
        if (isBinaryDxf(path)) continue;
        EXPECT_EQ(countsIn(nlohmann::json::parse(outcome.out)), entitiesOf(path)) << path;
    }
}

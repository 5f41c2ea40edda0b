// Real models: read, rewritten at 700 as text and binary, read again.
#include "sat_model.h"
#include "temp_dir.h"

#include "dx_od.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> models() {
    std::vector<fs::path> found;
    const char* folder = std::getenv("TORVA_CORPUS");
    if (!folder) return found;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(folder) / "sat"))
        if (entry.is_regular_file()) found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

/// Bodies that the corpus has from six versions, by the ends of their files' names in text and in binary.
constexpr std::pair<std::string_view, std::string_view> bodies[] = {
    {".3DSOLID1.sat", ".acds1.sab"}, {".3DSOLID3.sat", ".acds2.sab"}, {".REGION2.sat", ".acds3.sab"}};

/// Without the number of the version and what only some versions have.
std::string comparable(const ACIS::File& file) {
    return ACIS::dumpModel(file, 700);
}

bool isOfReadableVersion(const std::string& data) {
    return data.starts_with("ACIS B") || data.starts_with("ASM B") ||
           ACIS::isReadable(std::atoi(data.c_str()));
}

TEST(SatCorpus, MeansTheSameAt700) {
    const auto paths = models();
    if (paths.empty()) GTEST_SKIP() << "TORVA_CORPUS names no folder with models";
    int read = 0;
    for (const fs::path& path : paths) {
        SCOPED_TRACE(path.string());
        const std::string data = fileContent(path);
        ACIS::File file;
        ASSERT_EQ(file.load(data), isOfReadableVersion(data)) << file.problem();
        if (file.records.empty()) continue;
        ++read;
        expectEdgesMeetVertices(file);
        const auto text = converted(file, SAT_700), binary = converted(file, SAB_700);
        EXPECT_EQ(text->header.version, 700);
        EXPECT_EQ(comparable(file), comparable(*text));
        EXPECT_EQ(comparable(*text), comparable(*binary));
        for (const ACIS::File* made : {text.get(), binary.get()}) {
            EXPECT_EQ(kinds(file), kinds(*made));
            expectSameVertices(file, *made);
            expectEdgesMeetVertices(*made);
            expectSameShapes(file, *made);
        }
        // At its own version the model comes back whole.
        const auto same =
            converted(file, ACIS::VERSION_TEXT | static_cast<std::uint32_t>(file.header.version));
        EXPECT_EQ(ACIS::dumpModel(file), ACIS::dumpModel(*same));
    }
    EXPECT_GT(read, 0);
}

/// Texts and binary files of 400, 20800, 21200, 21500, 21800 and mostly 22300.
TEST(SatCorpus, VersionsOfABodyHaveOneGraph) {
    const auto paths = models();
    if (paths.empty()) GTEST_SKIP() << "TORVA_CORPUS names no folder with models";
    for (const auto& [text, binary] : bodies) {
        std::string first;
        std::set<int> versions;
        for (const fs::path& path : paths) {
            const std::string name = path.filename().string();
            if (!name.starts_with("sample_AC") || !(name.ends_with(text) || name.ends_with(binary))) continue;
            SCOPED_TRACE(name);
            const auto file = loaded(fileContent(path));
            versions.insert(file->header.version);
            const auto made = converted(*file, versions.size() % 2 ? SAT_700 : SAB_700);
            if (first.empty()) first = comparable(*made);
            EXPECT_EQ(comparable(*made), first);
        }
        EXPECT_GE(versions.size(), 5u) << text;
    }
}

} // namespace

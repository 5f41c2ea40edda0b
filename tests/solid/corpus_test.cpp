// Real models: read, rewritten at 700 as text and binary, read again.
#include "sat_model.h"
#include "temp_dir.h"

#include "dx_od.h"

#include <algorithm>
#include <cstdlib>

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

} // namespace

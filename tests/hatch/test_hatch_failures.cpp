// A host whose n-th call fails: nothing of a hatch goes missing without a word.
#include "../export/exported.h"
#include "hatch_text.h"
#include "services/failure.h"

#include <gtest/gtest.h>

namespace {

const DxfGroups AREA_EDGES = edgeLoop(
    {arcEdge(5, 0, 5, 180, 360, true), lineEdge(10, 0, 10, 8), lineEdge(10, 8, 0, 8), lineEdge(0, 8, 0, 0)});

std::string drawing() {
    return dxf()
        .header("AC1015")
        .entity("HATCH", hatchGroups({AREA_EDGES, squareLoop(2, 6)}, true))
        .entity("HATCH", hatchGroups({AREA_EDGES}, false, patternRows({{45, 0, 0, -1, 1, {2, -1}}})))
        .text();
}
double areaNow() {
    double area = 0;
    for (const host::Hatch& hatch : hatchesNow()) area += areaOf(hatch);
    return area;
}

TEST(HatchFailures, AnImportEndsWithAnErrorOrIsWhole) {
    const TempDir folder;
    folder.write("in.dxf", drawing());
    ImportOptions options = unshifted();
    options.config = flags("KEEP_HATCH=1\n");
    importFile(folder, "in.dxf", options);
    const double whole = areaNow();
    ASSERT_GT(whole, 200);
    options.keepsSession = true;
    for (long n = 1;; ++n) {
        ASSERT_LT(n, 5000);
        host::resetSession();
        host::failCall(n);
        const ImportResult result = importFile(folder, "in.dxf", options);
        const bool hasFailed = host::callCount() >= n;
        host::failCall(0);
        if (result.stat == 0) EXPECT_NEAR(areaNow(), whole, 1e-6) << "call " << n;
        if (!hasFailed) break;
    }
}

class HatchExportFailures : public Export {};

TEST_F(HatchExportFailures, AnExportEndsWithAnErrorOrIsWholeOrSaysWhatIsMissing) {
    for (const char* version : {"ACAD24", "ACAD12"}) {
        const std::string config = exportConfig(version, "WRITE_FILL=1\n");
        const auto draw = [] {
            const TempDir folder;
            folder.write("in.dxf", drawing());
            ImportOptions options = unshifted();
            options.config = flags("FILL_CONTOUR=0\n");
            importFile(folder, "in.dxf", options);
        };
        // The fill, and the lines as a pattern or, where that can't be told, one by one.
        const auto isWhole = [](const Exported& file) {
            const std::size_t patterns = file.count(2, "_U"), fills = file.count(0, "HATCH") - patterns;
            return fills + file.count(0, "SOLID") > 0 && patterns + file.count(0, "LINE") > 0;
        };
        draw();
        ASSERT_TRUE(isWhole(exportDrawing(config)));
        for (long n = 1;; ++n) {
            ASSERT_LT(n, 9000);
            draw();
            host::failCall(n);
            const Exported file = exportDrawing(config);
            const bool hasFailed = host::callCount() >= n;
            host::failCall(0);
            const bool isTold = file.protocol.find("written") != std::string::npos ||
                                file.protocol.find("onfigurefile") != std::string::npos ||
                                file.protocol.find("chraffurkontur") != std::string::npos;
            EXPECT_TRUE(file.stat != 0 || isTold || isWhole(file)) << version << " call " << n;
            if (!hasFailed) break;
        }
    }
}

} // namespace

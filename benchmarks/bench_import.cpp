// A whole import, measuring and drawing pass together, as a ratio to the floor; and the memory it needs
// beyond the drawing that it makes.
#include "drawing/drawing.h"
#include "drawing/dump.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <utility>
#include <vector>

static std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// One import into a fresh drawing. The heap's use is looked at with each step of the progress display.
struct Run {
    double stat = -1;
    std::size_t peakHeap = 0;
    host::Counts counts;

    void import(const std::string& path, const std::string& config) {
        host::session().texts["$DxfConfig"] = config;
        const std::size_t before = heapInUse();
        peakHeap = 0;
        host::session().onStatus = [&](const std::string&) { peakHeap = std::max(peakHeap, heapInUse()); };
        DxfSelect(0, DX_IMPORT_2D, path.c_str());
        peakHeap = std::max(peakHeap, heapInUse()) - before;
        stat = host::session().numbers["&DxfStat"];
        counts = host::countDrawing(host::openDrawing());
    }
};

/// What the drawing itself takes: its elements and patterns.
static std::size_t drawingBytes() {
    std::size_t bytes = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        bytes += sizeof pattern + pattern.elements.size() * sizeof(host::Element);
    return bytes;
}

/// `config`: "#EOF" alone puts all into one pattern after the other, READ_LAYER gives each layer its own.
static bool measure(std::size_t megabytes, const char* what, const std::string& config) {
    const std::string dxf = bench::generateLinework(megabytes * 1'000'000);
    const std::size_t entities = bench::countEntities(dxf);
    const bench::TempFile settings("torva-bench-config", config, ".dxd");
    const bench::TempFile file("torva-bench-import", dxf);
    const int runs = megabytes > 100 ? 1 : 3;
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });

    Run run;
    const double seconds = bench::secondsOf(runs, [&] {
        host::resetSession();
        run.import(file.path(), settings.path());
    });
    if (run.stat != 0) {
        std::printf("%4zu MB: import ended with %g\n", megabytes, run.stat);
        return false;
    }
    const auto& c = run.counts;
    const auto elements = static_cast<double>(c.moves + c.draws + c.arcs + c.circles);
    const double beyond =
        (static_cast<double>(run.peakHeap) - static_cast<double>(drawingBytes())) / elements;
    std::printf(
        "%-12s %4zu MB %9zu entities %9.0f elements  floor %7.3f s  import %7.3f s %6.1f MB/s  ratio %5.2f"
        "  %5.1f bytes an element beyond the drawing\n",
        what, megabytes, entities, elements, floorSeconds, seconds,
        static_cast<double>(dxf.size()) / seconds / 1e6, seconds / floorSeconds, beyond);
    return true;
}

static constexpr std::pair<const char*, const char*> CONFIGS[] = {
    {"in order", "#EOF\n"},
    {"by layers", "#FLAGS-START\nREAD_LAYER=ATTR\n#FLAGS-END\n#EOF\n"},
};

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    host::session().maxElements = 1'000'000'000;
    for (const std::size_t megabytes :
         smoke ? std::vector<std::size_t>{1} : std::vector<std::size_t>{10, 100, 400})
        for (const auto& [what, config] : CONFIGS)
            if (!measure(megabytes, what, config)) return 1;
    return 0;
}

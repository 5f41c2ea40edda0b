// A whole export, as a ratio to a copy of the bytes that it writes; and the memory it needs beyond the
// drawing.
#include "drawing/drawing.h"
#include "dx_select.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <vector>

namespace fs = std::filesystem;

static std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

static bool run(int operation, const std::string& path, const std::string& config) {
    host::session().texts["$DxfConfig"] = config;
    DxfSelect(0, operation, path.c_str());
    return host::session().numbers["&DxfStat"] == 0;
}

static bool measure(std::size_t megabytes) {
    const bench::TempFile source("torva-bench-export-in", bench::generateLinework(megabytes * 1'000'000));
    const bench::TempFile plain("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile target("torva-bench-export-out", "");
    const bench::TempFile copy("torva-bench-export-copy", "");
    host::resetSession();
    if (!run(DX_IMPORT_2D, source.path(), plain.path())) return false;

    const int runs = getenv("RUNS") ? atoi(getenv("RUNS")) : megabytes > 100 ? 1 : 3;
    const std::size_t before = heapInUse();
    std::size_t peak = before;
    host::session().onStatus = [&](const std::string&) { peak = std::max(peak, heapInUse()); };
    bool done = true;
    const double seconds =
        bench::secondsOf(runs, [&] { done = run(DX_EXPORT_2D, target.path(), plain.path()) && done; });
    peak = std::max(peak, heapInUse());
    const double copySeconds = bench::secondsOf(
        runs, [&] { fs::copy_file(target.path(), copy.path(), fs::copy_options::overwrite_existing); });
    const auto bytes = static_cast<double>(fs::file_size(target.path()));
    std::printf("%4zu MB read: writes %6.1f MB  copy %7.3f s  export %7.3f s %6.1f MB/s  ratio %5.2f"
                "  %5.1f MiB beyond the drawing\n",
                megabytes, bytes / 1e6, copySeconds, seconds, bytes / seconds / 1e6, seconds / copySeconds,
                static_cast<double>(peak - before) / (1 << 20));
    return done;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", fs::temp_directory_path().c_str(), 0);
    host::session().maxElements = 1'000'000'000;
    std::vector<std::size_t> sizes = smoke ? std::vector<std::size_t>{1} : std::vector<std::size_t>{10, 100, 400};
    if (argc > 1 && !smoke) sizes = {std::strtoul(argv[1], nullptr, 10)};
    for (const std::size_t megabytes : sizes)
        if (!measure(megabytes)) {
            std::printf("%4zu MB: the run ended with an error\n", megabytes);
            return 1;
        }
    return 0;
}

// A whole export, as a ratio to a copy of the bytes that it writes, and the memory that it needs beyond the
// drawing. Wanted: 100 MB/s and more, a ratio of 8 at most, less than 32 MiB, whatever the size.
//
//   bench_export [--smoke | MEGABYTES...]      sizes of the files that the drawings come from
#include "drawing/drawing.h"
#include "dx_select.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

static std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Watches the heap from a thread of its own.
class HeapWatch {
public:
    HeapWatch() : before_(heapInUse()), peak_(before_), thread_([this] { watch(); }) {}
    ~HeapWatch() {
        if (thread_.joinable()) growth();
    }
    HeapWatch(const HeapWatch&) = delete;
    HeapWatch& operator=(const HeapWatch&) = delete;
    /// Ends the watch. Gives the bytes that were in use at most beyond those at the start.
    std::size_t growth() {
        ends_ = true;
        thread_.join();
        return peak_ - before_;
    }

private:
    void watch() {
        while (!ends_) {
            peak_ = std::max(peak_, heapInUse());
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    std::size_t before_, peak_;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

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

    HeapWatch heap;
    bool done = run(DX_EXPORT_2D, target.path(), plain.path());
    const std::size_t growth = heap.growth();

    // Export and copy in turn, so that what disturbs one disturbs the other.
    double seconds = 1e300, copySeconds = 1e300;
    for (int i = 0; i < 5; ++i) {
        seconds = std::min(seconds, bench::secondsOf(1, [&] {
                               done = run(DX_EXPORT_2D, target.path(), plain.path()) && done;
                           }));
        copySeconds =
            std::min(copySeconds, bench::secondsOf(1, [&] {
                         fs::copy_file(target.path(), copy.path(), fs::copy_options::overwrite_existing);
                     }));
    }
    const auto bytes = static_cast<double>(fs::file_size(target.path()));
    std::printf("%4zu MB read: writes %6.1f MB  copy %7.3f s  export %7.3f s %6.1f MB/s  ratio %5.2f"
                "  %5.1f MiB beyond the drawing\n",
                megabytes, bytes / 1e6, copySeconds, seconds, bytes / seconds / 1e6, seconds / copySeconds,
                static_cast<double>(growth) / (1 << 20));
    return done;
}

int main(int argc, char** argv) {
    setenv("HD_WORK_DIR", fs::temp_directory_path().c_str(), 0);
    host::session().maxElements = 1'000'000'000;
    std::vector<std::size_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::strcmp(argv[i], "--smoke") == 0 ? 1 : std::strtoul(argv[i], nullptr, 10));
    if (sizes.empty()) sizes = {10, 100, 400};
    for (const std::size_t megabytes : sizes)
        if (!measure(megabytes)) {
            std::printf("%4zu MB: the run ended with an error\n", megabytes);
            return 1;
        }
    return 0;
}

// Delivering all pairs of a file, as a ratio to the floor.
#include "floor.h"
#include "generate.h"
#include "session/dx_reader.h"
#include "timing.h"

#include <cstdio>
#include <cstring>

static std::size_t readPairs() {
    DxReadSeek(0);
    int code = 0;
    char text[161];
    std::size_t pairs = 0;
    while (DxGetLineVar(&code, text, sizeof text, true, nullptr) == 0) ++pairs;
    return pairs;
}

static std::size_t viewPairs() {
    DxReadSeek(0);
    DxPair pair;
    std::size_t pairs = 0;
    while (DxReadPair(pair, 161, true) == 0) ++pairs;
    return pairs;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const std::size_t megabytes = smoke ? 1 : 100;
    const std::string dxf = bench::generateLinework(megabytes * 1'000'000);
    const bench::TempFile file("torva-bench-reader", dxf);
    if (DxReadOpen(file.path().c_str())) return 1;

    bench::FloorResult floor;
    std::size_t copied = 0, viewed = 0;
    const double floorSeconds = bench::secondsOf(5, [&] { floor = bench::runFloor(dxf); });
    const double copySeconds = bench::secondsOf(5, [&] { copied = readPairs(); });
    const double viewSeconds = bench::secondsOf(5, [&] { viewed = viewPairs(); });
    DxReadClose();
    if (copied != floor.pairs || viewed != floor.pairs) {
        std::printf("pairs differ: floor %zu, copied %zu, viewed %zu\n", floor.pairs, copied, viewed);
        return 1;
    }
    const auto print = [&](const char* what, double seconds) {
        std::printf("%-28s %8.3f s %8.1f MB/s %7.1f ns a pair   ratio %.2f\n", what, seconds,
                    static_cast<double>(dxf.size()) / seconds / 1e6,
                    seconds / static_cast<double>(floor.pairs) * 1e9, seconds / floorSeconds);
    };
    std::printf("%zu MB, %zu pairs\n", megabytes, floor.pairs);
    print("floor", floorSeconds);
    print("DxGetLineVar", copySeconds);
    print("DxReadPair", viewSeconds);
    return 0;
}

// The floor of a file: bench_floor FILE prints the seconds that splitting its pairs and converting its
// numbers takes.
#include "floor.h"
#include "generate.h"
#include "timing.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

int main(int argc, char** argv) {
    std::string dxf;
    if (argc > 1 && std::strncmp(argv[1], "--", 2) != 0) {
        std::ifstream file(argv[1], std::ios::binary);
        dxf.assign(std::istreambuf_iterator<char>(file), {});
    } else {
        dxf = bench::generateLinework(1'000'000);
    }
    bench::FloorResult floor;
    const double seconds = bench::secondsOf(5, [&] { floor = bench::runFloor(dxf); });
    std::printf("%.4f\n", seconds);
    return floor.pairs > 0 ? 0 : 1;
}

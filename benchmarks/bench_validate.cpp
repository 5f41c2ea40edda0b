// Judging a file, as a ratio to the floor: a file that is fine, and one with faults in each entity.
#include "floor.h"
#include "generate.h"
#include "timing.h"
#include "validate.h"

#include <cstdio>
#include <cstring>
#include <string>

static void measure(const char* what, const std::string& dxf) {
    bench::FloorResult floor;
    validate::Report report;
    const double floorSeconds = bench::secondsOf(5, [&] { floor = bench::runFloor(dxf); });
    const double seconds = bench::secondsOf(5, [&] { report = validate::validateText(dxf); });
    std::printf("%-28s %8.3f s %8.1f MB/s %7.1f ns a pair   ratio %.2f   %zu findings\n", what, seconds,
                static_cast<double>(dxf.size()) / seconds / 1e6,
                seconds / static_cast<double>(floor.pairs) * 1e9, seconds / floorSeconds,
                report.errors + report.warnings + report.notes);
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    std::string dxf = bench::generateLinework((smoke ? 1 : 100) * 1'000'000);
    measure("validate, sound entities", dxf);
    for (size_t at = dxf.find("AcDbEntity"); at != dxf.npos; at = dxf.find("AcDbEntity", at)) dxf[at] = 'X';
    measure("validate, faults everywhere", dxf);
    return 0;
}

// Dimensions: their import as a ratio to the floor and by their number, chains of many dimensions on one
// line, and their export.
#include "drawing/drawing.h"
#include "drawing/dump.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

void put(std::string& out, int code, const std::string& value) {
    out += std::to_string(code);
    out += '\n';
    out += value;
    out += '\n';
}
void put(std::string& out, int code, double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6f", value);
    put(out, code, std::string(text));
}
void putPoint(std::string& out, int code, double x, double y) {
    put(out, code, x);
    put(out, code + 10, y);
}
void putLine(std::string& out, double x0, double y0, double x1, double y1) {
    put(out, 0, "LINE");
    put(out, 8, "0");
    putPoint(out, 10, x0, y0);
    putPoint(out, 11, x1, y1);
}
void putArrow(std::string& out, double x, double y, double along) {
    put(out, 0, "SOLID");
    put(out, 8, "0");
    putPoint(out, 10, x + along, y + 0.2);
    putPoint(out, 11, x + along, y - 0.2);
    putPoint(out, 12, x, y);
    putPoint(out, 13, x, y);
}

/// The block of a horizontal dimension of 20 units: ten entities.
void putBlock(std::string& out, std::size_t i, double x, double y) {
    put(out, 0, "BLOCK");
    put(out, 8, "0");
    put(out, 2, "*D" + std::to_string(i));
    put(out, 70, "1");
    putPoint(out, 10, 0, 0);
    putLine(out, x, y + 1, x, y + 12);
    putLine(out, x + 20, y + 1, x + 20, y + 12);
    putLine(out, x, y + 10, x + 20, y + 10);
    putArrow(out, x, y + 10, 1);
    putArrow(out, x + 20, y + 10, -1);
    put(out, 0, "TEXT");
    put(out, 8, "0");
    putPoint(out, 10, x + 9, y + 11);
    put(out, 40, 2.5);
    put(out, 1, std::to_string(i) + ".25");
    for (int point = 0; point < 4; ++point) {
        put(out, 0, "POINT");
        put(out, 8, "DEFPOINTS");
        putPoint(out, 10, x + point, y);
    }
    put(out, 0, "ENDBLK");
    put(out, 8, "0");
}

void putDimension(std::string& out, std::size_t i, double x, double y) {
    put(out, 0, "DIMENSION");
    put(out, 8, "0");
    put(out, 2, "*D" + std::to_string(i));
    putPoint(out, 10, x, y + 10);
    putPoint(out, 11, x + 10, y + 12);
    put(out, 70, "0");
    putPoint(out, 13, x, y);
    putPoint(out, 14, x + 20, y);
}

/// `onOneLine`: all of them touch.
std::string generate(std::size_t count, bool onOneLine) {
    std::string dxf = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n";
    const auto x = [&](std::size_t i) {
        return onOneLine ? 20.0 * static_cast<double>(i) : static_cast<double>(i % 100);
    };
    const auto y = [&](std::size_t i) { return onOneLine ? 0.0 : 20.0 * static_cast<double>(i); };
    for (std::size_t i = 0; i < count; ++i) putBlock(dxf, i, x(i), y(i));
    dxf += "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n";
    for (std::size_t i = 0; i < count; ++i) putDimension(dxf, i, x(i), y(i));
    return dxf + "0\nENDSEC\n0\nEOF\n";
}

double measure(const char* what, std::size_t count, bool onOneLine) {
    const std::string dxf = generate(count, onOneLine);
    const bench::TempFile file("torva-bench-dimensions", dxf);
    const int runs = count > 20'000 ? 1 : 3;
    const double floorSeconds = bench::secondsOf(runs, [&] { bench::runFloor(dxf); });
    const double seconds = bench::secondsOf(runs, [&] {
        host::resetSession();
        DxfSelect(0, DX_IMPORT_2D, file.path().c_str());
    });
    const long made = host::countDrawing(host::openDrawing()).dimensions;
    const bench::TempFile target("torva-bench-dimensions-out", "");
    const double out = bench::secondsOf(1, [&] { DxfSelect(0, DX_EXPORT_2D, target.path().c_str()); });
    std::printf("%-12s %7zu: %7ld made  floor %6.3f s  import %7.3f s  ratio %5.1f  export %7.3f s\n", what,
                count, made, floorSeconds, seconds, seconds / floorSeconds, out);
    return made == static_cast<long>(count) ? seconds : -1;
}

} // namespace

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    setenv("HD_U", TORVA_BUILD_DATA, 0);
    host::session().maxElements = 1'000'000'000;
    bool isGood = true;
    for (const bool onOneLine : {false, true}) {
        double before = 0;
        for (const std::size_t count :
             smoke ? std::vector<std::size_t>{100, 1000} : std::vector<std::size_t>{10'000, 100'000}) {
            const double seconds = measure(onOneLine ? "one chain" : "single", count, onOneLine);
            isGood = isGood && seconds >= 0;
            if (before > 0)
                std::printf("%-12s ten times as many: %.1f times the time\n", "", seconds / before);
            before = seconds;
        }
    }
    return isGood ? 0 : 1;
}

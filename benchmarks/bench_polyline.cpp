// Polylines with bulges: a whole import as a ratio to the floor, in many short ones and in one long one.
#include "drawing/drawing.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

/// LWPOLYLINE entities of `vertices` vertices each, every third piece an arc.
static std::string polylines(std::size_t bytes, int vertices) {
    std::string out = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n"
                      "  0\nSECTION\n  2\nENTITIES\n";
    out.reserve(bytes + 1000);
    char text[160];
    for (int piece = 0; out.size() < bytes;) {
        out += "  0\nLWPOLYLINE\n  8\n0\n 90\n" + std::to_string(vertices) + "\n 70\n1\n";
        for (int i = 0; i < vertices; ++i, ++piece) {
            const double x = 500 * std::cos(piece * 0.37), y = 500 * std::sin(piece * 0.41);
            int length = std::snprintf(text, sizeof text, " 10\n%.6f\n 20\n%.6f\n", x, y);
            if (piece % 3 == 0)
                length += std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                                        " 42\n%.6f\n", 0.1 + (piece % 7) * 0.1);
            out.append(text, static_cast<std::size_t>(length));
        }
    }
    return out + "  0\nENDSEC\n  0\nEOF\n";
}

static bool measure(const char* what, const std::string& dxf) {
    const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-polyline", dxf);
    const int runs = dxf.size() > 50'000'000 ? 1 : 3;
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });
    const double seconds = bench::secondsOf(runs, [&] {
        host::resetSession();
        host::session().maxElements = 1'000'000'000;
        host::session().texts["$DxfConfig"] = settings.path();
        DxfSelect(0, DX_IMPORT_2D, file.path().c_str());
    });
    std::size_t elements = 0;
    for (const host::Pattern& pattern : host::openDrawing().patterns) elements += pattern.elements.size();
    const auto size = static_cast<double>(dxf.size());
    std::printf("%-22s %4.0f MB %9zu elements  floor %7.3f s  import %7.3f s %6.1f MB/s  ratio %5.2f\n", what,
                size / 1e6, elements, floorSeconds, seconds, size / seconds / 1e6, seconds / floorSeconds);
    return host::session().numbers["&DxfStat"] == 0 && elements > 0;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    const std::size_t megabyte = 1'000'000;
    for (const std::size_t megabytes : {std::size_t(smoke ? 1 : 10), std::size_t(smoke ? 2 : 100)}) {
        if (!measure("12 vertices each", polylines(megabytes * megabyte, 12))) return 1;
        if (!measure("one polyline", polylines(megabytes * megabyte, static_cast<int>(megabytes) * 33'000)))
            return 1;
    }
    return 0;
}

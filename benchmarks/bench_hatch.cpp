// Hatches: the import of many small ones as a ratio to the floor; nesting, clean-up and triangulation of
// contours that grow tenfold; a pattern far too fine to be drawn.
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
#include <vector>

static std::string fileOf(const std::string& entities) {
    return "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n"
           "  0\nSECTION\n  2\nENTITIES\n" +
           entities + "  0\nENDSEC\n  0\nEOF\n";
}
static std::string pair(int code, double value) {
    char text[48];
    return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%3d\n%.9g\n", code, value))};
}
static std::string lineEdge(double x0, double y0, double x1, double y1) {
    return " 72\n1\n" + pair(10, x0) + pair(20, y0) + pair(11, x1) + pair(21, y1);
}
static std::string hatch(const std::string& loops, int count, bool solid, double distance = 1) {
    std::string text = "  0\nHATCH\n  8\n0\n 10\n0\n 20\n0\n 30\n0\n  2\nANSI31\n 70\n" +
                       std::to_string(solid) + "\n 71\n0\n 91\n" + std::to_string(count) + "\n" + loops +
                       " 75\n0\n 76\n1\n";
    if (!solid)
        text += " 52\n0\n 41\n1\n 77\n0\n 78\n1\n 53\n45\n 43\n0\n 44\n0\n" + pair(45, -distance) +
                pair(46, distance) + " 79\n0\n";
    return text + " 98\n0\n";
}
static std::string smallHatches(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        const double x = i % 300 * 10, y = i / 300 * 10;
        text += hatch(" 92\n1\n 93\n4\n" + lineEdge(x, y, x + 8, y) + lineEdge(x + 8, y, x + 8, y + 8) +
                          lineEdge(x + 8, y + 8, x, y + 8) + lineEdge(x, y + 8, x, y) + " 97\n0\n",
                      1, false);
    }
    return fileOf(text);
}
/// A ragged contour of `edges` edges about a grid of islands.
static std::string islands(int edges, int count) {
    std::string loops = " 92\n1\n 93\n" + std::to_string(edges) + "\n";
    const double full = 2 * std::acos(-1.0);
    const auto at = [&](int i) {
        const double a = full * (i % edges) / edges, r = 1000 + (i % 2 ? 5 : 0);
        return std::pair(r * std::cos(a), r * std::sin(a));
    };
    for (int i = 0; i < edges; ++i) {
        const auto [x0, y0] = at(i);
        const auto [x1, y1] = at(i + 1);
        loops += lineEdge(x0, y0, x1, y1);
    }
    const int side = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int i = 0; i < count; ++i) {
        const double step = 1200.0 / side, x = -600 + i % side * step, y = -600 + i / side * step;
        loops += " 92\n2\n 72\n0\n 73\n1\n 93\n4\n";
        constexpr double corners[4][2] = {{0, 0}, {0.5, 0}, {0.5, 0.5}, {0, 0.5}};
        for (const auto& corner : corners)
            loops += pair(10, x + corner[0] * step) + pair(20, y + corner[1] * step);
    }
    return fileOf(hatch(loops, 1 + count, true));
}

static bool select(int operation, const std::string& path, const std::string& config) {
    host::session().texts["$DxfConfig"] = config;
    DxfSelect(0, operation, path.c_str());
    return host::session().numbers["&DxfStat"] == 0;
}
static bool import(const std::string& path, const std::string& config) {
    host::resetSession();
    host::session().maxElements = 1'000'000'000;
    return select(DX_IMPORT_2D, path, config);
}

static bool measureMany(int count) {
    const std::string dxf = smallHatches(count);
    const bench::TempFile settings("torva-bench-config", "#FLAGS-START\nFILL_CONTOUR=0\n#FLAGS-END\n#EOF\n",
                                   ".dxd");
    const bench::TempFile file("torva-bench-hatch", dxf);
    bool done = true;
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });
    const double seconds = bench::secondsOf(3, [&] { done = import(file.path(), settings.path()) && done; });
    std::printf("%6d hatches of 4 edges  floor %6.3f s  import %6.3f s  ratio %5.2f (wanted: 12)\n", count,
                floorSeconds, seconds, seconds / floorSeconds);
    return done;
}

static bool measureIslands(int edges, int count, double before[2]) {
    const bench::TempFile settings(
        "torva-bench-config",
        "#FLAGS-START\nFILL_CONTOUR=0\nWRITE_FILL=1\nVERSION=ACAD12\n#FLAGS-END\n#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-islands", islands(edges, count));
    const bench::TempFile target("torva-bench-islands-out", "");
    bool done = true;
    const double in = bench::secondsOf(1, [&] { done = import(file.path(), settings.path()); });
    const double out =
        bench::secondsOf(1, [&] { done = select(DX_EXPORT_2D, target.path(), settings.path()) && done; });
    std::printf("%6d edges, %4d islands: import %7.3f s", edges, count, in);
    if (before[0] > 0) std::printf(" (x %4.1f)", in / before[0]);
    std::printf("  nested and cut into triangles %7.3f s", out);
    if (before[1] > 0) std::printf(" (x %4.1f, wanted: 13)", out / before[1]);
    std::printf("  writes %5.1f MB\n", static_cast<double>(std::filesystem::file_size(target.path())) / 1e6);
    before[0] = in;
    before[1] = out;
    return done;
}

static bool measureFine() {
    const bench::TempFile settings("torva-bench-config",
                                   "#FLAGS-START\nKEEP_HATCH=1\nVERSION=ACAD12\n#FLAGS-END\n#EOF\n", ".dxd");
    const double km = 1e6;
    const bench::TempFile file("torva-bench-fine",
                               fileOf(hatch(" 92\n1\n 93\n3\n" + lineEdge(0, 0, km, 0) +
                                                lineEdge(km, 0, 0, km) + lineEdge(0, km, 0, 0),
                                            1, false, 1e-6)));
    const bench::TempFile target("torva-bench-fine-out", "");
    bool done = true;
    const double seconds = bench::secondsOf(1, [&] {
        done = import(file.path(), settings.path()) && select(DX_EXPORT_2D, target.path(), settings.path());
    });
    std::printf("lines 1e-6 apart over a kilometre: in and out %6.3f s (wanted: 10)\n", seconds);
    return done;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    setenv("HD_U", TORVA_BUILD_DATA, 0);
    double before[2] = {0, 0};
    bool done = measureMany(smoke ? 1'000 : 100'000);
    for (const int edges : {smoke ? 1'000 : 10'000, smoke ? 2'000 : 100'000})
        done = measureIslands(edges, edges / 100, before) && done;
    return done && measureFine() ? 0 : 1;
}

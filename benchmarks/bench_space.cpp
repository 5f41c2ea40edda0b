// Faces in space: imports of meshes and point clouds as a ratio to the floor, with the memory that they take
// beyond the file; hidden lines of many faces.
#include "drawing/drawing.h"
#include "drawing/space_view.h"
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
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static std::string entities(const std::string& content) {
    return "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n  0\nSECTION\n  "
           "2\nENTITIES\n" +
           content + "  0\nENDSEC\n  0\nEOF\n";
}

/// Point of a hilly field.
static std::string pointText(int i, int j) {
    char text[120];
    std::snprintf(text, sizeof text, " 10\n%.4f\n 20\n%.4f\n 30\n%.4f\n", i * 0.5, j * 0.5,
                  3 * std::sin(i * 0.13) * std::cos(j * 0.17));
    return text;
}

/// A polygon mesh of about `faces` triangles.
static std::string polygonMesh(int faces) {
    const int side = static_cast<int>(std::sqrt(faces / 2.0)) + 1;
    std::string out = "  0\nPOLYLINE\n  8\n0\n 66\n1\n 70\n16\n 71\n" + std::to_string(side) + "\n 72\n" +
                      std::to_string(side) + "\n";
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j) out += "  0\nVERTEX\n  8\n0\n" + pointText(i, j) + " 70\n64\n";
    return entities(out + "  0\nSEQEND\n");
}

/// A MESH of about `faces` quadrilaterals.
static std::string subdivision(int faces) {
    const int side = static_cast<int>(std::sqrt(faces)) + 1;
    const int cells = (side - 1) * (side - 1);
    std::string out = "  0\nMESH\n  8\n0\n 71\n2\n 91\n0\n 92\n" + std::to_string(side * side) + "\n";
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j) out += pointText(i, j);
    out += " 93\n" + std::to_string(5 * cells) + "\n";
    const auto index = [&](int i, int j) { return " 90\n" + std::to_string(i * side + j) + "\n"; };
    for (int i = 0; i + 1 < side; ++i)
        for (int j = 0; j + 1 < side; ++j)
            out += " 90\n4\n" + index(i, j) + index(i, j + 1) + index(i + 1, j + 1) + index(i + 1, j);
    return entities(out);
}

static std::string points(int count) {
    std::string out;
    for (int i = 0; i < count; ++i)
        out += "  0\nPOINT\n  8\nL" + std::to_string(i / 100 % 20) + "\n" + pointText(i % 1000, i / 1000);
    return entities(out);
}

/// Kilobytes that this process has held at most.
static long peakKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// In a process of its own, so that its peak is that of this import.
static bool measure(const char* what, const std::string& dxf, int faces) {
    const bench::TempFile settings("torva-bench-config", "#EOF\n", ".dxd");
    const bench::TempFile file("torva-bench-space", dxf);
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        const long before = peakKilobytes();
        const double start = bench::cpuSeconds();
        host::resetSession();
        host::session().maxElements = 1'000'000'000;
        host::session().texts["$DxfConfig"] = settings.path();
        DxfSelect(0, DX_IMPORT_3D, file.path().c_str());
        const double seconds = bench::cpuSeconds() - start;
        // The file is mapped: its pages count among the peak.
        const double beyond = 1024.0 * (peakKilobytes() - before) - static_cast<double>(dxf.size());
        std::printf(
            "%-14s %8d faces %6.1f MB  floor %6.3f s  import %6.3f s  ratio %5.2f  %5.0f bytes a face\n",
            what, faces, dxf.size() / 1e6, floorSeconds, seconds, seconds / floorSeconds, beyond / faces);
        std::fflush(stdout);
        const bool done = host::session().numbers["&DxfStat"] == 0 && host::openDrawing().elementCount > 0;
        _exit(done ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A ball of about `faces` quadrilaterals above a hilly field of as many.
static host::SpaceContent scene(int faces) {
    host::SpaceContent content;
    host::FaceList& list = content.faceLists.emplace_back();
    const int side = static_cast<int>(std::sqrt(faces / 2.0));
    const auto add = [&](auto at) {
        for (int i = 0; i < side; ++i)
            for (int j = 0; j < side; ++j) {
                const RPT3 corners[5] = {at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1), at(i, j)};
                for (int k = 0; k < 5; ++k) list.addPoint(corners[k], k ? host::EDGE : 0, 1, 1);
                list.endFace(1);
            }
    };
    add([&](int i, int j) {
        const double x = 4.0 * i / side - 2, y = 4.0 * j / side - 2;
        return RPT3{x, y, 0.2 * std::sin(5 * x) * std::cos(7 * y)};
    });
    add([&](int i, int j) {
        const double u = M_PI * i / side, v = 2 * M_PI * (j % side) / side;
        return RPT3{std::sin(u) * std::cos(v), std::sin(u) * std::sin(v), 1.5 + std::cos(u)};
    });
    return content;
}

static double measureHidden(int faces) {
    const host::SpaceContent content = scene(faces);
    std::size_t lines = 0;
    const double seconds = bench::secondsOf(1, [&] {
        host::SpaceView view(host::viewFrom({1, -2, 1}));
        view.add(content);
        lines = view.visibleLines().size();
    });
    std::printf("hidden lines   %8d faces  %zu lines seen  %6.2f s\n", faces, lines, seconds);
    return seconds;
}

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    for (const int faces : {smoke ? 1000 : 100'000, smoke ? 2000 : 1'000'000}) {
        if (!measure("polygon mesh", polygonMesh(faces), faces)) return 1;
        if (!measure("MESH", subdivision(faces), faces)) return 1;
        if (!measure("points", points(faces), faces)) return 1;
    }
    const double few = measureHidden(smoke ? 1000 : 10'000);
    const double many = measureHidden(smoke ? 2000 : 100'000);
    if (!smoke) std::printf("ten times the faces: n^%.2f\n", std::log10(many / few));
    return 0;
}

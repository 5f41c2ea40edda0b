// Faces of real drawings: what an import holds in space comes back from its export.
#include "../export/exported.h"
#include "../import/drawn.h"
#include "export3d.h"
#include "faces.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

/// The face's corners and its hidden edges, without corners that repeat the one before.
std::string shapeOf(const host::FaceView& face) {
    std::string shape;
    for (int i = 1; i < face.count; ++i) {
        const RPT3 &p = face.points[i], &before = face.points[i - 1];
        if (p.x == before.x && p.y == before.y && p.z == before.z) continue;
        for (const double v : {p.x, p.y, p.z})
            shape += UtFormat(" %.9g", std::fabs(v) < 1e-12 ? 0.0 : v).str();
        if (face.marks[i] & host::HIDDEN) shape += " hidden";
    }
    return shape;
}

/// Shapes of all faces of the open drawing, sorted; those of more than four corners come back in parts and
/// count as nothing.
std::vector<std::string> shapes() {
    std::vector<std::string> all;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        forEachFaceList(pattern, [&](const host::FaceList& list) {
            forEachFace(list, [&](const host::FaceView& face) {
                if (face.isArea() && face.count <= 5) all.push_back(shapeOf(face));
            });
        });
    std::sort(all.begin(), all.end());
    return all;
}

using RealMeshes = Export;

TEST_F(RealMeshes, ComeBackFaceByFace) {
    const char* corpus = std::getenv("TORVA_CORPUS");
    if (!corpus) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    ImportOptions options = unshifted();
    options.in3d = true;
    std::size_t faces = 0;
    for (const auto& entry : fs::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() != ".dxf" || fs::file_size(entry.path()) > 20'000'000) continue;
        SCOPED_TRACE(entry.path().string());
        const TempDir folder;
        fs::copy_file(entry.path(), folder.file("in.dxf"));
        importFile(folder, "in.dxf", options);
        const auto before = shapes();
        if (before.empty()) continue;
        faces += before.size();
        const Exported file = export3d(exportConfig("ACAD24", "NO_KOMMA=15\n"));
        EXPECT_EQ(file.errors(), "");
        importText(file.text, options);
        EXPECT_EQ(shapes(), before);
    }
    EXPECT_GT(faces, 0u);
}

} // namespace

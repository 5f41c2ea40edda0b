// Faces as mesh files.
#include "faces.h"
#include "temp_dir.h"

#include "convert/mesh_file.h"
#include "drawing/drawing.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

/// A warped pair of triangles on one layer, a quadrilateral that shares two of their corners on another, an
/// edge by itself, and a face that nobody sees.
host::Drawing model() {
    host::Drawing drawing;
    host::Pattern& first = drawing.addPattern(false);
    first.ids.layer = "A layer";
    first.faceLists.push_back(faceList({{0, 0, 0}, {1, 0, 0}, {1, 1, 0.1}}));
    addFace(first.faceLists[0], {{0, 0, 0}, {1, 1, 0.1}, {0, 1, -0.0}}, 2);
    host::Pattern& second = drawing.addPattern(false);
    second.ids.layer = "B";
    second.faceLists.push_back(faceList({{1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0.1}}));
    second.faceLists.push_back(faceList({{0, 0, 0}, {0, 0, 0}, {1, 1, 1}}));
    second.curves = {{{{0, 0, 1}, {1, 0, 2}}, 5}};
    host::Pattern& third = drawing.addPattern(false);
    third.visible = false;
    third.faceLists.push_back(faceList({{7, 0, 0}, {2, 0, 0}, {2, 1, 0}}));
    return drawing;
}

std::string written(const char* name) {
    const TempDir folder;
    long faces = 0;
    EXPECT_EQ(host::writeMesh(model(), folder.file(name), &faces), "");
    EXPECT_EQ(faces, 3);
    return folder.read(name);
}

template <class Value>
Value at(const std::string& bytes, std::size_t place) {
    Value value;
    std::memcpy(&value, bytes.data() + place, sizeof value);
    return value;
}

TEST(MeshFile, ObjSharesPointsAndHasAGroupALayer) {
    EXPECT_EQ(written("m.obj"), "# torva-dxf\nv 0 0 0\nv 1 0 0\nv 1 1 0.1\nv 0 1 0\nv 2 0 0\nv 2 1 0\n"
                                "g A_layer\nf 1 2 3\nf 1 3 4\ng B\nf 2 5 6 3\n");
}

TEST(MeshFile, StlIsTriangles) {
    const std::string stl = written("m.STL");
    ASSERT_EQ(at<std::uint32_t>(stl, 80), 4u);
    ASSERT_EQ(stl.size(), 84u + 4 * 50);
    EXPECT_GT(at<float>(stl, 84 + 8), 0.9F) << "normal of the first: upward";
    EXPECT_EQ(at<float>(stl, 84 + 12 + 12), 1.0F) << "x of its second corner";
}

TEST(MeshFile, PlyHasColoursOfFaces) {
    const std::string ply = written("m.ply");
    EXPECT_NE(ply.find("element vertex 6\n"), std::string::npos);
    EXPECT_NE(ply.find("element face 3\n"), std::string::npos);
    const std::size_t head = ply.find("end_header\n") + 11;
    EXPECT_EQ(at<double>(ply, head + 2 * 24 + 16), 0.1);
    EXPECT_EQ(at<std::int32_t>(ply, head + 6 * 24), 3);
    EXPECT_EQ(ply.size(), head + 6 * 24 + 2 * (16 + 3) + (20 + 3));
}

TEST(MeshFile, OtherNamesAndFoldersThatAreMissingAreErrors) {
    long faces = 0;
    EXPECT_FALSE(host::isMeshFile("obj"));
    EXPECT_NE(host::writeMesh(model(), "m.step", &faces), "");
    EXPECT_NE(host::writeMesh(model(), "/nowhere/m.obj", &faces), "");
}

} // namespace

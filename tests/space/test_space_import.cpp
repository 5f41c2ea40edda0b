// What a 3D import makes of faces, meshes and thickness.
#include "../import/drawn.h"
#include "ci_3d.h"
#include "dx_report.h"
#include "rpt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

ImportOptions in3d(bool lines = false) {
    ImportOptions options = unshifted();
    options.in3d = true;
    if (lines) options.numbers["&Dxf3dLines"] = 1;
    return options;
}

/// Lines of the drawing's content that begin with one of the words.
std::string inSpace(const std::string& elements) {
    std::istringstream lines(elements);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        for (const char* word : {"face ", "edge ", "facets", "pointcloud", "  face", "curve"})
            if (line.rfind(word, 0) == 0) result += line + "\n";
    return result;
}
std::string spaceOf(const DxfText& text, const ImportOptions& options = in3d()) {
    return inSpace(drawn(text, options));
}
std::string spaceOf(const std::string& name, const DxfGroups& groups, const ImportOptions& options = in3d()) {
    return spaceOf(dxf().header("AC1015").entity(name, groups), options);
}

DxfGroups corners(std::initializer_list<RPT3> points) {
    DxfGroups groups;
    int code = 10;
    for (const RPT3& p : points) groups = groups + at(code++, {p.x, p.y, p.z});
    return groups;
}

TEST(Face3d, FlatStageIsAnOutlineWithGapsWhereEdgesAreInvisible) {
    const DxfGroups face = corners({{0, 0, 1}, {4, 0, 1}, {4, 3, 1}, {0, 3, 1}});
    EXPECT_EQ(drawnEntity("3DFACE", face),
              "move 0 0\ndraw 4 0 info 5\ndraw 4 3 info 5\ndraw 0 3 info 5\ndraw 0 0 info 5\n");
    EXPECT_EQ(drawnEntity("3DFACE", face + DxfGroups{{70, "10"}}),
              "move 0 0\ndraw 4 0 info 5\nmove 4 3\ndraw 0 3 info 5\nmove 0 0\n");
}

TEST(Face3d, WarpedOnesAreTwoTriangles) {
    struct Case {
        double fourth;
        const char *flags, *wanted;
    };
    const Case cases[] = {
        {0.0001, "0", "face pen 1 0 0 0 4 0 0 4 3 0 0 3 0.0001\n"},
        {0.0002, "0", "face pen 1 0 0 0 4 0 0 4 3 0 hidden 3\nface pen 1 0 0 0 4 3 0 0 3 0.0002 hidden 1\n"},
        {0, "5", "face pen 1 0 0 0 4 0 0 4 3 0 0 3 0 hidden 1 3\n"},
        {1, "6", "face pen 1 0 0 0 4 0 0 4 3 0 hidden 2 3\nface pen 1 0 0 0 4 3 0 0 3 1 hidden 1 2\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(spaceOf("3DFACE", corners({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, c.fourth}}) +
                                        DxfGroups{{70, c.flags}}),
                  c.wanted);
    EXPECT_EQ(spaceOf("3DFACE", corners({{0, 0, 0}, {4, 0, 0}, {4, 3, 9}, {4, 3, 9}})),
              "face pen 1 0 0 0 4 0 0 4 3 9 4 3 9\n")
        << "a triangle is one face too";
    EXPECT_EQ(spaceOf("3DFACE", corners({{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {0, 3, 7}})),
              "face pen 1 0 0 0 1 1 0 2 2 0 0 3 7\n")
        << "there is no plane through the first three";
    EXPECT_EQ(spaceOf("3DFACE", DxfGroups{{38, "5"}, {10, "1"}, {11, "2"}, {22, "3"}}),
              "face pen 1 1 0 5 2 0 5 0 3 5 0 0 5\n")
        << "elevation, and 0 for what isn't given";
}

DxfGroups subdivision(const std::vector<RPT3>& vertices, const std::vector<int>& faces, int announced = -1) {
    DxfGroups groups = {{71, "2"}, {72, "0"}, {91, "3"}, {92, std::to_string(vertices.size())}};
    for (const RPT3& p : vertices) groups = groups + at(10, {p.x, p.y, p.z});
    groups.push_back({93, std::to_string(announced < 0 ? static_cast<int>(faces.size()) : announced)});
    for (const int value : faces) groups.push_back({90, std::to_string(value)});
    return groups + DxfGroups{{94, "1"}, {90, "0"}, {90, "1"}, {95, "1"}, {140, "0"}, {90, "7"}};
}

TEST(Materials, GiveFacesAndMeshesTheirPens) {
    // Materials stand behind the entities: the pass over the second space knows those of the first.
    ImportOptions options = in3d();
    options.numbers["&DxfParseExt"] = 0;
    options.numbers["&DxfPaper"] = 2;
    const std::vector<RPT3> square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const auto penOf = [&](const char* kind, const DxfGroups& groups, const char* handle) {
        DxfText text = dxf().header("AC1015").entity("LINE", at(11, {1, 1}));
        text.entity(kind, DxfGroups{{67, "1"}, {347, handle}, {62, "1"}} + groups);
        text.section("OBJECTS", {{0, "MATERIAL"}, {5, "AB"}, {1, "M"}, {90, "255"}, {91, "65280"}}, true);
        const std::string faces = spaceOf(text, options);
        return faces.substr(0, std::min(faces.find(" 0 0 0"), faces.find(" normal")));
    };
    const auto closest = [](double green, double blue) {
        const double rgb[3] = {0, green, blue};
        int pen = 0;
        EXPECT_EQ(Ci3d::GetClosestPen(rgb, pen), 0);
        return std::to_string(pen);
    };
    const DxfGroups face = corners({square[0], square[1], square[2], square[3]});
    const DxfGroups mesh = subdivision(square, {4, 0, 1, 2, 3});
    const std::string ambient = closest(0, 1), diffuse = closest(1, 0);
    EXPECT_EQ(penOf("3DFACE", face, "AB"), "face pen " + ambient);
    EXPECT_EQ(penOf("MESH", mesh, "AB"), "facets pen " + diffuse + " material 1");
    EXPECT_EQ(penOf("MESH", mesh, "AC"), "facets pen 2") << "no such material: the pen of the colour";
    EXPECT_EQ(penOf("3DFACE", face, "AC"), "face pen 2");
}

TEST(Thickness, RaisesLinesArcsAndSolids) {
    const DxfGroups line = at(10, {1, 0, 0}) + at(11, {1, 5, 2});
    EXPECT_EQ(spaceOf("LINE", line), "") << "without thickness only if 3D lines are wanted";
    EXPECT_EQ(spaceOf("LINE", line, in3d(true)), "edge pen 1 1 0 0 1 5 2\n");
    EXPECT_EQ(spaceOf("LINE", line + at(39, {2}) + at(210, {1, 0, 0})),
              "face pen 1 1 0 0 1 5 2 3 5 2 3 0 0\n");
    EXPECT_EQ(spaceOf("SOLID", corners({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}})), "");
    const std::string block =
        spaceOf("SOLID", corners({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}) + at(39, {10}));
    EXPECT_EQ(block, "face pen 1 0 0 0 1 0 0 1 1 0 0 1 0\n"
                     "face pen 1 0 0 0 1 0 0 1 0 10 0 0 10\n"
                     "face pen 1 1 0 0 1 1 0 1 1 10 1 0 10\n"
                     "face pen 1 1 1 0 0 1 0 0 1 10 1 1 10\n"
                     "face pen 1 0 1 0 0 0 0 0 0 10 0 1 10\n"
                     "face pen 1 0 0 10 1 0 10 1 1 10 0 1 10\n");
}

TEST(Thickness, WallsOfArcsFollowAngleCentreAndExtrusion) {
    const std::string wall =
        spaceOf("ARC", at(10, {1, 2, 3}) + at(40, {10}) + at(39, {4}) + DxfGroups{{50, "90"}, {51, "100"}});
    EXPECT_EQ(wall, "face pen 1 1 12 3 -0.736481777 11.8480775 3 -0.736481777 11.8480775 7 1 12 7\n")
        << "one facet, its upright edges are those of the wall's ends";
    const std::string turned = spaceOf("ARC", at(10, {0, 0, 5}) + at(40, {10}) + at(39, {1}) +
                                                  at(210, {0, 0, -1}) + DxfGroups{{50, "350"}, {51, "0"}});
    EXPECT_EQ(turned, "face pen 1 -9.84807753 -1.73648178 -5 -10 0 -5 -10 0 -6 -9.84807753 -1.73648178 -6\n");
    const std::string whole = spaceOf("CIRCLE", at(10, {0, 0, 0}) + at(40, {1}) + at(39, {1}));
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), 36);
    EXPECT_NE(whole.find("hidden 2 4"), std::string::npos);
    EXPECT_EQ(spaceOf("CIRCLE", at(10, {0, 0, 0}) + at(40, {1})), "");
    const std::string flat = spaceOf("CIRCLE", at(10, {0, 0, 0}) + at(40, {1}), in3d(true));
    EXPECT_EQ(flat.substr(0, flat.find('\n')), "edge pen 1 1 0 0 0.984807753 0.173648178 0");
}

TEST(Thickness, PolylinesAreStripsAndWallsUpToTheClosingPiece) {
    const DxfGroups square = {{90, "3"}, {70, "1"}, {39, "2"}, {38, "1"}};
    EXPECT_EQ(spaceOf("LWPOLYLINE", square + at(10, {0, 0}) + at(10, {4, 0}) + at(10, {4, 3})),
              "face pen 1 0 0 1 4 0 1 4 0 3 0 0 3\n"
              "face pen 1 4 0 1 4 3 1 4 3 3 4 0 3\n"
              "face pen 1 4 3 1 0 0 1 0 0 3 4 3 3\n");
    const std::string bulge = spaceOf("LWPOLYLINE", DxfGroups{{90, "2"}, {39, "2"}} + at(10, {0, 0}) +
                                                        at(42, {-1}) + at(10, {2, 0}));
    EXPECT_EQ(std::count(bulge.begin(), bulge.end(), '\n'), 18) << "half a turn";
    EXPECT_EQ(spaceOf("LWPOLYLINE", DxfGroups{{90, "2"}} + at(10, {0, 0}) + at(10, {2, 0})), "");
}

// ---- meshes ------------------------------------------------------------------------------------------

DxfText mesh(int m, int n, int flags, std::initializer_list<RPT3> points) {
    DxfText text = dxf().header("AC1015").entity(
        "POLYLINE",
        {{66, "1"}, {70, std::to_string(flags)}, {71, std::to_string(m)}, {72, std::to_string(n)}});
    for (const RPT3& p : points) text.entity("VERTEX", at(10, {p.x, p.y, p.z}) + DxfGroups{{70, "64"}});
    return text.entity("SEQEND", {});
}

TEST(PolygonMesh, CellsAreTwoTrianglesOrOne) {
    EXPECT_EQ(spaceOf(mesh(2, 2, 16, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 1}})),
              "face pen 1 0 0 0 1 0 0 1 1 1 hidden 3\nface pen 1 0 0 0 1 1 1 0 1 0 hidden 1\n");
    EXPECT_EQ(spaceOf(mesh(2, 2, 16, {{0, 0, 0}, {0, 0, 0}, {0, 1, 0}, {1, 1, 1}})),
              "face pen 1 0 0 0 1 1 1 0 1 0\n");
    EXPECT_EQ(spaceOf(mesh(2, 2, 16, {{0, 0, 0}, {0, 0, 0}, {1, 1, 1}, {1, 1, 1}})), "")
        << "two pairs of corners coincide";
}

TEST(PolygonMesh, ClosesInNWithCaps) {
    const std::string tube =
        spaceOf(mesh(2, 3, 16 + 32, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 9}, {1, 0, 9}, {0, 1, 9}}));
    EXPECT_EQ(std::count(tube.begin(), tube.end(), '\n'), 8) << "3 sides of 2 triangles, 2 caps";
    EXPECT_NE(tube.find("face pen 1 0 1 0 1 0 0 0 0 0\n"), std::string::npos);
    EXPECT_NE(tube.find("face pen 1 0 0 9 1 0 9 0 1 9\n"), std::string::npos);
    const std::string cone =
        spaceOf(mesh(2, 3, 16 + 32, {{0, 0, 5}, {0, 0, 5}, {0, 0, 5}, {0, 0, 9}, {1, 0, 9}, {0, 1, 9}}));
    EXPECT_NE(cone.find("face pen 1 0 0 9 1 0 9 0 1 9 hidden 1 2\n"), std::string::npos)
        << "the only cap shows but the edge that closes it";
}

TEST(PolygonMesh, MayHaveNoCapsAndNoGapWhereBothEndsMeet) {
    ImportOptions options = in3d();
    options.config = flags("MESH_CAPS=0\n");
    const auto faces = [&](int flags, const ImportOptions& with) {
        const std::string all = spaceOf(mesh(3, 3, 16 + flags,
                                             {{0, 0, 0},
                                              {1, 0, 0},
                                              {0, 1, 0},
                                              {0, 5, 9},
                                              {1, 5, 9},
                                              {0, 6, 9},
                                              {9, 0, 9},
                                              {9, 1, 9},
                                              {9, 0, 8}}),
                                        with);
        return std::count(all.begin(), all.end(), '\n');
    };
    EXPECT_EQ(faces(32, in3d()), 2 * 6 + 2);
    EXPECT_EQ(faces(32, options), 2 * 6) << "a tube";
    EXPECT_EQ(faces(32 + 1, in3d()), 2 * 8 + 4);
    EXPECT_EQ(faces(32 + 1, options), 2 * 9) << "a ring";
}

TEST(Meshes, EndlessFacesAreLeftOutAndTold) {
    // No file's number is endless, but scales of nested blocks multiply.
    const DxfGroups cage =
        subdivision({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {1e18, 0, 0}}, {3, 0, 1, 2, 3, 1, 2, 3});
    DxfText text = dxf().header("AC1015").block("K0", DxfGroups{{0, "MESH"}, {8, "0"}} + cage);
    std::string name = "K0";
    for (int i = 1; i <= 16; ++i) {
        const DxfGroups insert = {{0, "INSERT"}, {8, "0"}, {2, name}, {41, "1e18"}};
        text.block(name = "K" + std::to_string(i), insert);
    }
    text.entity("INSERT", {{2, name}, {41, "1e18"}});
    const auto result = importText(text.text(), in3d());
    EXPECT_EQ(result.stat, 0);
    EXPECT_EQ(result.dump.find("inf"), std::string::npos);
    EXPECT_TRUE(result.hasLine("1 faces of a mesh have coordinates that are no finite numbers."));
}

TEST(PolygonMesh, TooFewVerticesAndHugeCountsDoNoHarm) {
    const auto result = importText(
        mesh(2000000000, 2, 16 + 1, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {5, 5, 5}}).text(), in3d());
    EXPECT_EQ(result.stat, 0);
    EXPECT_EQ(inSpace(elementsOf(result.dump)),
              "face pen 1 0 0 0 1 0 0 1 1 0 hidden 3\nface pen 1 0 0 0 1 1 0 0 1 0 hidden 1\n");
    EXPECT_TRUE(result.hasLine("A mesh of 2000000000 by 2 points has only 5 vertices."));
    EXPECT_EQ(spaceOf(mesh(3, 2000000000, 16, {{0, 0, 0}, {1, 0, 0}})), "");
    EXPECT_EQ(spaceOf(mesh(0, 2, 16, {{0, 0, 0}, {4, 0, 0}}), in3d(true)), "edge pen 1 0 0 0 4 0 0\n")
        << "without M it is a polyline";
}

DxfText polyface(std::initializer_list<std::array<int, 4>> faces) {
    DxfText text = dxf().header("AC1015").entity("POLYLINE", {{66, "1"}, {70, "64"}});
    for (const RPT3& p : {RPT3{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})
        text.entity("VERTEX", at(10, {p.x, p.y, p.z}) + DxfGroups{{70, "192"}});
    text.entity("VERTEX", at(10, {7, 7, 7}) + DxfGroups{{70, "0"}});
    for (const auto& f : faces)
        text.entity("VERTEX", {{70, "128"},
                               {71, std::to_string(f[0])},
                               {72, std::to_string(f[1])},
                               {73, std::to_string(f[2])},
                               {74, std::to_string(f[3])}});
    return text.entity("SEQEND", {});
}

TEST(PolyfaceMesh, FacesNameVerticesFrom1AndHideEdgesBySign) {
    EXPECT_EQ(spaceOf(polyface({{1, 2, 3, 4}})), "face pen 1 0 0 0 1 0 0 1 1 0 0 1 0\n");
    EXPECT_EQ(spaceOf(polyface({{-1, 2, -3, 0}})), "face pen 1 0 0 0 1 0 0 1 1 0 1 1 0 hidden 1 3\n");
    EXPECT_EQ(spaceOf(polyface({{0, 2, 3, 4}, {9999999, 1, 2, 3}, {5, 1, 2, 3}})), "")
        << "the first corner must be a vertex of the mesh";
    EXPECT_EQ(spaceOf(polyface({{1, 5, 3, -2147483647 - 1}})), "face pen 1 0 0 0 0 0 0 1 1 0 1 1 0\n");
}

const std::vector<RPT3> kPentagon = {{0, 0, 1}, {2, 0, 1}, {3, 1, 1}, {1, 3, 1}, {0, 2, 1}};

TEST(SubDMesh, IsOneObjectOfFacetsInSpace) {
    EXPECT_EQ(spaceOf("MESH", subdivision(kPentagon, {5, 0, 1, 2, 3, 4, 2, 0, 1, 3, 2, 1, 0})),
              "facets pen 1 normal 0 0 1 normal 0 0 -1\n"
              "  face pen 1 0 0 1 2 0 1 3 1 1 1 3 1 0 2 1\n"
              "  face pen 1 3 1 1 2 0 1 0 0 1\n")
        << "level 0, and no face of two corners";
}

TEST(SubDMesh, NormalsAreThoseOfTheBlock) {
    const DxfGroups cage = subdivision({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}, {3, 0, 1, 2});
    DxfText text = dxf().header("AC1015").block("K", DxfGroups{{0, "MESH"}, {8, "0"}} + cage);
    text.entity("INSERT", DxfGroups{{2, "K"}, {50, "90"}} + at(10, {5, 0, 0}));
    EXPECT_EQ(spaceOf(text), "facets pen 1 normal 0 -1 0\n  face pen 1 5 0 0 5 1 0 5 0 1\n");
}

TEST(SubDMesh, WhatIsSoundOfABrokenListIsDrawn) {
    EXPECT_EQ(
        spaceOf("MESH", subdivision(kPentagon, {3, 0, 1, 99, 3, 0, 1, 2, 3, -1, 0, 1, 9, 0, 1}, 4000000)),
        "facets pen 1 normal 0 0 1\n  face pen 1 0 0 1 2 0 1 3 1 1\n");
    const auto isTold = [](int announced, const char* words) {
        const DxfGroups cage = subdivision(kPentagon, {3, 0, 1, 99, 3, 0, 1, 2}, announced);
        return importText(dxf().header("AC1015").entity("MESH", cage).text(), in3d()).hasLine(words);
    };
    EXPECT_TRUE(isTold(8, "1 faces of a MESH name vertices that it doesn't have."));
    EXPECT_FALSE(isTold(8, "The face list of a MESH ends too early."));
    EXPECT_TRUE(isTold(99, "The face list of a MESH ends too early."));
    EXPECT_EQ(spaceOf("MESH", {{92, "2000000000"}, {93, "2000000000"}, {90, "2000000000"}}), "");
}

TEST(SubDMesh, FlatOutlinesAreOf3Dfaces) {
    EXPECT_EQ(drawnEntity("MESH", subdivision(kPentagon, {5, 0, 1, 2, 3, 4})),
              "move 0 0\ndraw 2 0 info 5\ndraw 3 1 info 5\ndraw 1 3 info 5\ndraw 0 0 info 5\n")
        << "the first four corners";
}

TEST(MeshEdges, AreDrawnOnceInsteadOfTheChain) {
    ImportOptions flat = unshifted();
    flat.config = flags("MESH_EDGES=1\n");
    ImportOptions space = in3d();
    space.config = flat.config;
    const DxfText net = mesh(2, 3, 16, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 1}, {1, 1, 1}, {2, 1, 1}});
    const std::string edges = drawn(net, flat);
    EXPECT_EQ(std::count(edges.begin(), edges.end(), 'd'), 7) << edges;
    const std::string both = drawn(polyface({{1, -2, 3, 0}, {1, 3, 4, 0}}), space);
    EXPECT_EQ(both.substr(0, both.find("face")),
              "move 0 0\ndraw 1 0\nmove 1 1\ndraw 0 0\nmove 1 1\ndraw 0 1\ndraw 0 0\n");
    EXPECT_EQ(drawnEntity("MESH", subdivision(kPentagon, {5, 0, 1, 2, 3, 4, 3, 2, 1, 0}), flat),
              "move 0 0\ndraw 2 0\ndraw 3 1\ndraw 1 3\ndraw 0 2\ndraw 0 0\ndraw 3 1\n");
    const std::string wall =
        drawnEntity("MESH", subdivision({{0, 0, 0}, {2, 0, 0}, {2, 0, 5}, {0, 0, 5}}, {4, 0, 1, 2, 3}), flat);
    EXPECT_EQ(wall, "move 0 0\ndraw 2 0\n") << "one line, seen from above";
}

TEST(FlatPlan, IsLeftOutOfWhatStandsInSpaceAlone) {
    ImportOptions alone = in3d();
    alone.config = flags("FLAT_PLAN=0\nMESH_EDGES=1\n");
    ImportOptions flat = unshifted();
    flat.config = alone.config;
    const auto content = [](const DxfText& text, const ImportOptions& options) {
        const std::string all = drawn(text, options);
        return all.substr(0, all.find("faces joined"));
    };
    const auto both = [&](const char* kind, const DxfGroups& groups) {
        const DxfText text = dxf().header("AC1015").entity(kind, groups);
        return content(text, alone) + "| " + content(text, flat);
    };
    const DxfGroups face = corners({{0, 0, 1}, {4, 0, 1}, {4, 3, 1}, {4, 3, 1}});
    EXPECT_EQ(
        both("3DFACE", face),
        "face pen 1 0 0 1 4 0 1 4 3 1 4 3 1\n| move 0 0\ndraw 4 0 info 5\ndraw 4 3 info 5\ndraw 4 3 info "
        "5\ndraw 0 0 info 5\n");
    EXPECT_EQ(both("LINE", at(10, {0, 0, 0}) + at(11, {5, 0, 2})),
              "edge pen 1 0 0 0 5 0 2\n| move 0 0\ndraw 5 0\n");
    EXPECT_TRUE(DxGetImportReport().unseen.empty());
    drawnEntity("LINE", at(11, {5, 0, 2}), alone);
    EXPECT_TRUE(DxGetImportReport().unseen.empty()) << "it is drawn, though in space alone";
    EXPECT_EQ(both("LINE", at(11, {5, 0, 0})), "move 0 0\ndraw 5 0\n| move 0 0\ndraw 5 0\n")
        << "it has no height";
    EXPECT_EQ(both("MESH", subdivision(kPentagon, {3, 0, 1, 2})).substr(0, 6), "facets");
    const auto chain = [&](double z) {
        DxfText text = dxf().header("AC1015").entity("POLYLINE", {{66, "1"}, {70, "8"}});
        for (const double x : {0.0, 1.0})
            text.entity("VERTEX", at(10, {x, 0, z * x}) + DxfGroups{{70, "32"}});
        return content(text.entity("SEQEND", {}), alone);
    };
    EXPECT_EQ(chain(3), "edge pen 1 0 0 0 1 0 3\n");
    EXPECT_EQ(chain(0), "move 0 0\ndraw 1 0 info 4\n");
    EXPECT_EQ(content(polyface({{1, 2, 3, 4}}), alone), "face pen 1 0 0 0 1 0 0 1 1 0 0 1 0\n");
}

// ---- clouds ------------------------------------------------------------------------------------------

TEST(PointClouds, HoldThePointsOfALayerFromAllBlocks) {
    DxfText text = dxf().header("AC1015").layer("A", 1).layer("B", 5);
    text.block("K", {{0, "POINT"}, {8, "A"}, {10, "1"}, {20, "1"}, {30, "1"}, {62, "3"}});
    text.entity("POINT", DxfGroups{{8, "B"}} + at(10, {1, 2, 3}));
    text.entity("POINT", DxfGroups{{8, "A"}} + at(10, {4, 5, 6}));
    text.entity("INSERT", DxfGroups{{2, "K"}} + at(10, {100, 0, 50}));
    EXPECT_EQ(spaceOf(text), "pointcloud pen 853 1 2 3\npointcloud pen 2 4 5 6 pen 4 101 1 51\n");
    ImportOptions dropped = in3d();
    dropped.config = flags("READ_PDMODE=1\n");
    EXPECT_EQ(spaceOf(text, dropped), "");
}

TEST(PointClouds, OfAnEarlierSpaceComeAgainWithTheNext) {
    ImportOptions both = in3d();
    both.numbers["&DxfParseExt"] = 0;
    both.numbers["&DxfPaper"] = 2;
    DxfText text = dxf().header("AC1015").entity("POINT", at(10, {1, 2, 3}));
    text.entity("POINT", DxfGroups{{67, "1"}} + at(10, {4, 5, 6}));
    EXPECT_EQ(spaceOf(text, both), "pointcloud pen 1 1 2 3\npointcloud pen 1 1 2 3 4 5 6\n");
}

} // namespace

// 3D data on its way out, and back.
#include "../export/exported.h"
#include "../import/drawn.h"
#include "export3d.h"
#include "faces.h"

#include <cmath>
#include <cstdlib>
#include <random>

namespace {

std::string corners(const DxfGroups& face) {
    std::string all;
    for (const DxfGroup& g : face)
        if (g.code >= 10 && g.code < 40)
            all += (all.empty() ? "" : " ") + UtFormat("%g", std::atof(g.value.c_str())).str();
    return all + " / " + valueOf(face, 70);
}

/// An unwarped face with an odd corner in every digit.
DxfGroups oddFace(std::mt19937& random) {
    const auto real = [&] {
        return std::round(std::uniform_real_distribution<double>(-1000, 1000)(random) * 1e12) / 1e12;
    };
    const double x = real(), y = real(), z = real(), w = real();
    return at(10, {x, y, z}) + at(11, {x, y + w, z}) + at(12, {x, y + w, w}) + at(13, {x, y, w});
}

using SpaceExport = Export;

TEST_F(SpaceExport, Faces3dComeBackInAllTheirDigits) {
    std::mt19937 random(3);
    for (const char* scale : {"1", "0.02", "0.3", "49", "7e-5"}) {
        ImportOptions options = unshifted();
        options.in3d = true;
        options.config = flags("NO_KOMMA=15\n");
        DxfText text = dxf().header("AC1015");
        std::vector<DxfGroups> faces;
        for (int i = 0; i < 50; ++i) {
            faces.push_back(oddFace(random));
            text.entity("3DFACE", faces.back() + DxfGroups{{70, std::to_string(i % 16)}});
        }
        // Another scale than that of the import: lengths in space don't hang on it.
        ASSERT_EQ(importText(text.text(), options).stat, 0);
        host::openDrawing().scale = std::atof(scale);
        const Exported file = export3d(exportConfig("ACAD24", "NO_KOMMA=15\n"));
        EXPECT_EQ(file.errors(), "");
        ASSERT_EQ(file.count(0, "3DFACE"), 50u);
        for (std::size_t i = 0; i < faces.size(); ++i) {
            const DxfGroups found = file.first(0, "3DFACE", i);
            EXPECT_EQ(valueOf(found, 70), std::to_string(i % 16));
            for (const DxfGroup& g : faces[i])
                EXPECT_EQ(std::strtod(valueOf(found, g.code).c_str(), nullptr),
                          std::strtod(g.value.c_str(), nullptr))
                    << scale << " face " << i << " group " << g.code;
        }
    }
}

TEST_F(SpaceExport, EveryFormatIsSound) {
    for (const std::string& version : VERSIONS) {
        startDrawing();
        host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(1, 0)});
        pattern.faceLists.push_back(faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 5}}, 3));
        addFace(pattern.faceLists[0], {{0, 0, 0}, {1, 0, 0}, {1, 1, 5}, {0, 1, 5}}, 4);
        addFace(pattern.faceLists[0], {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 2, 0}, {0, 1, 0}}, 4);
        pattern.curves = {{{{0, 0, 1}, {1, 0, 2}, {2, 0, 3}}, 5}};
        for (const char* lines : {"", "WRITE_BLOCKS=YES\n"}) {
            const Exported file = export3d(exportConfig(version, lines));
            EXPECT_EQ(file.stat, 0) << version;
            EXPECT_EQ(file.errors(), "") << version << lines;
            const bool isFlat = version == "EASY";
            EXPECT_EQ(file.count(0, "3DFACE"), isFlat ? 0u : 5u) << "the pentagon comes in three triangles";
            EXPECT_EQ(file.count(0, "LINE"), isFlat ? 1u : 3u) << version;
        }
    }
}

TEST_F(SpaceExport, PointsOfCloudsComeBack) {
    ImportOptions options = unshifted();
    options.in3d = true;
    options.config = flags("READ_LAYER=ATTR\n");
    DxfText text = dxf().header("AC1015").layer("A", 3).layer("B", 5);
    for (const double x : {1.25, 2.5, 3.75})
        text.entity("POINT", DxfGroups{{8, x < 3 ? "A" : "B"}} + at(10, {x, 2 * x, 3 * x}));
    ASSERT_EQ(importText(text.text(), options).stat, 0);
    for (const char* lines :
         {"LAYER_ELEM=ATTR\nWRITE_CLOUDS=1\n", "LAYER_ELEM=ATTR\nWRITE_CLOUDS=1\nWRITE_BLOCKS=YES\n"}) {
        const Exported file = export3d(exportConfig("ACAD24", lines));
        EXPECT_EQ(file.errors(), "");
        ASSERT_EQ(file.count(0, "POINT"), 3u);
        EXPECT_EQ(valueOf(file.first(0, "POINT", 1), 8), "A");
        EXPECT_EQ(valueOf(file.first(0, "POINT", 2), 8), "B");
        EXPECT_EQ(std::atof(valueOf(file.first(0, "POINT", 2), 30).c_str()), 11.25);
        EXPECT_EQ(file.protocol.find("not written"), std::string::npos);
    }
    EXPECT_EQ(export3d(exportConfig("ACAD24")).count(0, "POINT"), 0u);
}

TEST_F(SpaceExport, FlagsOfTrianglesHideTheEdgeWithoutLength) {
    host::Pattern& pattern = addPattern({});
    pattern.faceLists.push_back(faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 5}}));
    pattern.faceLists[0].marks[2] |= host::HIDDEN;
    const Exported file = export3d(exportConfig("ACAD24"));
    EXPECT_EQ(corners(file.first(0, "3DFACE")), "0 0 0 1 0 0 0 1 5 0 0 0 / 10");
}

TEST_F(SpaceExport, APairOfTrianglesIsOneFace) {
    struct Case {
        std::vector<RPT3> b;
        double offPlane;
        std::size_t faces;
        const char* wanted;
    };
    // Triangle A is (0 0) (4 0) (4 3); B shares two of its corners.
    const Case cases[] = {
        {{{0, 0, 0}, {4, 3, 0}, {0, 3, 0}}, 0, 1, "0 0 4 0 4 3 0 3"},
        {{{4, 0, 0}, {0, 0, 0}, {2, -2, 0}}, 0, 1, "0 0 2 -2 4 0 4 3"},
        {{{4, 3, 0}, {4, 0, 0}, {6, 1, 0}}, 0, 1, "0 0 4 0 6 1 4 3"},
        {{{0, 0, 0}, {4, 3, 0}, {0, 3, 0}}, 2e-6, 2, ""},
        {{{0, 0, 0}, {4, 3, 0}, {4, 0, 0}}, 0, 2, ""},
        {{{9, 9, 0}, {4, 3, 0}, {0, 3, 0}}, 0, 2, ""},
    };
    for (const Case& c : cases) {
        startDrawing();
        host::Pattern& pattern = addPattern({});
        std::vector<RPT3> b = c.b;
        b[2].z += c.offPlane;
        pattern.faceLists.push_back(faceList({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}}, 3));
        addFace(pattern.faceLists[0], b, 3);
        for (const std::size_t i : {1u, 3u, 5u, 7u}) pattern.faceLists[0].marks[i] |= host::HIDDEN;
        const Exported file = export3d(exportConfig("ACAD24"));
        ASSERT_EQ(file.count(0, "3DFACE"), c.faces) << c.wanted;
        if (c.faces > 1) continue;
        std::string found;
        for (const DxfGroup& g : file.first(0, "3DFACE"))
            if (g.code >= 10 && g.code < 30)
                found += (found.empty() ? "" : " ") + UtFormat("%g", std::atof(g.value.c_str())).str();
        EXPECT_EQ(found, c.wanted);
        EXPECT_EQ(valueOf(file.first(0, "3DFACE"), 70), "0");
    }
}

TEST_F(SpaceExport, EdgesAndFacesHaveBlocksOfTheirOwn) {
    const std::string config = exportConfig("ACAD24", "WRITE_BLOCKS=YES\n");
    host::Pattern& edges = addPattern({});
    edges.curves = {{{{0, 0, 1}, {1, 0, 2}}, 5}};
    Exported file = export3d(config);
    EXPECT_EQ(file.count(0, "INSERT"), 2u) << "the second block is empty";
    EXPECT_EQ(file.errors(), "");
    startDrawing();
    addPattern({}).faceLists.push_back(faceList({{0, 0, 0}, {1, 0, 0}, {0, 1, 5}}));
    addPattern({}, "Q");
    file = export3d(config);
    EXPECT_EQ(file.count(0, "INSERT"), 1u) << "a pattern without 3D data makes no block";
}

TEST_F(SpaceExport, LinesAndMeshesMakeTheRoundTrip) {
    ImportOptions options = unshifted();
    options.in3d = true;
    options.numbers["&Dxf3dLines"] = 1;
    DxfText text = dxf().header("AC1015");
    text.entity("LINE", at(10, {1, 2, 3}) + at(11, {4, 5, 6}));
    text.entity("MESH", DxfGroups{{92, "4"}} + at(10, {0, 0, 0}) + at(10, {1, 0, 0}) + at(10, {1, 1, 2}) +
                            at(10, {0, 1, 2}) +
                            DxfGroups{{93, "5"}, {90, "4"}, {90, "0"}, {90, "1"}, {90, "2"}, {90, "3"}});
    ASSERT_EQ(importText(text.text(), options).stat, 0);
    const Exported file = export3d(exportConfig("ACAD24", "", ""));
    EXPECT_EQ(shown(file.first(0, "LINE", file.count(0, "LINE") - 1)).substr(0, 6), "0=LINE");
    EXPECT_TRUE(file.has("AcDbFace"));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(corners(file.first(0, "3DFACE")), "0 0 0 1 0 0 1 1 2 0 1 2 / 0");
}

} // namespace

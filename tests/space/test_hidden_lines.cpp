// What can be seen of faces: stretches of lines, from above and from aside.
#include "faces.h"

#include "drawing/space_view.h"
#include "geometry/face_triangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

using namespace host;

namespace {

double lengthOf(const std::vector<SeenLine>& lines) {
    double sum = 0;
    for (const SeenLine& line : lines) sum += std::hypot(line.b.x - line.a.x, line.b.y - line.a.y);
    return sum;
}

SpaceContent content(FaceList list) {
    SpaceContent all;
    all.faceLists.push_back(std::move(list));
    return all;
}
std::vector<SeenLine> seen(FaceList list, const RPT3& direction) {
    SpaceView view(viewFrom(direction));
    view.add(content(std::move(list)));
    return view.visibleLines();
}

void addBox(FaceList& list, const RPT3& low, const RPT3& high) {
    const auto at = [&](int i) {
        return RPT3{i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z};
    };
    for (const auto& f :
         {std::array{0, 1, 3, 2}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 3, 7, 5}})
        addFace(list, {at(f[0]), at(f[1]), at(f[2]), at(f[3])});
}

TEST(HiddenLines, ABoxShowsNineOfItsTwelveEdges) {
    FaceList box;
    addBox(box, {0, 0, 0}, {1, 1, 1});
    const auto lines = seen(box, {1, 1, 1});
    EXPECT_EQ(lines.size(), 9u);
    EXPECT_NEAR(lengthOf(lines), 9 * std::sqrt(2.0 / 3), 1e-9);
    const auto top = seen(box, {0, 0, 1});
    EXPECT_NEAR(lengthOf(top), 4, 1e-9) << "the bottom lies below the top, edge on edge";
}

TEST(HiddenLines, OneBoxStandsInFrontOfAnother) {
    FaceList boxes;
    addBox(boxes, {0, 0, 0}, {2, 2, 2});
    addBox(boxes, {-10, 5, 0.5}, {10, 6, 1.5}); // behind it, seen from -y
    double behind = 0;
    for (const SeenLine& line : seen(boxes, {0, -1, 0}))
        if (std::fabs(line.a.y - 0.5) < 1e-9 && std::fabs(line.b.y - 0.5) < 1e-9)
            behind += line.b.x - line.a.x;
    EXPECT_NEAR(std::fabs(behind), 18, 1e-6) << "20 long, 2 of it hidden";
}

/// A plate of 10 by 10 with a hole from 4 to 6, as a cube's lid.
TEST(HiddenLines, ThroughAHoleOneSeesWhatLiesBelow) {
    FaceList list;
    for (const auto& [x0, y0, x1, y1] :
         {std::array{0, 0, 10, 4}, {0, 6, 10, 10}, {0, 4, 4, 6}, {6, 4, 10, 6}})
        addFace(list, {{double(x0), double(y0), 5},
                       {double(x1), double(y0), 5},
                       {double(x1), double(y1), 5},
                       {double(x0), double(y1), 5}});
    SpaceView view(viewFrom({0, 0, 1}));
    view.add(content(list));
    view.addLine({-5, 5, 0}, {15, 5, 0}, 7, 1);
    std::vector<std::pair<double, double>> stretches;
    for (const SeenLine& line : view.visibleLines())
        if (line.pen == 7) stretches.push_back({line.a.x, line.b.x});
    ASSERT_EQ(stretches.size(), 3u);
    EXPECT_NEAR(stretches[0].second, 0, 1e-6);
    EXPECT_NEAR(stretches[1].first, 4, 1e-6);
    EXPECT_NEAR(stretches[1].second, 6, 1e-6);
    EXPECT_NEAR(stretches[2].first, 10, 1e-6);
}

TEST(HiddenLines, PlatesThatCrossShowTheLineBetweenThem) {
    FaceList plates;
    addFace(plates, {{-2, -2, -2}, {2, -2, -2}, {2, 2, 2}, {-2, 2, 2}}, 3);
    addFace(plates, {{-1, -1, 1}, {1, -1, 1}, {1, 1, -1}, {-1, 1, -1}}, 4);
    std::map<int, double> lengths;
    double crossing = 0;
    for (const SeenLine& line : seen(plates, {0, 0, 1})) {
        const double length = std::hypot(line.b.x - line.a.x, line.b.y - line.a.y);
        (std::fabs(line.a.y) < 1e-6 && std::fabs(line.b.y) < 1e-6 ? crossing : lengths[line.pen]) += length;
    }
    EXPECT_NEAR(crossing, 2, 1e-6) << "as wide as the narrow plate";
    EXPECT_NEAR(lengths[3], 16, 1e-4) << "the wide plate hides nothing of its own border";
    EXPECT_NEAR(lengths[4], 2 + 1 + 1, 1e-4) << "the half of the narrow plate that lies in front";
}

FaceList sphere(int rows, bool hidesEdges) {
    FaceList list;
    const int columns = 2 * rows;
    const auto at = [&](int i, int j) {
        const double u = M_PI * i / rows, v = 2 * M_PI * (j % columns) / columns;
        if (i == 0 || i == rows) return RPT3{0, 0, i == 0 ? 1.0 : -1.0};
        return RPT3{std::sin(u) * std::cos(v), std::sin(u) * std::sin(v), std::cos(u)};
    };
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < columns; ++j) {
            const RPT3 corners[5] = {at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1), at(i, j)};
            for (int k = 0; k < 5; ++k)
                list.addPoint(corners[k], static_cast<char>((k ? EDGE : 0) | (hidesEdges ? HIDDEN : 0)), 1,
                              1);
            list.endFace(1);
        }
    return list;
}

TEST(HiddenLines, OfASphereHalfIsSeen) {
    SpaceView view(viewFrom({0.3, -0.8, 0.5}));
    view.add(content(sphere(24, false)));
    const double all = lengthOf(view.lines()), visible = lengthOf(view.visibleLines());
    EXPECT_NEAR(visible / all, 0.5, 0.03);
    for (const SeenLine& line : view.visibleLines())
        EXPECT_GT(line.a.z + line.b.z, -0.15) << "nothing of the far side";
}

TEST(HiddenLines, RoundSurfacesShowTheirOutline) {
    const auto lines = seen(sphere(40, true), {0.3, -0.8, 0.5});
    EXPECT_NEAR(lengthOf(lines), 2 * M_PI, 0.15);
    for (const SeenLine& line : lines) EXPECT_NEAR(std::hypot(line.a.x, line.a.y), 1, 0.01);
}

/// Points of lines that are seen have nothing in front; points that aren't have something. By brute force.
TEST(HiddenLines, RandomTrianglesAgreeWithTheirDefinition) {
    std::mt19937 random(7);
    const auto real = [&] { return std::uniform_real_distribution<double>(-1, 1)(random); };
    std::vector<SightTriangle> triangles;
    for (int i = 0; i < 60; ++i) {
        const RPT3 a{real(), real(), real()};
        triangles.push_back({a,
                             {a.x + real() / 2, a.y + real() / 2, a.z + real()},
                             {a.x + real() / 2, a.y + real() / 2, a.z}});
    }
    const Sight sight(triangles);
    const auto distanceInFront = [&](const RPT3& p) { // of the nearest triangle, negative when behind it
        double most = -10;
        for (const auto& [a, b, c] : triangles) {
            const double area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
            const double u = ((b.x - p.x) * (c.y - p.y) - (b.y - p.y) * (c.x - p.x)) / area;
            const double v = ((c.x - p.x) * (a.y - p.y) - (c.y - p.y) * (a.x - p.x)) / area;
            if (std::min({u, v, 1 - u - v}) > 1e-4)
                most = std::max(most, u * a.z + v * b.z + (1 - u - v) * c.z - p.z);
        }
        return most;
    };
    int hiddenPoints = 0;
    for (int n = 0; n < 300; ++n) {
        const RPT3 a{real(), real(), real()}, b{real(), real(), real()};
        const auto stretches = sight.visible(a, b);
        for (double t = 0.005; t < 1; t += 0.01) {
            bool isSeen = false, isNear = false;
            for (const auto& [from, to] : stretches) {
                isSeen = isSeen || (t > from && t < to);
                isNear = isNear || std::fabs(t - from) < 1e-3 || std::fabs(t - to) < 1e-3;
            }
            const RPT3 p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
            const double front = distanceInFront(p);
            hiddenPoints += !isSeen;
            if (isNear || std::fabs(front) < 1e-3) continue;
            if (front > 0) EXPECT_FALSE(isSeen) << n << " " << t << " " << front;
        }
    }
    EXPECT_GT(hiddenPoints, 1000);
}

TEST(Triangles, CoverPolygonsThatTurnInward) {
    const std::vector<RPT3> arrow = {{0, 0, 1}, {4, 0, 1}, {4, 4, 1}, {3, 1, 1}, {0, 0.5, 1}};
    const std::vector<RPT3> dart = {{0, 0, 0}, {2, 1, 0}, {0, 4, 0}, {1, 1, 0}};
    for (const auto& polygon : {arrow, dart}) {
        std::vector<std::array<int, 3>> cut;
        triangulate(polygon.data(), static_cast<int>(polygon.size()), cut);
        EXPECT_EQ(cut.size(), polygon.size() - 2);
        double area = 0;
        for (const auto& [a, b, c] : cut) {
            const RPT3 corners[3] = {polygon[std::size_t(a)], polygon[std::size_t(b)],
                                     polygon[std::size_t(c)]};
            area += std::fabs(areaVector(corners, 3).z);
        }
        EXPECT_NEAR(area, std::fabs(areaVector(polygon.data(), static_cast<int>(polygon.size())).z), 1e-12);
    }
}

} // namespace

// Triangles of polygons with holes: their number, their area, and none outside.
#include "hatch/dx_triangulate.h"
#include "hatch/hatch_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace {

using Ring = std::vector<RPT>;

double signedArea(const Ring& ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const RPT a{ring[i].x - ring[0].x, ring[i].y - ring[0].y};
        const RPT& next = ring[(i + 1) % ring.size()];
        twice += a.x * (next.y - ring[0].y) - (next.x - ring[0].x) * a.y;
    }
    return twice / 2;
}
/// Turned so that it runs counter-clockwise, or clockwise.
Ring directed(Ring ring, bool ccw) {
    if ((signedArea(ring) > 0) != ccw) std::reverse(ring.begin(), ring.end());
    return ring;
}

struct Cut {
    int error = 0;
    std::vector<int> triangles;
    std::vector<RPT> points{{0, 0}};
    double area = 0;
};
Cut triangulate(const std::vector<Ring>& rings, unsigned seed = 1) {
    Cut cut;
    std::vector<int> sizes;
    for (std::size_t i = 0; i < rings.size(); ++i) {
        const Ring ring = directed(rings[i], i == 0);
        sizes.push_back(static_cast<int>(ring.size()));
        cut.points.insert(cut.points.end(), ring.begin(), ring.end());
        cut.area += signedArea(ring);
    }
    cut.triangles.assign(3 * (cut.points.size() - 1 + 2 * rings.size() - 4), -1);
    DxFillSeed = seed;
    cut.error = DxFillTriangulate(static_cast<int>(sizes.size()), sizes.data(), cut.points.data(),
                                  cut.triangles.data());
    return cut;
}

/// All triangles turn left, their areas add up, and each edge within is shared by two: so none overlaps
/// another or lies outside.
void expectCovers(const Cut& cut, const std::string& what) {
    ASSERT_EQ(cut.error, 0) << what;
    double area = 0;
    std::map<std::pair<int, int>, int> edges;
    for (std::size_t i = 0; i < cut.triangles.size(); i += 3) {
        const int* t = &cut.triangles[i];
        for (int k = 0; k < 3; ++k) {
            ASSERT_GE(t[k], 1) << what;
            ASSERT_LT(t[k], static_cast<int>(cut.points.size())) << what;
            ++edges[{t[k], t[(k + 1) % 3]}];
        }
        const auto at = [&](int k) { return cut.points[static_cast<std::size_t>(t[k])]; };
        const double own = signedArea({at(0), at(1), at(2)});
        ASSERT_GE(own, -1e-12 * cut.area) << what << " triangle " << i / 3;
        area += own;
    }
    EXPECT_NEAR(area, cut.area, 1e-9 * cut.area) << what;
    std::size_t border = 0;
    for (const auto& [edge, count] : edges) {
        ASSERT_EQ(count, 1) << what << " edge " << edge.first << " " << edge.second;
        border += edges.contains({edge.second, edge.first}) ? 0 : 1;
    }
    EXPECT_EQ(border, cut.points.size() - 1) << what << ": the contours are the border";
}

Ring regular(int n, double r, double x = 0, double y = 0, double turn = 0) {
    Ring ring;
    for (int i = 0; i < n; ++i) {
        const double a = turn + 2 * std::numbers::pi * i / n;
        ring.push_back({x + r * std::cos(a), y + r * std::sin(a)});
    }
    return ring;
}
Ring square(double low, double high) {
    return {{low, low}, {high, low}, {high, high}, {low, high}};
}
/// A comb with `teeth` teeth, all corners of few heights.
Ring comb(int teeth) {
    Ring ring;
    for (int i = 0; i < teeth; ++i) {
        ring.push_back({2.0 * i, 10});
        ring.push_back({2.0 * i, 1});
        ring.push_back({2.0 * i + 1, 1});
        ring.push_back({2.0 * i + 1, 10});
    }
    ring.push_back({2.0 * teeth, 10});
    ring.push_back({2.0 * teeth, 0});
    ring.push_back({0, 0});
    return ring;
}
Ring spiral(int turns) {
    Ring out, back;
    for (int i = 0; i < turns * 12; ++i) {
        const double a = i * std::numbers::pi / 6, r = 2 + i * 0.25;
        out.push_back({r * std::cos(a), r * std::sin(a)});
        back.push_back({(r + 1) * std::cos(a), (r + 1) * std::sin(a)});
    }
    out.insert(out.end(), back.rbegin(), back.rend());
    return out;
}
/// A star with random radii, which can't cross itself.
Ring ragged(int n, double low, double high, std::mt19937& random, double x = 0, double y = 0) {
    std::uniform_real_distribution<double> radius(low, high);
    Ring ring = regular(n, 1);
    for (RPT& p : ring) {
        const double r = radius(random);
        p = {x + r * p.x, y + r * p.y};
    }
    return ring;
}

TEST(Triangulate, CoversTheAreaWhateverTheOrder) {
    const struct {
        const char* what;
        std::vector<Ring> rings;
    } cases[] = {
        {"triangle", {{{0, 0}, {5, 0}, {1, 4}}}},
        {"square", {square(0, 10)}},
        {"square in a square", {square(0, 10), square(3, 4)}},
        {"holes in a row", {square(0, 10), square(1, 2), square(3, 4), square(5, 6), square(7, 8)}},
        {"corners in a line", {{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 3}, {2, 3}, {1, 3}, {0, 3}}}},
        {"corners in an upright line", {{{0, 0}, {4, 0}, {4, 1}, {4, 2}, {4, 3}, {0, 3}, {0, 2}, {0, 1}}}},
        {"comb", {comb(9)}},
        {"spiral", {spiral(4)}},
        {"ring", {regular(48, 10), regular(48, 5)}},
        {"ring, turned", {regular(33, 10, 0, 0, 0.1), regular(17, 5, 1, 1, 0.2)}},
        {"far from the origin", {regular(24, 10, 1e7, 5e6), regular(12, 5, 1e7, 5e6)}},
        {"small", {regular(24, 1e-3), regular(12, 5e-4)}},
    };
    for (const auto& c : cases)
        for (unsigned seed = 1; seed <= 40; ++seed)
            expectCovers(triangulate(c.rings, seed), c.what + (" seed " + std::to_string(seed)));
}

TEST(Triangulate, RandomPolygonsWithHoles) {
    std::mt19937 random(7);
    for (unsigned round = 1; round <= 300; ++round) {
        std::vector<Ring> rings{ragged(5 + static_cast<int>(random() % 60), 20, 30, random)};
        for (int hole = 0; hole < static_cast<int>(random() % 5); ++hole)
            rings.push_back(ragged(3 + static_cast<int>(random() % 20), 1, 3, random,
                                   12 * std::cos(hole * 1.25), 12 * std::sin(hole * 1.25)));
        if (round % 3 == 0) // many corners of one height or one above the other
            for (Ring& ring : rings)
                for (RPT& p : ring) p = {std::round(p.x * 8) / 8, std::round(p.y * 8) / 8};
        if (round % 3 == 0) rings.resize(1);
        expectCovers(triangulate(rings, round), "round " + std::to_string(round));
    }
}

TEST(Triangulate, CornersOnOneSpotCountAsOne) {
    const Cut cut = triangulate({{{0, 0}, {10, 0}, {10, 10}, {10 + 5e-8, 10 - 5e-8}, {0, 10}}});
    ASSERT_EQ(cut.error, 0);
    double area = 0;
    for (std::size_t i = 0; i < cut.triangles.size(); i += 3)
        area += signedArea({cut.points[static_cast<std::size_t>(cut.triangles[i])],
                            cut.points[static_cast<std::size_t>(cut.triangles[i + 1])],
                            cut.points[static_cast<std::size_t>(cut.triangles[i + 2])]});
    EXPECT_NEAR(area, 100, 1e-5);
}

TEST(Triangulate, ContoursThatCrossEndWithAnError) {
    std::mt19937 random(3);
    for (unsigned seed = 1; seed < 200; ++seed) {
        Ring ring(20);
        for (RPT& p : ring) p = {std::ldexp(random() % 64, 0), std::ldexp(random() % 64, 0)};
        const Cut cut = triangulate({ring}, seed); // no crash, no endless run; a result or an error
        if (cut.error == 0) continue;
        EXPECT_EQ(cut.error, 2360);
    }
}

TEST(Triangulate, LargeContoursTakeLittleMoreThanTheirShare) {
    const auto seconds = [](int n) {
        std::mt19937 random(5);
        const Ring ring = ragged(n, 20, 30, random);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(triangulate({ring}).error, 0);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    const double small = std::min({seconds(5'000), seconds(5'000), seconds(5'000)});
    EXPECT_LT(std::min({seconds(50'000), seconds(50'000)}), 30 * std::max(small, 1e-3));
}

} // namespace

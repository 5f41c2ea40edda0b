// Lines and intersections of the plane, and biarcs.
#include "ge.h"
#include "geometry/plane.h"

#include <gtest/gtest.h>

#include <random>

using namespace host;

TEST(Lines, MeetAndPointLeft) {
    double a, b, c, a2, b2, c2;
    ASSERT_EQ(GeLineByPtPt({0, 1}, {5, 1}, &a, &b, &c), 0);
    EXPECT_DOUBLE_EQ(a * 3 + b * 4 + c, 3); // distance of (3, 4), positive on the left
    ASSERT_EQ(GeLineByPtAng({2, 0}, kPi / 2, &a2, &b2, &c2), 0);
    RPT p{};
    ASSERT_EQ(GeIsectLinLin(a, b, c, a2, b2, c2, &p), 0);
    EXPECT_DOUBLE_EQ(p.x, 2);
    EXPECT_DOUBLE_EQ(p.y, 1);
    EXPECT_EQ(GeIsectLinLin(a, b, c, a, b, c + 1, &p), 1005);
    EXPECT_EQ(GeLineByPtPt({1, 1}, {1, 1}, &a, &b, &c), 3011);
    ASSERT_EQ(GeRptIsLinLinByPts({0, 0}, {1, 1}, {10, 0}, {9, 1}, &p), 0);
    EXPECT_DOUBLE_EQ(p.x, 5);
}

TEST(Lines, CutSegmentsAndArcs) {
    RPT p{-1, -1};
    EXPECT_EQ(GeRptIsDrawDraw({0, 0}, {10, 0}, {5, 1}, {5, 5}, &p), 1005);
    EXPECT_EQ(p.x, -1);
    EXPECT_EQ(GeRptIsDrawDraw({0, 0}, {10, 0}, {5, 0}, {5, 5}, &p), 0); // touches
    EXPECT_EQ(p.x, 5);
    EXPECT_EQ(GeRptIsDrawDraw({0, 0}, {10, 0}, {12, 0}, {4, 0}, &p), 0); // overlaps
    EXPECT_EQ(p.x, 4);
    EXPECT_EQ(GeRptIsDrawDraw({0, 0}, {10, 0}, {0, 1}, {10, 1}, &p), 1005);
    RPT both[2];
    int n = 0;
    ASSERT_EQ(GeRptIsArcLine({5, 0}, {5, 0}, {0, 0}, {-9, 3}, {9, 3}, both, &n), 0);
    ASSERT_EQ(n, 2);
    EXPECT_NEAR(both[0].x, -4, 1e-14);
    EXPECT_NEAR(both[1].x, 4, 1e-14);
    ASSERT_EQ(GeRptIsArcLine({5, 0}, {0, 5}, {0, 0}, {-9, 3}, {9, 3}, both, &n), 0); // a quarter of it
    ASSERT_EQ(n, 1);
    EXPECT_NEAR(both[0].x, 4, 1e-14);
    EXPECT_EQ(GeRptIsArcLine({5, 0}, {5, 0}, {0, 0}, {-9, 6}, {9, 6}, both, &n), 1005);
}

namespace {

struct Biarc {
    RPT c1, c2, join;
    double r1, r2;
    short s1, s2, result;
};

Biarc biarc(const RPT& p0, const RPT& t0, const RPT& p2, const RPT& t2, const RPT& t1, short side) {
    Biarc b{};
    b.result = GeUtilInterpolByArc(p0, t0, p2, t2, t1, side, 1e-5, 1, &b.c1, &b.r1, &b.s1, &b.c2, &b.r2,
                                   &b.s2, &b.join);
    return b;
}

RPT directionOn(const RPT& centre, short sense, const RPT& p) {
    return sense * unit(leftOf(p - centre));
}

} // namespace

TEST(Biarc, IsTangentEverywhere) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> angle(0.05, 1.2), size(1e-3, 1e4);
    for (int i = 0; i < 500; ++i) {
        const double scale = size(random), start = angle(random), middle = angle(random) - 0.6,
                     end = -angle(random);
        const short up = i % 2 ? 1 : -1; // both senses
        const RPT p0{3, 4}, p2{3 + scale, 4};
        const RPT t0{std::cos(start), up * std::sin(start)}, t2{5 * std::cos(end), up * 5 * std::sin(end)};
        const RPT t1{std::cos(middle), up * std::sin(middle)};
        const Biarc b = biarc(p0, t0, p2, t2, t1, static_cast<short>(-up));
        ASSERT_EQ(b.result, 0) << i;
        EXPECT_EQ(b.s1, -up);
        EXPECT_NEAR(cross(directionOn(b.c1, b.s1, p0), unit(t0)), 0, 1e-9);
        EXPECT_NEAR(cross(directionOn(b.c2, b.s2, p2), unit(t2)), 0, 1e-9);
        EXPECT_NEAR(cross(directionOn(b.c1, b.s1, b.join), directionOn(b.c2, b.s2, b.join)), 0, 1e-9);
        EXPECT_GT(dot(directionOn(b.c1, b.s1, b.join), directionOn(b.c2, b.s2, b.join)), 0);
        EXPECT_NEAR(distance(b.c1, b.join), b.r1, 1e-9 * b.r1);
        EXPECT_NEAR(distance(b.c2, b.join), b.r2, 1e-9 * b.r2);
        EXPECT_NEAR(distance(b.c2, p2), b.r2, 1e-9 * b.r2);
    }
}

TEST(Biarc, FindsTheCircleItsDataComeFrom) {
    const Biarc b = biarc({10, 0}, {0, 1}, {0, 10}, {-1, 0}, {-1, 1}, 1);
    ASSERT_EQ(b.result, 0);
    EXPECT_NEAR(b.c1.x, 0, 1e-14);
    EXPECT_NEAR(b.r1, 10, 1e-14);
    EXPECT_NEAR(b.r2, 10, 1e-14);
    EXPECT_EQ(b.s1, 1);
    EXPECT_EQ(b.s2, 1);
    EXPECT_NEAR(b.join.x, std::sqrt(50.0), 1e-13);
}

TEST(Biarc, StraightAndHopelessData) {
    const Biarc straight = biarc({0, 0}, {1, 0}, {10, 0}, {1, 0}, {1, 0}, 1);
    EXPECT_EQ(straight.result, 0);
    EXPECT_EQ(straight.s1, 0);
    EXPECT_EQ(straight.s2, 0);
    EXPECT_NEAR(straight.join.x, 5, 1e-14);
    EXPECT_NE(biarc({0, 0}, {0, 0}, {10, 0}, {1, 0}, {1, 0}, 1).result, 0);
    EXPECT_NE(biarc({3, 3}, {1, 0}, {3, 3}, {1, 0}, {1, 0}, 1).result, 0);
    EXPECT_NE(biarc({0, 0}, {NAN, 0}, {10, 0}, {1, 0}, {1, 0}, 1).result, 0);
    EXPECT_NE(biarc({0, 0}, {-1, 0}, {10, 0}, {-1, 0}, {-1, 0}, 1).result, 0);
    // The curve bends to the left, the caller wants it on the right.
    EXPECT_NE(biarc({0, 0}, {1, 1}, {10, 0}, {1, -1}, {1, 0}, 1).result, 0);
}

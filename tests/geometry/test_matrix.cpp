// Matrices, frames, boxes, planes and units.
#include "ge.h"
#include "mt.h"
#include "ve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

static constexpr double kPi = std::numbers::pi;

static void expectIdentity(const Mat44 m, double eps) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) EXPECT_NEAR(m[i][j], i == j ? 1 : 0, eps) << i << ' ' << j;
}

TEST(Matrix, LeftFactorActsFirst) {
    Mat44 turn, move, both;
    VeMatMakeRotate(2, kPi / 2, turn);
    VeMatMakeTrans(10, 0, 0, move);
    VeMatMult(turn, move, both);
    RPT3 p{1, 0, 5};
    VeMatMultRpt3(p, both, &p);
    EXPECT_NEAR(p.x, 10, 1e-15);
    EXPECT_NEAR(p.y, 1, 1e-15);
    EXPECT_EQ(p.z, 5);
    RPT3 v{1, 0, 0};
    Mt44MultRpt3Vec(v, both, &v);
    EXPECT_NEAR(v.y, 1, 1e-15);
    Mt44MakeRotate(0, kPi / 2, turn); // x: y to z
    Mt44MultRpt3({0, 1, 0}, turn, &p);
    EXPECT_NEAR(p.z, 1, 1e-15);
    Mt44MakeRotate(1, kPi / 2, turn); // y: z to x
    Mt44MultRpt3({0, 0, 1}, turn, &p);
    EXPECT_NEAR(p.x, 1, 1e-15);
}

TEST(Matrix, InverseOfFarAndSmallOnesAndSingularOnes) {
    const Mat44 far = {{0, 1e-7, 0, 0}, {-1e-7, 0, 0, 0}, {0, 0, 3, 0}, {4e9, -7e8, 2, 1}};
    Mat44 m;
    ASSERT_EQ(Mt44Invert(far, m), 0);
    EXPECT_NEAR(m[1][0], 1e7, 1e-8);
    Mat44 unit;
    Mt44Concat(far, m, unit);
    expectIdentity(unit, 1e-6); // of coordinates up to 4e16
    const Mat44 general = {{0, 2, 1, 4}, {1, 0, 3, 1}, {5, 1, 0, 2}, {1, 1, 1, 0}};
    ASSERT_EQ(Mt44Invert(general, m), 0);
    Mt44Concat(general, m, m);
    expectIdentity(m, 1e-14);
    const Mat44 flat = {{1, 2, 3, 0}, {4, 5, 6, 0}, {7, 8, 9, 0}, {0, 0, 0, 1}};
    Mt44Copy(general, m);
    EXPECT_EQ(Mt44Invert(flat, m), 3011);
    EXPECT_EQ(m[0][1], 2);
    const Mat44 broken = {{NAN, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(Mt44Invert(broken, m), 3011);
}

TEST(Matrix, OfThePlane) {
    const Mat32 m = {{0, 2}, {2, 0}, {7, -3}}; // mirrored, twice the size
    EXPECT_TRUE(MtIsMirrored(m));
    EXPECT_DOUBLE_EQ(MtGetScale(m), 2);
    EXPECT_DOUBLE_EQ(MtGetRot(m), kPi / 2);
    EXPECT_DOUBLE_EQ(MtTransRad(1.5, m), 3);
    Mat32 back;
    ASSERT_EQ(MtInvertMat(m, back), 0);
    RPT p{4, 9};
    MtTransRPt(p, m, &p);
    MtTransRPt(p, back, &p);
    EXPECT_DOUBLE_EQ(p.x, 4);
    EXPECT_DOUBLE_EQ(p.y, 9);
    const Mat32 flat = {{1, 2}, {2, 4}, {0, 0}};
    EXPECT_EQ(MtInvertMat(flat, back), 3011);
}

TEST(Frame, CarriesItsCoordinatesToTheWorld) {
    const GeMat44 frame({1, 2, 3}, {1, 5, 3}, {-4, 2, 3}); // x along y, y against x
    RPT3 p;
    Mt44MultRpt3({1, 2, 3}, frame.data(), &p);
    EXPECT_NEAR(p.x, -1, 1e-15);
    EXPECT_NEAR(p.y, 3, 1e-15);
    EXPECT_NEAR(p.z, 6, 1e-15);
    GeMat44 straight({1, 2, 3}, {2, 2, 3}, {5, 2, 3});
    EXPECT_EQ(straight.data()[0][0], 1);
    EXPECT_EQ(straight.data()[3][1], 2);
    GeBox box({0, 0, 0}, {1, 2, 3});
    box *= frame;
    EXPECT_NEAR(box.min.x, -1, 1e-15);
    EXPECT_NEAR(box.max.y, 3, 1e-15);
    EXPECT_NEAR(box.max.z, 6, 1e-15);
    const GeUnitVec x(2, 0, 0), y(0, 3, 0);
    EXPECT_DOUBLE_EQ(x.GetAngleBetween(y, GeVec(0, 0, 1)), kPi / 2);
    EXPECT_DOUBLE_EQ(y.GetAngleBetween(x, GeVec(0, 0, 1)), -kPi / 2);
}

TEST(Plane, ThroughThreePoints) {
    VE_PLANE plane{};
    ASSERT_EQ(Ve3dEbAus3p(1, {0, 0, 2}, {4, 0, 2}, {0, 3, 2}, &plane), 0);
    EXPECT_DOUBLE_EQ(plane.normal.z, 1);
    double d = 0;
    RPT3 foot{};
    ASSERT_EQ(Ve3dDistPtPlane({7, 8, -1}, plane, &d, &foot), 0);
    EXPECT_DOUBLE_EQ(d, 3);
    EXPECT_DOUBLE_EQ(foot.z, 2);
    EXPECT_EQ(Ve3dEbAus3p(1, {0, 0, 0}, {1, 1, 1}, {3, 3, 3}, &plane), 3011);
    EXPECT_TRUE(Ve3dGleichRicht({1, 2, 3}, {2, 4, 6}));
    EXPECT_FALSE(Ve3dGleichRicht({1, 2, 3}, {-1, -2, -3}));
}

TEST(Units, FactorsNamesAndSheets) {
    EXPECT_EQ(GeUnit(7).factor(), 25.4e6);
    EXPECT_EQ(GeUnit(9).factor(), 0);
    EXPECT_EQ(GeUnit::fromName("feet").code(), 8);
    EXPECT_EQ(GeUnit::fromName("mile").code(), 0);
    EXPECT_EQ(GeFormat(4).width(), 420);
    EXPECT_EQ(GeFormat(99).height(), 148);
}

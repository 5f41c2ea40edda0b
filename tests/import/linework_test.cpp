#include "drawn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

DxfGroups circle(double x, double y, double radius) {
    return at(10, {x, y, 0}) + at(40, {radius});
}
DxfGroups arc(double start, double end, double radius = 10) {
    return circle(0, 0, radius) + at(50, {start}) + at(51, {end});
}
DxfGroups extrusion(double x, double y, double z) {
    return at(210, {x, y, z});
}
DxfGroups ellipse(double majorX, double ratio, double start, double end) {
    return at(10, {0, 0, 0}) + at(11, {majorX, 0, 0}) + at(40, {ratio}) + at(41, {start}) + at(42, {end});
}

/// The numbers behind "through": points of a spline.
std::vector<double> pointsOf(const std::string& spline) {
    std::istringstream in(spline.substr(std::min(spline.find("through"), spline.size())));
    std::string word;
    in >> word;
    std::vector<double> numbers;
    for (double value; in >> value;) numbers.push_back(value);
    return numbers;
}

TEST(Line, BothEndsAreDrawnAndHeightsAreDropped) {
    const std::string wanted = "move 1 2\ndraw 4 6\n";
    EXPECT_EQ(drawnEntity("LINE", at(10, {1, 2, 3}) + at(11, {4, 6, 8})), wanted);
    EXPECT_EQ(drawnEntity("3DLINE", at(10, {1, 2}) + at(11, {4, 6}) + DxfGroups{{38, "7"}, {39, "2"}}),
              wanted);
    EXPECT_EQ(drawnEntity("LINE", at(10, {1, 2}) + at(11, {4, 6}) + extrusion(0, 0, -1)), wanted)
        << "a line is in world coordinates";
}

TEST(Line, GarbageReadsAsZero) {
    EXPECT_EQ(drawnEntity("LINE", {{10, "1e20"}, {20, "-1e300"}, {11, "nan"}, {21, ""}, {62, "99999999999"}}),
              "move 0 0\ndraw 0 0\n");
}

TEST(Line, WhatOverflowsInTheMatrixIsLeftOut) {
    ImportOptions options = unshifted();
    options.texts["$DxfMatrix"] = "0,1e300,1e300";
    const auto result = importText(dxf()
                                       .header("AC1015")
                                       .entity("LINE", at(10, {0, 0, 1e18}) + at(11, {1, 0, 1e18}))
                                       .entity("LINE", at(10, {0, 0, 0}) + at(11, {1, 0, 0}))
                                       .text(),
                                   options);
    EXPECT_EQ(result.stat, 0);
    EXPECT_EQ(elementsOf(result.dump), "move 0 0\ndraw -1 0\n");
}

TEST(Point, IsADrawOfNoLengthUnlessPointsAreDropped) {
    EXPECT_EQ(drawnEntity("POINT", at(10, {3, 4, 5}) + extrusion(0, 0, -1)), "move 3 4\ndraw 3 4\n");
    ImportOptions noPoints;
    noPoints.config = flags("READ_PDMODE=1\n");
    // Neither elements nor extents: the line's middle is at 0.
    EXPECT_EQ(drawn(dxf().entity("POINT", at(10, {900, 0})).entity("LINE", at(10, {0, 0}) + at(11, {10, 0})),
                    noPoints),
              "move -5 0\ndraw 5 0\n");
    ImportOptions in3d = unshifted();
    in3d.in3d = true;
    EXPECT_EQ(drawnEntity("POINT", at(10, {3, 4, 5}), in3d), "pointcloud pen 1 3 4 5\n")
        << "in 3D a point is no element";
}

TEST(Arc, RunsCounterClockwise) {
    EXPECT_EQ(drawnEntity("ARC", arc(0, 90)), "move 10 0\narc ccw 0 10 about 0 0\n");
    EXPECT_EQ(drawnEntity("ARC", arc(0, 90, -10)), "move -10 0\narc ccw 0 -10 about 0 0\n");
    EXPECT_EQ(drawnEntity("ARC", arc(0, 360)), "move 10 0\narc ccw 10 0 about 0 0\n") << "a full turn";
}

TEST(Arc, OfNoSizeIsNothingAndATinyOneALine) {
    EXPECT_EQ(drawnEntity("ARC", arc(30, 30)), "");
    EXPECT_EQ(drawnEntity("ARC", arc(0, 90, 1e-8)), "");
    EXPECT_EQ(drawnEntity("ARC", arc(0, 90, 1e-4)), "move 0.0001 0\ndraw 0 0.0001\n");
}

TEST(Arc, MirroredByItsExtrusionSwapsEnds) {
    EXPECT_EQ(drawnEntity("ARC", arc(0, 90) + extrusion(0, 0, -1)), "move 0 10\narc ccw -10 0 about 0 0\n");
}

TEST(Arc, TiltedIsASplineAndEdgeOnAPolygon) {
    const auto points = pointsOf(drawnEntity("ARC", arc(0, 90) + extrusion(0, -0.6, 0.8)));
    ASSERT_EQ(points.size(), 14u) << "one sample every 15 degrees";
    for (std::size_t i = 0; i < points.size(); i += 2) {
        EXPECT_NEAR(std::hypot(points[i], points[i + 1] / 0.8), 10, 1e-6);
    }
    EXPECT_EQ(drawnEntity("ARC", arc(0, 30) + extrusion(0, 1, 0)),
              "move -10 0\ndraw -9.65925826 0 info 4\ndraw -8.66025404 0 info 4\n");
}

TEST(Circle, KeepsItsPointOnTheAxisAndItsCentre) {
    EXPECT_EQ(drawnEntity("CIRCLE", circle(5, 6, 2)), "move 7 6\narc cw 7 6 about 5 6\n");
    EXPECT_EQ(drawnEntity("CIRCLE", circle(5, 6, 2) + extrusion(0, 0, -1)),
              "move -7 6\narc cw -7 6 about -5 6\n");
    EXPECT_EQ(drawnEntity("CIRCLE", circle(5, 6, 2) + extrusion(0, 0, 0)),
              "move 7 6\narc cw 7 6 about 5 6\n");
    EXPECT_EQ(drawnEntity("CIRCLE", circle(5, 6, -2)), "move 3 6\narc cw 3 6 about 5 6\n");
    EXPECT_EQ(drawnEntity("CIRCLE", circle(5, 6, 0)), "");
    EXPECT_EQ(pointsOf(drawnEntity("CIRCLE", circle(5, 6, 2) + extrusion(0, 0.6, 0.8))).size(), 50u);
}

TEST(Ellipse, IsSampledEveryFifteenDegrees) {
    const auto full = pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 6.283185307179586)));
    ASSERT_EQ(full.size(), 50u);
    for (std::size_t i = 0; i < full.size(); i += 2)
        EXPECT_NEAR(std::hypot(full[i] / 10, full[i + 1] / 5), 1, 1e-6);
    EXPECT_EQ(pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 0.08726646))).size(), 6u);
    EXPECT_EQ(pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 1e18))).size(), 50u);
}

TEST(Ellipse, ItsEndTangentsFollowTheCurve) {
    const std::string quarter = drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 1.5707963267948966));
    EXPECT_EQ(quarter.substr(0, quarter.find(" through")),
              "move 10 0\nspline start 1.57079633 end 3.14159265");
}

TEST(Ellipse, RunsOneWayHoweverFarItsParametersAreApart) {
    constexpr double turn = 6.283185307179586;
    EXPECT_EQ(pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 10, 0))),
              pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 10 - turn, turn))));
}

TEST(Ellipse, TurnsItsSenseUnderAMirroringExtrusion) {
    const auto plain = pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 1)));
    const auto mirrored = pointsOf(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 1) + extrusion(0, 0, -1)));
    ASSERT_EQ(plain.size(), mirrored.size());
    for (std::size_t i = 0; i < plain.size(); i += 2) {
        EXPECT_NEAR(mirrored[i], plain[i], 1e-6);
        EXPECT_NEAR(mirrored[i + 1], -plain[i + 1], 1e-6);
    }
}

TEST(Ellipse, WithoutAnAxisOrASweepIsNoSpline) {
    EXPECT_EQ(drawnEntity("ELLIPSE", at(11, {0, 0, 5}) + at(40, {1})), "") << "the axis stands on the plane";
    EXPECT_EQ(drawnEntity("ELLIPSE", ellipse(10, 0.5, 0, 0)),
              "move 10 0\ndraw 10 0 info 4\ndraw 10 0 info 4\n")
        << "the host refuses the spline, the polygon stays";
}

const DxfGroups square = at(10, {0, 0}) + at(11, {4, 0}) + at(12, {0, 4}) + at(13, {4, 4});
const DxfGroups triangle = at(10, {0, 0}) + at(11, {4, 0}) + at(12, {0, 4});

ImportOptions fillOptions(const std::string& lines) {
    ImportOptions options = unshifted();
    options.config = flags(lines);
    return options;
}

TEST(Solid, ItsOutlineRunsOneTwoFourThree) {
    const std::string outline =
        "move 0 0\ndraw 4 0 info 5\ndraw 4 4 info 5\ndraw 0 4 info 5\ndraw 0 0 info 5\n";
    EXPECT_EQ(drawnEntity("TRACE", square, fillOptions("FILLMODE=0\n")), outline);
    EXPECT_EQ(drawnEntity("SOLID", square + extrusion(0, 0, -1), fillOptions("FILLMODE=0\n")),
              "move 0 0\ndraw -4 0 info 5\ndraw -4 4 info 5\ndraw 0 4 info 5\ndraw 0 0 info 5\n");
}

TEST(Solid, HasThreeCornersWhenTheFourthRepeatsOrIsMissing) {
    const std::string outline = "move 0 0\ndraw 4 0 info 5\ndraw 0 4 info 5\ndraw 0 0 info 5\n";
    for (const DxfGroups& fourth :
         {at(13, {0, 4}), at(13, {0.00005, 0}), DxfGroups{}, DxfGroups{{33, "1"}}}) {
        EXPECT_EQ(drawnEntity("SOLID", triangle + fourth, fillOptions("FILLMODE=0\n")), outline);
    }
}

TEST(Solid, IsFilledInItsColour) {
    const std::string fill =
        "hatch solid pen 2\n  contour\n    move 0 0\n    draw 4 0\n    draw 0 4\n    draw 0 0\n";
    EXPECT_EQ(drawnEntity("SOLID", DxfGroups{{62, "1"}} + triangle, fillOptions("FILL_CONTOUR=0\n")), fill);
    const std::string both = drawnEntity("SOLID", DxfGroups{{62, "1"}} + triangle);
    EXPECT_NE(both.find("draw 0 4 info 5"), std::string::npos) << both;
    EXPECT_NE(both.find(fill), std::string::npos) << both;
}

TEST(Extrusion, NearTheAxisTakesTheOtherBranch) {
    // 0.01 is below 1/64: the object's x axis is (1, 0, -0.01), not along the world's y axis.
    EXPECT_EQ(drawnEntity("SOLID",
                          at(10, {0, 0}) + at(11, {100, 0}) + at(12, {0, 100}) + extrusion(0.01, 0, 1),
                          fillOptions("FILLMODE=0\n")),
              "move 0 0\ndraw 99.9950004 0 info 5\ndraw 0 100 info 5\ndraw 0 0 info 5\n");
    EXPECT_EQ(drawnEntity("SOLID", at(10, {0, 0}) + at(11, {1, 0}) + at(12, {0, 1}) + extrusion(1, 0, 0),
                          fillOptions("FILLMODE=0\n")),
              "move 0 0\ndraw 0 1 info 5\ndraw 0 0 info 5\ndraw 0 0 info 5\n");
}

TEST(EntityBase, LayerSpaceAndVisibilityDecide) {
    const DxfGroups line = at(10, {1, 0}) + at(11, {2, 0});
    const auto on = [&](const DxfGroups& groups) {
        return drawn(dxf()
                         .header("AC1015")
                         .layer("OFF", -3)
                         .layer("FROZEN", 3, "CONTINUOUS", 1)
                         .entity("LINE", groups + line));
    };
    const std::string wanted = "move 1 0\ndraw 2 0\n";
    EXPECT_EQ(on({}), wanted);
    EXPECT_EQ(on({{8, "UNKNOWN"}}), wanted);
    EXPECT_EQ(on({{8, "OFF"}}), "");
    EXPECT_EQ(on({{8, "FROZEN"}}), "");
    EXPECT_EQ(on({{67, "1"}}), "");
    EXPECT_EQ(on({{60, "1"}}), "");
    EXPECT_EQ(on({{8, std::string(5000, 'x')}}), wanted);
}

} // namespace

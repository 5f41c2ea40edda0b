#include "drawn.h"

#include "rpt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

namespace {

using Values = std::initializer_list<double>;

DxfGroups knots(Values list) {
    DxfGroups groups;
    for (const double k : list) groups = groups + at(40, {k});
    return groups;
}
DxfGroups points(int code, std::initializer_list<RPT> list) {
    DxfGroups groups;
    for (const RPT& p : list) groups = groups + at(code, {p.x, p.y, 0});
    return groups;
}
DxfGroups head(int flags, int degree, int knotCount, int controlCount, int fitCount = 0) {
    return {{70, std::to_string(flags)},
            {71, std::to_string(degree)},
            {72, std::to_string(knotCount)},
            {73, std::to_string(controlCount)},
            {74, std::to_string(fitCount)}};
}
std::string spline(const DxfGroups& groups, int approx = 0) {
    ImportOptions options = unshifted();
    options.numbers["&DxfSplineApprox"] = approx;
    return drawnEntity("SPLINE", groups, options);
}

/// A quarter of the circle of radius 10, as a rational parabola.
const DxfGroups quarter = head(0, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + at(10, {10, 0, 0}) +
                          at(10, {10, 10, 0}) + at(41, {std::sqrt(0.5)}) + at(10, {0, 10, 0});

TEST(Spline, SamplesLieOnTheCurve) {
    std::istringstream lines(spline(quarter));
    std::string op;
    int samples = 0;
    for (double x = 0, y = 0; lines >> op >> x >> y; ++samples) {
        EXPECT_NEAR(std::hypot(x, y), 10, 1e-7);
        if (op == "draw") lines >> op >> op;
    }
    EXPECT_EQ(samples, 7) << "twice the order, and the end";
}

TEST(Spline, WeightsStandAheadOfTheirPointsOrBehind) {
    const DxfGroups weights = at(41, {1}) + at(41, {std::sqrt(0.5)}) + at(41, {1});
    const DxfGroups controls = at(10, {10, 0, 0}) + at(10, {10, 10, 0}) + at(10, {0, 10, 0});
    const DxfGroups start = head(0, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1});
    const std::string wanted = spline(quarter);
    EXPECT_EQ(spline(start + weights + controls), wanted);
    EXPECT_EQ(spline(start + controls + weights), wanted);
}

TEST(Spline, BiarcsOfACircleAreThatCircle) {
    std::istringstream lines(spline(quarter, 1));
    int arcs = 0;
    for (std::string line; std::getline(lines, line);) {
        double x = 0, y = 0, cx = 0, cy = 0;
        if (std::sscanf(line.c_str(), "arc ccw %lf %lf about %lf %lf", &x, &y, &cx, &cy) != 4) continue;
        ++arcs;
        EXPECT_NEAR(std::hypot(x, y), 10, 1e-6);
        EXPECT_NEAR(std::hypot(cx, cy), 0, 1e-4);
    }
    EXPECT_EQ(arcs, 6) << "two for each pair of the six steps";
}

TEST(Spline, StraightOnesAreOneSampleASpan) {
    const std::string wanted = "move 0 0\ndraw 5 5 info 4\ndraw 9 0 info 4\n";
    const DxfGroups first = knots({0, 0, 1, 2, 2}) + points(10, {{0, 0}, {5, 5}, {9, 0}});
    EXPECT_EQ(spline(head(0, 1, 5, 3) + first, 1), wanted);
    const DxfGroups linear =
        head(16, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + points(10, {{0, 0}, {5, 5}, {9, 0}});
    EXPECT_EQ(spline(linear, 1), "move 0 0\ndraw 9 0 info 4\n");
}

TEST(Spline, FitPointsAloneAreAPolygon) {
    const DxfGroups fit = points(11, {{0, 0}, {5, 5}, {9, 0}});
    EXPECT_EQ(spline(head(1, 3, 0, 0, 3) + fit, 1), "move 0 0\ndraw 5 5 info 5\ndraw 9 0 info 5\n");
    EXPECT_EQ(spline(head(0, 3, 0, 0, 2) + fit), "move 0 0\ndraw 5 5 info 4\n") << "no more than announced";
    EXPECT_EQ(spline(head(0, 3, 0, 0, 1) + fit), "") << "one sample draws nothing";
}

TEST(Spline, WhatIsNoCurveCostsNoMoreThanItself) {
    const DxfGroups controls = points(10, {{0, 0}, {5, 5}, {9, 0}});
    const DxfGroups cases[] = {
        head(0, 2, 2147483647, 2147483647) + knots({0, 0, 0, 1, 1}) + controls, // a knot is missing
        head(0, -1, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + controls,
        head(0, 50, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + controls,
        head(0, 2147483647, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + controls,
        head(0, 2, -6, -3) + knots({0, 0, 0, 1, 1, 1}) + controls,
        head(0, 2, 6, 3) + knots({1, 0, 1, 0, 1, 0}) + controls,
        head(0, 2, 6, 3) + knots({0, 0, 0, 0, 0, 0}) + controls,
        head(0, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + at(10, {0, 0}) + at(41, {0}) + at(10, {5, 5}) +
            at(41, {0}) + at(10, {9, 0}) + at(41, {0}),
        knots({0, 0, 0, 1, 1, 1}) + controls + head(0, 2, 6, 3), // the counts come too late
    };
    for (const DxfGroups& groups : cases) {
        const auto result = importText(dxf()
                                           .header("AC1015")
                                           .entity("SPLINE", groups)
                                           .entity("LINE", at(10, {7, 7}) + at(11, {8, 8}))
                                           .text(),
                                       unshifted());
        EXPECT_EQ(result.stat, 0);
        EXPECT_EQ(elementsOf(result.dump), "move 7 7\ndraw 8 8\n");
    }
    EXPECT_EQ(spline(head(0, 2, 99, 99) + knots({0, 0, 0, 1, 1, 1}) + controls),
              spline(head(0, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + controls))
        << "a count too large takes what is there";
}

TEST(Spline, IsACurveInSpaceIfLinesInSpaceAreWanted) {
    const DxfGroups fit = at(11, {1, 2, 3}) + at(11, {4, 6, 8}) + at(11, {9, 9, 9});
    ImportOptions options;
    options.config = flags("READ_LAYER=ATTR\n");
    options.in3d = true;
    for (const int wanted : {0, 1}) {
        options.numbers["&Dxf3dLines"] = wanted;
        const auto result = importText(
            dxf().header("AC1015").layer("A", 1).entity("SPLINE", head(0, 3, 0, 0, 3) + fit).text(), options);
        EXPECT_EQ(result.stat, 0);
        // Shifted with the drawing, whose middle comes to 0; the heights stay.
        EXPECT_EQ(result.dump.find("curve pen 1 -4 -3.5 3 -1 0.5 8 4 3.5 9") != std::string::npos,
                  wanted == 1)
            << result.dump;
        EXPECT_NE(result.dump.find("draw 4 3.5 info 4"), std::string::npos) << result.dump;
    }
}

TEST(Spline, AWeightOfNothingIsNoEnd) {
    // The middle control has no say: the straight line between the others is left.
    const DxfGroups controls =
        at(10, {0, 0}) + at(41, {1}) + at(10, {5, 5}) + at(41, {0}) + at(10, {10, 0}) + at(41, {1});
    const std::string result = spline(head(0, 2, 6, 3) + knots({0, 0, 0, 1, 1, 1}) + controls);
    EXPECT_EQ(result.rfind("move 0 0\n", 0), 0u) << result;
    EXPECT_NE(result.find("draw 5 0 info 4\n"), std::string::npos) << result;
    EXPECT_NE(result.find("draw 10 0 info 4\n"), std::string::npos) << result;
}

TEST(Spline, IsTurnedAsAWholeByItsBlock) {
    DxfText text = dxf().header("AC1015").block("B", DxfGroups{{0, "SPLINE"}} + quarter);
    text.entity("INSERT", DxfGroups{{2, "B"}, {41, "-2"}, {42, "2"}, {50, "90"}} + at(10, {0, 0}));
    ImportOptions options = unshifted();
    options.numbers["&DxfSplineApprox"] = 1;
    const std::string result = drawn(text, options);
    EXPECT_EQ(result.rfind("move 0 -20\narc cw ", 0), 0u) << result;
}

} // namespace

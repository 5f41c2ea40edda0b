// B-splines against curves whose points are known.
#include "bs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace {

struct Spline {
    std::vector<BS_POINT> controls;
    std::vector<double> knots;
    int order;

    BS_CURVE curve() const {
        BS_CURVE c;
        c.controls = controls.data();
        c.knots = knots.data();
        c.controlCount = static_cast<int>(controls.size());
        c.knotCount = static_cast<int>(knots.size());
        c.order = static_cast<std::int16_t>(order);
        return c;
    }
    int sample(int density) {
        int count = 0;
        const int err = BsGetCurveUList(curve(), density, &us, &spans, &count);
        EXPECT_EQ(us.size(), static_cast<std::size_t>(count));
        return err;
    }
    RPT3 at(std::size_t i) const {
        BS_POINT p{};
        EXPECT_EQ(BsSplinePoint(curve(), us[i], spans[i], &p), 0);
        return {p.x / p.w, p.y / p.w, p.z / p.w};
    }
    std::vector<double> us;
    std::vector<int> spans;
};

// A circle of radius 5 about (1, 2): four rational quarters, double knots between them.
Spline circle() {
    const double x[] = {1, 1, 0, -1, -1, -1, 0, 1, 1}, y[] = {0, 1, 1, 1, 0, -1, -1, -1, 0};
    Spline s{{}, {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4}, 3, {}, {}};
    for (int i = 0; i < 9; ++i) {
        const double w = i % 2 ? std::sqrt(0.5) : 1;
        s.controls.push_back({(1 + 5 * x[i]) * w, (2 + 5 * y[i]) * w, 0, w});
    }
    return s;
}

} // namespace

TEST(BSpline, RationalQuadraticIsACircle) {
    Spline s = circle();
    ASSERT_EQ(s.sample(6), 0);
    ASSERT_EQ(s.us.size(), 25u);
    EXPECT_EQ(s.us.back(), 4);
    for (std::size_t i = 0; i < s.us.size(); ++i) {
        const RPT3 p = s.at(i);
        EXPECT_NEAR(std::hypot(p.x - 1, p.y - 2), 5, 1e-14);
        RPT3 t{};
        ASSERT_EQ(BsCurveRichtAbl(s.curve(), s.us[i], s.spans[i], &t), 0);
        EXPECT_NEAR(t.x * (p.x - 1) + t.y * (p.y - 2), 0, 1e-12);
        EXPECT_GT((p.x - 1) * t.y - (p.y - 2) * t.x, 0) << "runs counter-clockwise";
        EXPECT_GT(s.us[i], i > 0 ? s.us[i - 1] : -1);
    }
}

TEST(BSpline, UnclampedAndHighDegreesReproduceAStraightLine) {
    // Controls at the averages of their knots (times 2): the curve is x = 2 u, y = 1 for every degree.
    for (const int order : {2, 3, 4, 7, 51}) {
        Spline s{{}, {}, order, {}, {}};
        for (int k = 0; k < order + 8 + order; ++k) s.knots.push_back(k + 0.2 * (k % 3));
        for (int i = 0; i < order + 8; ++i) {
            const auto first = s.knots.begin() + i + 1;
            s.controls.push_back({2 * std::accumulate(first, first + order - 1, 0.0) / (order - 1), 1, 0, 1});
        }
        ASSERT_EQ(s.sample(3), 0) << order;
        EXPECT_EQ(s.us.front(), s.knots[static_cast<std::size_t>(order) - 1]);
        for (std::size_t i = 0; i < s.us.size(); ++i) {
            EXPECT_NEAR(s.at(i).x, 2 * s.us[i], 1e-10);
            RPT3 t{};
            ASSERT_EQ(BsCurveRichtAbl(s.curve(), s.us[i], s.spans[i], &t), 0);
            EXPECT_NEAR(t.x, 2, 1e-8);
            EXPECT_NEAR(t.y, 0, 1e-8);
        }
    }
}

TEST(BSpline, EmptySpansAreSkippedAndBreaksKept) {
    // A break in the curve: a knot as often as the order.
    Spline s{{{0, 0, 0, 1}, {1, 0, 0, 1}, {5, 5, 0, 1}, {6, 5, 0, 1}}, {0, 0, 1, 1, 2, 2}, 2, {}, {}};
    ASSERT_EQ(s.sample(1), 0);
    ASSERT_EQ(s.us.size(), 3u);
    EXPECT_EQ(s.at(1).x, 5);
    EXPECT_EQ(s.at(2).x, 6);
    // Two equal controls at the start: the direction is that of the curve beside it.
    Spline d{{{0, 0, 0, 1}, {0, 0, 0, 1}, {1, 1, 0, 1}, {2, 0, 0, 1}}, {0, 0, 0, 0, 1, 1, 1, 1}, 4, {}, {}};
    RPT3 t{};
    ASSERT_EQ(BsCurveRichtAbl(d.curve(), 0, 3, &t), 0);
    EXPECT_NEAR(t.y / t.x, 1, 1e-5);
    for (BS_POINT& c : d.controls) c = {3, 3, 0, 1};
    EXPECT_EQ(BsCurveRichtAbl(d.curve(), 0, 3, &t), 3011);
}

TEST(BSpline, UnsoundRecordsAreRefused) {
    const Spline good = circle();
    Spline few = good, unordered = good, weightless = good, endless = good, empty = good;
    few.knots.pop_back();
    std::swap(unordered.knots[3], unordered.knots[5]);
    weightless.controls[4].w = NAN;
    endless.knots[4] = NAN;
    empty.knots.assign(12, 1.0);
    for (Spline s : {few, unordered, weightless, endless, empty}) EXPECT_EQ(s.sample(2), 3011);
    for (const int order : {-1, 0, 10, 52, 1000}) {
        Spline s = good;
        s.order = order;
        EXPECT_EQ(s.sample(2), 3011) << order;
        BS_POINT p{};
        EXPECT_EQ(BsSplinePoint(s.curve(), 1, 5, &p), 3011);
    }
    BS_POINT p{};
    RPT3 t{};
    for (const int span : {-5, 1, 3, 9, 4000}) {
        EXPECT_EQ(BsSplinePoint(good.curve(), 1, span, &p), 3011) << span;
        EXPECT_EQ(BsCurveRichtAbl(good.curve(), 1, span, &t), 3011) << span;
    }
    EXPECT_EQ(Spline(good).sample(0), 3011);
    EXPECT_EQ(BsSplinePoint(BS_CURVE(), 0, 0, &p), 3011);
}

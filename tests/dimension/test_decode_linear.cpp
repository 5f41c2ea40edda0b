// Blocks of linear dimensions, generated over all that they may differ in, and what is recognised in them.
#include "dimension/dx_dim_decode.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace {

constexpr double toRadians = 0.017453292519943295;
enum class Arrow { None, Filled, Tick, Dot };

/// One generated block in a frame with x along the dimension line; the line runs at y = 0 from 0 to `length`.
struct Generated {
    double degrees = 0;
    Arrow arrow = Arrow::Filled;
    bool hasGap = false, isOutside = false, hasExtensions = true, linesLast = false;
    int pieces = 1; ///< of a line without gap
    double noise = 0;

    static constexpr double length = 40, below = 15, size = 2.5, width = 1.0;

    std::string name() const {
        return std::to_string(degrees) + " arrow " + std::to_string(static_cast<int>(arrow)) + " gap " +
               std::to_string(hasGap) + " outside " + std::to_string(isOutside) + " ext " +
               std::to_string(hasExtensions) + " pieces " + std::to_string(pieces) + " noise " +
               std::to_string(noise) + " last " + std::to_string(linesLast);
    }
    RPT at(double x, double y) const {
        const double c = std::cos(degrees * toRadians), s = std::sin(degrees * toRadians);
        return {100 + c * x - s * y, 50 + s * x + c * y};
    }
};

class Block {
public:
    explicit Block(const Generated& g) : g_(g) {
        if (!g.linesLast) lines();
        arrow(0, g.isOutside ? -1 : 1);
        arrow(Generated::length, g.isOutside ? 1 : -1);
        if (g.linesLast) lines();
    }
    DX_DIM_PTS pts;
    std::vector<int> kinds;

private:
    void add(const RPT& p, int code, int kind = 0) {
        std::uniform_real_distribution<double> off(-g_.noise, g_.noise);
        pts.push_back({p.x + off(random_), p.y + off(random_), kind});
        kinds.push_back(code);
    }
    void line(double x0, double y0, double x1, double y1) {
        add(g_.at(x0, y0), 2);
        add(g_.at(x1, y1), 1);
    }
    void lines() {
        const double l = Generated::length, out = 8;
        if (g_.hasExtensions) {
            line(0, -Generated::below + 1, 0, 2);
            line(l, -Generated::below + 1, l, 2);
        }
        if (g_.isOutside) {
            line(-out, 0, 0, 0);
            line(l, 0, l + out, 0);
        } else if (g_.hasGap) {
            line(0, 0, 15, 0);
            line(25, 0, l, 0);
        } else {
            for (int i = 0; i < g_.pieces; ++i) line(l * i / g_.pieces, 0, l * (i + 1) / g_.pieces, 0);
        }
    }
    void arrow(double x, double along) {
        const double s = Generated::size, w = Generated::width / 2;
        switch (g_.arrow) {
        case Arrow::None: break;
        case Arrow::Filled: // a SOLID without its repeated corner
            add(g_.at(x + along * s, w), 2);
            add(g_.at(x + along * s, -w), 1);
            add(g_.at(x, 0), 1);
            break;
        case Arrow::Tick: line(x - s / 2, -w, x + s / 2, w); break;
        case Arrow::Dot: add(g_.at(x + s, 0), 2, 4); break;
        }
    }

    const Generated& g_;
    std::mt19937 random_{7};
};

void check(const Generated& g) {
    SCOPED_TRACE(g.name());
    Block block(g);
    RPT p13 = g.at(0, -Generated::below), p14 = g.at(Generated::length, -Generated::below), p10 = g.at(3, 0);
    DX_DIM_DECODED out;
    const RPT text = g.at(20, g.hasGap ? 0 : 3);
    ASSERT_EQ(DxDecodeLinDimPts(p13, p14, p10, text, g.degrees, block.kinds, nullptr, block.pts, out), 0);

    const bool isLong = g.hasGap || g.isOutside;
    std::string layout;
    for (const OV_DIM_PT& p : block.pts) layout += std::to_string(p.kind);
    EXPECT_EQ(layout, !isLong ? "111133" : g.isOutside ? "11112332" : "11113223");
    const int type = g.arrow == Arrow::None     ? 0
                     : g.arrow == Arrow::Filled ? 1
                     : g.arrow == Arrow::Dot    ? 2
                                                : 3;
    EXPECT_EQ(out.peak.type, type);
    EXPECT_NEAR(out.peak.length, type ? Generated::size : 0, 1e-4);
    EXPECT_NEAR(out.peak.width, type == 2 ? Generated::size : type ? Generated::width : 0, 1e-4);
    EXPECT_EQ(out.textPlace, g.hasGap ? 5 : 2);

    const bool isTurned = g.degrees > 90.1 && g.degrees < 270.1; // the points then run the other way
    const double start = isTurned ? Generated::length : 0, end = Generated::length - start;
    const std::size_t tip1 = g.isOutside ? 5 : 4, tip2 = g.isOutside ? 6 : block.pts.size() - 1;
    EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[tip1]), g.at(start, 0)));
    EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[tip2]), g.at(end, 0)));
    const double y0 = g.hasExtensions ? -Generated::below + 1 : 0, y1 = g.hasExtensions ? 2 : 0;
    EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[0]), g.at(start, y0)));
    EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[3]), g.at(end, y1)));
    if (g.hasGap) {
        EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[5]), g.at(isTurned ? 25 : 15, 0)));
        EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[6]), g.at(isTurned ? 15 : 25, 0)));
    }
    if (g.isOutside) EXPECT_TRUE(DxDimSamePoint(DxDimPoint(block.pts[4]), g.at(isTurned ? 48 : -8, 0)));
}

} // namespace

TEST(DecodeLinear, RecognisesGeneratedBlocks) {
    Generated g;
    for (const double degrees : {0.0, 30.0, 89.95, 135.0, 200.0, 300.0})
        for (const Arrow arrow : {Arrow::None, Arrow::Filled, Arrow::Tick, Arrow::Dot})
            for (const int shape : {0, 1, 2, 3, 4}) // one, two, three pieces; gap; outside
                for (const bool hasExtensions : {true, false})
                    for (const double noise : {0.0, 1e-5})
                        for (const bool linesLast : {true, false}) {
                            g.degrees = degrees, g.arrow = arrow;
                            g.pieces = shape < 3 ? shape + 1 : 1;
                            g.hasGap = shape == 3, g.isOutside = shape == 4;
                            g.hasExtensions = hasExtensions, g.noise = noise, g.linesLast = linesLast;
                            check(g);
                            if (testing::Test::HasFailure()) return;
                        }
}

TEST(DecodeLinear, TheAngleSettlesTheKindAndTheOrder) {
    for (const auto& [degrees, kind] :
         {std::pair{0.05, 31}, {359.95, 31}, {89.95, 32}, {270.05, 32}, {89.8, 33}}) {
        RPT p13{0, 10}, p14{0, -10}, p10{5, 0};
        DX_DIM_PTS pts;
        DX_DIM_DECODED out;
        ASSERT_EQ(DxDecodeLinDimPts(p13, p14, p10, {0, 0}, degrees, {}, nullptr, pts, out), 0);
        EXPECT_EQ(out.kind, kind) << degrees;
        EXPECT_EQ(p13.y < p14.y, kind == 32) << degrees;
    }
}

TEST(DimensionPoints, AnIndexGoesBackToTheRawList) {
    const DX_DIM_PTS raw{{0, 0, 0}, {0, 0, -1}, {0, 0, 0}, {0, 0, 4}, {0, 0, -1}, {0, 0, 0}};
    EXPECT_EQ(DxRecalcIndex(0, raw), 0);
    EXPECT_EQ(DxRecalcIndex(1, raw), 2);
}

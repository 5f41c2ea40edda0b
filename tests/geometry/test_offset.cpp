// What wide lines cover.
#include "outline_tools.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace host;
using Loops = std::vector<std::vector<Piece>>;

namespace {

int arcsIn(const Loops& loops) {
    int n = 0;
    for (const auto& loop : loops)
        for (const Piece& p : loop) n += p.isArc();
    return n;
}

std::size_t piecesIn(const Loops& loops) {
    std::size_t n = 0;
    for (const auto& loop : loops) n += loop.size();
    return n;
}

// Sampled points of the plane are inside exactly where the line covers them: always within half the width
// beside a piece, never beyond the reach of a mitre.
void expectCovers(const Loops& loops, const LiList& list, double width, double size, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(-0.2 * size, 1.2 * size);
    for (int i = 0; i < 1000; ++i) {
        const RPT p{place(random), place(random)};
        bool square = false;
        const double d = distanceFrom(list, p, &square);
        const bool covered = square && d < 0.5 * width - 0.01;
        if (!covered && d <= 2 * width + 0.01) continue;
        ASSERT_EQ(isInside(loops, p), covered) << p.x << ' ' << p.y << " distance " << d << " seed " << seed;
    }
}

// No point of the outline is nearer than half the width, but at the line's ends, nor beyond the mitres.
void expectAtDistance(const Loops& loops, const LiList& list, double half, double farthest) {
    const double ends = half + 1e-9;
    for (const auto& loop : loops)
        for (const Piece& p : loop)
            for (int k = 0; k <= 8; ++k) {
                bool square = false;
                const RPT q = p.pointAt(k / 8.0);
                const double d = distanceFrom(list, q, &square);
                if (d < half - 1e-9) {
                    EXPECT_TRUE(distance(q, list.first->start) <= ends ||
                                distance(q, list.last->end) <= ends);
                }
                EXPECT_LE(d, farthest + 1e-9);
            }
}

} // namespace

TEST(Offset, StraightLineIsARectangle) {
    const Loops loops = outlineOf(polyline({{0, 0}, {10, 0}}, false), 2);
    ASSERT_EQ(piecesIn(loops), 4u);
    EXPECT_DOUBLE_EQ(totalArea(loops), 20);
    EXPECT_DOUBLE_EQ(totalArea(outlineOf(polyline({{0, 0}, {10, 0}}, false), 2, 1)), 20);
    EXPECT_TRUE(isInside(outlineOf(polyline({{0, 0}, {10, 0}}, false), 2, 1), {5, 1.9}));
    EXPECT_FALSE(isInside(outlineOf(polyline({{0, 0}, {10, 0}}, false), 2, -1), {5, 0.1}));
}

TEST(Offset, CornersAreMitredAndSharpOnesCutOff) {
    const Loops right = outlineOf(polyline({{0, 0}, {10, 0}, {10, 10}}, false), 2);
    EXPECT_EQ(piecesIn(right), 6u);
    EXPECT_TRUE(isInside(right, {10.99, -0.99}));
    EXPECT_NEAR(totalArea(right), 40, 1e-12);
    const Loops sharp = outlineOf(polyline({{0, 0}, {10, 0}, {0, 1}}, false), 0.2);
    EXPECT_FALSE(isInside(sharp, {10.5, 0}));
    expectCovers(sharp, polyline({{0, 0}, {10, 0}, {0, 1}}, false), 0.2, 10, 1);
}

TEST(Offset, ClosedContoursGiveAnOuterAndAnInnerOne) {
    for (const bool turned : {false, true}) {
        std::vector<BulgeVertex> square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
        if (turned) std::reverse(square.begin(), square.end());
        const Loops loops = outlineOf(polyline(square, true), 2);
        ASSERT_EQ(loops.size(), 2u);
        EXPECT_NEAR(totalArea(loops), 144 - 64, 1e-12);
    }
    const Loops ring = outlineOf(polyline({{0, 0, 1}, {10, 0, 1}}, true), 2);
    ASSERT_EQ(ring.size(), 2u);
    EXPECT_EQ(arcsIn(ring), 4);
    EXPECT_NEAR(totalArea(ring), kPi * (36 - 16), 1e-12);
    // Its halves share both ends and nothing else: the sides are followed all the way round.
    for (const auto& loop : outlineOf(polyline({{0, 0, 1}, {20, 0, 1}}, true), 4)) EXPECT_EQ(loop.size(), 2u);
    // Wider than its inside: no hole is left.
    const Loops full = outlineOf(polyline({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true), 30);
    ASSERT_EQ(full.size(), 1u);
    EXPECT_NEAR(totalArea(full), 40 * 40, 1e-6);
    EXPECT_NEAR(totalArea(outlineOf(polyline({{0, 0, 1}, {10, 0, 1}}, true), 10)), kPi * 100, 1e-9);
}

TEST(Offset, ArcsStayArcsAtTheirDistance) {
    // A slot's half: line, half circle, line, joined tangentially, then an S of two quarters.
    const double quarter = std::tan(kPi / 8);
    const LiList list =
        polyline({{0, 0}, {20, 0, 1}, {20, 10}, {10, 10, -quarter}, {5, 15, quarter}, {0, 20}}, false);
    const Loops loops = outlineOf(list, 3);
    ASSERT_EQ(loops.size(), 1u);
    EXPECT_EQ(arcsIn(loops), 6);
    expectAtDistance(loops, list, 1.5, 1.5);
    expectCovers(loops, list, 3, 20, 2);
}

TEST(Offset, FarFromTheOriginItIsTheSame) {
    const double quarter = std::tan(kPi / 8);
    const double far = 4.5e6;
    const LiList list = polyline({{far, far}, {far + 20, far, quarter}, {far + 30, far + 10}}, false);
    const Loops loops = outlineOf(list, 2);
    EXPECT_EQ(piecesIn(loops), 6u);
    expectAtDistance(loops, list, 1, 1);
}

TEST(Offset, CrossingsAreCleanedAndArcsComeBack) {
    // A loop that crosses itself: the filled outline has one hole and no overlap.
    const LiList list = polyline({{0, 0}, {20, 0, 1}, {20, 12, 1}, {10, 6}, {10, -10}}, false);
    const Loops loops = outlineOf(list, 2);
    expectCovers(loops, list, 2, 20, 3);
    EXPECT_EQ(loops.size(), 2u);
    EXPECT_GE(arcsIn(loops), 4);
    EXPECT_LE(piecesIn(loops), 24u);
    expectAtDistance(loops, list, 1, 2);
    // There and back on the same way covers it once.
    EXPECT_NEAR(totalArea(outlineOf(polyline({{0, 0}, {10, 0}, {0, 0}}, false), 2)), 20, 1e-6);
    // A cross of two lines.
    LiList cross = polyline({{0, 5}, {10, 5}}, false);
    LI_ELEM* e = LiNew(cross);
    setPiece(e, makeLine({5, 0}, {5, 10}));
    e->contour = 1;
    LiChain(cross, e);
    EXPECT_NEAR(totalArea(outlineOf(cross, 2)), 36, 1e-6);
}

TEST(Offset, RandomLinesAreCovered) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> place(0, 20), bulge(-1.5, 1.5);
        std::vector<BulgeVertex> vertices;
        const unsigned n = 3 + seed % 7;
        vertices.reserve(n);
        for (unsigned i = 0; i < n; ++i)
            vertices.push_back({place(random), place(random), random() % 2 ? bulge(random) : 0});
        const LiList list = polyline(vertices, seed % 3 == 0);
        double width = 2;
        for (const LI_ELEM* el = list.first; el; el = el->next)
            if (el->isArc()) width = std::min(width, 2 * el->radius);
        expectCovers(outlineOf(list, width), list, width, 20, seed);
        if (HasFatalFailure()) return;
    }
}

TEST(Offset, LongLinesThatCrossThemselvesOftenAreCovered) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> place(0, 200), bend(-1, 1);
    std::vector<BulgeVertex> vertices;
    for (int i = 0; i < 150; ++i)
        vertices.push_back({place(random), place(random), i % 5 ? 0 : bend(random)});
    const LiList list = polyline(vertices, true);
    const Loops loops = outlineOf(list, 0.5);
    expectCovers(loops, list, 0.5, 200, 3);
    // No piece goes back over the one before it, as along a seam that a union left.
    for (const auto& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i) {
            const Piece &a = loop[i], &b = loop[(i + 1) % loop.size()];
            if (a.isArc() || b.isArc()) continue;
            EXPECT_FALSE(dot(a.startDirection(), b.startDirection()) < -1 + 1e-12) << i;
        }
}

TEST(Offset, WidthsTaperAlongThePieces) {
    const Loops arrow = outlineOf(polyline({{0, 0}, {10, 0}, {14, 0}}, false), {0, 0, 3, 0});
    ASSERT_EQ(arrow.size(), 2u); // the head, and the shaft as a line there and back
    EXPECT_NEAR(totalArea(arrow), 6, 1e-12);
    const Loops step = outlineOf(polyline({{0, 0}, {10, 0}, {20, 0}}, false), {2, 2, 4, 4});
    ASSERT_EQ(step.size(), 1u);
    EXPECT_NEAR(totalArea(step), 60, 1e-12);
    // A tapered half circle: its width at half way is the mean one, within the tolerance.
    const Loops horn = outlineOf(polyline({{0, 0, 1}, {20, 0}}, false), {0, 4});
    EXPECT_EQ(arcsIn(horn), 0);
    EXPECT_TRUE(isInside(horn, {10, -10.99}));
    EXPECT_FALSE(isInside(horn, {10, -11.01}));
    EXPECT_NEAR(totalArea(horn), kPi * 10 * 2, 0.01);
    // Equal widths keep an arc; a turned element takes its widths the other way round.
    LiList turned = polyline({{0, 0}, {10, 0}}, false);
    turned.first->turned = true;
    EXPECT_TRUE(isInside(outlineOf(turned, {1, 4}), {0.1, -1}));
    EXPECT_EQ(arcsIn(outlineOf(polyline({{0, 0, 1}, {20, 0}}, false), {2, 2})), 2);
}

TEST(Offset, DegenerateInputIsRefusedOrThin) {
    ILnOutline* outline = nullptr;
    LiList empty;
    EXPECT_EQ(LnParallelOffsettingAlgorithm::Create(empty, 0, 2)->GetOutline(&outline), 3011);
    EXPECT_EQ(
        LnParallelOffsettingAlgorithm::Create(polyline({{1, 1}, {1, 1}}, false), 0, 2)->GetOutline(&outline),
        3011);
    for (const double width : {0.0, -1.0, std::nan("")}) {
        const Loops hair = outlineOf(polyline({{0, 0}, {10, 0}, {10, 5}}, false), width);
        EXPECT_EQ(hair.size(), 2u);
        EXPECT_NEAR(totalArea(hair), 0, 1e-12);
    }
}

TEST(Offset, WildValuesDoNoHarm) {
    const double wild[] = {0, 1, -1, 1e-300, 1e-12, 1e7, 1e15, -1e100, 1e200, 1e308, NAN, INFINITY};
    std::mt19937 random(11);
    const auto any = [&] { return wild[random() % std::size(wild)]; };
    for (int i = 0; i < 800; ++i) {
        LiList list;
        for (int k = 0; k < 4; ++k) {
            LI_ELEM* e = LiNew(list);
            *static_cast<UO_ELEM*>(e) = {
                k % 3 ? 1 : 4, {any(), any()}, {any(), any()}, {any(), any()}, 0, 0, 1, 1, 0};
            LiRadKorr(e);
            LiElemExpand(e);
            LiChain(list, e);
        }
        ASSERT_EQ(LiSortKont(list, 0, any()), 0);
        LiRemShort(list, any());
        const auto even =
            LnParallelOffsettingAlgorithm::Create(list, static_cast<int>(random() % 3) - 1, any());
        const auto uneven =
            LnExtendedOffsettingAlgorithm::Create(list, 0, {any(), any(), any(), any()}, {any()});
        for (ILnLineOffsettingAlgorithm* algorithm : {even.get(), uneven.get()}) {
            ILnOutline* outline = nullptr;
            if (algorithm->GetOutline(&outline)) continue;
            outline->Calculate(any());
            for (const LI_ELEM* e = outline->Contours().first; e; e = e->next)
                ASSERT_TRUE(isFinite(e->start) && isFinite(e->end)) << i;
        }
    }
}

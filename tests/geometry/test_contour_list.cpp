// Contour lists: chaining loose elements, short elements, arcs put right.
#include "outline_tools.h"

#include "ge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace host;

namespace {

// The elements of a list in another order, some of them turned.
LiList shuffled(const LiList& list, unsigned seed, double noise = 0) {
    std::vector<Piece> pieces;
    for (const LI_ELEM* e = list.first; e; e = e->next) pieces.push_back(pieceOf(*e));
    std::mt19937 random(seed);
    std::shuffle(pieces.begin(), pieces.end(), random);
    std::uniform_real_distribution<double> off(-noise, noise);
    LiList result;
    for (Piece p : pieces) {
        if (random() % 2) p = p.reversed();
        p.start = p.start + RPT{off(random), off(random)};
        LI_ELEM* e = LiNew(result);
        setPiece(e, p);
        LiChain(result, e);
    }
    return result;
}

std::vector<BulgeVertex> zigzag(int n) {
    std::vector<BulgeVertex> v;
    v.reserve(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) v.push_back({1.0 * i, i % 2 * 3.0 + 0.01 * (i % 17), i % 3 == 0 ? 0.4 : 0});
    return v;
}

int contoursIn(const LiList& list) {
    return list.last ? list.last->contour + 1 : 0;
}

void expectChained(const LiList& list) {
    for (const LI_ELEM* e = list.first; e && e->next; e = e->next)
        if (e->contour == e->next->contour) {
            ASSERT_EQ(e->end.x, e->next->start.x);
            ASSERT_EQ(e->end.y, e->next->start.y);
        }
}

double lengthOf(const LiList& list) {
    double sum = 0;
    for (const LI_ELEM* e = list.first; e; e = e->next) sum += e->length;
    return sum;
}

} // namespace

TEST(ContourList, ShuffledAndTurnedElementsChainAgain) {
    for (const bool closed : {false, true}) {
        const LiList source = polyline(zigzag(200), closed);
        for (unsigned seed = 1; seed < 6; ++seed) {
            LiList list = shuffled(source, seed, 1e-5);
            ASSERT_EQ(LiSortKont(list, 0, 1e-4), 0);
            EXPECT_EQ(contoursIn(list), 1);
            EXPECT_EQ(list.count, source.count);
            expectChained(list);
            EXPECT_EQ(distance(list.first->start, list.last->end) == 0.0, closed);
            EXPECT_NEAR(lengthOf(list), lengthOf(source), 0.02);
        }
    }
}

TEST(ContourList, TurnedArcsBendTheSameWay) {
    LiList list = polyline({{0, 0}, {10, 0}}, false);
    LI_ELEM* e = LiNew(list);
    setPiece(e, makeArc({10, 10}, {10, 0}, {10, 5}, -1));
    LiChain(list, e);
    ASSERT_EQ(LiSortKont(list, 0), 0);
    EXPECT_TRUE(e->turned);
    EXPECT_EQ(e->type, 4);
    EXPECT_EQ(e->start.y, 0);
    EXPECT_NEAR(e->sweep, kPi, 1e-14);
    EXPECT_EQ(e->source, 1);
}

TEST(ContourList, SeparateContoursStaySeparateAndInOrder) {
    LiList list = polyline({{0, 0}, {4, 0}, {4, 4}, {0, 0}}, false);
    for (const Piece& p :
         {makeArc({9, 0}, {9, 0}, {7, 0}, 1), makeLine({20, 0}, {21, 0}), makeLine({30, 0}, {21, 0})}) {
        LI_ELEM* e = LiNew(list);
        setPiece(e, p);
        LiChain(list, e);
    }
    ASSERT_EQ(LiSortKont(list, 0, 1e-3), 0);
    EXPECT_EQ(contoursIn(list), 3);
    EXPECT_EQ(list.first->next->next->next->length, 4 * kPi);
    EXPECT_EQ(list.last->end.x, 30);
    // A line that passes its own start goes on.
    LiList eight = polyline({{0, 0}, {1, 1}, {2, 0}, {0, 0}, {-1, 1}, {-2, 0}, {0, 0}}, false);
    ASSERT_EQ(LiSortKont(eight, 0), 0);
    EXPECT_EQ(contoursIn(eight), 1);
    // Many ends in one spot, values that aren't numbers.
    LiList star;
    for (int i = 0; i < 20000; ++i) {
        LI_ELEM* e = LiNew(star);
        setPiece(e, makeLine({0, 0}, polar({0, 0}, 5 + i, i)));
        LiChain(star, e);
    }
    star.first->end.x = NAN;
    star.last->start.y = 1e300;
    ASSERT_EQ(LiSortKont(star, 0), 0);
    EXPECT_EQ(star.count, 20000);
}

TEST(ContourList, ShortElementsGoAndNeighboursMeet) {
    LiList list = polyline({{0, 0}, {10, 0}, {10, 1e-5}, {10 + 1e-5, 1e-5}, {10, 10}, {10, 10.0001}}, false);
    ASSERT_EQ(LiSortKont(list, 0), 0);
    LiRemShort(list, 0.001);
    ASSERT_EQ(list.count, 2);
    expectChained(list);
    EXPECT_EQ(list.last->end.y, 10.0001);
    // A fine curve thins out, but doesn't vanish.
    std::vector<BulgeVertex> fine;
    for (int i = 0; i <= 10000; ++i) fine.push_back({1e-4 * i, 0});
    list = polyline(fine, false);
    LiRemShort(list, 0.001);
    EXPECT_LE(list.count, 1000);
    EXPECT_GE(list.count, 900);
    EXPECT_NEAR(lengthOf(list), 1, 1e-12);
    // A whole circle has equal ends and is not short; a dot is.
    list = polyline({{0, 0}, {1e-6, 0}}, false);
    LiRemShort(list, 0.001);
    EXPECT_EQ(list.first, nullptr);
    LI_ELEM* e = LiNew(list);
    setPiece(e, makeArc({9, 0}, {9, 0}, {7, 0}, 1));
    LiChain(list, e);
    LiRemShort(list, 0.001);
    EXPECT_EQ(list.count, 1);
    LiRemove(list);
    EXPECT_EQ(LiSucc(list, nullptr), nullptr);
}

TEST(ContourList, ArcsAreBroughtToOneRadius) {
    LiList list;
    LI_ELEM* e = LiNew(list);
    e->type = 3;
    e->start = {0, 5.001};
    e->end = {5, 0};
    e->centre = {0.0004, -0.0003};
    LiRadKorr(e);
    EXPECT_NEAR(distance(e->centre, e->start), distance(e->centre, e->end), 1e-14);
    EXPECT_NEAR(distance(e->centre, {0, 0}), 0, 1e-3);
    LiElemExpand(e);
    EXPECT_NEAR(e->sweep, -kPi / 2, 1e-3);
    EXPECT_NEAR(e->startAngle, kPi / 2, 1e-3);
}

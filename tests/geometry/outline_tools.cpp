#include "outline_tools.h"

#include <gtest/gtest.h>

using namespace host;

static Piece bulgePiece(const RPT& a, const RPT& b, double bulge) {
    if (bulge == 0) return makeLine(a, b);
    const RPT chord = b - a;
    const double height = 0.5 * (1 / bulge - bulge) / 2; // of the centre over the chord, in chords
    return makeArc(a, b, 0.5 * (a + b) + height * leftOf(chord), bulge > 0 ? 1 : -1);
}

LiList polyline(const std::vector<BulgeVertex>& vertices, bool closed) {
    LiList list;
    const std::size_t n = vertices.size();
    for (std::size_t i = 0; i + (closed ? 0 : 1) < n; ++i) {
        const BulgeVertex& a = vertices[i];
        const BulgeVertex& b = vertices[(i + 1) % n];
        LI_ELEM* e = LiNew(list);
        setPiece(e, bulgePiece({a.x, a.y}, {b.x, b.y}, a.bulge));
        LiChain(list, e);
    }
    return list;
}

std::vector<std::vector<Piece>> loopsOf(const LiList& list) {
    std::vector<std::vector<Piece>> loops;
    for (const LI_ELEM* e = list.first; e; e = e->next) {
        if (e->contour >= static_cast<int>(loops.size())) loops.emplace_back();
        loops.back().push_back(pieceOf(*e));
    }
    return loops;
}

// Crossings of the ray to the right.
static int crossingsOfRay(const Piece& p, const RPT& from) {
    if (!p.isArc()) {
        if ((p.start.y > from.y) == (p.end.y > from.y)) return 0;
        const double t = (from.y - p.start.y) / (p.end.y - p.start.y);
        return from.x < p.start.x + t * (p.end.x - p.start.x);
    }
    const double dy = from.y - p.centre.y;
    if (std::fabs(dy) >= p.radius) return 0;
    const double dx = std::sqrt(p.radius * p.radius - dy * dy);
    int crossings = 0;
    for (const double x : {p.centre.x - dx, p.centre.x + dx})
        crossings += x > from.x && isOn(p, {x, from.y}, 0);
    return crossings;
}

bool isInside(const std::vector<std::vector<Piece>>& loops, const RPT& p) {
    int crossings = 0;
    for (const auto& loop : loops)
        for (const Piece& piece : loop) crossings += crossingsOfRay(piece, p);
    return crossings % 2 == 1;
}

double totalArea(const std::vector<std::vector<Piece>>& loops) {
    double area = 0;
    for (const auto& loop : loops)
        for (const Piece& piece : loop) area += piece.signedArea();
    return area;
}

double distanceFrom(const LiList& list, const RPT& p, bool* square) {
    double best = HUGE_VAL;
    for (const LI_ELEM* e = list.first; e; e = e->next) {
        const Piece piece = pieceOf(*e);
        RPT foot = piece.centre + piece.radius * unit(p - piece.centre);
        if (!piece.isArc()) {
            const RPT u = piece.startDirection();
            foot = piece.start + dot(p - piece.start, u) * u;
        }
        const bool within = isOn(piece, foot, 0);
        const double d =
            within ? distance(p, foot) : std::min(distance(p, piece.start), distance(p, piece.end));
        if (d > best) continue;
        if (d < best) *square = false;
        best = d;
        *square = *square || within;
    }
    return best;
}

static std::vector<std::vector<Piece>> calculate(ILnLineOffsettingAlgorithm& algorithm) {
    ILnOutline* outline = nullptr;
    EXPECT_EQ(algorithm.GetOutline(&outline), 0);
    if (!outline) return {};
    EXPECT_EQ(outline->Calculate(0.001), 0);
    auto loops = loopsOf(outline->Contours());
    for (const auto& loop : loops)
        for (std::size_t i = 0; i < loop.size(); ++i)
            EXPECT_LT(distance(loop[i].end, loop[(i + 1) % loop.size()].start), 1e-6) << "a gap in a contour";
    return loops;
}

std::vector<std::vector<Piece>> outlineOf(const LiList& list, double width, int side) {
    return calculate(*LnParallelOffsettingAlgorithm::Create(list, side, width));
}

std::vector<std::vector<Piece>> outlineOf(const LiList& list, const std::vector<double>& widths) {
    return calculate(*LnExtendedOffsettingAlgorithm::Create(list, 0, widths, {}));
}

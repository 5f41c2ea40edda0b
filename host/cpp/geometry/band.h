// Bands: pieces of a line with a width at each end, and the outline of a chain of them.
#pragma once

#include "geometry/piece.h"

#include <vector>

namespace host {

/// Contours as pieces, each beginning where the one before ends; the last ends where the first begins.
using PieceLoop = std::vector<Piece>;

struct Band {
    Piece centre;
    double left[2] = {0, 0}; ///< distance of the edge from the centre line at start and end, not negative
    double right[2] = {0, 0};
    double widest() const;
};

struct BandChain {
    std::vector<Band> bands;
    bool closed = false;
};

/// Lengths that decide, in drawing units.
struct BandLimits {
    double tolerance; ///< of the drawing: chords of tapered arcs stay this near
    double eps;       ///< below this, two points are one: what rounding leaves
};

/// Edge of a band without regard to its neighbours, in the band's direction; `side` 1 left, -1 right. Empty
/// never. `*sound` becomes false when an arc is bent more sharply than the edge's distance allows.
std::vector<Piece> edgeOf(const Band& band, int side, const BandLimits& limits, bool* sound);

/// Where two edges that leave a gap at a corner meet when both are made longer; false when that is nowhere
/// or farther from the corner than `limit`.
bool mitreOf(const Piece& in, const Piece& out, const RPT& corner, double limit, RPT* mitre);
/// Farthest mitre at the joint of two bands on a side: 0 for none.
double mitreLimit(const Band& in, const Band& out, int side);

/// The outline of a chain, its edges trimmed and mitred at the corners: one loop of an open chain, two of a
/// closed one. False when some corner is too tight for its edges; the loops are of no use then. Whether the
/// loops cross each other elsewhere is for the caller to see.
bool outlineChain(const BandChain& chain, const BandLimits& limits, std::vector<PieceLoop>* loops);

/// Loops that cross themselves and each other, whose winding number is above 0 just where the chain covers
/// the plane, and never below.
void sweepChain(const BandChain& chain, const BandLimits& limits, std::vector<PieceLoop>* loops);

/// The loop without pieces of no length; what follows one starts where the last kept piece ends.
PieceLoop withoutPoints(const PieceLoop& loop, double eps);
double areaOf(const PieceLoop& loop); ///< Positive for a counter-clockwise loop.
void reverseLoop(PieceLoop& loop);

} // namespace host

// A piece of a contour: a straight segment or a circular arc, and what can be asked of it.
#pragma once

#include "geometry/plane.h"

#include <vector>

namespace host {

/// The frame of `piece.start` and `piece.end` is the plane of the drawing; `sense` is 0 for a segment, 1 for
/// a counter-clockwise and -1 for a clockwise arc. An arc whose ends are equal is a whole circle.
struct Piece {
    RPT start{0, 0};
    RPT end{0, 0};
    RPT centre{0, 0};
    int sense = 0;
    double radius = 0; ///< of an arc

    bool isArc() const { return sense != 0; }
    double sweep() const; ///< Turning angle of an arc, signed by its sense, at most a full turn.
    double length() const;
    RPT pointAt(double t) const; ///< t from 0 to 1, by length.
    RPT startDirection() const;  ///< Unit vector; (0, 0) for a segment of no length.
    RPT endDirection() const;
    Piece reversed() const;
    double signedArea() const; ///< Its share of the area to the left of a closed contour.
};

Piece makeLine(const RPT& start, const RPT& end);
/// An arc with the radius of its start; the ends are taken as they come.
Piece makeArc(const RPT& start, const RPT& end, const RPT& centre, int sense);

struct PieceBox {
    double minX, minY, maxX, maxY;
    bool meets(const PieceBox& o) const {
        return minX <= o.maxX && o.minX <= maxX && minY <= o.maxY && o.minY <= maxY;
    }
    void add(const PieceBox& o);
    PieceBox grown(double by) const { return {minX - by, minY - by, maxX + by, maxY + by}; }
    double size() const { return std::hypot(maxX - minX, maxY - minY); }
};
PieceBox boxOf(const Piece& piece);

/// Up to four points: two curves meet in two at most, and an overlap is told by its ends.
struct PieceMeetings {
    RPT points[4];
    int count = 0;
    bool overlap = false; ///< The pieces share a stretch, not just points.
};
/// Common points of two pieces, ends included, within `eps`.
PieceMeetings meetingsOf(const Piece& a, const Piece& b, double eps);
/// Common points of the endless line or whole circle that carry the pieces. Never an overlap.
PieceMeetings carrierMeetings(const Piece& a, const Piece& b);
/// Whether a point of the carrier lies on the piece, with `eps` of room at its ends.
bool isOn(const Piece& piece, const RPT& p, double eps);

/// Distance of a point from the endless line or whole circle that carries the piece.
double distanceToCarrier(const Piece& piece, const RPT& p);
/// The point of the carrier nearest to `p`.
RPT footOnCarrier(const Piece& piece, const RPT& p);

/// Number of chords that stay within `tolerance` of an arc of this radius and sweep (radians).
int chordCount(double radius, double sweep, double tolerance);

/// Cuts the pair where `first` ends and `second` begins to the common point nearest to `corner`; false, with
/// nothing changed, when they have none.
bool trimToMeeting(Piece& first, Piece& second, const RPT& corner, double eps);

} // namespace host

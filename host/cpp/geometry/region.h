// The area within a closed chain of lines and arcs, to cut other chains at its border.
#pragma once

#include "geometry/box_tree.h"
#include "geometry/piece.h"

#include <vector>

namespace host {

class Region {
public:
    /// The pieces in order; the chain may be of several closed ones, the area is the even-odd one.
    Region(std::vector<Piece> border, double tolerance);

    enum class Side { Inside, Border, Outside };
    /// Where a point lies. O(log n) and the pieces at its height.
    Side sideOf(const RPT& p) const;
    /// Cuts a piece at the border: `take(part, side)` for each part in order.
    template <class Take>
    void cut(const Piece& piece, Take take) const {
        for (const Piece& part : partsOf(piece)) take(part, sideOf(part.pointAt(0.5)));
    }
    bool isOnBorder(const RPT& p) const;
    /// Whether a piece lies wholly away from the border.
    bool isApart(const Piece& piece) const;
    /// True when it encloses an area.
    bool hasArea() const { return hasArea_; }

private:
    std::vector<Piece> partsOf(const Piece& piece) const;
    bool isOddAlongRay(const RPT& p) const;

    std::vector<Piece> border_;
    double tolerance_;
    std::vector<PieceBox> boxes_;
    BoxTree tree_;
    bool hasArea_ = false;
};

} // namespace host

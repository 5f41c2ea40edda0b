// Offsetting: what a line with a width covers.
#pragma once

#include "li.h"

#include <memory>
#include <vector>

/// The outline of a wide line.
class ILnOutline {
public:
    virtual ~ILnOutline() = default;
    /// Works out the contours. `tolerance` is the drawing tolerance, a length in drawing units: chords stay
    /// that near to a curve that is no arc. 0, or 3011 when there is nothing to outline, 1001 without memory.
    virtual int Calculate(double tolerance) = 0;
    /// Closed contours, numbered by LI_ELEM::contour; filled even-odd they show the wide line. Outer
    /// contours run counter-clockwise, holes clockwise. A piece without width is a contour that runs along it
    /// and back. Empty before Calculate. Arcs come as arcs.
    virtual const LiList& Contours() const = 0;
};

/// Offsets contours that LiSortKont has put in order.
class ILnLineOffsettingAlgorithm {
public:
    virtual ~ILnLineOffsettingAlgorithm() = default;
    /// The outline, which belongs to the algorithm. 3011 when the list has no element of a length.
    virtual int GetOutline(ILnOutline** outline) = 0;
};

// `side` says what the width covers: 0 half of it on each side of the line, 1 all of it on the left, -1 on
// the right. Ends are square, flush with the end of the line; corners are mitred, and cut off flat where the
// mitre would reach farther than four times the width at its side. The list is copied.

/// One width along the whole line.
class LnParallelOffsettingAlgorithm {
public:
    static std::unique_ptr<ILnLineOffsettingAlgorithm> Create(const LiList& list, int side, double width);
};

/// A width for the start and the end of each piece, linear between: `widths` holds them for the piece with
/// LI_ELEM::source k at [2k] and [2k + 1], in the direction that the piece had before LiSortKont turned it.
/// `extra` is added to them, with 0 where it is shorter. A piece behind the array's end has no width.
class LnExtendedOffsettingAlgorithm {
public:
    static std::unique_ptr<ILnLineOffsettingAlgorithm>
    Create(const LiList& list, int side, const std::vector<double>& widths, const std::vector<double>& extra);
};

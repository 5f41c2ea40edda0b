// The objects that stand beside the elements of a pattern, by class.
#pragma once

#include "ci_dim.h"
#include "ds.h"
#include "rpt.h"

/// Walks the objects of one class in a pattern. First aims the cursor (which stands on a pattern) at the
/// first object, Next at the following one; 1005 behind the last. Count gives their number.
// NOLINTBEGIN(bugprone-macro-parentheses): a class name can't stand in parentheses
#define TORVA_OBJECT_CLASS(Name)                                                                             \
    class Name {                                                                                             \
    public:                                                                                                  \
        explicit Name(int contextId) : contextId_(contextId) {}                                              \
        int First(DsCsr& cursor);                                                                            \
        int Next(DsCsr& cursor);                                                                             \
        static int Count(const DsCsr& pattern, long* count);                                                 \
                                                                                                             \
    private:                                                                                                 \
        int contextId_;                                                                                      \
    }

TORVA_OBJECT_CLASS(CiHatch);
TORVA_OBJECT_CLASS(CiArrow);

// NOLINTEND(bugprone-macro-parentheses)
#undef TORVA_OBJECT_CLASS

/// Faces, solids and curves in space, walked in this order.
class Ci3d {
public:
    explicit Ci3d(int contextId) : contextId_(contextId) {}
    int First(DsCsr& cursor);
    int Next(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count);
    /// Adds a curve through the points, in the drawing's frame and the context's unit, to the cursor's
    /// pattern, with the host's current pen. `*curve` is its place among the curves of the pattern, `*parts`
    /// the number of its stretches. 3011 for fewer than two points.
    int DrawCurveByPoints(DsCsr* pattern, const RPT3* points, int count, int* curve, int* parts);

private:
    int contextId_;
};

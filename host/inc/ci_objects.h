// The objects that stand beside the elements of a pattern, by class.
#pragma once

#include "ci_3d.h"
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

TORVA_OBJECT_CLASS(CiArrow);

// NOLINTEND(bugprone-macro-parentheses)
#undef TORVA_OBJECT_CLASS

/// Hatches, walked as the other objects.
class CiHatch {
public:
    explicit CiHatch(int contextId) : contextId_(contextId) {}
    int First(DsCsr& cursor);
    int Next(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count);
    /// Type: 0 lines, 1 fill, 3 gradient; form of a gradient: 0 from side to side, 1 from the middle.
    int GetTypeParams(const DsCsr& hatch, int* type, int* form);
    /// Colour record 1 or 2 of a hatch: pen; the gradient's angle (radians), shift and size, which are the
    /// same in both; transparency in percent as 16 * high + low. 1005 for a record that the hatch hasn't.
    int GetParams(const DsCsr& hatch, int record, int* pen, double* angle, double* shift, double* size,
                  unsigned short* high, unsigned short* low);

private:
    int contextId_;
};

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

TORVA_OBJECT_CLASS(CiHatch);
TORVA_OBJECT_CLASS(CiArrow);

// NOLINTEND(bugprone-macro-parentheses)
#undef TORVA_OBJECT_CLASS

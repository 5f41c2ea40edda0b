// Dimensions as objects of the drawing store.
#pragma once

#include "ds.h"
#include "ut_string.h"

/// Dimensions by cursor: type D_DIMENSION, the dimension's place as element row. Every method gives 0 on
/// success; 1005 for a cursor that isn't on a dimension.
class CiDim {
public:
    explicit CiDim(int contextId) : contextId_(contextId) {}
    int First(DsCsr& cursor); ///< The first of the cursor's pattern.
    int Next(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count);
    /// Rows of its two texts, -1 for one that isn't there.
    int GetText(const DsCsr& cursor, int* valueRow, int* toleranceRow);
    /// Deletes the dimension and its texts; rows behind them move up.
    int Del(const DsCsr& cursor);
    /// Makes one object of the host's application `kind` from the dimensions; `*done` receives how many it
    /// took the place of, and `*made` the object, null for none. The reference host has no such applications:
    /// it makes none, and the dimensions stay what they are.
    int DimListToAppDim(const DsCsr dimensions[], int count, int* done, _ObObject** made,
                        const UtCString& kind);

private:
    int contextId_;
};

// The 3D data of a pattern as the host gives it out, in the drawing's unit.
#pragma once

#include "ds.h"
#include "rpt.h"

/// Polygons in parallel arrays, which are the host's.
struct DX_FACE_ARRAYS {
    int polygonCount = 0;
    int* ends = nullptr; ///< of a polygon: number of entries up to its end
    double *x = nullptr, *y = nullptr, *z = nullptr;
    int* edgeKind = nullptr; ///< of an entry; 1: the piece from the entry before it is a line
    int *edgePen = nullptr, *edgeLt = nullptr;
    int* hidden = nullptr;  ///< of an entry; 1: the edge that ends at it is invisible
    int* facePen = nullptr; ///< of a polygon; 0: it is a run of edges, no face

    int first(int polygon) const { return polygon == 0 ? 0 : ends[polygon - 1]; }
    int size(int polygon) const { return ends[polygon] - first(polygon); }
};

/// Reads a pattern. False when it has no 3D data. `*error` is the host's for its form.
bool DxRead3dPat(int pat, DX_FACE_ARRAYS* faces, int* error);

/// Walks the points of all clouds of a pattern.
class DxCloudReader {
public:
    explicit DxCloudReader(int pat);
    /// The next point, in the drawing's unit, and its pen. False at the end.
    bool next(RPT3* point, int* pen);

private:
    DsCsr pattern_;
    long clouds_ = 0, cloud_ = 0, index_ = 0;
};

// Objects in space, by cursor: facets, curves, point clouds. Points are in the drawing's frame and the unit
// of the context.
#pragma once

#include "ds.h"
#include "rpt.h"

/// A material of the host's material base; 0: none.
struct MatDbKey {
    unsigned long id = 0;
};

/// Facets made by Ci3d; opaque to the module.
struct CI_FACETS;

class Ci3d {
public:
    explicit Ci3d(int contextId) : contextId_(contextId) {}
    /// Walks faces, facets, solids and curves of a pattern, in this order. 1005 behind the last.
    int First(DsCsr& cursor);
    int Next(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count);
    static int CountSolids(const DsCsr& pattern, long* count);
    static int CountClouds(const DsCsr& pattern, long* count); ///< point clouds

    /// Adds a curve through the points, in the drawing's frame and the context's unit, to the cursor's
    /// pattern, with the host's current pen. `*curve` is its place among the curves of the pattern, `*parts`
    /// the number of its stretches. 3011 for fewer than two points.
    int DrawCurveByPoints(DsCsr* pattern, const RPT3* points, int count, int* curve, int* parts);

    void SetParams(long pen) { pen_ = pen; } ///< of what this object makes from now on
    void SetVisMatKey(MatDbKey material) { material_ = material; }
    /// Adds an object of facets to the cursor's pattern. A flag of 0 begins a facet, which repeats its first
    /// point at the end; each point has the normal of its facet there. `normal` is the first of them, `none`
    /// null and `kind` 0. Null when there is no such pattern, or for points that make no facet.
    CI_FACETS* CreateFacets(DsCsr* pattern, const RPT3* points, RPT3 normal, const RPT3* normals,
                            const RPT* none, const unsigned char* flags, unsigned long count,
                            unsigned short kind);
    /// Adds a cloud of points, each with its pen. 3011 for none.
    int AddPointCloud(DsCsr* pattern, const RPT3* points, const unsigned long* pens, unsigned long count,
                      int kind);

    /// The pen closest to a colour, red, green and blue from 0 to 1.
    static int GetClosestPen(const double rgb[3], int& pen);

private:
    int contextId_;
    long pen_ = 1;
    MatDbKey material_;
};

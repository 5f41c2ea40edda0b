// Objects in space, by cursor: facets, curves, point clouds. Points are in the drawing's frame and the unit
// of the context.
#pragma once

#include "ds.h"
#include "ge.h"
#include "re_material.h"
#include "rpt.h"

#include <string_view>
#include <vector>

/// A material of the host's material base; 0: none.
struct MatDbKey {
    unsigned long id = 0;
};

/// A solid as the drawing has it.
struct CI_SOLID {
    std::string_view model; ///< SAT or SAB; valid until the drawing changes
    Mat44 matrix;           ///< to the drawing's frame, in the context's unit
    int pen, lineType;
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
    /// Point `index` of cloud `cloud` of the cursor's pattern, in the drawing's frame and the context's unit,
    /// with its pen. 1005 when there is none.
    int GetCloudPoint(const DsCsr& pattern, long cloud, long index, RPT3* point, int* pen) const;
    /// Adds a cloud of points, each with its pen. 3011 for none.
    int AddPointCloud(DsCsr* pattern, const RPT3* points, const unsigned long* pens, unsigned long count,
                      int kind);

    /// Reads a solid model, SAT or SAB up to version 700, into the active pattern as one of its parts
    /// (`asSubObjects` 1), or into a new pattern of the same attributes, which becomes the active one.
    /// `matrix` takes the model to the drawing's frame, in the context's unit. `part` -1: all of the file. 0,
    /// 10 for a model without bodies that can be shown, 9001 when the file can't be read, 3011 for no model,
    /// 1005 without a pattern.
    int ReadSatFileByParams(const UtCString& path, int pen, int lineType, MatDbKey material,
                            unsigned long materialNumber, const GeMat44& matrix, int part, int asSubObjects);
    /// Solid `index` of the cursor's pattern. 1005 when there is none.
    int GetSolid(const DsCsr& pattern, int index, CI_SOLID* solid) const;
    /// Makes a material, or finds the same one again. The first texture lies on the surface with the first
    /// file, which may have no name. 0, or 3011 without a name.
    int CreateVisMaterial(const UtCString& name, const RENDERING_ENGINE::MATERIAL& material, int textureCount,
                          const RENDERING_ENGINE::TEXTURE* textures,
                          const std::vector<RENDERING_ENGINE::Image>& files, MatDbKey& key,
                          unsigned long& number);

    /// The pen closest to a colour, red, green and blue from 0 to 1.
    static int GetClosestPen(const double rgb[3], int& pen);

private:
    int contextId_;
    long pen_ = 1;
    MatDbKey material_;
};

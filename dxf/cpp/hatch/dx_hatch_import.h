// HATCH.
#pragma once

#include "../import/dx_entity_walk.h"
#include "dx_hatch.h"
#include "ut_string.h"

int DxReadHatch(DX_HATCH_TYPE* rec);
/// Reads one loop, behind its group 92, up to the next group 92 or 75, which is handed back.
int DxReadHatchPath(DX_HATCH_PATH* path);

/// Draws the loops into a contour and makes the hatch in the active pattern. `approx` goes to DxDrawSpline.
int DxDrawHatch(const DX_HATCH_TYPE* rec, const Mat44 m, int approx);
int DxDrawHatchRow(const DX_HATCH_TYPE* rec, const DxEntityContext& context); ///< for the table of kinds

/// An edge as the record that the draw stages of its kind take, with the layer and pen of its hatch.
DX_VERTEX_TYPE DxHatchVertex(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge);
DX_LINE_TYPE DxHatchLine(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge);
DX_ARC_TYPE DxHatchArc(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge);
/// Its angles are turned into parameters. Its plane is that of the object coordinates.
DX_ELLIPSE_TYPE DxHatchEllipse(const DX_HATCH_TYPE& hatch, const DX_HATCH_EDGE& edge);
DX_SPLINE_TYPE DxHatchSpline(const DX_HATCH_TYPE& hatch, const DX_HATCH_PATH& path,
                             const DX_HATCH_EDGE& edge);
/// The edges of a loop with clockwise ones whose angles count counter-clockwise set right: where an edge as
/// told doesn't meet its neighbours and the mirrored one does.
std::vector<DX_HATCH_EDGE> DxMendHatchEdges(const DX_HATCH_PATH& path);

/// Whether a corner of rectangle i lies strictly inside rectangle j.
int IsIntersection(const RPT* mins, const RPT* maxes, int i, int j);

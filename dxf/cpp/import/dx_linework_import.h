// The flat entities: readers and draw stages.
//
// A reader sets its record's start values, fills it up to the next group 0, which it hands back, and raises
// the points by group 38. A draw stage asks for the layer and the pen, takes the points through the matrix
// `m` and either widens the extents (check pass) or hands elements to the host. It gives 0 when there is
// nothing to draw.
#pragma once

#include "dx_linework.h"

int DxReadLine(DX_LINE_TYPE* rec);
int DxDrawLine(const DX_LINE_TYPE* rec, const Mat44 m);
int DxReadPoint(DX_POINT_TYPE* rec);
int DxDrawPoint(const DX_POINT_TYPE* rec,
                const Mat44 m); ///< In 3D a point is no element: it does nothing there.
int DxReadArc(DX_ARC_TYPE* rec);
int DxDrawArc(const DX_ARC_TYPE* rec, const Mat44 m);
int DxReadCircle(DX_CIRCLE_TYPE* rec);
int DxDrawCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m);
int DxReadEllipse(DX_ELLIPSE_TYPE* rec);
/// `inFigure` is 1 when the ellipse is one piece of a polyline: the pen then stands at its end afterwards.
int DxDrawEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m, int inFigure);
int DxDrawOneEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m); ///< An ellipse on its own.
int DxReadSolid(DX_SOLID_TYPE* rec);
int DxDrawSolid(const DX_SOLID_TYPE* rec, const Mat44 m);

/// Arcs and circles up to this radius draw nothing.
inline constexpr double DX_SMALLEST_RADIUS = 1e-8;
/// True when a circle under the current blocks stays a circle: they scale evenly and it lies flat.
bool DxStaysRound(const double extrusion[3]);

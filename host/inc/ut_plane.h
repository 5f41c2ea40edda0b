// Points against segments, lines and arcs of the plane, for whoever recognises figures from loose points.
#pragma once

#include "rpt.h"

/// Whether a point lies on the segment, within 0.0001 of it; the ends count. `mode` 0 and 2 are the same
/// here.
bool UtRptOnDraw(const RPT& point, const RPT& from, const RPT& to, int mode = 0);
/// The same with a tolerance of the caller's, which need not be a drawing's.
bool UtRptOnDrawEpsNv(const RPT& point, const RPT& from, const RPT& to, double tolerance);
/// Whether a point lies on the counter-clockwise arc from `start` to `end` about `centre`, within 0.0001 of
/// it; the ends count. The arc has the radius of its start.
bool UtRptOnArc(const RPT& point, const RPT& start, const RPT& end, const RPT& centre);
/// Distance of a point from the endless line, positive on the left of its direction. From `from` itself,
/// never negative, where the line has no direction.
double UtNormAbstand(const RPT& point, const RPT& from, const RPT& to);
/// The foot of the perpendicular from a point on the endless line. 3011 for a line without direction.
int UtNormPunkt(const RPT& point, const RPT& from, const RPT& to, RPT* foot);
/// From one direction to another, radians: sense 1 counter-clockwise, 0 to below 2 pi; 0 the smaller angle.
double UtAngleDist(double from, double to, int sense);

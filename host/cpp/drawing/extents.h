// Boxes of what a drawing holds.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Box of an arc from `from` to `to` about `centre`; a full circle when both are the same point.
Extents arcExtents(const RPT& from, const RPT& to, const RPT& centre, bool ccw);
/// Box of a chain of elements with the splines that it refers to (null: no splines).
Extents chainExtents(const std::vector<Element>& chain, const std::vector<Spline>* splines);
/// Box of what lies in the plane; `withElements` false leaves the elements out.
Extents flatExtents(const Pattern& pattern, double millimetresPerUnit, bool withElements = true);
/// Box of all elements and objects of a pattern. `millimetresPerUnit`: on the sheet, for the size of texts.
Extents patternExtents(const Pattern& pattern, double millimetresPerUnit);
/// The same in the drawing's frame, for a pattern on a work plane too.
Extents placedExtents(const Drawing& drawing, const Pattern& pattern);

} // namespace host

// The georeference of a drawing.
#pragma once

#include "rpt.h"

bool DxHasGeoData(); ///< Whether the current document has GEODATA records.
/// Places the drawing on the host's georeference by the first GEODATA record: a drawing without one gets it,
/// else what this import made moves onto the one that there is. 0 or an error number.
int DxApplyGeoreference(const Mat44 m);
/// The same for a point of the drawing with its coordinates in metres and the angle of north in radians.
int DxCiSetGeoRef(const RPT& design, double x, double y, double angle, const Mat44 m);

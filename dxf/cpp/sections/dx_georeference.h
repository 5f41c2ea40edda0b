// The georeference of a drawing.
#pragma once

#include "rpt.h"

bool DxHasGeoData(); ///< Whether the current document has GEODATA records; none are kept yet.
/// Places the drawing on the host's georeference by the first GEODATA record. 0 or an error number.
int DxApplyGeoreference(const Mat44 m);

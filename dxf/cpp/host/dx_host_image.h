// Pictures in the host's patterns.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <vector>

/// Puts a picture file into a pattern: upper left corner ahead of the shift, upper edge, left edge downward;
/// `clip` is what shows, in parts of width and height, all when it is empty. In 3D the pattern gets a work
/// plane through the picture. 0 or the host's error.
int DxovAddBitmap(int patNo, const UtCString& path, const RPT3& corner, const RPT3& along, const RPT3& down,
                  const std::vector<RPT>& clip);

// Pictures on their way out: IMAGE entities, their definitions among the objects, and picture files beside
// the target.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <vector>

/// Writes the pictures of a pattern. Targets that have no images lose them, which is told at the end.
int DxCiWritePatBitmap(int pat, int* blockOpen);

/// IMAGE, IMAGEDEF, IMAGEDEF_REACTOR and the entry of the dictionary. (ux, uy, uz) and (vx, vy, vz) are one
/// pixel to the right and upward; `file` and `name` are what the definition and its entry are called; `clip`
/// is a closed boundary in pixels, empty for the whole picture. Always 0.
int DxWriteImage(double x, double y, double z, double ux, double uy, double uz, double vx, double vy,
                 double vz, int width, int height, const UtCString& file, const UtCString& name,
                 const std::vector<RPT>& clip = {});

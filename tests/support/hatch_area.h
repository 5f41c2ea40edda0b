// Areas of the reference host's hatches.
#pragma once

#include "drawing/drawing.h"

#include <vector>

/// Area between the contours of a hatch, even-odd; contours don't cross.
double areaOf(const host::Hatch& hatch);
/// The hatches of the open drawing.
std::vector<host::Hatch> hatchesNow();

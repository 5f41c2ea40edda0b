// Units of contexts: what the Ci classes need to turn coordinates of a context into those of the drawing.
#pragma once

#include "rpt.h"

namespace host {

/// Units of the drawing in one unit of the context; 1 for a context without a unit of its own.
double contextFactor(int contextId);
RPT3 scaled(const RPT3& p, double factor);

} // namespace host

// The element chains of a pattern: which entity each element becomes.
#pragma once

#include "dx_pattern_walk.h"

// The classification of architecture elements: a spreadsheet of rules gives each element of a wall, door or
// window its layer.
#pragma once

#include "ut_string.h"

/// The classified layer name of element `row` of a pattern; empty when no rule says anything. The rules are
/// read at the first call; a negative `pat` frees them.
int DxCiGetByLayerName(int pat, int row, int kind, UtCString* out);

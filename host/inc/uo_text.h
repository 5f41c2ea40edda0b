// Texts of a pattern by number, and patterns by attribute.
#pragma once

#include "ut_string.h"

#include <vector>

/// The first pattern of the drawing whose attribute `name` has this value. 1005 when there is none.
int UoFiltPatPerAttr(const UtCString& name, const UtCString& value, int* patNo);
/// Row of the pattern's first text. 1005 when it has none.
int UoFirstText(int patNo, int* row);
/// The lines of a text.
int UoTextGetMultiLines(int patNo, int row, std::vector<UtCString>* lines);
/// Simple parameters for texts to come: height in millimetres on the sheet, line distance relative to the
/// height.
int UoTextSetParamsSimple(double height, double lineDistance);

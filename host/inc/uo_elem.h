// The elements of a pattern as records, one by one, for an export.
#pragma once

#include "li.h"
#include "ov_arrow.h"

/// Walks the elements of pattern `elem->patNo`. 0x8026 gives the first record, 0x8018 the one behind `*elem`;
/// 1005 at the end. A spline is given as lines and arcs along its curve, off it by the drawing tolerance at
/// most; they all have the row of the spline.
int UoElemS(int op, UO_ELEM* elem);
/// 27: number of elements of a pattern.
int UoElemS(int op, int patNo, int* count);

/// One element of pattern `elem->patNo`: 38 (or 0x8026) reads the first, 24 (or 0x8018) the one behind
/// `*elem`, as UoElemS does; 29 appends a line, move or arc that runs from the pattern's last point to
/// `elem->end`, with the record's pen, line type and info byte. 3011 for any other code or type.
int ovelem(int* code, UO_ELEM* elem);

// Contours of a host hatch on their way out: which lies in which, whether they can be filled, and fills for
// targets that have no HATCH.
#pragma once

#include "dx_hatch.h"

#include <vector>

/// The contours of the current hatch, nested: outer ones, each with the contours directly inside it; an
/// island in a hole is an outer one again. `withExcluded` 0 leaves out those marked "EXCLUDE".
int DxFillHatchCont(std::vector<DX_HATCH_CONT>* conts, int withExcluded);
/// Prepares a contour for triangulation: one direction, holes the other, arcs cut into chords. 0 if it can be
/// used; a bad hole is dropped.
int DxFillHatchCheck(DX_HATCH_CONT* cont);
/// Writes the current hatch as fills, by HATCH or, for older targets, SOLID and donuts.
int DxFillHatchWrite(std::vector<DX_HATCH_CONT>& conts, int pen, const Mat32 mat);

/// 1 if a contour of lines has too few elements or crosses itself. O(n log n) for contours that don't wind.
int DxElemSIllDrawCont(const UO_ELEM* elems, int count);
/// Whether two contours of lines cross.
int DxElemSIsectContCont(const UO_ELEM* a, int aCount, const UO_ELEM* b, int bCount);
int DxElemSIsCircle(const UO_ELEM* elems, int count);
int DxElemSIsTriangle(const UO_ELEM* elems, int count);
int DxElemSIsQuadrangle(const UO_ELEM* elems, int count);

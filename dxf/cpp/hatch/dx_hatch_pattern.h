// Patterns: rows of lines as a file has them, folded into the host's line directions, and back.
#pragma once

#include "dx_hatch.h"
#include "ut_string.h"

/// The look of the hatches to come: lines or fill of an entity, placed by the matrix of its object
/// coordinates.
int DxSetHatchLook(const DX_HATCH_TYPE& rec, int pen, int transparency, const Mat44 object);
/// The same for rows of lines in world coordinates. Rows that don't fold into two directions become a
/// standard hatch, with message 5752.
int DxSetHatchParams(int pen, const DX_HATCH_DEF* defs, int defCount, int solid, const UtCString& name,
                     int transparency);
/// Hatches to come run from one pen to the other. The name gives the form and turns the angle (radians).
int DxSetGradHatchParams(int pen1, int pen2, double angle, double shift, const UtCString& name,
                         int transparency);
/// How much the host's gradient of that name is turned against the file's, radians.
double DxGradientTurn(const UtCString& name);

/// Host line type for a dash list; 1 for none, 5 for one that fits no row of the host's.
int DxGetHatchLt(const double* dashes, int count);
/// Dashes of a host line type; none for those that aren't 2 to 9. The caller frees `*dashes` with
/// UtFreeMemory.
int DxGetHatchDashes(int lineType, double** dashes, int* count);

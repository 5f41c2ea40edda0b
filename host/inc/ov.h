// The drawing calls of the host that work on the active pattern or by pattern number.
// Every function gives 0 on success and an error number otherwise. Coordinates are in the drawing's unit,
// in the frame of the drawing; codes and small values go by pointer, as the host's macro language does.
#pragma once

#include "ov_3d.h"
#include "ov_text.h"
#include "rpt.h"
#include "ut_string.h"

// ---- patterns --------------------------------------------------------------------------------------

/// Pattern control.
///   5   active pattern's number to *patNo; fails when there is none
///   11  a new scratch pattern, made active, number to *patNo (not part of the drawing's content)
///   17  deletes pattern *patNo
///   23  makes pattern *patNo active
///   145 steps *patNo to the next pattern of the drawing (start with -1); 1005 at the end
///   211 a new pattern, made active, number to *patNo
///   -1  screen output off; -2 on again
/// 1005 for a pattern that doesn't exist.
int ovpat(int* code, int* patNo);

/// Reads (5: of the active pattern, 20: of *patNo) or writes (21) the identifying strings of a pattern.
int ovpatinfo(int* code, int* patNo, UtCString* level, UtCString* cls, UtCString* group, UtCString* name);

/// Group number of a pattern: 20 reads it, 6 sets it.
int ovgroup(int* code, int* patNo, int* group);

/// 20: the 2D placement of a pattern, row-vector form: {xx, xy, yx, yy, tx, ty}.
int ovpatmatrix(int* code, int* patNo, double matrix[6]);

/// 256: bounding rectangle {minx, miny, maxx, maxy} of all that the pattern holds; 1005 when it is empty.
int ovpatrect(int* code, int* patNo, double rect[4]);

// ---- elements --------------------------------------------------------------------------------------

/// Current pen and line type of the host: 5 reads, 6 sets.
int ovpenlt(int* code, int* pen, int* lineType);

/// Adds an element to the active pattern: op 1 Draw, 2 Move to (x, y).
int ovdraw(int op, double x, double y, unsigned char info);
/// Adds an arc from the current point to (x, y) about (cx, cy): op 3 clockwise, 4 counter-clockwise, 22 a
/// full circle through (x, y).
int ovarc(int op, double x, double y, double cx, double cy, unsigned char info);

/// Adds an interpolating spline of `*degree` (3) through `*count` points to the active pattern. flags: 1 at
/// [0] or [1] says that the tangent angle (radians) at the start or end counts. Fails, with nothing
/// added, for fewer than 3 points, coinciding neighbours or values that aren't finite.
int ovspline(int* count, double x[], double y[], int* degree, int* one, int flags[2], double* startAngle,
             double* endAngle);

/// 8: copies elements, splines, hatches, texts, arrows and dimensions of pattern *fromPat behind those of
/// *toPat.
int ovcopy(int* code, int* fromPat, int* toPat);

// ---- hatches ---------------------------------------------------------------------------------------

/// Makes a hatch in pattern `*toPat` from the closed contours in pattern `*contourPat`, with the current
/// hatch parameters. Even-odd: a contour inside another is a hole. A Move begins a contour, and so does a
/// Draw with info bit 2, the jump from one contour to the next. A contour that doesn't end where it began is
/// closed by a Draw. 3011 when nothing is enclosed.
int ovhatch(int* code, int* toPat, int* contourPat);
/// Hatch parameters, mode 1: start a set; mode 2: fill without pattern lines. They hold for every ovhatch up
/// to the next set, whatever the pattern.
int ovhatchparams(int* mode, int* patNo);
/// A number of the current hatch parameters as 16 * high + low: index 0 the fill pen, 1 the transparency in
/// percent.
int ovhatchsetreppar(int index, int high, int low);

// ---- sheet, unit, scale ----------------------------------------------------------------------------

/// The drawing's form. Mode 5 reads format (0 A00 … 6 A5), scale and unit; 7 sets format, if it is one, and
/// scale (2030 for one outside 1e-8 … 1e8, 3012 when the sheet would be smaller than the tolerance); 8 sets
/// the unit. `factor3d`, which may be null, receives what a length of the drawing is multiplied with, beside
/// the scale, to become one of the 3D calls (5).
int ovform(int mode, int* format, double* scale, int* unit, double* factor3d = nullptr);

/// Converts lengths. unitCode 100, mode 3: `value` in the drawing's unit to millimetres on the sheet
/// (value × unit in mm × scale).
int ovconv(int unitCode, int mode, double value, double* result);

// ---- screen and messages ---------------------------------------------------------------------------

void ovdisplay(const UtCString& text, int where); ///< Status line.
void ovwritealpha(const UtCString& text);         ///< Message area, with a beep.
int ovredraw(int* code);                          ///< 7: draws the screen anew.

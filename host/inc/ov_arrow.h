// Arrows: lines with heads, such as leaders and the lines of dimensions.
//
// An arrow is made point by point (ovarrow, ovaddarrow) and then stands by itself in its pattern, or becomes
// the lines of a dimension (see ovdim). Whoever wants its lines asks for them as a pattern (ovarrowpat).
// Every function gives 0 on success and an error number otherwise. Points are in the drawing's unit and
// frame, sizes of heads millimetres on the sheet.
#pragma once

#include "rpt.h"

#include <vector>

/// Kinds of heads.
enum OV_ARROW_KIND : int {
    OV_ARROW_NONE = 0,
    OV_ARROW_FILLED = 1, ///< triangle, its point at the line's end
    OV_ARROW_DOT = 2,    ///< circle about the line's end; its length is the radius
    OV_ARROW_TICK = 3,   ///< oblique stroke through the line's end
    OV_ARROW_STROKE = 4, ///< the same, of another name
};

/// What an arrow is for.
enum OV_ARROW_USE : int { OV_ARROW_OF_DIMENSION = 2, OV_ARROW_BY_ITSELF = 5 };

/// Settings for arrows and points to come. Code 6 sets: use, kind of heads, pen, line type, length and width
/// of heads. 5 reads.
int ovarrowparams(int* code, int* use, int* kind, int* pen, int* lineType, double* length, double* width);

/// 11: a new arrow in the active pattern, which takes the points to come. Answers: pattern, row, and 0.
int ovarrow(int* code, int* patNo, int* row, int* unused);

/// Adds a point to the arrow that was made last, with the current pen and line type: op 2 moves, 1 draws, 3
/// and 4 draw an arc (clockwise, counter-clockwise) about (cx, cy), a whole circle when it ends where it
/// began. `kind` is the head at this point, of which those at the two ends of the arrow show. `first` 1 marks
/// the point at which an ordinate dimension's leader begins. 3011 for an op that isn't one or a point that
/// isn't finite.
int ovaddarrow(int* op, int* first, int* kind, double* x, double* y, double* cx, double* cy);

/// The heads of the lines of the dimension in `row` (code 0x8014): for each piece of its dimension line the
/// kinds at its start and at its end, 0 for none.
int ovarrowel(int code, int patNo, int row, std::vector<int>* starts, std::vector<int>* ends);

/// Lines as a scratch pattern.
///   0x8526  the first arrow of pattern `patNo` to `*row`, with its lines and heads in `*arrowPat`
///   0x8518  the one behind `*row`; 1005 at the end. The pattern of a walk lasts until the next step.
///   0x8014  the lines and arrow heads of the dimension in `*row`
///   32      releases the scratch pattern `*arrowPat`
int ovarrowpat(int op, int patNo, int* row, int* arrowPat);

/// 6: the lines of the arrow that was made last in the active pattern become what the dimension in `row` of
/// that pattern shows, in the place of the lines that its points give. Its points, texts and fills of heads
/// stay. 1005 where there is no such dimension or arrow.
int ovdimlines(int code, int patNo, int row);

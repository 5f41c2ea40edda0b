// Dimensions: objects of a pattern that draw themselves from their points, texts and parameters.
//
// Every function gives 0 on success and an error number otherwise. Points are in the drawing's unit and
// frame; sizes of arrows, texts and overshoots are millimetres on the sheet.
//
// A dimension of points has a kind, and points that each say what they are:
//
//      e1b ─┐              ┌─ e2b        1  ends of the extension lines
//           t1──m1 3.5 m2──t2            3  tips, where an arrow touches
//      e1a ─┘              └─ e2a        2  free ends of pieces of the dimension line
//
//   linear    e1a e1b e2a e2b (1), then t1 t2 (3), or t1 (3) m1 m2 (2) t2 (3) round a text gap, or
//             o1 (2) t1 t2 (3) o2 (2) with arrows outside
//   angular   pieces of the first leg (1), arc start (3), gap (2, 2), arc end (3), pieces of the second leg
//   (1) radial    tips (3), and ends of pieces (2, or 1 on the far side) ordinate  leader's start (3) and end
//   (2)
//
// Reference points: what is measured. Linear: the two origins. Angular: arc start, arc end, centre. Radial:
// tip, tip, centre. Ordinate: origin, feature.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <cstdint>
#include <string>
#include <vector>

/// A point and what it is. In lists for arrows `kind` is the drawing code: 2 move, 1 draw, 4 arc.
struct OV_DIM_PT {
    double x = 0;
    double y = 0;
    std::int32_t kind = 0;
};

/// Kinds of dimensions. Horizontal, vertical and aligned ones are 1, 2, 3 behind a ten: 2x in a chain, 3x
/// alone, 5x ordinates. The high word of a kind is the place in a chain.
enum OV_DIM_KIND : int {
    OV_DIM_ANGLE = 4,
    OV_DIM_RADIUS = 5,
    OV_DIM_DIAMETER = 6,
    OV_DIM_ARC = 9,
    OV_DIM_CHAINED = 20,
    OV_DIM_LINEAR = 30,
    OV_DIM_ORDINATE = 50,
};
enum OV_DIM_PLACE : int {
    OV_DIM_FIRST = 1,
    OV_DIM_MIDDLE = 2,
    OV_DIM_ALONE = 5,
    OV_DIM_LAST = 6,
};
/// Modes of dimensions that are made of drawn lines.
enum OV_DIM_MODE : int { OV_DIM_MODE_ORDINATE = 5, OV_DIM_MODE_FREE = 8 };

/// The row of a text that isn't there.
inline constexpr int OV_DIM_NO_TEXT = 65535;

/// Lines and arrows.
struct OV_DIM_ARROW_PARM {
    int pen = 1, lineType = 1;       ///< of the dimension line and its arrows
    int extPen = 1, extLineType = 1; ///< of the extension lines
    int spare = 0;
    int kind[3] = {1, 1, 1}; ///< of the arrows at both ends and in the middle, see OV_ARROW_KIND
    double extOffset = 0;    ///< from what is measured to the extension line
    double extOvershoot = 1.25;
    double lineOvershoot = 0;
    double length[3] = {2.5, 2.5, 2.5};
    double width[3] = {0.75, 0.75, 0.75};
    double lineOvershoot2 = 0;
};

/// The text. Settings of three are for the linear, the radial and the angular family.
struct OV_DIM_TXT_PARM {
    int modeA = 0, modeB = 1; ///< exclude each other
    double height = 2.5;
    double width = 1.5;
    double spacing = 1.5;
    double oblique = 0; ///< radians
    int pen = 1;
    int place[3] = {2, 2, 2};
    int decimals = 2, angleDecimals = 0;
    int fixed = 0; ///< the text is what was given, not what is measured
    int leadingZero = 1;
    int decimalsShown = 1;
    int horizontal[3] = {0, 0, 0};
    int comma = 0;
    int modeC[3] = {0, 0, 0};
    int fontKind = 1;  ///< font number, 0: a face
    int words[8] = {}; ///< of a face: its marks, see OV_TEXT_BIT
    std::string face;
    double widthFactor = 1.0;
};

/// The tolerance text.
struct OV_DIM_TOL_PARM {
    int kind = 0; ///< 0 none, 1 one text, 2 two texts
    int pen = 1;
    double height = 1.5;
    double width = 0.9;
    double oblique = 0;
    double spacing = 1.5;
    double widthFactor = 1.0;
    int fontKind = 1;
    int words[8] = {};
    std::string face;
};

/// The parameter sets of dimensions to come: 5 reads, 6 sets. 3011 for sizes that aren't finite.
int ovglobdimparams(int code, OV_DIM_ARROW_PARM* arrow, OV_DIM_TXT_PARM* txt, OV_DIM_TOL_PARM* tol);
/// 20: the sets of one dimension.
int ovlocdimparams(int code, int patNo, int row, OV_DIM_ARROW_PARM* arrow, OV_DIM_TXT_PARM* txt,
                   OV_DIM_TOL_PARM* tol);

/// Kind, mode and horizontal text: 6 sets kind and mode of the next ovdim, 5 reads those of the dimension
/// that ovdodim or ovdim has read last.
int ovdimparams(int code, int* kind, int* mode, int* horizontal);

/// A dimension of points in the active pattern (6: `*row` receives its place), or the reading of the one in
/// `*row` of pattern `patNo` (0x8014). The text is the value, and behind a byte 1 each the upper and the
/// lower tolerance; its middle stands at `*textPos`. 2332, with nothing made, for points that aren't finite
/// or none that the kind could be drawn from; 2000 for a kind that isn't one.
int ovdodim(int code, int patNo, int* row, int* kind, std::vector<OV_DIM_PT>* points, RPT* textPos,
            RPT refs[3], UtCString* text);

/// 6: makes the arrow that was made last in the active pattern a dimension of drawn lines, with the texts in
/// rows `*textRow` and `*tolRow` (OV_DIM_NO_TEXT for none) and the mode of ovdimparams; `*row` receives its
/// place. 38 and 0x8026 give the first dimension of pattern `patNo`, 24 and 0x8018 the one behind `*row`,
/// with the rows of its texts; 1005 at the end.
int ovdim(int code, int patNo, int* row, int* textRow, int* tolRow, RPT refs[3]);

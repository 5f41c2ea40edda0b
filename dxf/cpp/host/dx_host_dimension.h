// Dimensions and arrows on the road to the host and back. Points and lengths are the module's (see
// dx_frame.h); sizes in the parameter sets are millimetres on the sheet.
#pragma once

#include "ov_dim.h"
#include "rpt.h"
#include "ut_string.h"

#include <vector>

/// The three parameter sets of dimensions.
struct DX_DIM_SETS {
    OV_DIM_ARROW_PARM arrow;
    OV_DIM_TXT_PARM txt;
    OV_DIM_TOL_PARM tol;
};

/// A dimension of the host.
struct DX_HOST_DIM {
    int kind = 0; ///< OV_DIM_KIND with the place in a chain in its high word
    std::vector<OV_DIM_PT> points;
    RPT textPos{0, 0};
    RPT refs[3] = {};
    UtCString text; ///< value, and behind a byte 1 each the tolerances
};

int DxovGetDimSets(DX_DIM_SETS* sets);       ///< The sets of dimensions to come. 0 or the host's error.
int DxovSetDimSets(const DX_DIM_SETS& sets); ///< Makes them what they are to be.

/// Makes a dimension of points in the active pattern; `row` receives its place. 1 for one that measures no
/// length, else 0 or the host's error.
int Dxovdodim(DX_HOST_DIM dim, int* row);

/// A point of an arrow with the look of what it ends.
struct DX_ARROW_PT {
    int op; ///< 2 move, 1 draw, 4 arc about the centre
    RPT point, centre;
    int pen, lineType;
    int isLeaderStart = 0; ///< 1: the point that an ordinate's leader begins at
};
/// Makes an arrow in the active pattern, for a dimension or to stand by itself. 0 or the host's error.
int Dxovdimlines(const std::vector<DX_ARROW_PT>& points, bool ofDimension);
/// A dimension of the active pattern shows the arrow that was made last in the place of its own lines.
int DxovShowDimLines(int pat, int row);
/// Makes a dimension of the arrow that was made last, with the texts in these rows (OV_DIM_NO_TEXT: none).
/// The three reference points are the module's.
int Dxovdim(int kind, int mode, int textRow, int tolRow, const RPT refs[3]);

// ---- reading, for an export: points in the drawing's unit, as the host has them -------------------------

/// Steps through the dimensions of a pattern: `row` -1 ahead of the first. 1005 at the end.
int DxovNextDim(int pat, int* row, int* textRow, int* tolRow);
int DxovReadDim(int pat, int row, DX_HOST_DIM* dim);
int DxovReadDimSets(int pat, int row, DX_DIM_SETS* sets);
/// Mode (OV_DIM_MODE) and horizontal text of the dimension that was read last.
int DxovReadDimMode(int* mode, int* horizontal);
/// The kinds of heads at the starts and at the ends of the pieces of its dimension line, 0 for none.
int DxovReadDimHeads(int pat, int row, std::vector<int>* starts, std::vector<int>* ends);
/// The dimension's lines as a scratch pattern, and its end.
int DxovDimLines(int pat, int row, int* linePat);
int DxovReleaseLines(int linePat);

// A dimension of the host on its way out, and the style that it gets in the file.
#pragma once

#include "../host/dx_host_dimension.h"
#include "dx_dim_format.h"
#include "dx_tables.h"

/// One dimension as an export reads it. Points are the host's, in the drawing's unit.
struct DX_DIM_OUT {
    int pat = 0, row = -1;
    int textRow = OV_DIM_NO_TEXT, tolRow = OV_DIM_NO_TEXT; ///< of its texts in the pattern
    DX_HOST_DIM dim;
    DX_DIM_SETS sets;
    DX_DIM_TEXT_PARTS parts;
    int family = 0; ///< see DxDimFamily
    bool isFree = false;
    int horizontal = 0; ///< its text stays horizontal
};

/// Steps to the next dimension of `out.pat` (row -1: the first) and reads it. 0, 1005 at the end.
int DxDimNextOut(DX_DIM_OUT& out);

/// The style of the dimension: fills `style` and adds it to the document's, or gives it the name of an equal
/// one. 0 or an error number.
int DxDimparCadToDxf(const DX_DIM_OUT& out, DX_DIM_STYLE* style);
/// Looks for a style that is equal in all but name and handle. 0 and its name in `style`, or 1.
int DxDimparFindDimStyle(DX_DIM_STYLE* style);
int DxDimparAddDimStyle(const DX_DIM_STYLE& style); ///< 0, or 2360 when the table has no room.

/// The kind of arrow heads, -1 for a dimension without any.
int DxDimparGetArrowType(int pat, int row, int* type);
/// 1 for a dimension that is made of the lines of a block; of the dimension that was read last.
int DxDimparFreeStyle(int* isFree);
/// The horizontal flag of radial and angular texts as the dimension has it.
void DxDimparKorr(int kind, int horizontal, OV_DIM_TXT_PARM& txt);
/// Direction of a text, degrees.
int DxDimparGetTextAngle(int pat, int textRow, double* degrees);
/// Length of the leader of a radius or diameter, 0 for all others; negative for a style that draws the line
/// within the circle too.
double DxDimparGetLineLen(const DX_DIM_OUT& out, const DX_DIM_STYLE* style);
/// 1 when the line runs from its free end to the tip away from the centre.
int DxDimparGetRadDir(const RPT refs[3], const std::vector<OV_DIM_PT>& pts);

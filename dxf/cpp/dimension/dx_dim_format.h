// The text of a host dimension in its parts: value and tolerances; prefix, number and suffix.
#pragma once

#include "dx_tables.h"
#include "ov_dim.h"
#include "ut_string.h"

#include <string>
#include <string_view>

struct DX_DIM_TEXT_PARTS {
    std::string value, upper, lower;
};
/// Divides "value", byte 1, "upper", byte 1 (or a line feed), "lower".
DX_DIM_TEXT_PARTS DxDimparSplitDimText(std::string_view text);

/// Whether the character at `index` is part of a number: a digit, a sign of length or a separator; a blank or
/// a slash between digits.
bool DxDimparIsValChar(std::string_view text, std::size_t index);
/// Fills the style's DIMPOST (null: nothing) with what stands around the number: "R<> mm". Gives the text
/// style for the font, or null.
const DX_STYLE_TYPE* DxDimparExtractFormat(int kind, std::string_view text, const OV_DIM_TXT_PARM& txt,
                                           DX_DIM_STYLE* style);

/// The kind of tolerance that means a mark of surface finish.
inline constexpr int DX_DIM_TOL_FINISH = 3;
/// The tolerance kind of a dimension of pattern `pat`: two tolerances are a mark of surface finish in the
/// patterns of the application that makes these.
int DxDimToleranceKind(int pat, int kind);
/// A mark of surface finish becomes the last character of the value and is no tolerance any more; `tolRow`
/// becomes OV_DIM_NO_TEXT for it, and where there is no tolerance.
void DxDimparCheckTol(OV_DIM_TXT_PARM& txt, int tolKind, DX_DIM_TEXT_PARTS& parts, int* tolRow);

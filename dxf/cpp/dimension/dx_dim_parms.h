// The host's parameter sets for a dimension that was read.
#pragma once

#include "dx_dim_decode.h"
#include "dx_dimension.h"
#include "dx_text.h"

#include <vector>

/// A pen with its line type.
struct DX_DIM_LOOK {
    int pen = 1, lineType = 1;
};

/// The texts of a dimension's block: the value's lines, of which the first rules, and up to two tolerances.
struct DX_DIM_TEXTS {
    std::vector<DX_TEXT_TYPE> texts;
    int upperIndex = 0, lowerIndex = 0; ///< among `texts`, 0: none
};

/// Fills the sets from what was decoded, the texts and the style (null: none), and hands them to the host.
/// 9008 for a radius with pieces on both sides of its centre; 0 or the host's error.
int DxSetDimParams(const DX_DIM_TYPE& dim, const DX_DIM_DECODED& decoded, const DX_DIM_LOOK& line,
                   const DX_DIM_LOOK& extension, const DX_DIM_TEXTS& texts, const DX_DIM_STYLE* style);
/// Gives the host the sets that it had ahead of the session's first dimension.
int DxRestoreDimParams();
/// Kind of a dimension by its flags. 0 or 9008.
int DxGetDimType(const DX_DIM_TYPE& dim, int* kind);

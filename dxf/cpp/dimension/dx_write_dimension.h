// Dimensions of a pattern on their way out.
//
// A dimension leaves in two halves: what it looks like as an anonymous block "*D%d", from the block pass, and
// from the entity pass a DIMENSION that names that block, with definition points and a style. Both passes
// walk the same patterns in the same order, so that the n-th block and the n-th DIMENSION have one number.
// A dimension that is made of drawn lines has no DIMENSION: its block "FREE_DIM_%d" is placed by an INSERT.
//
// All functions give 0 or an error number.
#pragma once

/// The blocks of the pattern's dimensions.
int DxWriteDimBlock(int pat);

/// What goes into ENTITIES beside the DIMENSION: nothing, or tolerances and frames of texts.
enum DX_DIM_MODE : int {
    DX_DIM_IN_PATTERN = 0, ///< tolerances and frames with DIM_IN_BLOCK only
    DX_DIM_BY_ITSELF = 1,  ///< always
};
/// The DIMENSION entities of the pattern.
int DxWritePatDim(int pat, int mode);

/// The pattern's dimensions as lines, arcs and texts, for EASY.
int DxWritePatSimpleDim(int pat);

// Dimensions of a pattern on their way out.
#pragma once

/// Counts the pattern's dimensions as not written: DIMENSION has no writer yet.
int DxWritePatDim(int pat, int withBlocks);
/// The blocks of the pattern's dimensions, from the block pass. Nothing yet.
int DxWriteDimBlock(int pat);
/// The pattern's dimensions as lines and texts, for EASY.
int DxWritePatSimpleDim(int pat);

// Dimensions of a pattern on their way out. DIMENSION has no writer yet: each dimension is counted once as
// not written.
#pragma once

/// The DIMENSION entities of the pattern. Nothing yet: DxWriteDimBlock counts them.
int DxWritePatDim(int pat, int withBlocks);
/// The blocks of the pattern's dimensions, from the block pass.
int DxWriteDimBlock(int pat);
/// The pattern's dimensions as lines and texts, for EASY without blocks.
int DxWritePatSimpleDim(int pat);

// Hatches of a pattern on their way out.
#pragma once

/// Counts the pattern's hatches as not written: HATCH has no writer yet.
int DxWritePatHatch(int pat, int inBlock);
/// The pattern's hatches as a block of their own (WRITE_HATCH 2). Nothing yet: DxWritePatHatch counts them.
int DxWriteHatchBlock(int pat);

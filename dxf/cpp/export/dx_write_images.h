// Bitmaps of a pattern on their way out.
#pragma once

/// Counts the pattern's bitmaps as not written: IMAGE has no writer yet.
int DxCiWritePatBitmap(int pat);

// INSERTs that leave as what they were, and the blocks that they insert, from the host's definitions.
#pragma once

/// Whether a pattern is part of what an INSERT drew that leaves as itself; `*insert` receives the pattern
/// that stands for it.
bool DxLeavesAsInsert(int pat, int* insert);
/// The blocks of all such INSERTs. From BLOCKS, ahead of the patterns. 0 or the export's error.
int DxWriteDefinitions();
/// The INSERT that the pattern stands for. 0 or the export's error.
int DxWritePlacedInsert(int pat);

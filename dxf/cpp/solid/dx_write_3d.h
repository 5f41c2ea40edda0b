// 3D data of a pattern on its way out.
#pragma once

/// Counts the pattern's 3D faces and solids as not written: they have no writer yet.
int DxWrite3dPat(int pat);

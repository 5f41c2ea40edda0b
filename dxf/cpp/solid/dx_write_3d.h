// 3D data of a pattern on its way out: faces as 3DFACE, loose edges as LINE with heights.
#pragma once

#include "ut_string.h"

/// The 3D data of a pattern. `blockOpen` and `blockLayer` are those of the pattern's block, `entityCount`
/// rises by the entities that are written. 0 or an error of the layer, of the host's form or of the block.
int DxWrite3dPat(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer);
/// What a flat export writes of it: the solids, where WRITE_SOLIDS asks for them. The rest is counted as not
/// written. As DxWrite3dPat.
int DxWriteFlatPat(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer);
int DxWrite3dPatEl(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer);
/// The solids of a pattern, as 3DSOLID, REGION or BODY, where WRITE_SOLIDS asks for them and the target has
/// solids; else they are counted as not written. As DxWrite3dPat.
int DxWriteSolidsOf(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer);
struct DX_WRITE_STYLE;
/// Style on the present layer of an edge or a solid (`kind` 0) or a face (6). False when its colour isn't to
/// be written.
bool DxSpaceStyle(int pen, int lt, int kind, DX_WRITE_STYLE& style);
/// Four corners; flags 1, 2, 4, 8 make the edge that leaves corner 1, 2, 3, 4 invisible. A pen whose colour
/// isn't to be written writes nothing. 0 or the writer's error.
int DxWrite3Dface(const double* x, const double* y, const double* z, int flags, int pen, int lt);
int DxWrite3dLine(double x1, double y1, double z1, double x2, double y2, double z2, int pen, int lt);

// The walk through the host's patterns: what each content becomes, and where it goes.
#pragma once

#include "export_state.h"
#include "rpt.h"

/// How DxWritePattern writes a pattern.
enum DxPatternMode : int {
    DX_PATTERN_AS_BLOCK = 1,   ///< from BLOCKS: a block of its own
    DX_PATTERN_DIRECTLY = 2,   ///< from ENTITIES: its content as it stands
    DX_PATTERN_DIMENSIONS = 3, ///< from ENTITIES: only its dimensions
};

/// What a chain of elements belongs to.
enum DxContentKind : int {
    DX_KIND_ELEMENT = 0,
    DX_KIND_TEXT = 1,
    DX_KIND_HATCH = 2,
    DX_KIND_DIMENSION = 3,
    DX_KIND_ARROW = 4,
    DX_KIND_BITMAP = 5,
};

void DxShowPattern(); ///< Shows the pattern in hand, now and then, and counts it.
int DxWritePattern(int pat, int mode);
/// The 2D content of a pattern: bitmaps, hatches, element chains, arrows, dimensions, texts, in this order.
int DxWritePat(int pat);
int DxWritePatEl(int pat, int kind, int ownerPat);
/// The element chains of `pat`. `ownerPat` is the pattern whose matrix rules; with `writePoly` chains become
/// polylines, without it only the elements of figures do.
int DxWritePatElPoly(int pat, int kind, int writePoly, int ownerPat);
int DxWritePatArr(int pat); ///< arrows, as the geometry that they are stored as

/// 1 when the pattern itself is hidden, not its layer alone, and hidden content is written.
int DxIsInvisible(int pat);
/// The block pass: every pattern as a block, or into DxPlainPats. 0 at the end of the patterns.
int DxWriteBlockPass();
/// The entity pass: plain patterns, INSERTs of blocks, dimensions. 0 at the end of the patterns.
int DxWriteEntityPass();
/// The matrix that writers of a pattern's content apply: the identity, or the inverse of the pattern's
/// matrix.
int DxWriteMatrix(int ownerPat, Mat32 matrix);

// INSERT: reading it, placing its block, drawing the block's entities again.
#pragma once

#include "../session/dx_documents.h"
#include "dx_insert.h"

int DxReadInsert(DX_INSERT_TYPE* rec); ///< The INSERT and the ATTRIBs behind it.
/// Draws the block under the INSERT's placement, then the attributes. `viewportsOnly` looks at the viewports
/// alone.
int DxDrawInsert(const DX_INSERT_TYPE* rec, const Mat44 m, int viewportsOnly);
int DxDrawInsertRow(const DX_INSERT_TYPE* rec, const Mat44 m); ///< The row of the table of kinds.
int DxInsertDrawAttribs(const DX_INSERT_TYPE* rec, const Mat44 m);

/// out = scale × rotation and position × extrusion × parent, with the block's base point at the position.
/// 3011 for a null block. `out` may not be `parent`.
int DxInsertBlockTrans(const DX_INSERT_TYPE* insert, const DX_BLOCK_TYPE* block, const Mat44 parent,
                       Mat44 out);
/// Replaces `m` by the matrix of an INSERT of its block, for the block of a dimension. 3011 when there is
/// none.
int DxReadInsertMatrix(const DX_INSERT_TYPE* insert, Mat44 m);
/// Rotation by `angle` degrees about z, and scale, with a reference point that goes to `origin`.
int DxRefRotMat3D(const RPT3& origin, double angle, Mat44 out);
int DxRefScaleMat3D(const RPT3& origin, double sx, double sy, double sz, Mat44 out);
int DxTranslateMat3D(double x, double y, double z, Mat44 m); ///< Overwrites the translation row.
/// 1 if the block may be inserted here, 0 with a report if it is being expanded already.
int DxCheckRecursion(const DX_NAME& block);

/// Blocks nest to this depth at most; no drawing that a person made comes near it.
inline constexpr int DX_DEEPEST_BLOCK = 200;

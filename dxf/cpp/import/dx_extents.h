// Extents of the active space: the box of all points that a measuring pass meets, or what the file says.
#pragma once

#include "dx_types.h"
#include "import_state.h"

bool DxIsExtentsUnInizialized(const RPT3& min, const RPT3& max); ///< The "not known" state.
void DxInvalidateExtents(RPT3& min, RPT3& max);                  ///< Sets the "not known" state.
int DxIsExtentsUnInizialized();                                  ///< 1: those of the active space.

/// Widens the extents by a point in world coordinates ahead of the shift. The first point sets both corners.
/// A point that isn't finite is passed over: it must not take the whole drawing with it.
void DxCheckXYZ(double x, double y, double z);
void DxCheckXY(double x, double y); ///< The same, leaving z alone.

void DxStoreMaxXYZ(double x, double y, double z); ///< Export: widens the extents.
void DxStoreMaxXY(double x, double y);            ///< Export: the same with z 0.

/// Loads extents and insertion base of the active space from the file: the header's for model and paper
/// space, a layout's for spaces from 2 on, given by `space`. 0, or 3011 for a space that no layout belongs
/// to.
int DxSetExtMinMaxIns(const DX_BLOCK_RECORD_TYPE* space);
/// The extents become the box of their image under `m`; the base goes through `m`. 0.
int DxTransformExtents(const Mat44 m);

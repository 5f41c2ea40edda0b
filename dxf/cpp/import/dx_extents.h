// Extents of the active space.
#pragma once

#include "dx_types.h"
#include "import_state.h"

bool DxIsExtentsUnInizialized(const RPT3& min, const RPT3& max); ///< The "not known" state.
void DxInvalidateExtents(RPT3& min, RPT3& max);                  ///< Sets the "not known" state.
int DxIsExtentsUnInizialized();
void DxCheckXY(double x, double y);
void DxCheckXYZ(double x, double y, double z);
void DxStoreMaxXY(double x, double y);
void DxStoreMaxXYZ(double x, double y, double z);
int DxSetExtMinMaxIns(const DX_BLOCK_RECORD_TYPE* space);
int DxTransformExtents(const Mat44 m);

// What a dimension looks like, as entities: for its block, and for targets that have no DIMENSION.
#pragma once

#include "dx_dim_out.h"

#include <string>

/// Opens the block of the names in DxPatNames where none is open.
int DxDimOpenBlock();
/// Its lines and arcs; opens the block at the first of them.
int DxDimWriteLines(const DX_DIM_OUT& out);
/// The value, with a mark of surface finish as its last character. `withFrame`: its frame too.
int DxDimWriteValue(DX_DIM_OUT& out, bool withFrame);
/// The tolerance as it stands in the drawing; nothing where there is none.
int DxDimWriteTolerance(const DX_DIM_OUT& out);
/// The tolerance as a text of its own, beside a DIMENSION.
int DxWriteDimTol(const DX_DIM_OUT& out);

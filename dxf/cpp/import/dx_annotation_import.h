// LEADER, TOLERANCE and ACAD_TABLE: readers and draw stages.
#pragma once

#include "dx_annotation.h"

int DxReadLeader(DX_LEADER_TYPE* rec);
/// An arrow of the host, its head at the first vertex.
int DxDrawLeader(const DX_LEADER_TYPE* rec, const Mat44 m);

int DxReadTolerance(DX_TOLERANCE_TYPE* rec);
/// Frames of lines and cells of texts, row by row: the host has no such object.
int DxDrawTolerance(const DX_TOLERANCE_TYPE* rec, const Mat44 m);

int DxReadTable(DX_TABLE_TYPE* rec);
/// The block that holds what the table looks like.
int DxDrawTable(const DX_TABLE_TYPE* rec, const Mat44 m);

/// The style that an entity is drawn in: as it changes it, else the one of that name. Null when there is
/// none.
const DX_DIM_STYLE* DxStyleOf(const DX_NAME& name, const std::unique_ptr<DX_DIM_STYLE>& changed);
/// With MORE_KINDS, gives an entity the colour that its style names: ByBlock there is the entity's own.
void DxTakeStyleColour(DX_ENTITY_BASE_TYPE* base, int colour);

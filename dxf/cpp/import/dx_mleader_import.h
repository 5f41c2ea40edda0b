// MULTILEADER: lines with heads that lead to a text or a block.
#pragma once

#include "dx_mleader.h"

int DxReadMLeader(DX_MLEADER_TYPE* rec);
int DxDrawMLeader(const DX_MLEADER_TYPE* rec, const Mat44 m);

/// Gives an entity the colour that a raw value stands for.
void DxTakeRawColour(DX_ENTITY_BASE_TYPE* base, int raw);

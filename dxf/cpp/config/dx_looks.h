// Pens for looks that a number of the palette can't say: true colours, line weights, and colours that are the
// layer's.
#pragma once

#include "dx_pens.h"

/// The pen of an entity whose colour of the palette is `colour`; `pen` where that says it all, or where no
/// pen is left, which is told once.
int DxPenOfLook(const DX_ENTITY_BASE_TYPE& entity, const DxEntityLayer& layer, int colour, int pen);
/// What the writer takes as the colour of a pen with a look, 0 for other pens. DxWriteColor writes it.
int DxColorOfLook(int pen);

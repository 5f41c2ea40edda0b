// What the host adds to the configuration of the next run. No session resets it: it is set ahead of one.
#pragma once

#include "dx_additions.h"

extern DxConfigAdditions DxAdditions; ///< until a run takes them

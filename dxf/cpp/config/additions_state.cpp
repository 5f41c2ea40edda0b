#include "additions_state.h"

DxConfigAdditions DxAdditions;

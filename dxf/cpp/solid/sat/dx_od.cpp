#include "dx_od.h"

void DxOdInit(int /*start*/) {}

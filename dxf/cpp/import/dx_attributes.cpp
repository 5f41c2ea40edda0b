#include "dx_attributes.h"

void DxAttribInit() {}

void DxAttribEnd() {}

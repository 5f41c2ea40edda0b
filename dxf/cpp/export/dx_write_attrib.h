// ATTDEF and ATTRIB on their way out.
#pragma once

#include "dx_insert.h"

/// `type` is "ATTDEF" or "ATTRIB". 0 or the writer's error.
int DxAttribWrite(const char* type, const DX_ATTRIB_TYPE& attrib, const Mat32 matrix,
                  std::uint32_t owner = 0);

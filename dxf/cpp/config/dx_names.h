// Names that a DXF file of the target version can hold.
#pragma once

#include "dx_fixed.h"

/// Makes a name fit for the target version, in place: ACAD14 and newer replace what a name can't hold, older
/// versions keep upper-case letters, digits, "$" and "-" only, at most 31 of them.
void DxCheckName(DX_NAME* name);

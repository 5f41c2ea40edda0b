// Names that a DXF file of the target version can hold.
#pragma once

#include "ut_string.h"

#include <cstddef>
#include <string>

/// Makes a name fit for the target version, in place. ACAD14 and newer replace what a name can't hold and cut
/// it at 160 characters; older versions keep upper-case letters, digits, "$" and "-" only, at most 31 of
/// them.
void DxCheckName(UtCString& name);
/// Characters that a name of the target version may have.
std::size_t DxNameLimit();

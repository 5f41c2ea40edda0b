// Names made fit for the target version.
#pragma once

#include "ut_string.h"

/// Replaces what a name of the target version can't hold, and cuts it: at 160 bytes from ACAD14 on, at 31
/// characters (upper case) before.
void DxCheckName(UtCString& name);
/// As DxCheckName, and different from all names of the export's block table.
void DxCheckBlockname(UtCString& name);

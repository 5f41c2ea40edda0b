// The module's entry for the host.
#pragma once

#include "ut_string.h"

/// Operations of DxfSelect.
enum DxOperation : int {
    DX_IMPORT_2D = 1,
    DX_EXPORT_2D = 2,
    DX_IMPORT_3D = 7,
    DX_EXPORT_3D = 8,
    DX_HIDDEN_LINE_PATTERNS = 11,
    DX_MASK_TRANS = 99,
    DX_MASK_LOAD = 100,
    DX_MASK_STORE = 101,
};

/// The host's entry: runs `operation` on the open drawing. `reserved` isn't looked at. `fileName` may be
/// empty: the macro variable $DxfName, or the user, then names the file.
/// Result: 0, or the error of the dialog partners' connection on the first call. The outcome of an import or
/// export is in the macro variable &DxfStat and the protocol. Not reentrant.
int DxfSelect(int reserved, int operation, const UtCString& fileName);

// Content of the drawing that has no writer yet: counted pattern by pattern, told once at the end of an
// export.
#pragma once

#include "export_state.h"

/// Adds what the pattern holds of `kind` to the counts.
int DxCountUnwritten(int pat, DxUnwritten kind);
/// Reports each kind with its count in the protocol.
void DxReportUnwritten();

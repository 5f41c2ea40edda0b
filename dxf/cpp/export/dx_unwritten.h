// What an export loses: counted as it goes, told once at its end.
#pragma once

#include "export_state.h"

/// Adds what the pattern holds of `kind` to the counts.
int DxCountUnwritten(int pat, DxUnwritten kind);
/// Reports each kind with its count in the protocol.
void DxReportUnwritten();

// The ENTITIES section on import.
#pragma once

#include "rpt.h"

/// Reads the ENTITIES section: model space, paper space or both, as DxReadSpace says; `m` is the base matrix
/// of model space. Each space is measured first unless its extents are known, then drawn. Behind the first
/// drawing pass the reader goes on to OBJECTS. Entered behind 0 / "SECTION". 0, an error of a reader, a draw
/// stage or the host, or 9009 when the user stopped; what was drawn stays in each case.
int DxReadEntitySection(const Mat44 m);

/// The end of a pass: works off what waited for later data, remembers the patterns that the pass made for the
/// host, and deletes those that stayed empty. 0 or the host's error.
int DxClearPatterns();
/// The end of a pass in 3D: joins the faces of each pattern that has elements too.
void DxSyncAll3dPat();

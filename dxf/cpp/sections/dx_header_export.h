// HEADER on its way out: the version's template with its placeholders filled in and the drawing's kept
// variables.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <vector>

class DxTemplate;

/// The section (and CLASSES, which the templates hold behind it), into the current output stream. 0 or 9000.
int DxWriteHeaderSection();
/// The extents as the file tells them: those of a drawing without content are as far from any as can be.
RPT3 DxWrittenExtMin();
RPT3 DxWrittenExtMax();
/// Writes a template pair by the kept variables when they know it. `found` becomes 1 then.
int DxHeaderChgText(DxTemplate& source, int code, const UtCString& text, const std::vector<UtCString>& lines,
                    int* found);

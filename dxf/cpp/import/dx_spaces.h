// Model space, paper spaces and their views.
#pragma once

#include "dx_objects.h"
#include "rpt.h"

/// Shows the host's view of the space that is read. Model space: the default view, 3006 when there is none. A
/// paper space: a new sheet.
int DxCiSwitchToReadSpace();
/// Fits the sheet of the paper space that is read to its layout: format, and the layout's name. Always 0.
int DxCiChangeReadSpace(const DX_LAYOUT_TYPE* layout);
/// As DxDrawCAD, for VIEWPORT entities alone.
int DxDrawVP(const char* end, const Mat44 m);

// Model space, paper spaces and their views.
#pragma once

#include "dx_tables.h"
#include "rpt.h"

/// Shows the host's view of the space that is read. Model space: the default view, 3006 when there is none.
/// Paper spaces have no views of their own yet: their content goes into the view that is shown.
int DxCiSwitchToReadSpace();
/// Draws a VIEW as the outline of its rectangle. Views aren't drawn yet. 0 or an error number.
int DxDrawView(const DX_VIEW_TYPE& view, const Mat44 m);
/// Draws the paper spaces behind the first, which stand in blocks. They aren't drawn yet. 0 or an error
/// number.
int DxFinishPaperSpaces(const Mat44 m);
/// Draws the viewports of the layouts, behind a pass over model space. They aren't drawn yet. 0 or an error
/// number.
int DxFinishModelSpace(const Mat44 m);
/// Looks at the VIEWPORT entities of a layout's block until `end`. They aren't drawn yet: they are passed
/// over. 0 or the reader's error.
int DxDrawVP(const char* end, const Mat44 m);

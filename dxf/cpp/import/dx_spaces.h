// Layouts, views and viewports. None of them reaches the drawing so far: these are the places where they
// will.
#pragma once

#include "dx_types.h"

int DxCiSwitchToReadSpace();                       ///< Shows the host view of the space that is read. 0.
int DxDrawView(DX_VIEW_TYPE* view, const Mat44 m); ///< A view of the VIEW table. 0.
int DxFinishModelSpace(const Mat44 m);             ///< The viewports of the layouts. 0.
int DxFinishPaperSpaces(const Mat44 m);            ///< The further layouts, behind model and paper space. 0.

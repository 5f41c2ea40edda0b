// Paper spaces whose entities stand in blocks: all but the first.
#pragma once

#include "rpt.h"

/// Draws them, and gives all paper spaces their layouts. 0 or an error number.
int DxFinishPaperSpaces(const Mat44 m);
/// Draws their viewports, behind a pass over model space. 0 or an error number.
int DxFinishModelSpace(const Mat44 m);

// VIEW records and VIEWPORT entities: marked rectangles in the drawing and, where all spaces are read, detail
// views of the model on the sheets.
#pragma once

#include "dx_tables.h"
#include "dx_viewport.h"
#include "rpt.h"

/// Draws a VIEW of the active space. 0 or the host's error.
int DxDrawView(const DX_VIEW_TYPE& view, const Mat44 m);
/// Reads a VIEWPORT; of files before AC1015 from its extended data. 0 or the reader's error.
int DxReadViewport(DX_VIEWPORT_TYPE* viewport);
/// Draws a VIEWPORT: on the sheet its frame, in the model what it shows. The paper's own, id 1, isn't drawn.
int DxDrawViewport(DX_VIEWPORT_TYPE* viewport, const Mat44 m);

/// A rectangle that stands for a view, as it is drawn and named.
struct DX_VIEW_MARK {
    RPT3 low, high; ///< corners, world coordinates
    bool onPlane;   ///< it stands on a plane of its own …
    RPT3 plane[3];  ///< … through these: origin, on x, on y; behind the drawing shift
    RPT3 direction; ///< that the view looks along
    int lineType;
    const char* kind; ///< "VIEW" or "VIEWPORT"
    UtCString name;
};
/// Draws the rectangle into a pattern of its own, which is the active one then. 0 or the host's error.
int DxDrawViewMark(const DX_VIEW_MARK& mark);
/// The plane of a view: of its target, twist (degrees) and direction, behind the drawing shift.
void DxViewPlane(const RPT3& target, const RPT3& direction, double twist, RPT3 plane[3]);

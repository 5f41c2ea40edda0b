// Host views of an import: a sheet a layout, a detail view a viewport or named view.
#pragma once

#include "dx_tables.h"
#include "dx_viewport.h"
#include "ut_string.h"

/// Name of the sheet of the space that is read: "Plot01", "Plot02" …
UtCString DxSheetName();
/// A name that the drawing hasn't yet, as `wanted` or with a number behind. From here on DxViewNameOf gives
/// it for `wanted`.
UtCString DxNewViewName(const UtCString& wanted);
UtCString DxViewNameOf(const UtCString& wanted); ///< Empty for a name that this import didn't give.

/// In model space: makes a detail view of what lies within pattern `patNo`. On a sheet: puts the viewport's
/// detail view there, at its scale. Exactly one of `view` and `viewport` is given; mode 3 makes views in
/// space. 0, or the error of the pattern; views that the host refuses are left out.
int DxCiCreateViewOrViewport(int patNo, int modus, const DX_VIEW_TYPE* view,
                             const DX_VIEWPORT_TYPE* viewport);

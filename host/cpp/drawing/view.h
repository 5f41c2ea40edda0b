// Views: sheets, and detail views of the model that stand on them.
#pragma once

#include "rpt.h"

#include <string>

namespace host {

namespace ViewKind {
inline constexpr int Sheet = 0, Detail3d = 1, Detail = 2;
}

/// A named view. The first view of a drawing is the default one: it shows the model, and its format and scale
/// are the drawing's. A sheet shows the patterns that were made while it was shown; its unit is the one that
/// its content was drawn in. A detail view shows what of the model lies within an outline.
struct View {
    std::string name;
    int format = 1;
    int unit = 3;
    double scale = 1.0;
    int number = 0; ///< 0: the default view; the others ascend from 1 and are not used twice
    double paperWidth = 0, paperHeight = 0; ///< millimetres of a sheet of no format, 0: the format's

    int kind = ViewKind::Sheet;
    double factor = 1.0;  ///< a detail's enlargement against the default view
    int display = 0;      ///< 0 lines, 1 hidden lines removed, 2 shaded
    int outline = 0;      ///< pattern of a detail's outline
    int workId = 0;       ///< plane that a detail is seen on, 0: the model's
    bool clipped = false; ///< nothing outside the outline shows
    std::string filter;   ///< what shows: layer="A" | layer="B"; empty: all
};

/// A detail view on a sheet.
struct ViewInsert {
    int number = 0;      ///< ascends from 1
    int sheet = 0;       ///< number of the view that it stands on
    int view = 0;        ///< number of the detail view
    RPT3 place{0, 0, 0}; ///< where the middle of the outline lies
    double ratio = 1.0;  ///< length on the sheet over length in the model
};

} // namespace host

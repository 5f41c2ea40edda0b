// Which layer and which colour attributes the content of a pattern has on its way out.
#pragma once

#include "export_state.h"

int DxPatGetInfo(int pat); ///< Reads the names of a pattern into DxPatNames, with defaults for empty ones.
/// Sets colour attributes (with &DxfColAttr), DxActLayer by the content kind's order, and the
/// classification's answer (with USE_BYLAYER) for element `row` of the pattern.
int DxPatSetLayerAttribs(int pat, int row, int kind);
int DxPatSetColAttrInfo(int pat, int kind); ///< Reads the colour attributes of the pattern.
/// What the classification says of an element.
struct DX_CLASSIFIED {
    UtCString layer;    ///< empty: the one that its kind of content has
    int colour = 0;     ///< of that layer in the template, 0: the template lacks it
    UtCString lineType; ///< the same, empty: the template lacks it
};
/// Asks the classification for element `row` of the pattern.
int DxClassify(int pat, int row, int kind, DX_CLASSIFIED& out);
/// Sets layer, colour and line type as the classification says. A negative `pat` ends the classification.
int DxPatSetByLayerAttribs(int pat, int row, int kind);

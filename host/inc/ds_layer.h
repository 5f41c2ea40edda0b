// What the host's layer manager knows of a layer beyond its being visible and locked.
#pragma once

#include "ut_string.h"

struct DS_LAYER_LOOK {
    bool frozen = false; ///< not shown and not worked on; a frozen layer isn't visible either
    bool plotted = true; ///< appears on paper
    int color = 0;       ///< number of the exchange format's palette, 1 to 255; 0: none given
    int trueColor = -1;  ///< 0xRRGGBB, -1: that of `color`
    int lineWeight = -3; ///< hundredths of a millimetre; -3: the usual one
    UtCString lineType;  ///< name, empty: continuous
};

namespace DsLayerApi {
/// The look of a layer that is known. 0 or 1005.
int SetLayerLook(const UtCString& name, const DS_LAYER_LOOK& look);
/// The same back, with what AddDXFLayer has set; any of the pointers may be null.
int GetLayerLook(const UtCString& name, DS_LAYER_LOOK* look, bool* visible, bool* locked);
} // namespace DsLayerApi

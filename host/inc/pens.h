// Pens that have more to their look than a number: a colour of any RGB, a width, and whether they take it
// from the layer that they draw on.
#pragma once

struct OV_PEN_LOOK {
    int color = 7;      ///< of the exchange format's palette, 1 to 255
    int trueColor = -1; ///< 0xRRGGBB; -1: that of `color`
    int weight = -1;    ///< as given: hundredths of a millimetre, -1 that of the layer, -3 the usual one
    int width = 25;     ///< hundredths of a millimetre: what `weight` comes to
    bool isColorOfLayer = false; ///< the colour is the layer's
    friend bool operator==(const OV_PEN_LOOK&, const OV_PEN_LOOK&) = default;
};

/// Gives a pen (1 … 1023) a look of its own. 0 or 3011.
int UoPenSetLook(int pen, const OV_PEN_LOOK& look);
/// The look of a pen. 0, or 1005 for a pen that has none of its own.
int UoPenGetLook(int pen, OV_PEN_LOOK* look);

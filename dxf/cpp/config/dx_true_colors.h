// Colours given by their RGB, for which DXF's palette has a nearest one.
#pragma once

/// DXF colour 1 … 255 that is nearest to an RGB value, red in bits 16 to 23 and blue in the lowest; the first
/// of several that are equally near.
int DxNearestColor(int rgb);

// The built-in tables between DXF colours and host pens.
#pragma once

/// DXF colours that aren't numbers of the palette: given by the layer and not written, given by the block.
inline constexpr int DX_COLOR_BY_LAYER = -9998;
inline constexpr int DX_COLOR_BY_BLOCK = -9999;
inline constexpr int DX_PEN_COUNT = 1024;
inline constexpr int DX_COLOR_COUNT = 256;

int DxBuiltInPen(int colour); ///< Pen of DXF colour 0 … 255; 15 beyond.
int DxBuiltInColor(int pen);  ///< DXF colour 1 … 255 of pen 0 … 1023; 7 beyond.

// The layers that an export gives to patterns and their elements.
#pragma once

/// Layer of an element by the classification; pattern -1 ends the classification. There is none yet.
int DxPatSetByLayerAttribs(int pattern, int row, int kind);

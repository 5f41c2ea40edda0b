// Chains of dimensions, drawn together at the end of a pass.
#pragma once

int DxDimChainDraw();  ///< Draws the chains. DIMENSION isn't read yet, so there are none. 0 or an error
                       ///< number.
void DxDimChainFree(); ///< Frees all chains.

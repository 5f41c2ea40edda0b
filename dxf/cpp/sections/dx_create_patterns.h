// Layers as patterns of the host.
#pragma once

/// Makes a pattern for each layer of the current document from index `first` on and names it as the
/// configuration says (DxLayerOrder). 0, or the error of the first pattern that couldn't be made.
int DxCreatePatterns(int first);

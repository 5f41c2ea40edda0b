#include "dx_pattern_layers.h"

int DxPatSetByLayerAttribs(int /*pattern*/, int /*row*/, int /*kind*/) {
    return 0;
}

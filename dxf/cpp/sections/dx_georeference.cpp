#include "dx_georeference.h"

bool DxHasGeoData() {
    return false;
}

int DxApplyGeoreference(const Mat44 /*m*/) {
    return 0; // no record, nothing to place
}

#include "dx_host_read_3d.h"

#include "ci_3d.h"
#include "ov.h"

bool DxRead3dPat(int pat, DX_FACE_ARRAYS* faces, int* error) {
    int mode = 20, one = 1;
    double* none[3] = {};
    if (ov3dleseflaechen(&mode, &pat, &one, &faces->polygonCount, &faces->ends, &faces->x, &faces->y,
                         &faces->z, &none[0], &none[1], &none[2], &faces->edgeKind, &faces->edgePen,
                         &faces->edgeLt, &faces->hidden, &faces->facePen) != 0)
        return false;
    int format = 0, unit = 0;
    double scale = 1, factor = 1;
    *error = ovform(5, &format, &scale, &unit, &factor);
    const double length = scale * factor;
    const int entries = faces->polygonCount ? faces->ends[faces->polygonCount - 1] : 0;
    for (int i = 0; i < entries; ++i) {
        faces->x[i] /= length;
        faces->y[i] /= length;
        faces->z[i] /= length;
    }
    return true;
}

DxCloudReader::DxCloudReader(int pat) {
    if (DsCursorFromPatNo(pat, &pattern_) || Ci3d::CountClouds(pattern_, &clouds_)) clouds_ = 0;
}

bool DxCloudReader::next(RPT3* point, int* pen) {
    constexpr int noContext = 0; // the drawing's own unit
    for (; cloud_ < clouds_; ++cloud_, index_ = 0)
        if (Ci3d(noContext).GetCloudPoint(pattern_, cloud_, index_++, point, pen) == 0) return true;
    return false;
}

// Curves in space and the 3D faces of patterns.
#include "ci_objects.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "ov.h"
#include "uo.h"

#include <vector>

int Dxov3dgenepsi(double tolerance, double* replaced) {
    int read = 5, set = 6;
    if (replaced)
        if (const int error = ov3dgenepsi(&read, replaced)) return error;
    return ov3dgenepsi(&set, &tolerance);
}

int Dxov3dJoinFaces(int patNo) {
    int joinFaces = 205;
    return ov3dgenflaeche(&joinFaces, &patNo);
}

int DxCiDraw3DCurveByPoints(const std::vector<RPT3>& points) {
    if (points.size() < 2) return 0;
    std::vector<RPT3> shifted;
    shifted.reserve(points.size());
    for (const RPT3& point : points) shifted.push_back(DxPointToContext(point));
    DsCsr cursor;
    if (const int error = CiPat(DxCiContextId).Add(cursor)) return error;
    if (const int error = UoCopyAllAttrs(DxActPat, DsCursorToPatNo(&cursor))) return error;
    int curve = 0, part = 0;
    return Ci3d(DxCiContextId)
        .DrawCurveByPoints(&cursor, shifted.data(), static_cast<int>(shifted.size()), &curve, &part);
}

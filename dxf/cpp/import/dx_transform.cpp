#include "dx_transform.h"

#include "mt.h"

namespace {

/// Below this an x or y of the extrusion counts as near the z axis; the limit is part of the format.
constexpr double nearZ = 1.0 / 64.0;

void normalise(double (&v)[4]) {
    const double length = std::hypot(v[0], v[1], v[2]);
    if (!(length > 0)) return;
    for (int i = 0; i < 3; ++i) v[i] /= length;
}

} // namespace

int DxArbaxis(double nx, double ny, double nz, Mat44 out) {
    Mat44 m = {};
    m[3][3] = 1;
    if (std::fabs(nx) < 1e-40 && std::fabs(ny) < 1e-40 && std::fabs(nz) < 1e-40) {
        Mt44Ident(out);
        return 0;
    }
    // A short extrusion along y has no product with the y axis: it takes the other branch too.
    const bool awayFromZ = std::fabs(nx) >= nearZ || std::fabs(ny) >= nearZ || (nx == 0 && nz == 0);
    auto& [ax, ay, n, origin] = m;
    n[0] = nx;
    n[1] = ny;
    n[2] = nz;
    ax[0] = awayFromZ ? -ny : nz;
    ax[1] = awayFromZ ? nx : 0;
    ax[2] = awayFromZ ? 0 : -nx;
    normalise(ax);
    ay[0] = ny * ax[2] - nz * ax[1];
    ay[1] = nz * ax[0] - nx * ax[2];
    ay[2] = nx * ax[1] - ny * ax[0];
    normalise(ay);
    Mt44Copy(m, out);
    return 0;
}

const double (*DxObjectMatrix(const double extrusion[3], const Mat44 m, Mat44 storage))[4] {
    if (extrusion[0] == 0 && extrusion[1] == 0 && extrusion[2] == 1) return m;
    Mat44 arb;
    DxArbaxis(extrusion[0], extrusion[1], extrusion[2], arb);
    Mt44Concat(arb, m, storage);
    return storage;
}

bool DxMirrors(const Mat44 m) {
    return m[0][0] * m[1][1] - m[1][0] * m[0][1] < 0;
}

void DxTrans3D(double x, double y, double z, const Mat44 m, double* ox, double* oy, double* oz) {
    *ox = x * m[0][0] + y * m[1][0] + z * m[2][0] + m[3][0];
    *oy = x * m[0][1] + y * m[1][1] + z * m[2][1] + m[3][1];
    *oz = x * m[0][2] + y * m[1][2] + z * m[2][2] + m[3][2];
}

void DxTrans3DRpt(RPT3* p, const Mat44 m) {
    DxTrans3D(p->x, p->y, p->z, m, &p->x, &p->y, &p->z);
}

void DxTrans(double x, double y, const Mat44 m, double* ox, double* oy) {
    *ox = x * m[0][0] + y * m[1][0] + m[2][0];
    *oy = x * m[0][1] + y * m[1][1] + m[2][1];
}

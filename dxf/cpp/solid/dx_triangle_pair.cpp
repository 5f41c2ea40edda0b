// The triangles stand in the arrays as points 0 1 2 0 and 4 5 6 4.
#include "dx_triangle_pair.h"

#include "ve.h"

#include <cmath>

namespace {

RPT3 pointAt(const DX_FACE_ARRAYS& faces, int i) {
    return {faces.x[i], faces.y[i], faces.z[i]};
}

bool match(const RPT3& a, const RPT3& b) {
    constexpr double tolerance = 0.001;
    return std::fabs(a.x - b.x) < tolerance && std::fabs(a.y - b.y) < tolerance &&
           std::fabs(a.z - b.z) < tolerance;
}

int sum(const int* values) {
    return values[0] + values[1] + values[2] + values[3];
}

/// The two points of triangle A that are points of B as well, and the point of B that is none of A's. False
/// unless there are exactly two such pairs, of different points.
bool findShared(const RPT3 (&a)[3], const RPT3 (&b)[3], int (&shared)[2], int& free) {
    int count = 0, ofB[2] = {};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            if (!match(a[i], b[j])) continue;
            if (count == 2) return false;
            shared[count] = i;
            ofB[count++] = j;
        }
    }
    free = 3 - ofB[0] - ofB[1];
    return count == 2 && shared[0] != shared[1] && ofB[0] != ofB[1];
}

bool isInPlane(const RPT3 (&a)[3], const RPT3& point) {
    constexpr double tolerance = 1e-6;
    VE_PLANE plane;
    double distance = 0;
    RPT3 foot;
    return Ve3dEbAus3p(1, a[0], a[1], a[2], &plane) == 0 &&
           Ve3dDistPtPlane(point, plane, &distance, &foot) == 0 && distance <= tolerance;
}

} // namespace

bool DxIsTrianglePair(const DX_FACE_ARRAYS& faces, RPT3 (&corners)[4]) {
    if (faces.polygonCount != 2 || faces.ends[0] != 4 || faces.ends[1] != 8) return false;
    if (sum(faces.hidden) != 2 || sum(faces.hidden + 4) != 2) return false;
    const RPT3 a[3] = {pointAt(faces, 0), pointAt(faces, 1), pointAt(faces, 2)};
    const RPT3 b[3] = {pointAt(faces, 4), pointAt(faces, 5), pointAt(faces, 6)};
    int shared[2] = {}, free = 0;
    if (!findShared(a, b, shared, free) || !isInPlane(a, b[free])) return false;
    const int behind = shared[0] == 0 && shared[1] == 2 ? 2 : shared[0];
    for (int i = 0, n = 0; i < 3; ++i) {
        corners[n++] = a[i];
        if (i == behind) corners[n++] = b[free];
    }
    return true;
}

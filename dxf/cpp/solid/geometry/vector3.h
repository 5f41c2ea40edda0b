// Points and directions in space.
#pragma once

#include <cmath>

namespace geometry {

struct Vec3 {
    double x = 0, y = 0, z = 0;

    friend Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3 operator*(double f, Vec3 a) { return {f * a.x, f * a.y, f * a.z}; }
};

inline double dot(Vec3 a, Vec3 b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 cross(Vec3 a, Vec3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vec3 a) {
    return std::sqrt(dot(a, a));
}
/// Of length 1; a vector of length 0 stays.
inline Vec3 unit(Vec3 a) {
    const double l = length(a);
    return l > 0 ? 1 / l * a : a;
}
inline double distance(Vec3 a, Vec3 b) {
    return length(a - b);
}

} // namespace geometry

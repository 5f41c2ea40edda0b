// Vector arithmetic in the plane, shared by the geometry files.
#pragma once

#include "rpt.h"

#include <cmath>
#include <numbers>

namespace host {

inline constexpr double kPi = std::numbers::pi;

inline RPT operator+(const RPT& a, const RPT& b) {
    return {a.x + b.x, a.y + b.y};
}
inline RPT operator-(const RPT& a, const RPT& b) {
    return {a.x - b.x, a.y - b.y};
}
inline RPT operator*(double f, const RPT& v) {
    return {f * v.x, f * v.y};
}
inline double dot(const RPT& a, const RPT& b) {
    return a.x * b.x + a.y * b.y;
}
inline double cross(const RPT& a, const RPT& b) {
    return a.x * b.y - a.y * b.x;
}
inline double length(const RPT& v) {
    return std::hypot(v.x, v.y);
}
inline double distance(const RPT& a, const RPT& b) {
    return length(b - a);
}
inline RPT leftOf(const RPT& v) {
    return {-v.y, v.x};
} ///< Turned by a right angle, counter-clockwise.
inline RPT unit(const RPT& v) { ///< (0, 0) for a null vector.
    const double l = length(v);
    return l > 0.0 ? RPT{v.x / l, v.y / l} : RPT{0.0, 0.0};
}
inline double angleOf(const RPT& v) {
    return std::atan2(v.y, v.x);
}
inline RPT polar(const RPT& centre, double radius, double angle) {
    return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}
inline bool isFinite(const RPT& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

} // namespace host

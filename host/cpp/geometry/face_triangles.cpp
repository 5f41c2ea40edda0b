#include "geometry/face_triangles.h"

#include <cmath>

namespace host {

/// Corners of polygons that are cut ear by ear, which takes the square of their number; larger ones are
/// taken as fans.
static constexpr int kMostCorners = 3000;

RPT3 areaVector(const RPT3* points, int count) {
    RPT3 sum{0, 0, 0};
    for (int i = 1; i + 1 < count; ++i) {
        const RPT3 u{points[i].x - points[0].x, points[i].y - points[0].y, points[i].z - points[0].z};
        const RPT3 v{points[i + 1].x - points[0].x, points[i + 1].y - points[0].y,
                     points[i + 1].z - points[0].z};
        sum.x += u.y * v.z - u.z * v.y;
        sum.y += u.z * v.x - u.x * v.z;
        sum.z += u.x * v.y - u.y * v.x;
    }
    return sum;
}

namespace {

/// Cuts a polygon, laid flat along the axis that its normal is closest to.
class EarCutter {
public:
    EarCutter(const RPT3* points, int count) {
        const RPT3 n = areaVector(points, count);
        const double ax = std::fabs(n.x), ay = std::fabs(n.y), az = std::fabs(n.z);
        for (int i = 0; i < count; ++i) {
            const RPT3& p = points[i];
            RPT flat{p.x, p.y};
            double sign = n.z;
            if (ax >= ay && ax >= az)
                flat = {p.y, p.z}, sign = n.x;
            else if (ay >= az)
                flat = {p.z, p.x}, sign = n.y;
            if (sign < 0) flat.y = -flat.y;
            flat_.push_back(flat);
            left_.push_back(i);
        }
    }

    void cut(std::vector<std::array<int, 3>>& triangles) {
        const bool isConvex = turnsLeftOnly();
        std::size_t at = 0, tried = 0;
        while (left_.size() > 3) {
            const std::size_t n = left_.size();
            // When no corner is an ear, the polygon crosses itself: any will do.
            if (!isConvex && flat_.size() <= kMostCorners && !isEar(at % n) && tried++ < n) {
                ++at;
                continue;
            }
            tried = 0;
            const std::size_t i = isConvex || flat_.size() > kMostCorners ? 1 : at % n;
            triangles.push_back({left_[(i + n - 1) % n], left_[i], left_[(i + 1) % n]});
            left_.erase(left_.begin() + static_cast<std::ptrdiff_t>(i));
            at = i == 0 ? left_.size() - 1 : i - 1;
        }
        if (left_.size() == 3) triangles.push_back({left_[0], left_[1], left_[2]});
    }

private:
    double turn(int a, int b, int c) const {
        const RPT &p = at(a), &q = at(b), &r = at(c);
        return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
    }
    const RPT& at(int i) const { return flat_[static_cast<std::size_t>(i)]; }

    bool turnsLeftOnly() const {
        const int n = static_cast<int>(flat_.size());
        double total = 0;
        for (int i = 0; i < n; ++i) {
            if (turn(i, (i + 1) % n, (i + 2) % n) < 0) return false;
            const RPT &a = at(i), &b = at((i + 1) % n), &c = at((i + 2) % n);
            total += std::atan2(turn(i, (i + 1) % n, (i + 2) % n),
                                (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y));
        }
        return total < 7; // once round only
    }

    bool isEar(std::size_t i) const {
        const std::size_t n = left_.size();
        const int a = left_[(i + n - 1) % n], b = left_[i], c = left_[(i + 1) % n];
        if (!(turn(a, b, c) > 0)) return false;
        for (const int p : left_) {
            if (p == a || p == b || p == c) continue;
            if (turn(a, b, p) >= 0 && turn(b, c, p) >= 0 && turn(c, a, p) >= 0 && !coincides(p, a, b, c))
                return false;
        }
        return true;
    }
    bool coincides(int p, int a, int b, int c) const {
        const auto same = [&](int i) { return at(i).x == at(p).x && at(i).y == at(p).y; };
        return same(a) || same(b) || same(c);
    }

    std::vector<RPT> flat_;
    std::vector<int> left_;
};

double dot(const RPT3& a, const RPT3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Cuts a quadrilateral along the diagonal that leaves both halves in its sense.
void cutQuad(const RPT3* p, std::vector<std::array<int, 3>>& triangles) {
    const RPT3 normal = areaVector(p, 4);
    const RPT3 first[3] = {p[0], p[1], p[2]}, second[3] = {p[0], p[2], p[3]};
    if (dot(areaVector(first, 3), normal) >= 0 && dot(areaVector(second, 3), normal) >= 0) {
        triangles.insert(triangles.end(), {{0, 1, 2}, {0, 2, 3}});
    } else {
        triangles.insert(triangles.end(), {{0, 1, 3}, {1, 2, 3}});
    }
}

} // namespace

void triangulate(const RPT3* points, int count, std::vector<std::array<int, 3>>& triangles) {
    if (count == 3) triangles.push_back({0, 1, 2});
    if (count == 4) cutQuad(points, triangles);
    if (count > 4) EarCutter(points, count).cut(triangles);
}

} // namespace host

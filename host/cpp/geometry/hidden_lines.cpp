#include "geometry/hidden_lines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace host {

namespace {

// Beside the size of the whole: what counts as in a plane, and stretches that no one can see.
constexpr double kInPlane = 1e-6;
constexpr double kSliver = 2e-5;
constexpr int kPlatesOfLeaf = 4;

RPT3 operator-(const RPT3& a, const RPT3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
RPT3 cross(const RPT3& a, const RPT3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double dot(const RPT3& a, const RPT3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
RPT3 between(const RPT3& a, const RPT3& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}
double turn(const RPT3& a, const RPT3& b, const RPT3& p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
}

/// Cuts the stretch to where a value that is linear along the line, `from` at 0 and `to` at 1, isn't below
/// `least`. False when nothing is left.
bool cutTo(Stretch& stretch, double from, double to, double least) {
    const double d0 = from - least, d1 = to - least;
    if (d0 < 0 && d1 < 0) return false;
    if (d0 < 0) stretch.first = std::max(stretch.first, d0 / (d0 - d1));
    if (d1 < 0) stretch.second = std::min(stretch.second, d0 / (d0 - d1));
    return stretch.first < stretch.second;
}

} // namespace

/// Stretches of a line, joined where they touch.
class StretchSet {
public:
    explicit StretchSet(double gap) : gap_(gap) {}
    void add(Stretch added) {
        auto from = std::lower_bound(stretches_.begin(), stretches_.end(), added.first - gap_,
                                     [](const Stretch& s, double t) { return s.second < t; });
        auto to = from;
        for (; to != stretches_.end() && to->first <= added.second + gap_; ++to) {
            added.first = std::min(added.first, to->first);
            added.second = std::max(added.second, to->second);
        }
        stretches_.insert(stretches_.erase(from, to), added);
    }
    bool coversAll() const {
        return stretches_.size() == 1 && stretches_[0].first <= gap_ && stretches_[0].second >= 1 - gap_;
    }
    /// What it leaves of the line, but for slivers beside it.
    std::vector<Stretch> rest(double sliver) const {
        if (stretches_.empty()) return {{0, 1}};
        std::vector<Stretch> rest;
        double at = 0;
        for (const auto& [from, to] : stretches_) {
            if (from - at > sliver) rest.push_back({at, from});
            at = to;
        }
        if (1 - at > sliver) rest.push_back({at, 1});
        return rest;
    }

private:
    std::vector<Stretch> stretches_;
    double gap_;
};

// ---- the tree --------------------------------------------------------------------------------------

void Sight::Box::add(const Box& other) {
    for (int i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], other.low[i]);
        high[i] = std::max(high[i], other.high[i]);
    }
}

bool Sight::Box::meets(const Box& other) const {
    for (int i = 0; i < 3; ++i)
        if (low[i] > other.high[i] || high[i] < other.low[i]) return false;
    return true;
}

Sight::Box Sight::boxOf(const Plate& plate) {
    const auto& [a, b, c] = plate.t;
    const auto [lowX, highX] = std::minmax({a.x, b.x, c.x});
    const auto [lowY, highY] = std::minmax({a.y, b.y, c.y});
    const auto [lowZ, highZ] = std::minmax({a.z, b.z, c.z});
    return {{lowX, lowY, lowZ}, {highX, highY, highZ}};
}

Sight::Sight(std::vector<SightTriangle> triangles) {
    plates_.reserve(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        SightTriangle t = triangles[i];
        RPT3 normal = cross(t.b - t.a, t.c - t.a);
        const double length = std::sqrt(dot(normal, normal));
        if (!(length > 0) || !std::isfinite(length)) continue;
        if (normal.z < 0) {
            std::swap(t.b, t.c);
            normal = {-normal.x, -normal.y, -normal.z};
        }
        normal = {normal.x / length, normal.y / length, normal.z / length};
        constexpr double edgeOn = 1e-9;
        plates_.push_back({t, normal, static_cast<int>(i), normal.z < edgeOn});
    }
    if (plates_.empty()) return;
    nodes_.reserve(plates_.size());
    nodes_.push_back({});
    build(0, 0, static_cast<int>(plates_.size()));
    const Box& all = nodes_[0].box;
    size_ = std::hypot(all.high[0] - all.low[0], all.high[1] - all.low[1], all.high[2] - all.low[2]);
}

void Sight::build(int node, int first, int end) {
    Box box = boxOf(plates_[static_cast<std::size_t>(first)]);
    for (int i = first + 1; i < end; ++i) box.add(boxOf(plates_[static_cast<std::size_t>(i)]));
    nodes_[static_cast<std::size_t>(node)] = {box, first, end - first};
    if (end - first <= kPlatesOfLeaf) return;
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (box.high[i] - box.low[i] > box.high[axis] - box.low[axis]) axis = i;
    const int middle = first + (end - first) / 2;
    const auto centre = [axis](const Plate& plate) {
        const Box b = boxOf(plate);
        return b.low[axis] + b.high[axis];
    };
    std::nth_element(plates_.begin() + first, plates_.begin() + middle, plates_.begin() + end,
                     [&](const Plate& p, const Plate& q) { return centre(p) < centre(q); });
    const int halves = static_cast<int>(nodes_.size());
    nodes_.resize(nodes_.size() + 2);
    nodes_[static_cast<std::size_t>(node)].first = halves;
    nodes_[static_cast<std::size_t>(node)].count = 0;
    build(halves, first, middle);
    build(halves + 1, middle, end);
}

// ---- looking up ------------------------------------------------------------------------------------

/// Adds what the plate hides of the line.
void Sight::hide(const Plate& plate, const RPT3& a, const RPT3& b, StretchSet& hidden) const {
    const auto& t = plate.t;
    const double tolerance = -1e-12 * size_ * size_;
    Stretch stretch{0, 1};
    for (const auto& [from, to] : {std::pair(t.a, t.b), std::pair(t.b, t.c), std::pair(t.c, t.a)})
        if (!cutTo(stretch, turn(from, to, a), turn(from, to, b), tolerance)) return;
    const double behind = kInPlane * size_;
    if (!cutTo(stretch, -dot(plate.normal, a - t.a), -dot(plate.normal, b - t.a), behind)) return;
    hidden.add(stretch);
}

namespace {

/// A line, ready to be held against boxes.
struct Line {
    RPT3 a, b;
    double low[3], high[3];
    Line(const RPT3& from, const RPT3& to)
        : a(from),
          b(to), low{std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)}, high{std::max(a.x, b.x),
                                                                                       std::max(a.y, b.y),
                                                                                       std::max(a.z, b.z)} {}
    /// Whether something in the box may stand in front of it.
    template <class Box>
    bool mayBeBehind(const Box& box) const {
        if (low[0] > box.high[0] || high[0] < box.low[0] || low[1] > box.high[1] || high[1] < box.low[1] ||
            low[2] > box.high[2])
            return false;
        const double dx = b.x - a.x, dy = b.y - a.y;
        const double mx = (box.low[0] + box.high[0]) / 2, my = (box.low[1] + box.high[1]) / 2;
        const double off = std::fabs(dx * (my - a.y) - dy * (mx - a.x));
        const double reach =
            std::fabs(dx) * (box.high[1] - box.low[1]) / 2 + std::fabs(dy) * (box.high[0] - box.low[0]) / 2;
        return off <= reach * (1 + 1e-9) + 1e-300;
    }
};

} // namespace

std::vector<Stretch> Sight::visible(const RPT3& a, const RPT3& b) const {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (nodes_.empty() || !(length > 0)) return {{0, 1}};
    StretchSet hidden(1e-9 * size_ / length);
    const Line line(a, b);
    std::vector<int> open{0};
    while (!open.empty()) {
        const Node& node = nodes_[static_cast<std::size_t>(open.back())];
        open.pop_back();
        if (!line.mayBeBehind(node.box)) continue;
        if (node.count == 0) {
            // What is nearer to the viewer hides most, and comes first.
            const auto nearness = [&](int n) { return nodes_[static_cast<std::size_t>(n)].box.high[2]; };
            const int nearer = nearness(node.first) >= nearness(node.first + 1) ? 0 : 1;
            open.push_back(node.first + 1 - nearer);
            open.push_back(node.first + nearer);
            continue;
        }
        for (int i = node.first; i < node.first + node.count; ++i) {
            const Plate& plate = plates_[static_cast<std::size_t>(i)];
            if (!plate.isEdgeOn) hide(plate, a, b, hidden);
        }
        if (hidden.coversAll()) return {};
    }
    return hidden.rest(kSliver * size_ / length);
}

// ---- crossings -------------------------------------------------------------------------------------

namespace {

/// Stretch of a triangle on a plane that it runs through, `d` being the distances of its corners from it;
/// nothing when it lies on one side.
std::optional<std::pair<RPT3, RPT3>> cutByPlane(const SightTriangle& t, const double (&d)[3], double least) {
    const double low = std::min({d[0], d[1], d[2]}), high = std::max({d[0], d[1], d[2]});
    if (!(low < -least && high > least)) return {};
    const RPT3 corners[3] = {t.a, t.b, t.c};
    std::vector<RPT3> points;
    for (int i = 0; i < 3; ++i) {
        const int j = (i + 1) % 3;
        if ((d[i] < 0) != (d[j] < 0)) points.push_back(between(corners[i], corners[j], d[i] / (d[i] - d[j])));
    }
    if (points.size() != 2) return {};
    return std::pair(points[0], points[1]);
}

} // namespace

/// The line along which two plates run through each other.
bool Sight::crosses(const Plate& p, const Plate& q, RPT3& from, RPT3& to) const {
    const double least = kInPlane * size_;
    const auto distances = [](const Plate& plane, const SightTriangle& t, double(&d)[3]) {
        d[0] = dot(plane.normal, t.a - plane.t.a);
        d[1] = dot(plane.normal, t.b - plane.t.a);
        d[2] = dot(plane.normal, t.c - plane.t.a);
    };
    double dp[3], dq[3];
    distances(q, p.t, dp);
    const auto cutP = cutByPlane(p.t, dp, least);
    if (!cutP) return false;
    distances(p, q.t, dq);
    const auto cutQ = cutByPlane(q.t, dq, least);
    if (!cutQ) return false;
    // Both cuts lie on one line: what they share of it.
    const RPT3 along = cross(p.normal, q.normal);
    const auto place = [&](const RPT3& point) { return dot(along, point - cutP->first); };
    double p0 = 0, p1 = place(cutP->second), q0 = place(cutQ->first), q1 = place(cutQ->second);
    RPT3 pa = cutP->first, pb = cutP->second, qa = cutQ->first, qb = cutQ->second;
    if (p0 > p1) std::swap(p0, p1), std::swap(pa, pb);
    if (q0 > q1) std::swap(q0, q1), std::swap(qa, qb);
    from = p0 > q0 ? pa : qa;
    to = p1 < q1 ? pb : qb;
    const double length = std::sqrt(dot(to - from, to - from));
    return std::max(p0, q0) < std::min(p1, q1) && length > kSliver * size_;
}

std::vector<Sight::Crossing> Sight::crossings() const {
    std::vector<Crossing> found;
    std::vector<int> open;
    for (int i = 0; i < static_cast<int>(plates_.size()); ++i) {
        const Plate& plate = plates_[static_cast<std::size_t>(i)];
        const Box box = boxOf(plate);
        open.assign(1, 0);
        while (!open.empty()) {
            const Node& node = nodes_[static_cast<std::size_t>(open.back())];
            open.pop_back();
            if (!node.box.meets(box)) continue;
            if (node.count == 0) open.insert(open.end(), {node.first, node.first + 1});
            for (int j = std::max(i + 1, node.first); j < node.first + node.count; ++j) {
                Crossing crossing{{}, {}, plate.given};
                if (crosses(plate, plates_[static_cast<std::size_t>(j)], crossing.a, crossing.b))
                    found.push_back(crossing);
            }
        }
    }
    return found;
}

} // namespace host

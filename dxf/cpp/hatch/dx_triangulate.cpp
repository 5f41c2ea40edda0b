#include "dx_triangulate.h"

#include "dx_trapezoids.h"
#include "hatch_state.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace {

constexpr double onePoint = 1e-7;
constexpr int crossing = 2360;

bool isOnePoint(const RPT& a, const RPT& b) {
    return std::fabs(a.x - b.x) <= onePoint && std::fabs(a.y - b.y) <= onePoint;
}

double turn(const RPT& a, const RPT& b, const RPT& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Triangles as they are found, three indexes each.
class Triangles {
public:
    Triangles(int* out, int room) : out_(out), room_(room) {}
    bool add(int a, int b, int c) {
        if (count_ == room_) return false;
        out_[0] = a;
        out_[1] = b;
        out_[2] = c;
        out_ += 3;
        ++count_;
        return true;
    }
    int missing() const { return room_ - count_; }

private:
    int* out_;
    int room_, count_ = 0;
};

/// A way from one vertex to another with the polygon's inside on its left.
struct HalfEdge {
    int from, to;
    bool isDone = false;
};

/// Edges of the contours and diagonals; walks round the parts that they leave.
class Parts {
public:
    explicit Parts(const RPT* points) : points_(points) {}
    void add(int from, int to) { edges_.push_back({from, to}); }
    void sort() {
        std::sort(edges_.begin(), edges_.end(), [&](const HalfEdge& a, const HalfEdge& b) {
            return a.from != b.from ? a.from < b.from : isEarlier(direction(a), direction(b));
        });
    }
    std::size_t count() const { return edges_.size(); }
    bool isDone(std::size_t i) const { return edges_[i].isDone; }
    /// The part left of an edge, counter-clockwise; empty where the walk doesn't come back.
    std::vector<int> walk(std::size_t start) {
        std::vector<int> part;
        std::size_t at = start;
        do {
            if (edges_[at].isDone) return {};
            edges_[at].isDone = true;
            part.push_back(edges_[at].from);
            at = next(edges_[at]);
        } while (at != start && at < edges_.size());
        return at == start ? part : std::vector<int>();
    }

private:
    RPT direction(const HalfEdge& e) const {
        return {points_[e.to].x - points_[e.from].x, points_[e.to].y - points_[e.from].y};
    }
    /// By angle from 0 to a full turn.
    static bool isEarlier(const RPT& a, const RPT& b) {
        const bool upperA = a.y > 0 || (a.y == 0 && a.x > 0), upperB = b.y > 0 || (b.y == 0 && b.x > 0);
        if (upperA != upperB) return upperA;
        return a.x * b.y - a.y * b.x > 0;
    }
    /// Of the ways on from its end, the first one clockwise from the way back.
    std::size_t next(const HalfEdge& e) const {
        const auto by = [](const HalfEdge& a, int from) { return a.from < from; };
        const auto first = std::lower_bound(edges_.begin(), edges_.end(), e.to, by);
        auto last = first;
        while (last != edges_.end() && last->from == e.to) ++last;
        if (first == last) return edges_.size();
        const RPT back = direction({e.to, e.from});
        auto found = last - 1; // round the corner at angle 0
        for (auto it = first; it != last && isEarlier(direction(*it), back); ++it) found = it;
        return static_cast<std::size_t>(found - edges_.begin());
    }

    const RPT* points_;
    std::vector<HalfEdge> edges_;
};

/// A part has one edge from its lowest to its highest point and a chain of vertices between them.
class PartCutter {
public:
    PartCutter(const DxTrapezoids& order, const RPT* points, Triangles& out)
        : order_(order), points_(points), out_(out) {}

    bool cut(const std::vector<int>& part) {
        const std::size_t n = part.size();
        if (n < 3) return false;
        const auto below = [&](int a, int b) { return order_.isBelow(a, b); };
        const auto low =
            static_cast<std::size_t>(std::min_element(part.begin(), part.end(), below) - part.begin());
        const bool baseIsNext = order_.isBelow(part[(low + n - 1) % n], part[(low + 1) % n]);
        // From the base's far end round to its near one, counter-clockwise.
        const std::size_t first = baseIsNext ? (low + 1) % n : low;
        std::vector<int> stack;
        for (std::size_t i = 0; i < n; ++i) {
            const int v = part[(first + i) % n];
            while (stack.size() > 1 && isCorner(stack, v))
                if (!clip(stack, v)) return false;
            stack.push_back(v);
        }
        while (stack.size() > 2) { // what is left lies in a line
            const int v = stack.back();
            stack.pop_back();
            if (!clip(stack, v)) return false;
            stack.push_back(v);
        }
        return true;
    }

private:
    bool isCorner(const std::vector<int>& stack, int v) const {
        return turn(points_[stack[stack.size() - 2]], points_[stack.back()], points_[v]) > 0;
    }
    bool clip(std::vector<int>& stack, int v) {
        const int corner = stack.back();
        stack.pop_back();
        return out_.add(stack.back(), corner, v);
    }

    const DxTrapezoids& order_;
    const RPT* points_;
    Triangles& out_;
};

/// The vertices of a contour without those on the spot of the one before; each of these is a triangle of no
/// area.
std::vector<int> distinct(int first, int size, const RPT* points, Triangles& out) {
    std::vector<int> kept;
    for (int v = first; v < first + size; ++v) {
        if (kept.empty() || !isOnePoint(points[kept.back()], points[v]))
            kept.push_back(v);
        else
            out.add(kept.back(), v, kept.back());
    }
    while (kept.size() > 1 && isOnePoint(points[kept.front()], points[kept.back()])) {
        out.add(kept.front(), kept.back(), kept.front());
        kept.pop_back();
    }
    return kept;
}

void addDiagonals(const DxTrapezoids& trapezoids, Parts& parts) {
    const auto joins = [&](int segment, const DX_TRAPEZOID& t) {
        const DX_SEGMENT& s = trapezoids.segment(segment);
        return s.low == t.low && s.high == t.high;
    };
    for (const DX_TRAPEZOID& t : trapezoids.all()) {
        if (!trapezoids.isInside(t) || joins(t.left, t) || joins(t.right, t)) continue;
        parts.add(t.low, t.high);
        parts.add(t.high, t.low);
    }
}

unsigned seedOfRun() {
    return DxFillSeed ? DxFillSeed : static_cast<unsigned>(std::time(nullptr));
}

} // namespace

int DxFillTriangulate(int contourCount, const int* contourSizes, const RPT* vertices, int* triangles) {
    int total = 0, contours = 0;
    for (int i = 0; i < contourCount; ++i) {
        total += contourSizes[i];
        if (contourSizes[i] > 0) ++contours;
    }
    const int room = total + 2 * contours - 4;
    if (room <= 0) return 0;
    Triangles out(triangles, room);
    DxTrapezoids trapezoids(vertices);
    Parts parts(vertices);
    int first = 1;
    for (int i = 0; i < contourCount; first += contourSizes[i++]) {
        const std::vector<int> contour = distinct(first, contourSizes[i], vertices, out);
        for (std::size_t k = 0; k < contour.size() && contour.size() > 2; ++k) {
            const int to = contour[(k + 1) % contour.size()];
            trapezoids.addSegment(contour[k], to);
            parts.add(contour[k], to);
        }
    }
    if (!trapezoids.build(seedOfRun())) return crossing;
    addDiagonals(trapezoids, parts);
    parts.sort();
    PartCutter cutter(trapezoids, vertices, out);
    for (std::size_t i = 0; i < parts.count(); ++i)
        if (!parts.isDone(i) && !cutter.cut(parts.walk(i))) return crossing;
    return out.missing() == 0 ? 0 : crossing;
}

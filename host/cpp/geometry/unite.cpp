// The union runs on polygons in integer coordinates. Each arc goes in as chords, and each edge of the result
// is traced back to the piece that it came from, so that runs of chords become arcs again and the corners
// are those of the exact curves.
#include "geometry/unite.h"

#include "geometry/box_tree.h"
#include "geometry/polygon_union.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace host {

// ---- crossings -------------------------------------------------------------------------------------

namespace {

struct PlacedPiece {
    Piece piece;
    std::size_t next; ///< index of the piece that follows in its loop
};

std::vector<PlacedPiece> placePieces(const std::vector<PieceLoop>& loops) {
    std::vector<PlacedPiece> placed;
    for (const PieceLoop& loop : loops) {
        const std::size_t first = placed.size();
        for (const Piece& p : loop) placed.push_back({p, placed.size() + 1});
        if (!loop.empty()) placed.back().next = first;
    }
    return placed;
}

bool isNear(const RPT& a, const RPT& b, double eps) {
    return distance(a, b) <= eps;
}

// A neighbour may be met where it follows, nothing else.
bool meetsBadly(const PlacedPiece& a, std::size_t ia, const PlacedPiece& b, std::size_t ib, double eps) {
    const PieceMeetings m = meetingsOf(a.piece, b.piece, eps);
    if (m.overlap) return true;
    for (int i = 0; i < m.count; ++i) {
        const bool behind = a.next == ib && isNear(m.points[i], a.piece.end, 8 * eps);
        const bool before = b.next == ia && isNear(m.points[i], b.piece.end, 8 * eps);
        if (!behind && !before) return true;
    }
    return false;
}

} // namespace

bool loopsCross(const std::vector<PieceLoop>& loops, double eps, std::size_t budget, bool* tooMany) {
    const std::vector<PlacedPiece> placed = placePieces(loops);
    std::vector<PieceBox> boxes;
    boxes.reserve(placed.size());
    for (const PlacedPiece& p : placed) boxes.push_back(boxOf(p.piece).grown(eps));
    const BoxTree tree(boxes);
    // Once they cross, all that is left to know is how much there is of it: some of the pieces tell.
    constexpr std::size_t sample = 4;
    bool crossing = false;
    std::size_t looks = 0;
    for (std::size_t i = 0; i < placed.size() && looks <= budget; i += crossing ? sample : 1)
        tree.search(boxes[i], i + 1, [&](std::size_t j) {
            looks += crossing ? sample : 1;
            crossing = crossing || meetsBadly(placed[i], i, placed[j], j, eps);
            return looks <= budget;
        });
    *tooMany = looks > budget;
    return crossing;
}

// ---- into integers ---------------------------------------------------------------------------------

namespace {

using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

// Half the size of what is united, in integer steps: fine beside the rounding of the coordinates, with room
// for the products of the clipping.
constexpr double kHalfSize = 0x1p44;
// Points that near to each other, in steps, are one.
constexpr double kStepEps = 16.0;
// More edges than this are beyond a drawing's outline.
constexpr std::size_t kMaxEdges = 4'000'000;

// The frame of the integers: drawing units about the middle, times a power of 2.
class Frame {
public:
    explicit Frame(const PieceBox& box)
        : middle_{0.5 * (box.minX + box.maxX), 0.5 * (box.minY + box.maxY)},
          scale_(std::exp2(std::floor(std::log2(kHalfSize / std::max(0.5 * box.size(), 1e-300))))) {}
    IntPoint toInt(const RPT& p) const {
        return {std::llround((p.x - middle_.x) * scale_), std::llround((p.y - middle_.y) * scale_)};
    }
    RPT toReal(const IntPoint& p) const {
        return {middle_.x + static_cast<double>(p.X) / scale_, middle_.y + static_cast<double>(p.Y) / scale_};
    }
    double steps(double length) const { return length * scale_; }
    double lengthOf(double steps) const { return steps / scale_; }
    bool isUsable() const { return std::isfinite(scale_) && scale_ > 0.0 && isFinite(middle_); }

private:
    RPT middle_;
    double scale_;
};

struct IntHash {
    std::size_t operator()(const IntPoint& p) const {
        const auto x = static_cast<std::uint64_t>(p.X) * 0x9E3779B97F4A7C15u;
        const auto y = static_cast<std::uint64_t>(p.Y) * 0xC2B2AE3D27D4EB4Fu;
        return static_cast<std::size_t>(x ^ (y >> 29) ^ (y << 7));
    }
};

RPT real(const IntPoint& p) {
    return {static_cast<double>(p.X), static_cast<double>(p.Y)};
}

struct Edge {
    IntPoint from, to;
    std::uint32_t piece;
};

PieceBox boxOf(const IntPoint& a, const IntPoint& b) {
    const RPT p = real(a);
    const RPT q = real(b);
    return {std::min(p.x, q.x), std::min(p.y, q.y), std::max(p.x, q.x), std::max(p.y, q.y)};
}

// The bits of `v`, a gap of one behind each.
std::uint64_t spread(std::uint32_t v) {
    std::uint64_t x = v;
    x = (x | x << 16) & 0x0000ffff0000ffffu;
    x = (x | x << 8) & 0x00ff00ff00ff00ffu;
    x = (x | x << 4) & 0x0f0f0f0f0f0f0f0fu;
    x = (x | x << 2) & 0x3333333333333333u;
    return (x | x << 1) & 0x5555555555555555u;
}

// The edges in an order in which what is near in the plane is near, by quarters of quarters.
std::vector<std::uint32_t> orderByPlace(const std::vector<Edge>& edges) {
    const auto cell = [](ClipperLib::cInt a, ClipperLib::cInt b) {
        constexpr double cells = 65536.0;
        const double middle = 0.5 * (static_cast<double>(a) + static_cast<double>(b));
        return static_cast<std::uint32_t>(std::clamp((middle / kHalfSize + 1.0) * cells, 0.0, 2.0 * cells));
    };
    std::vector<std::pair<std::uint64_t, std::uint32_t>> keyed;
    keyed.reserve(edges.size());
    for (const Edge& e : edges)
        keyed.emplace_back(spread(cell(e.from.X, e.to.X)) << 1 | spread(cell(e.from.Y, e.to.Y)),
                           keyed.size());
    std::sort(keyed.begin(), keyed.end());
    std::vector<std::uint32_t> order(edges.size());
    std::transform(keyed.begin(), keyed.end(), order.begin(), [](const auto& k) { return k.second; });
    return order;
}

// ---- tracing back ----------------------------------------------------------------------------------

class Union {
public:
    Union(const std::vector<PieceLoop>& loops, double tolerance);
    bool run(std::vector<PieceLoop>* result);

private:
    static constexpr std::uint32_t kNone = 0xffffffff;

    struct Run {
        IntPoint from, to;
        std::uint32_t piece; ///< kNone: a line of its own
        double steps;        ///< length of its edges
    };

    struct Corner {
        RPT end;   ///< of the run before
        RPT start; ///< of the run behind
    };

    void addPiece(const Piece& piece, Path& path);
    Paths polygons(const std::vector<PieceLoop>& loops);
    bool isThin(const Path& path) const;
    double offEdge(const Edge& edge, const RPT& p, const RPT& q) const;
    std::uint32_t findSource(const IntPoint& from, const IntPoint& to, std::uint32_t known) const;
    std::vector<Run> runsOf(const Path& path) const;
    const Piece* sourceOf(const Run& run) const;
    bool isPeek(const Run& run, std::uint32_t piece) const;
    bool meetOfCarriers(const RPT& rough, const Piece& before, const Piece& behind, RPT* found) const;
    Corner cornerAt(const Run& before, const Run& behind) const;
    Piece pieceOf(const Run& run, const RPT& from, const RPT& to) const;
    PieceLoop trace(const Path& path) const;

    Frame frame_;
    double tolerance_;
    std::vector<Piece> pieces_;
    std::vector<Edge> edges_;
    std::unordered_map<IntPoint, RPT, IntHash> exact_; ///< ends of the pieces
    std::vector<std::uint32_t> order_;                 ///< edges as the tree has them
    std::optional<BoxTree> tree_;
    Paths polygons_;
};

PieceBox extentOf(const std::vector<PieceLoop>& loops) {
    PieceBox box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const PieceLoop& loop : loops)
        for (const Piece& p : loop) box.add(host::boxOf(p));
    return box;
}

Union::Union(const std::vector<PieceLoop>& loops, double tolerance)
    : frame_(extentOf(loops)), tolerance_(tolerance) {
    if (frame_.isUsable()) polygons_ = polygons(loops);
    order_ = orderByPlace(edges_);
    std::vector<PieceBox> boxes;
    boxes.reserve(edges_.size());
    for (const std::uint32_t i : order_) boxes.push_back(boxOf(edges_[i].from, edges_[i].to).grown(kStepEps));
    tree_.emplace(boxes);
}

void Union::addPiece(const Piece& piece, Path& path) {
    const auto index = static_cast<std::uint32_t>(pieces_.size());
    pieces_.push_back(piece);
    const double sweep = piece.sweep();
    // At least eight chords to the full turn keep an arc's shape.
    const int least = static_cast<int>(std::ceil(std::fabs(sweep) / (0.25 * kPi) - 1e-9));
    const int n = piece.isArc() ? std::max(least, chordCount(piece.radius, sweep, tolerance_)) : 1;
    const double angle = angleOf(piece.start - piece.centre);
    IntPoint from = frame_.toInt(piece.start);
    exact_.emplace(from, piece.start);
    for (int i = 1; i <= n; ++i) {
        const RPT p = i == n ? piece.end : polar(piece.centre, piece.radius, angle + sweep * i / n);
        const IntPoint to = frame_.toInt(p);
        edges_.push_back({from, to, index});
        path.push_back(from);
        from = to;
    }
}

Paths Union::polygons(const std::vector<PieceLoop>& loops) {
    Paths paths;
    for (const PieceLoop& loop : loops) {
        Path path;
        for (const Piece& p : loop) {
            addPiece(p, path);
            if (edges_.size() > kMaxEdges) return {};
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

// Chords of neighbouring arcs leave splinters that the arcs don't have.
bool Union::isThin(const Path& path) const {
    double perimeter = 0;
    for (std::size_t i = 0; i < path.size(); ++i)
        perimeter += distance(real(path[i]), real(path[(i + 1) % path.size()]));
    const double area = ClipperLib::Area(path);
    const double width = std::fabs(area) / std::max(perimeter, 1.0);
    return width <= kStepEps || (area < 0.0 && width <= 0.5 * frame_.steps(tolerance_));
}

// How far a stretch from p to q is off the edge that it is a part of; HUGE_VAL when it is none.
double Union::offEdge(const Edge& edge, const RPT& p, const RPT& q) const {
    const RPT a = real(edge.from);
    const RPT u = unit(real(edge.to) - a);
    const double along = dot(0.5 * (p + q) - a, u);
    const bool within = along >= -kStepEps && along <= distance(a, real(edge.to)) + kStepEps;
    if (!within || dot(u, q - p) <= 0.0) return HUGE_VAL;
    return std::max(std::fabs(cross(u, p - a)), std::fabs(cross(u, q - a)));
}

// The edge that a stretch of a result comes from. `known` is that of the stretch before it: chords of an arc
// mostly follow each other.
std::uint32_t Union::findSource(const IntPoint& from, const IntPoint& to, std::uint32_t known) const {
    const RPT p = real(from);
    const RPT q = real(to);
    if (known != kNone && known + 1 < edges_.size() && edges_[known + 1].from == from &&
        offEdge(edges_[known + 1], p, q) <= 1.0)
        return known + 1;
    const RPT middle = 0.5 * (p + q);
    std::uint32_t best = kNone;
    double bestOff = kStepEps;
    tree_->search({middle.x, middle.y, middle.x, middle.y}, 0, [&](std::size_t i) {
        const double off = offEdge(edges_[order_[i]], p, q);
        if (off < bestOff) {
            bestOff = off;
            best = order_[i];
        }
        return true;
    });
    return best;
}

// A stretch between two of curve `piece` that no one can see beside it: chords of curves that nearly touch
// cross where the curves don't.
bool Union::isPeek(const Run& run, std::uint32_t piece) const {
    const auto bend = [](const Piece* p) { return p && p->isArc() ? 1.0 / p->radius : 0.0; };
    const double size = frame_.lengthOf(run.steps);
    return size * size / 8.0 * (bend(sourceOf(run)) + bend(&pieces_[piece])) <= tolerance_;
}

// The path as stretches of the same source, beginning where the source changes.
std::vector<Union::Run> Union::runsOf(const Path& path) const {
    std::vector<Run> runs;
    const std::size_t n = path.size();
    IntPoint from = path[0];
    std::uint32_t edge = kNone;
    for (std::size_t i = 1; i <= n; ++i) {
        const IntPoint to = path[i % n];
        const double size = distance(real(from), real(to));
        if (size <= kStepEps && i < n) continue;
        edge = findSource(from, to, edge);
        const std::uint32_t piece = edge == kNone ? kNone : edges_[edge].piece;
        if (runs.size() > 1 && piece != kNone && runs[runs.size() - 2].piece == piece &&
            isPeek(runs.back(), piece)) {
            runs[runs.size() - 2].steps += runs.back().steps;
            runs.pop_back();
        }
        if (!runs.empty() && piece != kNone && runs.back().piece == piece) {
            runs.back().to = to;
            runs.back().steps += size;
        } else {
            runs.push_back({from, to, piece, size});
        }
        from = to;
    }
    if (runs.size() > 1 && runs.front().piece == runs.back().piece && runs.front().piece != kNone) {
        runs.front().from = runs.back().from;
        runs.front().steps += runs.back().steps;
        runs.pop_back();
    }
    return runs;
}

const Piece* Union::sourceOf(const Run& run) const {
    return run.piece == kNone ? nullptr : &pieces_[run.piece];
}

// The corner of the chords lies within their distance from the curves, more at flat crossings.
bool Union::meetOfCarriers(const RPT& rough, const Piece& before, const Piece& behind, RPT* found) const {
    double best = 50 * tolerance_ + frame_.lengthOf(2 * kStepEps);
    bool any = false;
    const PieceMeetings m = carrierMeetings(before, behind);
    for (int i = 0; i < m.count; ++i) {
        const double d = distance(m.points[i], rough);
        if (d >= best) continue;
        best = d;
        *found = m.points[i];
        any = true;
    }
    return any;
}

// Where one run hands over to the next: the end of a piece, or where the curves cross. Curves that don't
// quite reach each other end beside each other.
Union::Corner Union::cornerAt(const Run& before, const Run& behind) const {
    const Piece* a = sourceOf(before);
    const Piece* b = sourceOf(behind);
    const double eps = frame_.lengthOf(kStepEps);
    const RPT rough = frame_.toReal(behind.from);
    const auto known = exact_.find(behind.from);
    const RPT at = known != exact_.end() ? known->second : rough;
    const auto carries = [&](const Piece* p) { return !p || distanceToCarrier(*p, at) <= eps; };
    if (carries(a) && carries(b)) return {at, at};
    RPT meet;
    if (a && b && a != b && meetOfCarriers(rough, *a, *b, &meet)) return {meet, meet};
    return {a ? footOnCarrier(*a, at) : at, b ? footOnCarrier(*b, at) : at};
}

Piece Union::pieceOf(const Run& run, const RPT& from, const RPT& to) const {
    const Piece* source = sourceOf(run);
    if (!source || !source->isArc()) return makeLine(from, to);
    Piece arc = *source;
    arc.start = from;
    arc.end = to;
    // A stretch of less than rounding can seem to run the whole way round.
    const double expected = frame_.lengthOf(run.steps) / arc.radius;
    return std::fabs(std::fabs(arc.sweep()) - expected) < kPi ? arc : makeLine(from, to);
}

// Two lines that are one, or go back on themselves, as short ones may where curves barely meet.
bool isOneLine(const Piece& a, const Piece& b, double eps) {
    if (a.isArc() || b.isArc()) return false;
    const RPT u = unit(b.end - a.start);
    return std::fabs(cross(u, a.end - a.start)) <= eps;
}

void addStraightened(PieceLoop& loop, const Piece& piece, double eps) {
    if (!loop.empty() && isOneLine(loop.back(), piece, eps))
        loop.back().end = piece.end;
    else
        loop.push_back(piece);
}

PieceLoop Union::trace(const Path& path) const {
    const std::vector<Run> runs = runsOf(path);
    const std::size_t n = runs.size();
    const Piece* only = n == 1 ? sourceOf(runs[0]) : nullptr;
    if (only && only->isArc()) {
        Piece circle = *only;
        circle.end = circle.start;
        return {circle};
    }
    std::vector<Corner> corners; // in front of each run
    for (std::size_t i = 0; i < n; ++i) corners.push_back(cornerAt(runs[(i + n - 1) % n], runs[i]));
    PieceLoop loop;
    const double eps = frame_.lengthOf(kStepEps);
    for (std::size_t i = 0; i < n; ++i) {
        const Corner& end = corners[(i + 1) % n];
        addStraightened(loop, pieceOf(runs[i], corners[i].start, end.end), eps);
        if (distance(end.end, end.start) > eps) addStraightened(loop, makeLine(end.end, end.start), eps);
    }
    if (loop.size() > 2 && isOneLine(loop.back(), loop.front(), eps)) {
        loop.front().start = loop.back().start;
        loop.pop_back();
    }
    return loop;
}

bool Union::run(std::vector<PieceLoop>* result) {
    Paths united;
    if (polygons_.empty() || !unitePolygons(polygons_, &united)) return false;
    for (const Path& path : united)
        if (path.size() > 2 && !isThin(path)) result->push_back(trace(path));
    return true;
}

} // namespace

bool uniteLoops(const std::vector<PieceLoop>& loops, double tolerance, std::vector<PieceLoop>* result) try {
    std::vector<PieceLoop> united;
    if (!Union(loops, tolerance).run(&united)) return false;
    result->swap(united);
    return true;
} catch (const ClipperLib::clipperException&) {
    return false;
}

} // namespace host

// The union runs on polygons in integer coordinates. Each arc goes in as chords, and each edge of the result
// is traced back to the piece that it came from, so that runs of chords become arcs again and the corners
// are those of the exact curves.
#include "geometry/unite.h"

#include "geometry/box_tree.h"

#include <polyclipping/clipper.hpp>

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
    bool crossing = false;
    std::size_t looks = 0;
    for (std::size_t i = 0; i < placed.size() && looks <= budget; ++i)
        tree.search(boxes[i], i + 1, [&](std::size_t j) {
            crossing = crossing || meetsBadly(placed[i], i, placed[j], j, eps);
            return ++looks <= budget;
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
// So many neighbours are united at a time.
constexpr std::size_t kFanIn = 8;
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
    std::vector<Paths> polygons(const std::vector<PieceLoop>& loops);
    bool uniteParts(std::size_t from, std::size_t to, Paths* united) const;
    bool isThin(const Path& path) const;
    std::uint32_t findSource(const IntPoint& from, const IntPoint& to) const;
    std::vector<Run> runsOf(const Path& path) const;
    const Piece* sourceOf(const Run& run) const;
    bool meetOfCarriers(const RPT& rough, const Piece& before, const Piece& behind, RPT* found) const;
    Corner cornerAt(const Run& before, const Run& behind) const;
    Piece pieceOf(const Run& run, const RPT& from, const RPT& to) const;
    PieceLoop trace(const Path& path) const;

    Frame frame_;
    double tolerance_;
    std::vector<Piece> pieces_;
    std::vector<Edge> edges_;
    std::unordered_map<IntPoint, RPT, IntHash> exact_; ///< ends of the pieces
    std::vector<PieceBox> edgeBoxes_;
    std::optional<BoxTree> tree_;
    std::vector<Paths> parts_; ///< what is still to be united, neighbours beside each other
};

PieceBox extentOf(const std::vector<PieceLoop>& loops) {
    PieceBox box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const PieceLoop& loop : loops)
        for (const Piece& p : loop) box.add(host::boxOf(p));
    return box;
}

Union::Union(const std::vector<PieceLoop>& loops, double tolerance)
    : frame_(extentOf(loops)), tolerance_(tolerance) {
    if (frame_.isUsable()) parts_ = polygons(loops);
    edgeBoxes_.reserve(edges_.size());
    for (const Edge& e : edges_) edgeBoxes_.push_back(boxOf(e.from, e.to).grown(kStepEps));
    tree_.emplace(edgeBoxes_);
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

std::vector<Paths> Union::polygons(const std::vector<PieceLoop>& loops) {
    std::vector<Paths> parts;
    for (const PieceLoop& loop : loops) {
        Path path;
        for (const Piece& p : loop) {
            addPiece(p, path);
            if (edges_.size() > kMaxEdges) return {};
        }
        parts.push_back({std::move(path)});
    }
    return parts;
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

std::uint32_t Union::findSource(const IntPoint& from, const IntPoint& to) const {
    const RPT p = real(from);
    const RPT q = real(to);
    const RPT middle = 0.5 * (p + q);
    std::uint32_t best = kNone;
    double bestOff = kStepEps;
    tree_->search({middle.x, middle.y, middle.x, middle.y}, 0, [&](std::size_t i) {
        const RPT a = real(edges_[i].from);
        const RPT u = unit(real(edges_[i].to) - a);
        if (dot(u, q - p) <= 0.0) return true;
        const double off = std::max(std::fabs(cross(u, p - a)), std::fabs(cross(u, q - a)));
        const double along = dot(middle - a, u);
        const bool within = along >= -kStepEps && along <= distance(a, real(edges_[i].to)) + kStepEps;
        if (within && off < bestOff) {
            bestOff = off;
            best = edges_[i].piece;
        }
        return true;
    });
    return best;
}

// The path as stretches of the same source, beginning where the source changes.
std::vector<Union::Run> Union::runsOf(const Path& path) const {
    std::vector<Run> runs;
    const std::size_t n = path.size();
    IntPoint from = path[0];
    for (std::size_t i = 1; i <= n; ++i) {
        const IntPoint to = path[i % n];
        const double size = distance(real(from), real(to));
        if (size <= kStepEps && i < n) continue;
        const std::uint32_t piece = findSource(from, to);
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

bool isStraightOn(const Piece& a, const Piece& b, double eps) {
    if (a.isArc() || b.isArc()) return false;
    const RPT u = unit(b.end - a.start);
    return std::fabs(cross(u, a.end - a.start)) <= eps && dot(a.end - a.start, b.end - b.start) > 0.0;
}

void addStraightened(PieceLoop& loop, const Piece& piece, double eps) {
    if (!loop.empty() && isStraightOn(loop.back(), piece, eps))
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
    if (loop.size() > 2 && isStraightOn(loop.back(), loop.front(), eps)) {
        loop.front().start = loop.back().start;
        loop.pop_back();
    }
    return loop;
}

// Loops in a row share edges. Joined all at once these would cost the square of their number; neighbours are
// united first, and what is left of them in turn.
bool Union::run(std::vector<PieceLoop>* result) {
    if (parts_.empty()) return false;
    while (true) {
        std::vector<Paths> fewer;
        for (std::size_t i = 0; i < parts_.size(); i += kFanIn) {
            fewer.emplace_back();
            if (!uniteParts(i, std::min(i + kFanIn, parts_.size()), &fewer.back())) return false;
        }
        parts_.swap(fewer);
        if (parts_.size() == 1) break;
    }
    for (const Path& path : parts_.front())
        if (path.size() > 2 && !isThin(path)) result->push_back(trace(path));
    return true;
}

bool Union::uniteParts(std::size_t from, std::size_t to, Paths* united) const {
    ClipperLib::Clipper clipper;
    clipper.PreserveCollinear(true);
    for (std::size_t i = from; i < to; ++i) clipper.AddPaths(parts_[i], ClipperLib::ptSubject, true);
    return clipper.Execute(ClipperLib::ctUnion, *united, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
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

// The clipping sweeps a line over the plane and pays at each vertex for all edges that the line crosses. Many
// polygons are cut into vertical strips, in which these are few, and the results are stitched together again:
//
//      |  ____|____  |       what ends at a border goes on in the next strip; while a strip is worked on, its
//      | /    |    \ |       ends are joined by tents beyond the border, which don't cross each other and
//      | \____|____/ |       leave the winding numbers within as they are
#include "geometry/polygon_union.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>
#include <vector>

namespace host {

namespace {

using ClipperLib::cInt;
using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

constexpr std::size_t kVerticesAStrip = 1000;
// Rounding may move the end of a chain so far.
constexpr cInt kStitch = 2;

bool unite(const Paths& polygons, Paths* united) {
    ClipperLib::Clipper clipper;
    clipper.PreserveCollinear(true);
    clipper.AddPaths(polygons, ClipperLib::ptSubject, true);
    return clipper.Execute(ClipperLib::ctUnion, *united, ClipperLib::pftPositive, ClipperLib::pftPositive);
}

/// Borders between strips of equally many vertices; none of them runs through a vertex.
std::vector<cInt> bordersFor(const Paths& polygons) {
    std::vector<cInt> xs;
    for (const Path& path : polygons)
        for (const IntPoint& p : path) xs.push_back(p.X);
    const std::size_t count = xs.size() / kVerticesAStrip;
    std::vector<cInt> borders;
    if (count < 2) return borders;
    std::sort(xs.begin(), xs.end());
    for (std::size_t k = 1; k < count; ++k) {
        cInt x = xs[k * xs.size() / count];
        while (std::binary_search(xs.begin(), xs.end(), x)) ++x;
        if (x < xs.back() && (borders.empty() || x > borders.back())) borders.push_back(x);
    }
    return borders;
}

/// The end of a chain on a border.
struct End {
    cInt y;
    std::size_t chain;
    bool isStart;
};

bool isLower(const End& a, const End& b) {
    return a.y < b.y;
}

// ---- one strip -------------------------------------------------------------------------------------

/// What lies in a strip: polygons, and chains that lead from border to border.
struct Strip {
    cInt low = std::numeric_limits<cInt>::min(), high = std::numeric_limits<cInt>::max(); ///< its borders
    Paths closed, chains;

    bool isBeyond(const IntPoint& a, const IntPoint& b) const {
        return std::max(a.X, b.X) <= low || std::min(a.X, b.X) >= high;
    }
    Paths joined() const;
    void joinEnds(cInt border, std::vector<std::size_t>& next) const;
};

// Ends are paired like brackets, so that no tent crosses another.
void Strip::joinEnds(cInt border, std::vector<std::size_t>& next) const {
    std::vector<End> ends, open;
    for (std::size_t i = 0; i < chains.size(); ++i) {
        if (chains[i].front().X == border) ends.push_back({chains[i].front().Y, i, true});
        if (chains[i].back().X == border) ends.push_back({chains[i].back().Y, i, false});
    }
    std::sort(ends.begin(), ends.end(), isLower);
    for (const End& end : ends) {
        if (open.empty() || open.back().isStart == end.isStart) {
            open.push_back(end);
            continue;
        }
        const End& other = open.back();
        (end.isStart ? next[other.chain] : next[end.chain]) = end.isStart ? end.chain : other.chain;
        open.pop_back();
    }
}

/// The tip of the tent beyond the border over a stretch of it.
IntPoint tentOver(const IntPoint& from, const IntPoint& to, bool leftwards) {
    const cInt height = std::llabs(to.Y - from.Y) / 4 + 1;
    return {from.X + (leftwards ? -height : height), from.Y / 2 + to.Y / 2};
}

Paths Strip::joined() const {
    std::vector<std::size_t> next(chains.size());
    joinEnds(low, next);
    joinEnds(high, next);
    Paths paths = closed;
    std::vector<char> used(chains.size());
    for (std::size_t i = 0; i < chains.size(); ++i) {
        if (used[i]) continue;
        Path path;
        for (std::size_t k = i; !used[k]; k = next[k]) {
            used[k] = 1;
            path.insert(path.end(), chains[k].begin(), chains[k].end());
            path.push_back(tentOver(path.back(), chains[next[k]].front(), path.back().X == low));
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

// ---- cutting ---------------------------------------------------------------------------------------

class Cutter {
public:
    explicit Cutter(const std::vector<cInt>& borders) : borders_(borders), strips_(borders.size() + 1) {
        for (std::size_t i = 0; i < borders.size(); ++i) strips_[i].high = strips_[i + 1].low = borders[i];
    }
    std::vector<Strip> cut(const Paths& polygons) {
        for (const Path& path : polygons) cutPath(path);
        return std::move(strips_);
    }

private:
    std::size_t stripOf(const IntPoint& p) const {
        return static_cast<std::size_t>(std::upper_bound(borders_.begin(), borders_.end(), p.X) -
                                        borders_.begin());
    }
    void cutPath(const Path& path);
    void cross(const IntPoint& a, const IntPoint& b, std::size_t target);

    const std::vector<cInt>& borders_;
    std::vector<Strip> strips_;
    std::size_t strip_ = 0; ///< in which the path has got to
    Path chain_;            ///< the path since its last border; empty ahead of the first
    Path head_;             ///< up to the first border
};

// Follows the edge from a to b into the strip `target`.
void Cutter::cross(const IntPoint& a, const IntPoint& b, std::size_t target) {
    while (strip_ != target) {
        const cInt x = strip_ < target ? borders_[strip_] : borders_[strip_ - 1];
        const double t = static_cast<double>(x - a.X) / static_cast<double>(b.X - a.X);
        const IntPoint at(x, a.Y + std::llround(t * static_cast<double>(b.Y - a.Y)));
        chain_.push_back(at);
        if (head_.empty())
            head_.swap(chain_);
        else
            strips_[strip_].chains.push_back(std::move(chain_));
        strip_ = strip_ < target ? strip_ + 1 : strip_ - 1;
        chain_.assign(1, at);
    }
}

void Cutter::cutPath(const Path& path) {
    if (path.empty()) return;
    strip_ = stripOf(path.front());
    head_.clear();
    chain_.clear();
    for (std::size_t i = 0; i < path.size(); ++i) {
        const IntPoint& a = path[i];
        const IntPoint& b = path[(i + 1) % path.size()];
        chain_.push_back(a);
        cross(a, b, stripOf(b));
    }
    chain_.insert(chain_.end(), head_.begin(), head_.end());
    (head_.empty() ? strips_[strip_].closed : strips_[strip_].chains).push_back(std::move(chain_));
}

// ---- stitching -------------------------------------------------------------------------------------

class Stitcher {
public:
    explicit Stitcher(std::size_t borders) : ends_(borders) {}
    /// Takes the boundary of what the strip `index` holds.
    void add(std::size_t index, const Strip& strip, Paths& boundary);
    /// False when the strips don't fit together.
    bool stitch(Paths* united);

private:
    /// What meets at a border: [0] from its left, [1] from its right.
    struct Ends {
        std::vector<End> into[2], outOf[2];
    };

    void addChain(std::size_t index, const Strip& strip, Path chain);
    bool link(std::vector<End>& from, std::vector<End>& to);

    std::vector<Ends> ends_;
    Paths chains_;
    std::vector<std::size_t> next_;
    Paths whole_;      ///< polygons that touch no border
    bool fits_ = true; ///< no chain ends beside a border
};

void Stitcher::addChain(std::size_t index, const Strip& strip, Path chain) {
    for (const bool isStart : {true, false}) {
        const IntPoint& p = isStart ? chain.front() : chain.back();
        const bool onHigh = p.X == strip.high;
        fits_ = fits_ && (onHigh || p.X == strip.low);
        if (!fits_) return;
        Ends& ends = ends_[onHigh ? index : index - 1];
        (isStart ? ends.outOf : ends.into)[onHigh ? 0 : 1].push_back({p.Y, chains_.size(), isStart});
    }
    chains_.push_back(std::move(chain));
}

void Stitcher::add(std::size_t index, const Strip& strip, Paths& boundary) {
    for (Path& path : boundary) {
        const std::size_t n = path.size();
        std::size_t beyond = 0; // an edge beyond a border
        while (beyond < n && !strip.isBeyond(path[beyond], path[(beyond + 1) % n])) ++beyond;
        if (beyond == n) {
            whole_.push_back(std::move(path));
            continue;
        }
        Path chain;
        for (std::size_t i = 1; i <= n; ++i) {
            const IntPoint& a = path[(beyond + i) % n];
            const IntPoint& b = path[(beyond + i + 1) % n];
            if (!strip.isBeyond(a, b)) {
                if (chain.empty()) chain.push_back(a);
                chain.push_back(b);
            } else if (!chain.empty()) {
                addChain(index, strip, std::move(chain));
                chain.clear();
            }
        }
    }
}

// What arrives at a border goes on at the same height beyond it.
bool Stitcher::link(std::vector<End>& from, std::vector<End>& to) {
    if (from.size() != to.size()) return false;
    std::sort(from.begin(), from.end(), isLower);
    std::sort(to.begin(), to.end(), isLower);
    for (std::size_t i = 0; i < from.size(); ++i) {
        if (std::llabs(from[i].y - to[i].y) > kStitch) return false;
        next_[from[i].chain] = to[i].chain;
    }
    return true;
}

bool Stitcher::stitch(Paths* united) {
    if (!fits_) return false;
    next_.resize(chains_.size());
    for (Ends& ends : ends_)
        if (!link(ends.into[0], ends.outOf[1]) || !link(ends.into[1], ends.outOf[0])) return false;
    std::vector<char> used(chains_.size());
    for (std::size_t i = 0; i < chains_.size(); ++i) {
        if (used[i]) continue;
        Path path;
        for (std::size_t k = i; !used[k]; k = next_[k]) {
            used[k] = 1;
            path.insert(path.end(), chains_[k].begin() + 1, chains_[k].end());
        }
        whole_.push_back(std::move(path));
    }
    united->swap(whole_);
    return true;
}

} // namespace

bool unitePolygons(const Paths& polygons, Paths* united) {
    const std::vector<cInt> borders = bordersFor(polygons);
    if (borders.empty()) return unite(polygons, united);
    std::vector<Strip> strips = Cutter(borders).cut(polygons);
    Stitcher stitcher(borders.size());
    for (std::size_t i = 0; i < strips.size(); ++i) {
        Paths boundary;
        if (!unite(strips[i].joined(), &boundary)) return false;
        stitcher.add(i, strips[i], boundary);
    }
    // Where roundings at a border disagree, all is united at once.
    return stitcher.stitch(united) || unite(polygons, united);
}

} // namespace host

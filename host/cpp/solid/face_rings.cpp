#include "solid/face_rings.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// A loop in the parameters. One that runs round the surface ends a turn away from its start.
struct Loop {
    std::vector<RPT> points;
    int turnsU = 0, turnsV = 0;
};

double period(const SatSurface::Axis& axis) {
    return axis.comesBack ? axis.last - axis.first : 0;
}

/// `value`, moved by periods to where it is next to `to`.
double beside(double value, double to, double period) {
    return period > 0 ? value + period * std::round((to - value) / period) : value;
}

void transpose(Loop& loop) {
    for (RPT& p : loop.points) std::swap(p.x, p.y);
    std::swap(loop.turnsU, loop.turnsV);
}

class Layout {
public:
    Layout(const SatTopology& topology, const SatSurface& surface, bool isInverted, std::size_t limit)
        : topology_(topology), surface_(surface), isInverted_(isInverted), limit_(limit),
          periodU_(period(surface.u())), periodV_(period(surface.v())) {}

    Rings make(const SatRecord& face) {
        std::vector<Loop> loops;
        const SatRecord* loop = topology_.target(face, "loop");
        for (std::size_t steps = topology_.model().records.size(); loop && steps > 0; --steps) {
            Loop made = loopOf(*loop);
            if (made.points.size() > 1) loops.push_back(std::move(made));
            loop = topology_.target(*loop, "loop");
        }
        if (loops.empty()) return whole();
        const bool isAround = std::any_of(loops.begin(), loops.end(), [](const Loop& l) { return l.turnsV; });
        return isAround ? transposed(std::move(loops)) : joined(std::move(loops));
    }

private:
    // ---- loops ---------------------------------------------------------------------------------------
    /// The points of a loop in space, in its direction.
    std::vector<RPT3> pointsOf(const SatRecord& loop) const {
        std::vector<RPT3> all;
        const SatRecord* const first = topology_.target(loop, "coedge");
        const SatRecord* coedge = first;
        for (std::size_t steps = topology_.model().records.size(); coedge && steps > 0; --steps) {
            const SatRecord* const edge = topology_.target(*coedge, "edge");
            std::vector<RPT3> points;
            if (edge) points = topology_.edgePoints(*edge, limit_);
            if (edge && isReversed(topology_.behind(*coedge, "edge")))
                std::reverse(points.begin(), points.end());
            if (all.size() + points.size() > limit_) return {};
            if (!points.empty()) all.insert(all.end(), points.begin(), points.end() - 1);
            coedge = topology_.target(*coedge, "coedge");
            if (coedge == first) return all;
        }
        return {};
    }

    Loop loopOf(const SatRecord& record) const {
        Loop loop;
        const std::vector<RPT3> points = pointsOf(record);
        const std::size_t count = points.size();
        std::vector<RPT> places(count);
        std::vector<bool> isPole(count);
        for (std::size_t i = 0; i < count; ++i) isPole[i] = !surface_.locate(points[i], places[i]);
        const auto add = [&](RPT p) {
            if (!loop.points.empty()) {
                p.x = beside(p.x, loop.points.back().x, periodU_);
                p.y = beside(p.y, loop.points.back().y, periodV_);
            }
            loop.points.push_back(p);
        };
        for (std::size_t i = 0; i <= count && count; ++i) {
            const std::size_t here = i % count;
            if (!isPole[here]) {
                add(places[here]);
                continue;
            }
            // A pole is a line in the parameters: from where the loop comes to where it goes.
            add({places[(here + count - 1) % count].x, places[here].y});
            if (i < count) add({places[(here + 1) % count].x, places[here].y});
        }
        if (loop.points.size() < 2) return loop;
        const RPT &from = loop.points.front(), &to = loop.points.back();
        if (periodU_ > 0) loop.turnsU = static_cast<int>(std::lround((to.x - from.x) / periodU_));
        if (periodV_ > 0) loop.turnsV = static_cast<int>(std::lround((to.y - from.y) / periodV_));
        if (!loop.turnsU && !loop.turnsV) loop.points.pop_back();
        return loop;
    }

    // ---- areas ---------------------------------------------------------------------------------------
    Rings whole() const {
        const auto &u = surface_.u(), &v = surface_.v();
        if (!u.isBounded || !v.isBounded) return {};
        return {{{u.first, v.first}, {u.last, v.first}, {u.last, v.last}, {u.first, v.last}}};
    }

    /// Of loops that run round the other way.
    Rings transposed(std::vector<Loop> loops) {
        for (Loop& loop : loops) transpose(loop);
        std::swap(periodU_, periodV_);
        isInverted_ = !isInverted_;
        isTransposed_ = true;
        Rings rings = joined(std::move(loops));
        for (auto& ring : rings)
            for (RPT& p : ring) std::swap(p.x, p.y);
        return rings;
    }

    Rings joined(std::vector<Loop> loops) {
        std::vector<Loop> lower, upper;
        Rings rings;
        for (Loop& loop : loops) {
            const int turns = loop.turnsU;
            if (!turns)
                rings.push_back(std::move(loop.points));
            else
                ((turns > 0) != isInverted_ ? lower : upper).push_back(std::move(loop));
        }
        if (lower.size() > 1 || upper.size() > 1) return {};
        if (!lower.empty() || !upper.empty()) {
            std::vector<RPT> band = bandOf(lower, upper);
            if (band.empty()) return {};
            rings.insert(rings.begin(), std::move(band));
        } else if (isHoleOfAll(rings)) {
            const Rings all = whole();
            if (all.empty()) return {};
            rings.insert(rings.begin(), all.front());
        }
        align(rings);
        return rings;
    }

    /// From the loop that the area is above of to the one that it is below of.
    std::vector<RPT> bandOf(std::vector<Loop>& lower, std::vector<Loop>& upper) const {
        std::vector<RPT> low, high;
        if (!lower.empty()) low = ascending(std::move(lower[0].points));
        if (!upper.empty()) high = ascending(std::move(upper[0].points));
        if (low.empty() && !poleLine(high, false, low)) return {};
        if (high.empty() && !poleLine(low, true, high)) return {};
        startAt(high, low.front().x);
        if (periodV_ > 0) {
            // Less than once round above the lower one.
            const double lift =
                beside(high.front().y, low.front().y + periodV_ / 2, periodV_) - high.front().y;
            for (RPT& p : high) p.y += lift;
        }
        low.insert(low.end(), high.rbegin(), high.rend());
        return low;
    }

    static std::vector<RPT> ascending(std::vector<RPT> points) {
        if (points.back().x < points.front().x) std::reverse(points.begin(), points.end());
        return points;
    }
    bool poleLine(const std::vector<RPT>& opposite, bool isAbove, std::vector<RPT>& line) const {
        double v = 0;
        if (isTransposed_ || !surface_.pole(isAbove, v)) return false;
        line = opposite;
        for (RPT& p : line) p.y = v;
        return true;
    }
    /// Lets a loop that runs round begin at its point next to `x`.
    void startAt(std::vector<RPT>& loop, double x) const {
        loop.pop_back();
        const auto off = [&](const RPT& p) { return std::abs(beside(p.x, x, periodU_) - x); };
        const auto first = std::min_element(loop.begin(), loop.end(),
                                            [&](const RPT& a, const RPT& b) { return off(a) < off(b); });
        std::rotate(loop.begin(), first, loop.end());
        double last = x;
        for (RPT& p : loop) last = p.x = beside(p.x, last, periodU_);
        loop.push_back({loop.front().x + periodU_, loop.front().y});
    }

    static double area(const std::vector<RPT>& ring) {
        double sum = 0;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const RPT &a = ring[i], &b = ring[(i + 1) % ring.size()];
            sum += a.x * b.y - a.y * b.x;
        }
        return sum / 2;
    }
    /// Whether a surface without an end lies outside of all its loops.
    bool isHoleOfAll(const Rings& rings) const {
        const bool isEndless = surface_.u().isBounded && surface_.v().isBounded;
        return isEndless && std::all_of(rings.begin(), rings.end(),
                                        [&](const auto& ring) { return (area(ring) > 0) == isInverted_; });
    }

    /// Brings all rings to within the reach of the largest.
    void align(Rings& rings) const {
        if (rings.size() < 2) return;
        const auto largest = std::max_element(rings.begin(), rings.end(), [](const auto& a, const auto& b) {
            return std::abs(area(a)) < std::abs(area(b));
        });
        const auto middleOf = [](const std::vector<RPT>& ring) {
            const auto [lowX, highX] = std::minmax_element(
                ring.begin(), ring.end(), [](const RPT& a, const RPT& b) { return a.x < b.x; });
            const auto [lowY, highY] = std::minmax_element(
                ring.begin(), ring.end(), [](const RPT& a, const RPT& b) { return a.y < b.y; });
            return RPT{(lowX->x + highX->x) / 2, (lowY->y + highY->y) / 2};
        };
        const RPT centre = middleOf(*largest);
        for (auto& ring : rings) {
            const RPT middle = middleOf(ring);
            const double dx = beside(middle.x, centre.x, periodU_) - middle.x,
                         dy = beside(middle.y, centre.y, periodV_) - middle.y;
            for (RPT& p : ring) p.x += dx, p.y += dy;
        }
    }

    const SatTopology& topology_;
    const SatSurface& surface_;
    bool isInverted_; ///< the area is on the right of its loops
    bool isTransposed_ = false;
    std::size_t limit_;
    double periodU_, periodV_;
};

} // namespace

Rings faceRings(const SatTopology& topology, const SatRecord& face, const SatSurface& surface,
                std::size_t limit) {
    const bool isBack = isReversed(topology.behind(face, "surface"));
    return Layout(topology, surface, isBack != surface.isInverted(), limit).make(face);
}

} // namespace host

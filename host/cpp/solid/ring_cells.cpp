#include "solid/ring_cells.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// A side of a ring, from its lower to its upper end.
struct Side {
    RPT low, high;
    double at(double y) const {
        if (y <= low.y) return low.x;
        if (y >= high.y) return high.x;
        return low.x + (high.x - low.x) * (y - low.y) / (high.y - low.y);
    }
};

using Polygon = std::vector<RPT>;

/// The values of all points, those that are as good as one only once, with more between them where they are
/// more than `step` apart.
std::vector<double> linesThrough(const Rings& rings, double RPT::*axis, double step) {
    std::vector<double> all;
    for (const auto& ring : rings)
        for (const RPT& p : ring) all.push_back(p.*axis);
    std::sort(all.begin(), all.end());
    const double least = all.empty() ? 0 : 1e-9 * (all.back() - all.front());
    all.erase(std::unique(all.begin(), all.end(), [least](double a, double b) { return b - a <= least; }),
              all.end());
    if (!(step > 0)) return all;
    constexpr double nearly = 1.01, most = 512;
    std::vector<double> lines;
    for (std::size_t i = 0; i < all.size(); ++i) {
        lines.push_back(all[i]);
        if (i + 1 == all.size()) break;
        const double gap = all[i + 1] - all[i], parts = std::min(std::ceil(gap / (nearly * step)), most);
        for (double k = 1; k < parts; ++k) lines.push_back(all[i] + gap * k / parts);
    }
    return lines;
}

/// Puts a value on the line that it is next to.
void snap(double& value, const std::vector<double>& lines) {
    const auto above = std::lower_bound(lines.begin(), lines.end(), value);
    if (above == lines.begin())
        value = *above;
    else if (above == lines.end() || value - above[-1] < *above - value)
        value = above[-1];
    else
        value = *above;
}

class Cutter {
public:
    Cutter(Rings rings, double stepX, double stepY, std::size_t limit) : limit_(limit) {
        rows_ = linesThrough(rings, &RPT::y, stepY);
        if (stepX > 0) columns_ = linesThrough(rings, &RPT::x, stepX);
        for (auto& ring : rings) {
            for (RPT& p : ring) {
                snap(p.y, rows_);
                if (stepX > 0) snap(p.x, columns_);
            }
            addSides(ring);
        }
        std::sort(sides_.begin(), sides_.end(),
                  [](const Side& a, const Side& b) { return a.low.y < b.low.y; });
    }

    std::vector<std::array<RPT, 3>> cut() {
        std::vector<const Side*> active;
        std::size_t next = 0;
        for (std::size_t row = 0; row + 1 < rows_.size() && made_.size() < limit_; ++row) {
            const double low = rows_[row], high = rows_[row + 1], middle = (low + high) / 2;
            while (next < sides_.size() && sides_[next].low.y <= low) active.push_back(&sides_[next++]);
            std::erase_if(active, [low](const Side* side) { return side->high.y <= low; });
            std::sort(active.begin(), active.end(),
                      [middle](auto* a, auto* b) { return a->at(middle) < b->at(middle); });
            for (std::size_t i = 0; i + 1 < active.size(); i += 2)
                addBand({{active[i]->at(low), low},
                         {active[i + 1]->at(low), low},
                         {active[i + 1]->at(high), high},
                         {active[i]->at(high), high}});
        }
        return std::move(made_);
    }

private:
    void addSides(const std::vector<RPT>& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const RPT &a = ring[i], &b = ring[(i + 1) % ring.size()];
            if (a.y != b.y) sides_.push_back(a.y < b.y ? Side{a, b} : Side{b, a});
        }
    }

    /// A piece between two rows, cut at the columns.
    void addBand(const Polygon& band) {
        const auto [least, most] = std::minmax({band[0].x, band[1].x, band[2].x, band[3].x});
        auto column = std::upper_bound(columns_.begin(), columns_.end(), least);
        if (columns_.empty() || column == columns_.end() || *column >= most) return addFan(band);
        Polygon rest = band;
        for (; column != columns_.end() && *column < most; ++column) {
            addFan(partOf(rest, *column, -1));
            rest = partOf(rest, *column, 1);
        }
        addFan(rest);
    }

    /// What of a convex polygon is left (-1) or right of an upright line.
    static Polygon partOf(const Polygon& polygon, double x, double side) {
        Polygon part;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            const RPT &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
            const double da = side * (a.x - x), db = side * (b.x - x);
            if (da >= 0) part.push_back(a);
            if ((da > 0 && db < 0) || (da < 0 && db > 0))
                part.push_back({x, a.y == b.y ? a.y : a.y + (b.y - a.y) * da / (da - db)});
        }
        return part;
    }

    void addFan(const Polygon& polygon) {
        Polygon corners;
        for (const RPT& p : polygon)
            if (corners.empty() || p.x != corners.back().x || p.y != corners.back().y) corners.push_back(p);
        while (corners.size() > 1 && corners.back().x == corners.front().x &&
               corners.back().y == corners.front().y)
            corners.pop_back();
        for (std::size_t i = 1; i + 1 < corners.size(); ++i)
            made_.push_back({corners[0], corners[i], corners[i + 1]});
    }

    std::size_t limit_;
    std::vector<double> rows_, columns_;
    std::vector<Side> sides_;
    std::vector<std::array<RPT, 3>> made_;
};

} // namespace

std::vector<std::array<RPT, 3>> ringTriangles(Rings rings, double stepX, double stepY, std::size_t limit) {
    return Cutter(std::move(rings), stepX, stepY, limit).cut();
}

} // namespace host

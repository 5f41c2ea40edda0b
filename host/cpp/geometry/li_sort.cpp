// Chaining loose contour elements.
#include "li.h"

#include "ge.h"
#include "geometry/li_piece.h"

#include <algorithm>
#include <new>
#include <optional>
#include <unordered_map>
#include <vector>

using namespace host;

namespace {

// Which end of which element.
struct End {
    std::uint32_t elem;
    bool atEnd;
};

struct Cell {
    std::int64_t x, y;
    bool operator==(const Cell&) const = default;
};

struct CellHash {
    std::size_t operator()(const Cell& c) const {
        const auto ux = static_cast<std::uint64_t>(c.x) * 0x9E3779B97F4A7C15u;
        const auto uy = static_cast<std::uint64_t>(c.y) * 0xC2B2AE3D27D4EB4Fu;
        return static_cast<std::size_t>((ux ^ (uy >> 31)) + uy);
    }
};

// Open ends by place: a grid of cells as wide as the tolerance, so that whatever is near stands in the nine
// cells round a point. Ends of used elements leave their cell when a search meets them.
class EndGrid {
public:
    EndGrid(const std::vector<LI_ELEM*>& elems, const std::vector<char>& used, double tolerance)
        : elems_(elems), used_(used), tolerance_(tolerance) {
        for (std::uint32_t i = 0; i < elems.size(); ++i) {
            if (used[i]) continue;
            cells_[cellOf(elems[i]->start)].push_back({i, false});
            cells_[cellOf(elems[i]->end)].push_back({i, true});
        }
    }
    /// The open end nearest to `p` within the tolerance; false when there is none.
    bool nearest(const RPT& p, End* found);

private:
    // Of that many ends in one spot, the rest need not be looked at: all are near.
    static constexpr int kMaxLooks = 64;

    Cell cellOf(const RPT& p) const { return {index(p.x), index(p.y)}; }
    std::int64_t index(double v) const {
        const double cell = std::floor(v / tolerance_);
        return std::fabs(cell) < 9e18 ? static_cast<std::int64_t>(cell) : 0;
    }
    const RPT& pointOf(const End& e) const { return e.atEnd ? elems_[e.elem]->end : elems_[e.elem]->start; }
    void search(std::vector<End>& ends, const RPT& p, double* best, End* found);

    const std::vector<LI_ELEM*>& elems_;
    const std::vector<char>& used_;
    double tolerance_;
    std::unordered_map<Cell, std::vector<End>, CellHash> cells_;
};

void EndGrid::search(std::vector<End>& ends, const RPT& p, double* best, End* found) {
    int looks = 0;
    for (std::size_t i = 0; i < ends.size() && looks<kMaxLooks&& * best> 0.0;) {
        if (used_[ends[i].elem]) {
            ends[i] = ends.back();
            ends.pop_back();
            continue;
        }
        const double d = distance(pointOf(ends[i]), p);
        if (d <= tolerance_ && d < *best) {
            *best = d;
            *found = ends[i];
        }
        ++i;
        ++looks;
    }
}

bool EndGrid::nearest(const RPT& p, End* found) {
    const Cell at = cellOf(p);
    double best = HUGE_VAL;
    for (std::int64_t dx = -1; dx <= 1; ++dx)
        for (std::int64_t dy = -1; dy <= 1; ++dy) {
            const auto cell = cells_.find({at.x + dx, at.y + dy});
            if (cell != cells_.end()) search(cell->second, p, &best, found);
        }
    return best <= tolerance_;
}

void turn(LI_ELEM* elem) {
    std::swap(elem->start, elem->end);
    if (elem->isArc()) elem->type = 7 - elem->type;
    elem->turned = !elem->turned;
}

class Sorter {
public:
    Sorter(LiList& list, double tolerance);
    void run();

private:
    bool closes() const;
    bool takeNextInList();
    bool takeNearest(const RPT& p, bool atFront);
    void use(std::uint32_t i) {
        used_[i] = 1;
        ++usedCount_;
    }
    EndGrid& grid();
    void growContour(std::uint32_t start);
    void finishContour();
    void relink();

    LiList& list_;
    double tolerance_;
    std::vector<LI_ELEM*> elems_;
    std::vector<char> used_;
    std::size_t usedCount_ = 0;
    std::optional<EndGrid> grid_;                    ///< none until a search is needed
    std::uint32_t tail_ = 0;                         ///< element whose end is the open end of the contour
    std::vector<LI_ELEM*> contour_, front_, sorted_; ///< front_: grown at the start, backwards
    int contourCount_ = 0;
};

Sorter::Sorter(LiList& list, double tolerance) : list_(list), tolerance_(tolerance) {
    const auto n = static_cast<std::size_t>(list.count);
    elems_.reserve(n);
    sorted_.reserve(n);
    for (LI_ELEM* e = list.first; e; e = e->next) elems_.push_back(e);
    used_.assign(elems_.size(), 0);
}

EndGrid& Sorter::grid() {
    if (!grid_) grid_.emplace(elems_, used_, tolerance_);
    return *grid_;
}

bool Sorter::closes() const {
    if (front_.empty() && contour_.size() == 1 && pieceOf(*contour_.front()).length() <= tolerance_)
        return false;
    const RPT& start = (front_.empty() ? contour_.front() : front_.back())->start;
    return distance(contour_.back()->end, start) <= tolerance_;
}

bool Sorter::takeNextInList() {
    const std::uint32_t next = tail_ + 1;
    if (next >= elems_.size() || used_[next]) return false;
    if (distance(elems_[tail_]->end, elems_[next]->start) > tolerance_) return false;
    use(next);
    contour_.push_back(elems_[next]);
    tail_ = next;
    return true;
}

bool Sorter::takeNearest(const RPT& p, bool atFront) {
    End found{};
    if (usedCount_ == elems_.size() || !grid().nearest(p, &found)) return false;
    use(found.elem);
    if (found.atEnd != atFront) turn(elems_[found.elem]);
    (atFront ? front_ : contour_).push_back(elems_[found.elem]);
    if (!atFront) tail_ = found.elem;
    return true;
}

// A step to the next of the list comes before closing: a contour that passes its own start stays whole.
void Sorter::growContour(std::uint32_t start) {
    contour_.assign(1, elems_[start]);
    front_.clear();
    use(start);
    tail_ = start;
    while (takeNextInList() || (!closes() && takeNearest(contour_.back()->end, false))) {
    }
    while (!closes() && takeNearest((front_.empty() ? contour_.front() : front_.back())->start, true)) {
    }
}

void Sorter::finishContour() {
    contour_.insert(contour_.begin(), front_.rbegin(), front_.rend());
    const bool closed = contour_.size() > 1 && closes();
    for (std::size_t i = 0; i < contour_.size(); ++i) {
        LI_ELEM* e = contour_[i];
        e->contour = contourCount_;
        const bool follows = i > 0 || closed;
        const RPT& end = contour_[i > 0 ? i - 1 : contour_.size() - 1]->end;
        if (follows && distance(e->start, end) > 0.0) {
            e->start = end;
            LiRadKorr(e);
        }
        LiElemExpand(e);
    }
    ++contourCount_;
    sorted_.insert(sorted_.end(), contour_.begin(), contour_.end());
}

void Sorter::relink() {
    for (std::size_t i = 0; i < sorted_.size(); ++i)
        sorted_[i]->next = i + 1 < sorted_.size() ? sorted_[i + 1] : nullptr;
    list_.first = sorted_.empty() ? nullptr : sorted_.front();
    list_.last = sorted_.empty() ? nullptr : sorted_.back();
}

void Sorter::run() {
    for (std::uint32_t i = 0; i < elems_.size(); ++i) {
        if (used_[i]) continue;
        growContour(i);
        finishContour();
    }
    relink();
}

} // namespace

int LiSortKont(LiList& list, int /*mode*/, double tolerance) try {
    const double eps = tolerance > 0.0 && std::isfinite(tolerance) ? tolerance : GeEpsiGetTol();
    Sorter(list, eps).run();
    return 0;
} catch (const std::bad_alloc&) {
    return 1001;
}

// Whether contours can be filled.
#include "../config/config_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_fill_contours.h"
#include "ge.h"
#include "hatch.h"
#include "ut.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

bool isArc(const UO_ELEM& e) {
    return e.type == 3 || e.type == 4;
}

struct Span {
    double low, high;
};
Span spanOfX(const UO_ELEM& e) {
    return {std::min(e.start.x, e.end.x), std::max(e.start.x, e.end.x)};
}
bool meetsInY(const UO_ELEM& a, const UO_ELEM& b) {
    return std::max(a.start.y, a.end.y) >= std::min(b.start.y, b.end.y) &&
           std::max(b.start.y, b.end.y) >= std::min(a.start.y, a.end.y);
}

/// A grid of columns over lines by their x: each line stands in the columns that it runs through, so that
/// only near ones are compared.
class Columns {
public:
    Columns(const UO_ELEM* elems, int count) : elems_(elems) {
        Span all{HUGE_VAL, -HUGE_VAL};
        for (int i = 0; i < count; ++i) {
            const Span s = spanOfX(elems[i]);
            all = {std::min(all.low, s.low), std::max(all.high, s.high)};
        }
        // Rows of cells too, for contours whose lines lie above each other.
        low_ = {all.low, HUGE_VAL};
        RPT high{all.high, -HUGE_VAL};
        for (int i = 0; i < count; ++i) {
            low_.y = std::min({low_.y, elems[i].start.y, elems[i].end.y});
            high.y = std::max({high.y, elems[i].start.y, elems[i].end.y});
        }
        size_ = std::clamp(static_cast<int>(std::sqrt(static_cast<double>(count))), 1, 1024);
        step_ = {std::max((high.x - low_.x) / size_, 1e-300), std::max((high.y - low_.y) / size_, 1e-300)};
        cells_.resize(static_cast<std::size_t>(size_) * static_cast<std::size_t>(size_));
        for (int i = 0; i < count; ++i)
            forCells(elems[i], [&](std::vector<int>& cell) {
                cell.push_back(i);
                return true;
            });
    }

    /// Calls `visit(index)` for lines near `e`, some twice, until it gives false.
    template <class Visit>
    void near(const UO_ELEM& e, Visit visit) {
        forCells(e, [&](const std::vector<int>& cell) {
            return std::all_of(cell.begin(), cell.end(),
                               [&](int i) { return !meetsInY(e, elems_[i]) || visit(i); });
        });
    }

private:
    int cellOf(double v, double low, double step) const {
        const double cell = std::floor((v - low) / step);
        return !(cell > 0) ? 0 : cell < size_ ? static_cast<int>(cell) : size_ - 1;
    }
    /// The cells that a line passes, column by column.
    template <class Use>
    void forCells(const UO_ELEM& e, Use use) {
        const RPT& a = e.start.x <= e.end.x ? e.start : e.end;
        const RPT& b = e.start.x <= e.end.x ? e.end : e.start;
        const int first = cellOf(a.x, low_.x, step_.x), last = cellOf(b.x, low_.x, step_.x);
        const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
        const auto heightAt = [&](double x) { return a.y + (std::clamp(x, a.x, b.x) - a.x) * slope; };
        for (int column = first; column <= last; ++column) {
            double y1 = column == first ? a.y : heightAt(low_.x + column * step_.x);
            double y2 = column == last ? b.y : heightAt(low_.x + (column + 1) * step_.x);
            if (y1 > y2) std::swap(y1, y2);
            const int top = cellOf(y2, low_.y, step_.y);
            for (int row = std::max(cellOf(y1, low_.y, step_.y) - 1, 0); row <= std::min(top + 1, size_ - 1);
                 ++row)
                if (!use(cells_[static_cast<std::size_t>(column) * static_cast<std::size_t>(size_) +
                                static_cast<std::size_t>(row)]))
                    return;
        }
    }

    const UO_ELEM* elems_;
    RPT low_{0, 0}, step_{1, 1};
    int size_ = 1;
    std::vector<std::vector<int>> cells_;
};

bool areNeighbours(int i, int j, int count) {
    return i == j || (i + 1) % count == j || (j + 1) % count == i;
}

bool meet(const UO_ELEM& a, const UO_ELEM& b, RPT* point) {
    return GeRptIsDrawDraw(a.start, a.end, b.start, b.end, point) == 0;
}

void tellPoint(const RPT& p) {
    DxProtoMsg(DxMsg(5750, p.x, p.y), 0);
}

/// One direction, arcs cut, no crossing. 0 or an error.
int prepare(std::vector<UO_ELEM>& elems, int direction) {
    const int perQuarter = DxFillSegType == 0 ? static_cast<int>(DxFillSegValue) : 0;
    const double length = DxFillSegType == 0 ? 0 : DxFillSegValue;
    if (const int error = UoElemSSortDir(elems.data(), static_cast<int>(elems.size()), direction))
        return error;
    if (const int error = UoElemSArcsToDraws(&elems, perQuarter, length, UtConv(50))) return error;
    return DxElemSIllDrawCont(elems.data(), static_cast<int>(elems.size()));
}

} // namespace

int DxElemSIllDrawCont(const UO_ELEM* elems, int count) {
    if (count < 3) {
        DxProtoMsg(DxMsg(5745, count), 0);
        tellPoint(count > 0 ? elems[0].start : RPT{0, 0});
        return 1;
    }
    Columns columns(elems, count);
    bool crosses = false;
    RPT point{0, 0};
    for (int i = 0; i < count && !crosses; ++i)
        columns.near(elems[i], [&](int j) {
            crosses = !areNeighbours(i, j, count) && meet(elems[i], elems[j], &point);
            return !crosses;
        });
    if (!crosses) return 0;
    DxProtoMsg(DxMsg(5746), 0);
    tellPoint(point);
    return 1;
}

int DxElemSIsectContCont(const UO_ELEM* a, int aCount, const UO_ELEM* b, int bCount) {
    if (aCount == 0 || bCount == 0) return 0;
    Columns columns(a, aCount);
    bool crosses = false;
    RPT point{0, 0};
    for (int i = 0; i < bCount && !crosses; ++i)
        columns.near(b[i], [&](int j) {
            crosses = meet(a[j], b[i], &point);
            return !crosses;
        });
    if (!crosses) return 0;
    DxProtoMsg(DxMsg(5747), 0);
    tellPoint(point);
    return 1;
}

int DxElemSIsCircle(const UO_ELEM* elems, int count) {
    const double t = UtConv(50);
    return count == 1 && isArc(elems[0]) && std::fabs(elems[0].start.x - elems[0].end.x) < t &&
           std::fabs(elems[0].start.y - elems[0].end.y) < t;
}

int DxElemSIsTriangle(const UO_ELEM* elems, int count) {
    return count == 3 && std::none_of(elems, elems + count, isArc);
}

int DxElemSIsQuadrangle(const UO_ELEM* elems, int count) {
    return count == 4 && std::none_of(elems, elems + count, isArc);
}

int DxFillHatchCheck(DX_HATCH_CONT* cont) {
    if (const int error = prepare(cont->elems, 1)) {
        DxProtoMsg(DxMsg(5744), 1);
        return error;
    }
    for (std::vector<UO_ELEM>& hole : cont->holes) {
        const bool isBad = prepare(hole, -1) != 0 ||
                           DxElemSIsectContCont(cont->elems.data(), static_cast<int>(cont->elems.size()),
                                                hole.data(), static_cast<int>(hole.size()));
        if (!isBad) continue;
        DxProtoMsg(DxMsg(5744), 1);
        hole.clear();
    }
    return 0;
}

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

struct Box {
    RPT low, high;
};
Box boxOf(const UO_ELEM& e) {
    return {{std::min(e.start.x, e.end.x), std::min(e.start.y, e.end.y)},
            {std::max(e.start.x, e.end.x), std::max(e.start.y, e.end.y)}};
}
bool boxesMeet(const Box& a, const Box& b) {
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

/// A grid of columns over lines by their x: each line stands in the columns that it runs through, so that
/// only near ones are compared.
class Columns {
public:
    Columns(const UO_ELEM* elems, int count) {
        low_ = {HUGE_VAL, HUGE_VAL};
        RPT high{-HUGE_VAL, -HUGE_VAL};
        for (int i = 0; i < count; ++i) {
            const Box& box = boxes_.emplace_back(boxOf(elems[i]));
            low_ = {std::min(low_.x, box.low.x), std::min(low_.y, box.low.y)};
            high = {std::max(high.x, box.high.x), std::max(high.y, box.high.y)};
        }
        size_ = std::clamp(static_cast<int>(std::sqrt(static_cast<double>(count))), 1, 1024);
        step_ = {std::max((high.x - low_.x) / size_, 1e-300), std::max((high.y - low_.y) / size_, 1e-300)};
        cells_.resize(static_cast<std::size_t>(size_) * static_cast<std::size_t>(size_));
        for (int i = 0; i < count; ++i)
            visitCells(*this, elems[i], [&](std::vector<int>& cell) {
                cell.push_back(i);
                return true;
            });
    }

    /// Calls `visit(index)` for lines near `e` from index `first` on, some twice, until it gives false.
    template <class Visit>
    void near(const UO_ELEM& e, int first, Visit visit) const {
        const Box own = boxOf(e);
        visitCells(*this, e, [&](const std::vector<int>& cell) {
            // A cell has its lines in ascending order.
            return std::all_of(std::lower_bound(cell.begin(), cell.end(), first), cell.end(), [&](int i) {
                return !boxesMeet(own, boxes_[static_cast<std::size_t>(i)]) || visit(i);
            });
        });
    }

private:
    int cellOf(double v, double low, double step) const {
        const double cell = std::floor((v - low) / step);
        return !(cell > 0) ? 0 : cell < size_ ? static_cast<int>(cell) : size_ - 1;
    }
    /// The cells that a line passes, column by column. `Self`: with const or without.
    template <class Self, class Use>
    static void visitCells(Self& self, const UO_ELEM& e, Use use) {
        const RPT &low = self.low_, &step = self.step_;
        const RPT& a = e.start.x <= e.end.x ? e.start : e.end;
        const RPT& b = e.start.x <= e.end.x ? e.end : e.start;
        const int first = self.cellOf(a.x, low.x, step.x), last = self.cellOf(b.x, low.x, step.x);
        const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
        const auto heightAt = [&](double x) { return a.y + (std::clamp(x, a.x, b.x) - a.x) * slope; };
        for (int column = first; column <= last; ++column) {
            double y1 = column == first ? a.y : heightAt(low.x + column * step.x);
            double y2 = column == last ? b.y : heightAt(low.x + (column + 1) * step.x);
            if (y1 > y2) std::swap(y1, y2);
            const double slack = 1e-6 * step.y; // heights are rounded
            const int top = self.cellOf(y2 + slack, low.y, step.y);
            for (int row = self.cellOf(y1 - slack, low.y, step.y); row <= top; ++row)
                if (!use(self.cells_[static_cast<std::size_t>(column) * static_cast<std::size_t>(self.size_) +
                                     static_cast<std::size_t>(row)]))
                    return;
        }
    }

    std::vector<Box> boxes_;
    RPT low_{0, 0}, step_{1, 1};
    int size_ = 1;
    std::vector<std::vector<int>> cells_;
};

bool areNeighbours(int i, int j, int count) {
    return i == j || (i + 1) % count == j || (j + 1) % count == i;
}

/// Whether a line lies on one side of another one, beyond doubt.
bool isBeside(const UO_ELEM& line, const UO_ELEM& other) {
    const RPT way{line.end.x - line.start.x, line.end.y - line.start.y};
    const auto side = [&](const RPT& p) {
        return way.x * (p.y - line.start.y) - way.y * (p.x - line.start.x);
    };
    const double a = side(other.start), b = side(other.end);
    const double length = std::fabs(way.x) + std::fabs(way.y);
    const double all =
        length + std::fabs(other.end.x - other.start.x) + std::fabs(other.end.y - other.start.y);
    const double doubt = 1e-11 * length * all;
    return (a > doubt && b > doubt) || (a < -doubt && b < -doubt);
}

bool meet(const UO_ELEM& a, const UO_ELEM& b, RPT* point) {
    if (isBeside(a, b) || isBeside(b, a)) return false;
    return GeRptIsDrawDraw(a.start, a.end, b.start, b.end, point) == 0;
}

void tellPoint(const RPT& p) {
    DxProtoMsg(DxMsg(5750, p.x, p.y), 0);
}

/// Whether a contour crosses the one that the columns stand for, with a message.
bool cross(const Columns& columns, const UO_ELEM* a, const UO_ELEM* b, int bCount) {
    bool crosses = false;
    RPT point{0, 0};
    for (int i = 0; i < bCount && !crosses; ++i)
        columns.near(b[i], 0, [&](int j) {
            crosses = meet(a[j], b[i], &point);
            return !crosses;
        });
    if (!crosses) return false;
    DxProtoMsg(DxMsg(5747), 0);
    tellPoint(point);
    return true;
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
    const Columns columns(elems, count);
    bool crosses = false;
    RPT point{0, 0};
    for (int i = 0; i < count && !crosses; ++i)
        columns.near(elems[i], i + 1, [&](int j) {
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
    return cross(Columns(a, aCount), a, b, bCount) ? 1 : 0;
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
    if (cont->holes.empty()) return 0;
    const Columns outer(cont->elems.data(), static_cast<int>(cont->elems.size()));
    for (std::vector<UO_ELEM>& hole : cont->holes) {
        const bool isBad = prepare(hole, -1) != 0 ||
                           cross(outer, cont->elems.data(), hole.data(), static_cast<int>(hole.size()));
        if (!isBad) continue;
        DxProtoMsg(DxMsg(5744), 1);
        hole.clear();
    }
    return 0;
}

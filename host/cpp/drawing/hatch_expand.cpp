// The lines of a hatch one by one, cut to its area.
#include "drawing/hatch_lines.h"
#include "geometry/piece.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {
namespace {

using Chord = std::pair<RPT, RPT>;

void addChords(const Piece& piece, double tolerance, std::vector<Chord>& chords) {
    const int count = piece.isArc() ? std::max(chordCount(piece.radius, piece.sweep(), tolerance), 1) : 1;
    RPT from = piece.start;
    for (int i = 1; i <= count; ++i) {
        const RPT to = i == count ? piece.end : piece.pointAt(static_cast<double>(i) / count);
        chords.emplace_back(from, to);
        from = to;
    }
}

/// The border of the area as chords.
std::vector<Chord> chordsOf(const Hatch& hatch, double tolerance) {
    std::vector<Chord> chords;
    for (const Contour& contour : hatch.contours) {
        RPT at{0, 0};
        for (const Element& e : contour) {
            const RPT to{e.x, e.y};
            if (e.type == ElementType::Draw) chords.emplace_back(at, to);
            if (e.type == ElementType::Arc)
                addChords(makeArc(at, to, {e.cx, e.cy}, e.ccw ? 1 : -1), tolerance, chords);
            if (e.type == ElementType::Circle) addChords(makeArc(to, to, {e.cx, e.cy}, 1), tolerance, chords);
            at = to;
        }
    }
    return chords;
}

/// Where the border crosses line `number` of a row, at `along` from the row's origin.
struct Crossing {
    double number, along;
    auto operator<=>(const Crossing&) const = default;
};

/// Up to here whole numbers differ from their neighbours.
constexpr double countable = 1e15;

/// Cuts one row of lines to the area and adds what is drawn of it.
class RowCutter {
public:
    RowCutter(const HatchFamily& row, std::vector<Element>& out)
        : row_(row), out_(out), along_{std::cos(row.angle), std::sin(row.angle)} {
        for (const double dash : row.dashes) period_ += std::fabs(dash);
    }

    bool cut(const std::vector<Chord>& chords) {
        if (!(std::fabs(row_.distance) > 0) || !std::isfinite(row_.distance)) return true;
        double expected = 0;
        for (const Chord& chord : chords) {
            const auto [from, to] = span(chord);
            expected += to - from;
            if (!(std::fabs(from) < countable && std::fabs(to) < countable)) return false;
        }
        if (!(expected <= static_cast<double>(kHatchBudget))) return false;
        for (const Chord& chord : chords) addCrossings(chord);
        std::sort(crossings_.begin(), crossings_.end());
        for (std::size_t i = 0; i + 1 < crossings_.size(); i += 2)
            if (!addLine(crossings_[i].number, crossings_[i].along, crossings_[i + 1].along)) return false;
        return true;
    }

private:
    RPT inRow(const RPT& p) const {
        const RPT d = p - RPT{row_.originX, row_.originY};
        return {dot(along_, d), dot(leftOf(along_), d) / row_.distance};
    }
    /// Numbers of the lines that a chord crosses: from the first up to, without, the second. A line through
    /// a corner is crossed by one of its chords, or by both or none at a turning point.
    std::pair<double, double> span(const Chord& chord) const {
        const double a = inRow(chord.first).y, b = inRow(chord.second).y;
        return {std::ceil(std::min(a, b)), std::ceil(std::max(a, b))};
    }
    void addCrossings(const Chord& chord) {
        const RPT a = inRow(chord.first), b = inRow(chord.second);
        const auto [from, to] = span(chord);
        for (double number = from; number < to; ++number)
            crossings_.push_back({number, a.x + (b.x - a.x) * ((number - a.y) / (b.y - a.y))});
    }
    void addSegment(double number, double from, double to) {
        const RPT across = leftOf(along_);
        const RPT base = RPT{row_.originX, row_.originY} + (number * row_.distance) * across;
        out_.push_back(elementAt(ElementType::Move, base + from * along_));
        out_.push_back(elementAt(ElementType::Draw, base + to * along_));
    }
    Element elementAt(ElementType type, const RPT& p) const {
        Element e;
        e.type = type;
        e.x = p.x;
        e.y = p.y;
        e.pen = row_.pen;
        e.lineType = static_cast<std::int16_t>(std::clamp(row_.lineType, 0, 0x7fff));
        return e;
    }
    bool isFull() const { return out_.size() > 2 * kHatchBudget; }
    /// One line of the area from `from` to `to`, in its dashes.
    bool addLine(double number, double from, double to) {
        if (!(period_ > 0)) {
            if (to > from) addSegment(number, from, to);
            return !isFull();
        }
        if (!((to - from) / period_ < static_cast<double>(kHatchBudget)) ||
            !(std::max(std::fabs(from), std::fabs(to)) / period_ < countable))
            return false;
        const double shift = number * row_.offset;
        double at = shift + std::floor((from - shift) / period_) * period_;
        while (at < to && !isFull()) {
            for (const double dash : row_.dashes) {
                const double end = at + std::fabs(dash);
                if (dash >= 0 && std::max(at, from) <= std::min(end, to))
                    addSegment(number, std::max(at, from), std::min(end, to));
                at = end;
            }
        }
        return !isFull();
    }

    const HatchFamily& row_;
    std::vector<Element>& out_;
    RPT along_;
    double period_ = 0;
    std::vector<Crossing> crossings_;
};

} // namespace

bool expandHatch(const Drawing& drawing, const Hatch& hatch, std::vector<Element>* elements) {
    const std::vector<Chord> chords = chordsOf(hatch, drawingTolerance(drawing));
    elements->clear();
    std::vector<HatchFamily> rows = hatchFamilies(drawing, hatch);
    constexpr double mostWork = 1e8; // chords looked at
    if (static_cast<double>(rows.size()) * static_cast<double>(chords.size()) > mostWork) return false;
    for (HatchFamily& row : rows) {
        if (hatch.families.empty()) row.dashes.clear(); // its line type makes the dashes
        if (!RowCutter(row, *elements).cut(chords)) {
            elements->clear();
            return false;
        }
    }
    return true;
}

} // namespace host

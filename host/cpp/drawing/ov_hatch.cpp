// Hatches from contour patterns.
#include "ov.h"

#include "drawing/host_state.h"
#include "drawing/spline_curve.h"
#include "services/failure.h"

#include <algorithm>

using namespace host;

namespace {

/// Cuts a plot into closed contours. A Move begins one, and so does a Draw that stands for a jump from one
/// contour to the next (info bit 2).
class ContourCollector {
public:
    ContourCollector(const Pattern& pattern, double tolerance) : pattern_(pattern), tolerance_(tolerance) {}

    void collect(Hatch& hatch) {
        std::vector<bool> isMarked(pattern_.elements.size());
        for (const ElementAttribute& a : pattern_.elementAttributes)
            if (a.row >= 0 && static_cast<std::size_t>(a.row) < isMarked.size() &&
                a.value.find("EXCLUDE") != std::string::npos)
                isMarked[static_cast<std::size_t>(a.row)] = true;
        for (std::size_t i = 0; i < pattern_.elements.size(); ++i) {
            take(pattern_.elements[i]);
            isExcluded_ = isExcluded_ || isMarked[i];
        }
        finish();
        hatch.contours = std::move(contours_);
        hatch.exclusions = std::move(exclusions_);
    }

private:
    static constexpr unsigned jump = 2;

    void take(const Element& element) {
        const bool jumps = element.type == ElementType::Draw && (element.info & jump);
        if (element.type == ElementType::Circle) {
            finish();
            contours_.push_back({element});
        } else if (element.type == ElementType::Move || element.type == ElementType::Point || jumps) {
            finish();
            begin(element);
        } else if (element.type == ElementType::Spline) {
            takeSpline(element);
        } else {
            current_.push_back(element);
        }
    }

    void begin(const Element& at) {
        current_.assign(1, at);
        current_.front().type = ElementType::Move;
    }

    void takeSpline(const Element& element) {
        const auto index = static_cast<std::size_t>(std::max(element.cx, 0.0));
        if (index >= pattern_.splines.size()) return;
        const Spline& spline = pattern_.splines[index];
        const std::vector<RPT> chain = flattenSpline(spline, visibleTolerance(spline, tolerance_));
        for (std::size_t i = 1; i < chain.size(); ++i) {
            Element draw = element;
            draw.type = ElementType::Draw;
            draw.x = chain[i].x;
            draw.y = chain[i].y;
            draw.cx = draw.cy = 0;
            current_.push_back(draw);
        }
    }

    /// Closes the contour in the making; one that encloses nothing is dropped.
    void finish() {
        if (current_.size() >= 2) {
            const Element& first = current_.front();
            if (current_.back().x != first.x || current_.back().y != first.y) {
                Element draw = first;
                draw.type = ElementType::Draw;
                current_.push_back(draw);
            }
            const bool arc = std::any_of(current_.begin(), current_.end(),
                                         [](const Element& e) { return e.type == ElementType::Arc; });
            if (arc || current_.size() > 3) {
                if (isExcluded_) exclusions_.push_back({static_cast<int>(contours_.size())});
                contours_.push_back(std::move(current_));
            }
        }
        current_.clear();
        isExcluded_ = false;
    }

    const Pattern& pattern_;
    double tolerance_;
    Contour current_;
    bool isExcluded_ = false; ///< the contour in the making has the mark
    std::vector<Contour> contours_;
    std::vector<HatchExclusion> exclusions_;
};

} // namespace

int ovhatch(int* /*code*/, int* toPat, int* contourPat) {
    if (callFails()) return errorNoMemory;
    Pattern* target = openDrawing().find(*toPat);
    const Pattern* source = openDrawing().find(*contourPat);
    if (!target || !source) return errorNoSuchObject;
    Hatch made = drawingState().hatch;
    ContourCollector(*source, drawingTolerance(openDrawing())).collect(made);
    if (made.contours.empty()) return errorNotApplicable;
    target->hatches.push_back(std::move(made));
    ++openDrawing().elementCount;
    return 0;
}

int ovhatchparams(int* mode, int* /*patNo*/) {
    if (callFails()) return errorNoMemory;
    if (*mode == 1)
        drawingState().hatch = noHatchYet();
    else if (*mode == 2)
        drawingState().hatch.solid = true;
    else
        return errorNotApplicable;
    return 0;
}

int ovhatchsetreppar(int index, int high, int low) {
    if (callFails()) return errorNoMemory;
    constexpr int highest = 1 << 20; // far above any pen; keeps the product in range
    if (index < 0 || index > 1 || high < -highest || high > highest) return errorNotApplicable;
    const int value = 16 * high + low % 16;
    if (index == 0)
        drawingState().hatch.fillPen = value;
    else
        drawingState().hatch.transparency = std::clamp(value, 0, 100);
    return 0;
}

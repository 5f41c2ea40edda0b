#include "render/plan_of_space.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace host {

PlanOfSpace::PlanOfSpace(double size) {
    constexpr double part = 1e-7;
    step_ = size > 0 && std::isfinite(size) ? size * part : part;
}

PlanOfSpace::Edge PlanOfSpace::edgeOf(const RPT& a, const RPT& b) const {
    const auto place = [this](double value) {
        constexpr double most = 9e15; // far beyond the drawing
        const double steps = value / step_;
        return std::isfinite(steps) ? std::llround(std::clamp(steps, -most, most)) : 0;
    };
    std::pair<std::int64_t, std::int64_t> from{place(a.x), place(a.y)}, to{place(b.x), place(b.y)};
    if (to < from) std::swap(from, to);
    return {from.first, from.second, to.first, to.second};
}

void PlanOfSpace::add(const SpaceContent& content) {
    const auto addEdge = [this](const RPT3& a, const RPT3& b) {
        edges_.push_back(edgeOf({a.x, a.y}, {b.x, b.y}));
    };
    forEachFaceList(content, [&](const FaceList& list) {
        forEachFace(list, [&](const FaceView& face) {
            for (int i = 1; i < face.count; ++i)
                if (face.marks[i] & EDGE) addEdge(face.points[i - 1], face.points[i]);
        });
    });
    for (const Curve& curve : content.curves)
        for (std::size_t i = 1; i < curve.points.size(); ++i) addEdge(curve.points[i - 1], curve.points[i]);
}

void PlanOfSpace::finish() {
    std::sort(edges_.begin(), edges_.end());
    edges_.erase(std::unique(edges_.begin(), edges_.end()), edges_.end());
}

bool PlanOfSpace::hasEdge(const RPT& a, const RPT& b) const {
    return std::binary_search(edges_.begin(), edges_.end(), edgeOf(a, b));
}

/// Where the first facet of a wall over an arc ends on the ground.
static RPT firstFacetEnd(const RPT& from, const Element& arc) {
    constexpr double fullTurn = 2 * std::numbers::pi;
    constexpr double resolution = 36; // facets of a full turn
    const double start = std::atan2(from.y - arc.cy, from.x - arc.cx);
    double span = std::atan2(arc.y - arc.cy, arc.x - arc.cx) - start;
    if (arc.ccw && span < 0) span += fullTurn;
    if (!arc.ccw && span > 0) span -= fullTurn;
    const double facets = std::max(1.0, std::ceil(std::fabs(span) / fullTurn * resolution - 1e-9));
    const double radius = std::hypot(from.x - arc.cx, from.y - arc.cy), angle = start + span / facets;
    return {arc.cx + radius * std::cos(angle), arc.cy + radius * std::sin(angle)};
}

/// A line has its like in an edge, an arc in the facets of the wall over it.
bool PlanOfSpace::isPlan(const RPT& from, const Element& element) const {
    const RPT to{element.x, element.y};
    switch (element.type) {
    case ElementType::Draw: return hasEdge(from, to);
    case ElementType::Arc: return hasEdge(from, firstFacetEnd(from, element));
    case ElementType::Circle: return hasEdge(to, to);
    default: return false;
    }
}

Pattern PlanOfSpace::elementsBeside(const Pattern& pattern) const {
    Pattern beside;
    beside.splines = pattern.splines;
    std::vector<Element>& out = beside.elements;
    RPT at{0, 0};
    for (Element element : pattern.elements) {
        if (isPlan(at, element)) element.type = ElementType::Move;
        at = {element.x, element.y};
        const bool isOnlyMoved =
            element.type == ElementType::Move && !out.empty() && out.back().type == ElementType::Move;
        if (isOnlyMoved)
            out.back() = element;
        else
            out.push_back(element);
    }
    if (!out.empty() && out.back().type == ElementType::Move) out.pop_back();
    return beside;
}

} // namespace host

// Which flat elements are only the plan of what stands in space. An import in 3D gives both.
#pragma once

#include "drawing/drawing.h"

#include <array>
#include <cstdint>
#include <vector>

namespace host {

class PlanOfSpace {
public:
    /// Points count as one within a small part of `size`, that of the drawing.
    explicit PlanOfSpace(double size);
    void add(const SpaceContent& content);
    /// Behind the last add(), ahead of what follows.
    void finish();
    bool empty() const { return edges_.empty(); }
    /// The elements and splines of a pattern, without those that have their like in space.
    Pattern elementsBeside(const Pattern& pattern) const;

private:
    using Edge = std::array<std::int64_t, 4>; ///< both ends, the lower one first

    Edge edgeOf(const RPT& a, const RPT& b) const;
    bool hasEdge(const RPT& a, const RPT& b) const;
    bool isPlan(const RPT& from, const Element& element) const;

    double step_;
    std::vector<Edge> edges_; ///< sorted; an upright one has its ends in one place
};

} // namespace host

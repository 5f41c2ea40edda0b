// One step of a pattern's plot.
#pragma once

#include <cstdint>

namespace host {

/// Element types as CiElem reports them; Spline is an interpolating spline, reported as its chain of Draws.
enum class ElementType : std::uint8_t { Move = 1, Draw = 2, Arc = 3, Circle = 4, Point = 5, Spline = 6 };

/// One step of a pattern's plot, 40 bytes.
struct Element {
    double x = 0, y = 0;   ///< target point (Circle: a point on it)
    double cx = 0, cy = 0; ///< centre of Arc and Circle; Spline: cx is the index in Pattern::splines
    std::int32_t pen = 1;
    std::int16_t lineType = 1;
    ElementType type = ElementType::Move;
    /// The info byte (values up to 127): 4 member of a figure, 1 closed, 8 revision cloud, 2 jump.
    std::uint8_t info : 7 = 0;
    std::uint8_t ccw : 1 = 0; ///< arcs: 1 counter-clockwise
};
static_assert(sizeof(Element) == 40);

} // namespace host

// A B-spline surface of a solid model.
#pragma once

#include "solid/sat_tokens.h"

#include "rpt.h"

#include <array>
#include <cstddef>
#include <vector>

namespace host {

class SatSplineSurface {
public:
    /// Reads the shape of a sub-record that opens at token `at`: its last B-spline surface that isn't one of
    /// a part.
    bool readSub(const SatModel& model, std::size_t at);
    RPT3 at(const RPT& uv) const;
    /// Parameters of the point of the surface that is nearest.
    RPT nearest(const RPT3& point) const;
    double first(int axis) const { return knots_[axis][degree_[axis]]; }
    double last(int axis) const { return knots_[axis][knots_[axis].size() - 1 - degree_[axis]]; }
    bool comesBack(int axis) const { return comesBack_[axis]; }
    /// A distance of parameters over which it bends little.
    double step(int axis) const;

private:
    bool read(const SatModel& model, std::size_t at);
    void fillGrid();
    std::size_t poles(int axis) const { return knots_[axis].size() - degree_[axis] - 1; }
    /// The functions that aren't 0 at `t`, and the pole that the first belongs to.
    std::size_t basis(int axis, double t, std::vector<double>& values) const;

    std::array<std::size_t, 2> degree_{1, 1};
    std::array<std::vector<double>, 2> knots_;
    std::array<bool, 2> comesBack_{false, false};
    std::vector<std::array<double, 4>> poles_; ///< times their weights, and the weight; rows of u
    std::vector<RPT3> grid_;                   ///< points of it, to begin a search at
};

} // namespace host

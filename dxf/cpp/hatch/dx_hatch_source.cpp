// Whether a hatch still has the lines that the pattern of its source folded into.
#include "dx_write_hatch.h"
#include "hatch.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr double pi = std::numbers::pi;

/// A row of parallel lines: direction from 0 to below half a turn, where it lies to the right of that, and
/// how far its lines are from each other.
struct Row {
    double angle, place, period;
};

Row rowOf(double angle, double place, double period) {
    const double turns = std::floor(angle / pi + 1e-9);
    const bool isReversed = std::fmod(std::fabs(turns), 2.0) == 1.0;
    return {angle - turns * pi, isReversed ? -place : place, std::fabs(period)};
}

bool isSame(const Row& a, const Row& b) {
    constexpr double near = 1e-4, nearPlace = 0.01; // a base at the origin is moved off it a little
    const double turn = std::remainder(a.angle - b.angle, pi);
    if (std::fabs(turn) > near || std::fabs(a.period - b.period) > near * b.period) return false;
    const bool isReversed = std::fabs(a.angle - b.angle) > pi / 2;
    return std::fabs(std::remainder(a.place - (isReversed ? -b.place : b.place), b.period)) <=
           nearPlace * b.period;
}

std::vector<Row> rowsOf(const OV_HATCH_PATTERN& source) {
    std::vector<Row> rows;
    for (const OV_PATTERN_LINE& line : source.lines) {
        const double c = std::cos(line.angle), s = std::sin(line.angle);
        rows.push_back(
            rowOf(line.angle, line.base.x * s - line.base.y * c, line.offset.x * s - line.offset.y * c));
    }
    return rows;
}

std::vector<Row> rowsOf(const UO_HATCH_PAR* pars) {
    std::vector<Row> rows;
    for (int i = 0; i < 2; ++i) {
        const UO_HATCH_PAR& par = pars[i];
        double place = par.useBase ? par.base : 0;
        for (int k = 0; k < par.c1 + par.c2; ++k) {
            rows.push_back(rowOf(par.angle, place, par.c1 * par.d1 + par.c2 * par.d2));
            place += k < par.c1 ? par.d1 : par.d2;
        }
    }
    return rows;
}

/// What stands for a pattern that didn't fold.
bool isStandard(const UO_HATCH_PAR* pars) {
    const UO_HATCH_PAR& p = pars[0];
    const bool isOnlyOne = pars[1].c1 == 0 && pars[1].c2 == 0;
    return isOnlyOne && p.angle == pi / 4 && p.base == 0 && p.d1 == 2.0 && p.c1 == 1 && p.c2 == 0;
}

} // namespace

bool DxHatchCarriesSource(const OV_HATCH_PATTERN& source) {
    constexpr int read = 20;
    UO_HATCH_PAR pars[2];
    if (UoHatchPar(read, pars) != 0) return false;
    if (isStandard(pars)) return true;
    const std::vector<Row> wanted = rowsOf(source);
    std::vector<Row> rows = rowsOf(pars);
    if (rows.size() != wanted.size()) return false;
    for (const Row& row : wanted) {
        std::size_t i = 0;
        while (i < rows.size() && !isSame(row, rows[i])) ++i;
        if (i == rows.size()) return false;
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return true;
}

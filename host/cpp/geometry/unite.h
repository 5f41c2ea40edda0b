// Regions bounded by loops of lines and arcs.
#pragma once

#include "geometry/band.h"

namespace host {

/// Whether pieces of the loops meet anywhere but where one follows the other. `budget` bounds the work: so
/// many meetings are looked at; with more, `*tooMany` is set.
bool loopsCross(const std::vector<PieceLoop>& loops, double eps, std::size_t budget, bool* tooMany);

/// The boundary of the region where the winding number of the loops is above 0: outer loops
/// counter-clockwise, holes clockwise. Arcs are arcs again afterwards. Stretches thinner than `tolerance` may
/// get lost. False, with no result, when the loops are beyond what can be worked out.
bool uniteLoops(const std::vector<PieceLoop>& loops, double tolerance, std::vector<PieceLoop>* result);

} // namespace host

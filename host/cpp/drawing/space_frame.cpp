#include "drawing/space_frame.h"

#include "drawing/drawing.h"
#include "ov_3d.h"

#include <cmath>

namespace host {

double spaceFactor(double scale) {
    // Only 1 and the number below it bring all lengths back. One of the reciprocal and its neighbours gives
    // such a product: the products of neighbours lie closer to each other than what rounds to the two.
    constexpr double belowOne = 1 - 0x1p-53;
    const double factor = 1 / scale;
    for (const double candidate : {factor, std::nextafter(factor, 0.0), std::nextafter(factor, HUGE_VAL)}) {
        const double product = scale * candidate;
        if (product == 1 || product == belowOne) return candidate;
    }
    return factor;
}

double spaceLength() {
    const double scale = openDrawing().scale;
    return scale * spaceFactor(scale);
}

} // namespace host

void Uo3dWertUserToNm(double* value) {
    *value *= host::spaceLength();
}

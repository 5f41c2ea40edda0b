// B-spline curves: rational, of any degree and knot vector.
//
// All functions give 0, or an error with the results untouched: 3011 for a record that describes no curve
// (fewer controls than the order, fewer knots than controls plus order, knots that descend or aren't
// finite, an order outside 1 to 51), 1001 when there is no memory.
#pragma once

#include "rpt.h"

#include <cstdint>
#include <vector>

/// A point of projective space: (x, y, z) times its weight, and the weight.
struct BS_POINT {
    double x;
    double y;
    double z;
    double w;
};

inline constexpr int BS_MAX_ORDER = 51;

/// A curve. The arrays are the caller's. Knots beyond controlCount + order don't count.
/// Its parameter runs from knots[order - 1] to knots[controlCount].
struct BS_CURVE {
    int kind = 1;
    int form = 5;
    const BS_POINT* controls = nullptr;
    const double* knots = nullptr;
    void* reserved1 = nullptr;
    void* reserved2 = nullptr;
    int controlCount = 0;
    int knotCount = 0;
    std::int16_t order = 0; ///< degree + 1
};

/// Curve parameters for drawing: `density` in each knot span that isn't empty, from the start of the valid
/// range to its end, both included, ascending. spans[i] is the knot span of parameters[i], as BsSplinePoint
/// wants it.
int BsGetCurveUList(const BS_CURVE& curve, int density, std::vector<double>* parameters,
                    std::vector<int>* spans, int* count);
/// The point at `u`, homogeneous. 3011 also where the weight vanishes. A control of weight 0 has no say.
int BsSplinePoint(const BS_CURVE& curve, double u, int span, BS_POINT* homogeneous);
/// The first derivative by `u` of the curve (not of its homogeneous form). Where it is the null vector, as
/// at the end of a curve with two equal controls there, the derivative beside that point within the span;
/// 3011 when that is none either.
int BsCurveRichtAbl(const BS_CURVE& curve, double u, int span, RPT3* tangent);

// The shapes that a model's records describe, as functions of their parameters.
#pragma once

#include "../geometry/nurbs.h"
#include "acis_file.h"

#include <optional>

namespace ACIS {

/// A curve with its range; an endless one has the range of its period or of nothing in particular.
struct CurveShape {
    geometry::CurveFunction at;
    double start = 0, end = 1;
    bool isEndless = false; ///< a line without bounds
    double period = 0;      ///< of a closed curve, else 0
    /// The parameter of the point on the curve that is nearest.
    std::function<double(geometry::Vec3)> parameterOf;
};

/// A surface with its range.
struct SurfaceShape {
    geometry::SurfaceFunction at;
    double range[4] = {0, 1, 0, 1}; ///< u and v, from and to
    bool isEndless[2] = {false, false};
    double period[2] = {0, 0};
    /// The parameters of the nearest point.
    std::function<void(geometry::Vec3, double&, double&)> parametersOf;
};

/// Shapes of records; nothing when a record isn't of that kind or its shape isn't known.
std::optional<CurveShape> curveShape(const File& file, const ENTITY& entity);
std::optional<SurfaceShape> surfaceShape(const File& file, const ENTITY& entity);
/// Shapes of sub-records.
std::optional<CurveShape> curveShape(const File& file, const SubRecord& sub);
std::optional<SurfaceShape> surfaceShape(const File& file, const SubRecord& sub);

/// The place of a point record or of a vertex's point.
std::optional<geometry::Vec3> pointOf(const File& file, const ENTITY& entity);

/// The parameters of an edge's ends, along the edge: those in the file, else from the places of its vertices
/// on the curve. An edge without a curve gets 0 and 1.
void edgeRange(const File& file, std::int64_t number, double& start, double& end);

/// Where in a sub-record kept token by token its B-spline stands: the first of a curve, the last of a
/// surface. 0 when there is none.
std::size_t findSpline(const File& file, const SubRecord& sub, bool isSurface, std::size_t& count);

/// The B-spline whose values begin at `at`.
std::optional<geometry::NurbsCurve> curveSpline(const File& file, std::size_t at, std::size_t count,
                                                bool& isClosed);
std::optional<geometry::NurbsSurface> surfaceSpline(const File& file, std::size_t at, std::size_t count,
                                                    bool closed[2]);

} // namespace ACIS

// The surfaces of a solid model, as far as a picture wants them.
#pragma once

#include "solid/sat_spline_surface.h"
#include "solid/sat_tokens.h"

#include "rpt.h"

#include <numbers>

namespace host {

/// A plane, a cone or cylinder, a sphere, a torus or a B-spline, by two parameters:
///   plane     lengths along its axes
///   cone      angle about the axis, length along it
///   sphere    longitude, latitude
///   torus     angle about the axis, angle around the tube
class SatSurface {
public:
    /// A direction of the parameters.
    struct Axis {
        double first = 0, last = 0; ///< of the whole surface, where it has ends or comes back
        bool isBounded = false;     ///< from `first` to `last`
        bool comesBack = false;     ///< what is at `last` is at `first`
        double step = 0;            ///< between lines that chords may join; 0: the surface is straight
    };

    bool isKnown() const { return kind_ != Kind::None; }
    RPT3 at(const RPT& uv) const;
    /// The parameters of a point on it. False at a pole: only y is set.
    bool locate(const RPT3& point, RPT& uv) const;
    const Axis& u() const { return u_; }
    const Axis& v() const { return v_; }
    /// Whether what is left of a loop's direction, as seen by the parameters, is outside its face.
    bool isInverted() const { return isInverted_; }
    /// The height at which all points of a round surface are one, above or below. False when there is none.
    bool pole(bool isAbove, double& v) const;

private:
    enum class Kind { None, Plane, Cone, Sphere, Torus, Spline };
    friend class SatSurfaceReader;
    RPT3 local(const RPT3& point) const; ///< along the axes, from the root
    RPT3 world(double x, double y, double z) const;

    Kind kind_ = Kind::None;
    RPT3 root_{0, 0, 0}, x_{1, 0, 0}, y_{0, 1, 0}, z_{0, 0, 1};
    double major_ = 1, minor_ = 1; ///< radii; of a cone the lengths of its ellipse at the root
    double taper_ = 0;             ///< of a cone: growth of the radii, in parts of them, along the axis
    bool isInverted_ = false;
    Axis u_, v_;
    SatSplineSurface spline_;
};

/// The surface of a record; one that isn't known when the file has it in no form that is understood.
SatSurface satSurface(const SatModel& model, const SatRecord& record);

} // namespace host

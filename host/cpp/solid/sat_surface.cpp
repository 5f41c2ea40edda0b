#include "solid/sat_surface.h"

#include "solid/sat_curve.h"
#include "solid/sat_topology.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host {
namespace {

constexpr double turn = 2 * std::numbers::pi;
constexpr double chord = turn / 48; ///< as edges have it

} // namespace

/// Fields of a surface's record behind its last pointer.
class SatSurfaceReader {
public:
    SatSurfaceReader(const SatModel& model, const SatRecord& record)
        : model_(model), record_(record), at_(record.first), end_(record.first + record.count) {
        for (std::size_t i = at_; i < end_ && model.tokens[i].kind != SatKind::Open; ++i)
            if (model.tokens[i].kind == SatKind::Pointer) at_ = i + 1;
    }

    SatSurface read() {
        if (record_.leaf == "plane") plane();
        if (record_.leaf == "cone") cone();
        if (record_.leaf == "sphere") sphere();
        if (record_.leaf == "torus") torus();
        if (record_.leaf == "spline") spline();
        return isWhole_ ? surface_ : SatSurface();
    }

private:
    double number() {
        const bool isThere = at_ < end_ && model_.tokens[at_].kind == SatKind::Number;
        isWhole_ &= isThere && std::isfinite(model_.tokens[at_].number);
        return isThere ? model_.tokens[at_++].number : 0;
    }
    RPT3 point() {
        const double x = number(), y = number();
        return {x, y, number()};
    }
    const SatToken* flag() { return at_ < end_ ? &model_.tokens[at_++] : nullptr; }
    void bound() {
        const SatToken* const token = flag();
        const bool isWord = token && token->kind == SatKind::Word;
        if (token && (isWord ? token->text == "F" : token->number != 0)) number();
    }
    /// Axes with z along `up` and x as near to `along` as that allows.
    void frame(const RPT3& root, const RPT3& up, const RPT3& along) {
        surface_.root_ = root;
        surface_.z_ = unit(up);
        surface_.y_ = unit(cross(surface_.z_, along));
        surface_.x_ = cross(surface_.y_, surface_.z_);
    }
    void round(SatSurface::Axis& axis) { axis = {0, turn, true, true, chord}; }

    void plane() {
        const RPT3 root = point(), normal = point();
        frame(root, normal, point());
        surface_.kind_ = SatSurface::Kind::Plane;
    }
    void cone() {
        const RPT3 root = point(), axis = point(), major = point();
        const double ratio = number();
        bound(), bound();
        const double sine = number(), cosine = number();
        frame(root, axis, major);
        surface_.major_ = std::sqrt(dot(major, major));
        surface_.minor_ = surface_.major_ * std::abs(ratio);
        surface_.taper_ = sine / cosine / surface_.major_;
        isWhole_ &= std::abs(std::hypot(sine, cosine) - 1) < 1e-3 && std::isfinite(surface_.taper_) &&
                    surface_.minor_ > 0;
        // A scale of u in newer versions, ahead of a word; the oldest have numbers only.
        const bool hasScale = at_ + 1 < end_ && model_.tokens[at_].kind == SatKind::Number &&
                              model_.tokens[at_ + 1].kind != SatKind::Number;
        if (hasScale) ++at_;
        surface_.isInverted_ = (cosine < 0) != isReversed(flag());
        round(surface_.u_);
        surface_.kind_ = SatSurface::Kind::Cone;
    }
    void sphere() {
        const RPT3 centre = point();
        const double radius = number();
        const RPT3 along = point();
        frame(centre, point(), along);
        surface_.major_ = std::abs(radius);
        surface_.isInverted_ = radius < 0;
        round(surface_.u_);
        surface_.v_ = {-turn / 4, turn / 4, true, false, chord};
        surface_.kind_ = SatSurface::Kind::Sphere;
    }
    void torus() {
        const RPT3 centre = point(), axis = point();
        surface_.major_ = number();
        const double minor = number();
        frame(centre, axis, point());
        surface_.minor_ = std::abs(minor);
        surface_.isInverted_ = minor < 0;
        round(surface_.u_);
        round(surface_.v_);
        surface_.kind_ = SatSurface::Kind::Torus;
    }
    void spline() {
        surface_.isInverted_ = isReversed(flag());
        std::size_t open = at_;
        const bool isReference = open + 2 < end_ && model_.tokens[open + 1].text == "ref";
        const double number = isReference ? model_.tokens[open + 2].number : 0;
        if (isReference && number >= 0 && number < static_cast<double>(model_.subRecords.size()))
            open = model_.subRecords[static_cast<std::size_t>(number)];
        isWhole_ = open < model_.tokens.size() && surface_.spline_.readSub(model_, open);
        if (!isWhole_) return;
        const SatSplineSurface& s = surface_.spline_;
        surface_.u_ = {s.first(0), s.last(0), true, s.comesBack(0), s.step(0)};
        surface_.v_ = {s.first(1), s.last(1), true, s.comesBack(1), s.step(1)};
        surface_.kind_ = SatSurface::Kind::Spline;
    }

    const SatModel& model_;
    const SatRecord& record_;
    std::size_t at_, end_;
    bool isWhole_ = true;
    SatSurface surface_;
};

SatSurface satSurface(const SatModel& model, const SatRecord& record) {
    return SatSurfaceReader(model, record).read();
}

RPT3 SatSurface::local(const RPT3& point) const {
    const RPT3 off = difference(point, root_);
    return {dot(off, x_), dot(off, y_), dot(off, z_)};
}

RPT3 SatSurface::world(double x, double y, double z) const {
    return sum(sum(root_, scale(x_, x)), sum(scale(y_, y), scale(z_, z)));
}

RPT3 SatSurface::at(const RPT& uv) const {
    if (kind_ == Kind::Spline) {
        const auto wrapped = [](const Axis& axis, double t) {
            const double period = axis.last - axis.first;
            return axis.comesBack && (t < axis.first || t > axis.last)
                       ? t - period * std::floor((t - axis.first) / period)
                       : t;
        };
        return spline_.at({wrapped(u_, uv.x), wrapped(v_, uv.y)});
    }
    const double c = std::cos(uv.x), s = std::sin(uv.x);
    if (kind_ == Kind::Cone) {
        const double size = 1 + taper_ * uv.y;
        return world(size * major_ * c, size * minor_ * s, uv.y);
    }
    const double out = std::cos(uv.y), up = std::sin(uv.y);
    if (kind_ == Kind::Sphere) return world(major_ * out * c, major_ * out * s, major_ * up);
    const double radius = major_ + minor_ * out;
    if (kind_ == Kind::Torus) return world(radius * c, radius * s, minor_ * up);
    return world(uv.x, uv.y, 0);
}

bool SatSurface::locate(const RPT3& point, RPT& uv) const {
    constexpr double nearlyNothing = 1e-9;
    const RPT3 p = local(point);
    const double out = std::hypot(p.x, p.y);
    uv = {std::atan2(p.y, p.x), p.z};
    switch (kind_) {
    case Kind::Cone: uv.x = std::atan2(p.y / minor_, p.x / major_); return out > nearlyNothing * major_;
    case Kind::Sphere: uv.y = std::atan2(p.z, out); return out > nearlyNothing * major_;
    case Kind::Torus: uv.y = std::atan2(p.z, out - major_); return true;
    case Kind::Spline: uv = spline_.nearest(point); return true;
    default: uv = {p.x, p.y}; return true;
    }
}

bool SatSurface::pole(bool isAbove, double& v) const {
    v = isAbove ? v_.last : v_.first;
    if (kind_ == Kind::Sphere || kind_ == Kind::Spline) return true;
    v = -1 / taper_;
    return kind_ == Kind::Cone && taper_ != 0;
}

} // namespace host

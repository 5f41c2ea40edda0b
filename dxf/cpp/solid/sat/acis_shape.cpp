#include "acis_shape.h"

#include "acis_walk.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace ACIS {

using geometry::NurbsCurve;
using geometry::NurbsSurface;
using geometry::Vec3;

namespace {

constexpr double TURN = 2 * std::numbers::pi;
constexpr int MAX_DEPTH = 32;
constexpr std::size_t PREFIX = 3; ///< attrib, id, pattern

/// Reads values in their order; a value of another kind than asked for makes all that follows invalid.
class Cursor {
public:
    Cursor(const File& model, std::size_t first, std::size_t count, int within = 0)
        : file(model), depth(within), at_(first), end_(first + count) {}

    const Value* take() { return at_ < end_ ? &file.values[at_++] : nullptr; }
    const Value* peek() const { return at_ < end_ ? &file.values[at_] : nullptr; }
    double real() {
        const Value* value = take();
        if (value && value->isNumber()) return value->number();
        isValid = false;
        return 0;
    }
    Vec3 vec() {
        const double x = real(), y = real();
        return {x, y, real()};
    }
    bool flag() {
        const Value* value = take();
        isValid &= value && value->kind == Kind::Logical;
        return isValid && value->integer;
    }
    std::int64_t whole() {
        const Value* value = take();
        isValid &= value && (value->kind == Kind::Integer || value->kind == Kind::Enum);
        return isValid ? value->integer : 0;
    }
    /// How a B-spline closes: 0 not, 1 with a corner, 2 smoothly. A sub-record kept token by token has words.
    std::int64_t closure() {
        if (!peek() || peek()->kind != Kind::Word) return whole();
        const std::string_view name = word();
        return name == "closed" ? 1 : name == "periodic" ? 2 : 0;
    }
    std::string_view word() {
        const Value* value = take();
        isValid &= value && value->kind == Kind::Word;
        return isValid ? value->view() : std::string_view();
    }
    /// True when both bounds are there.
    bool interval(double& from, double& to) {
        const Value* value = take();
        if (!value || value->kind == Kind::Absent) return false;
        const bool hasFrom = value->kind == Kind::Real;
        if (hasFrom) from = value->real;
        value = take();
        if (!value) isValid = false;
        const bool hasTo = value && value->kind == Kind::Real;
        if (hasTo) to = value->real;
        return hasFrom && hasTo && to > from;
    }
    const SubRecord* sub() {
        const Value* value = take();
        isValid &= value && (value->kind == Kind::Def || value->kind == Kind::Ref) && depth < MAX_DEPTH;
        if (!isValid) return nullptr;
        if (value->kind == Kind::Def) at_ += value->size;
        return &file.subs[static_cast<std::size_t>(value->integer)];
    }
    void reals() {
        for (std::int64_t n = whole(); isValid && n > 0; --n) real();
    }

    const File& file;
    int depth; ///< sub-records within each other
    bool isValid = true;

private:
    std::size_t at_, end_;
};

std::vector<double> readKnots(Cursor& c, std::int64_t count) {
    std::vector<double> knots;
    for (std::int64_t i = 0; i < count && c.isValid; ++i) {
        const double knot = c.real();
        const std::int64_t times = c.whole();
        for (std::int64_t k = 0; k < times && knots.size() < 1000000; ++k) knots.push_back(knot);
    }
    if (knots.empty()) return knots;
    // At each end one knot less is stored than the degree asks for.
    knots.insert(knots.begin(), knots.front());
    knots.push_back(knots.back());
    return knots;
}

void readPoints(Cursor& c, std::size_t count, bool isRational, std::vector<Vec3>& points,
                std::vector<double>& weights) {
    for (std::size_t i = 0; i < count && c.isValid; ++i) {
        points.push_back(c.vec());
        if (isRational) weights.push_back(c.real());
    }
}

std::optional<NurbsCurve> readSpline(Cursor& c, bool& isClosed) {
    NurbsCurve curve;
    const std::string_view word = c.word();
    if (word != "nubs" && word != "nurbs") return {};
    curve.degree = static_cast<int>(c.whole());
    isClosed = c.closure() != 0;
    curve.knots = readKnots(c, c.whole());
    const auto degree = static_cast<std::size_t>(curve.degree);
    if (!c.isValid || curve.degree < 1 || curve.knots.size() < 2 * degree + 2) return {};
    readPoints(c, curve.knots.size() - degree - 1, word == "nurbs", curve.points, curve.weights);
    if (!c.isValid || !curve.isValid()) return {};
    return curve;
}

std::optional<NurbsSurface> readSplineSurface(Cursor& c, bool closed[2]) {
    NurbsSurface s;
    const std::string_view word = c.word();
    if (word != "nubs" && word != "nurbs") return {};
    s.degreeU = static_cast<int>(c.whole());
    s.degreeV = static_cast<int>(c.whole());
    if (word == "nurbs") c.word();
    const std::int64_t closures[2] = {c.closure(), c.closure()};
    c.closure(); // where the surface has poles
    c.closure();
    const std::int64_t counts[2] = {c.whole(), c.whole()};
    s.knotsU = readKnots(c, counts[0]);
    s.knotsV = readKnots(c, counts[1]);
    for (int i = 0; i < 2; ++i) closed[i] = closures[i] == 1 || closures[i] == 2;
    if (!c.isValid || s.degreeU < 1 || s.degreeV < 1) return {};
    if (s.knotsU.size() < 2 * static_cast<std::size_t>(s.degreeU) + 2) return {};
    if (s.knotsV.size() < 2 * static_cast<std::size_t>(s.degreeV) + 2) return {};
    readPoints(c, s.countU() * s.countV(), word == "nurbs", s.points, s.weights);
    if (!c.isValid || !s.isValid()) return {};
    return s;
}

/// The same angle within a turn from `from` on.
double angleNear(double angle, double from) {
    constexpr double SLACK = 1e-9;
    if (angle >= from - SLACK && angle <= from + TURN + SLACK) return angle;
    return angle - TURN * std::floor((angle - from + SLACK) / TURN);
}

// ---- curves -----------------------------------------------------------------------------------------

void projectByDistance(CurveShape& shape) {
    const auto at = shape.at;
    const double start = shape.start, end = shape.end;
    shape.parameterOf = [at, start, end](Vec3 p) { return geometry::nearestOnCurve(at, start, end, p); };
}

std::optional<CurveShape> straight(Cursor& c) {
    const Vec3 root = c.vec(), direction = c.vec();
    CurveShape shape;
    shape.isEndless = !c.interval(shape.start, shape.end);
    const double square = dot(direction, direction);
    if (!c.isValid || !(square > 0)) return {};
    shape.at = [=](double t) { return root + t * direction; };
    shape.parameterOf = [=](Vec3 p) { return dot(p - root, direction) / square; };
    return shape;
}

std::optional<CurveShape> ellipse(Cursor& c) {
    const Vec3 centre = c.vec(), normal = unit(c.vec()), major = c.vec();
    const double ratio = c.real();
    CurveShape shape;
    const bool isBounded = c.interval(shape.start, shape.end);
    const Vec3 minor = ratio * cross(normal, major);
    const double a = dot(major, major), b = dot(minor, minor);
    if (!c.isValid || !(a > 0) || !(b > 0)) return {};
    if (!isBounded) {
        shape.start = -std::numbers::pi;
        shape.end = std::numbers::pi;
    }
    shape.period = TURN;
    shape.at = [=](double t) { return centre + std::cos(t) * major + std::sin(t) * minor; };
    const double start = shape.start;
    shape.parameterOf = [=](Vec3 p) {
        return angleNear(std::atan2(dot(p - centre, minor) / b, dot(p - centre, major) / a), start);
    };
    return shape;
}

std::optional<CurveShape> splineShape(const std::optional<NurbsCurve>& read, bool isClosed) {
    if (!read) return {};
    const auto spline = std::make_shared<const NurbsCurve>(*read);
    CurveShape shape;
    shape.start = spline->start();
    shape.end = spline->end();
    shape.period = isClosed ? shape.end - shape.start : 0;
    shape.at = [spline](double t) { return spline->at(t); };
    projectByDistance(shape);
    return shape;
}

std::optional<CurveShape> helixShape(Cursor& c) {
    CurveShape shape;
    if (!c.interval(shape.start, shape.end)) return {};
    const Vec3 root = c.vec(), major = c.vec(), minor = c.vec(), pitch = c.vec();
    const double taper = c.real();
    if (!c.isValid || !(shape.end - shape.start < 1e5 * TURN)) return {};
    shape.at = [=](double t) {
        const double turns = t / TURN, radius = 1 + taper * turns;
        return root + radius * (std::cos(t) * major + std::sin(t) * minor) + turns * pitch;
    };
    projectByDistance(shape);
    return shape;
}

std::optional<CurveShape> reversed(std::optional<CurveShape> shape) {
    if (!shape) return {};
    CurveShape back = *shape;
    back.start = -shape->end;
    back.end = -shape->start;
    back.at = [at = shape->at](double t) { return at(-t); };
    back.parameterOf = [of = shape->parameterOf](Vec3 p) { return -of(p); };
    return back;
}

std::optional<CurveShape> subCurve(const File& file, const SubRecord& sub, int depth) {
    bool isClosed = false;
    if (sub.isRaw || !sub.isA) {
        std::size_t count = 0;
        const std::size_t at = findSpline(file, sub, false, count);
        if (!at) return {};
        Cursor c(file, at, count, depth);
        return splineShape(readSpline(c, isClosed), isClosed);
    }
    Cursor c(file, sub.first, sub.count, depth);
    if (sub.isA->kind != SubKind::Curve) return {};
    if (!sub.isA->hasShape) return helixShape(c);
    if (c.whole() != 0) return {};
    return splineShape(readSpline(c, isClosed), isClosed);
}

std::optional<CurveShape> intcurve(Cursor& c) {
    const bool isReversed = c.flag();
    const SubRecord* sub = c.sub();
    if (!sub || !c.isValid) return {};
    std::optional<CurveShape> shape = subCurve(c.file, *sub, c.depth + 1);
    if (isReversed) shape = reversed(shape);
    if (shape) c.interval(shape->start, shape->end);
    return shape;
}

std::optional<CurveShape> curveByWord(Cursor& c, std::string_view word) {
    if (word == "straight") return straight(c);
    if (word == "ellipse") return ellipse(c);
    if (word == "intcurve") return intcurve(c);
    return {};
}

std::string_view wordOf(Id id) {
    switch (id) {
    case Id::Straight: return "straight";
    case Id::Ellipse: return "ellipse";
    case Id::Intcurve: return "intcurve";
    case Id::Plane: return "plane";
    case Id::Cone: return "cone";
    case Id::Sphere: return "sphere";
    case Id::Torus: return "torus";
    case Id::Spline: return "spline";
    default: return "";
    }
}

// ---- surfaces ---------------------------------------------------------------------------------------

void readRange(Cursor& c, SurfaceShape& shape) {
    for (int i = 0; i < 2; ++i) {
        double from = 0, to = 0;
        if (!c.interval(from, to)) continue;
        shape.range[2 * i] = from;
        shape.range[2 * i + 1] = to;
        shape.isEndless[i] = false;
    }
}

std::optional<SurfaceShape> plane(Cursor& c) {
    const Vec3 root = c.vec(), normal = unit(c.vec()), u = c.vec();
    const Vec3 v = (c.flag() ? -1.0 : 1.0) * cross(normal, u);
    const double square = dot(u, u);
    if (!c.isValid || !(square > 0)) return {};
    SurfaceShape shape;
    shape.isEndless[0] = shape.isEndless[1] = true;
    readRange(c, shape);
    shape.at = [=](double s, double t) { return root + s * u + t * v; };
    shape.parametersOf = [=](Vec3 p, double& s, double& t) {
        s = dot(p - root, u) / square;
        t = dot(p - root, v) / square;
    };
    return shape;
}

/// u runs along the straight lines, in units of the scale; v is the angle.
std::optional<SurfaceShape> cone(Cursor& c) {
    const Vec3 centre = c.vec(), normal = unit(c.vec()), major = c.vec();
    const double ratio = c.real();
    double from = 0, to = 0;
    c.interval(from, to);
    const double sine = c.real(), cosine = c.real();
    const Value* scaleValue = c.take();
    const double radius = length(major);
    const double scale =
        scaleValue && scaleValue->isNumber() && scaleValue->number() != 0 ? scaleValue->number() : radius;
    c.flag();
    if (!c.isValid || !(radius > 0) || !(ratio != 0)) return {};
    const Vec3 minor = ratio * cross(normal, major);
    SurfaceShape shape;
    shape.range[2] = -std::numbers::pi;
    shape.range[3] = std::numbers::pi;
    shape.isEndless[0] = true;
    shape.period[1] = TURN;
    readRange(c, shape);
    shape.at = [=](double u, double v) {
        const double wider = 1 + u * scale * sine / radius;
        return centre + wider * (std::cos(v) * major + std::sin(v) * minor) + u * scale * cosine * normal;
    };
    const double v0 = shape.range[2], b = dot(minor, minor);
    shape.parametersOf = [=](Vec3 p, double& u, double& v) {
        const Vec3 off = p - centre;
        double side = std::hypot(dot(off, major) / (radius * radius), dot(off, minor) / b);
        u = std::abs(cosine) > 1e-12 ? dot(off, normal) / (scale * cosine)
                                     : (side - 1) * radius / (scale * sine);
        side = 1 + u * scale * sine / radius < 0 ? -1 : 1;
        v = angleNear(std::atan2(side * dot(off, minor) / b, side * dot(off, major) / (radius * radius)), v0);
    };
    return shape;
}

std::optional<SurfaceShape> sphere(Cursor& c) {
    const Vec3 centre = c.vec();
    const double radius = c.real();
    const Vec3 x = unit(c.vec()), z = unit(c.vec());
    const Vec3 y = (c.flag() ? -1.0 : 1.0) * cross(z, x);
    if (!c.isValid || radius == 0) return {};
    SurfaceShape shape;
    shape.range[0] = -std::numbers::pi / 2;
    shape.range[1] = std::numbers::pi / 2;
    shape.range[2] = -std::numbers::pi;
    shape.range[3] = std::numbers::pi;
    shape.period[1] = TURN;
    readRange(c, shape);
    const double r = std::abs(radius), v0 = shape.range[2];
    shape.at = [=](double u, double v) {
        return centre + r * (std::cos(u) * (std::cos(v) * x + std::sin(v) * y) + std::sin(u) * z);
    };
    shape.parametersOf = [=](Vec3 p, double& u, double& v) {
        const Vec3 off = p - centre;
        v = angleNear(std::atan2(dot(off, y), dot(off, x)), v0);
        u = std::atan2(dot(off, z), std::hypot(dot(off, x), dot(off, y)));
    };
    return shape;
}

std::optional<SurfaceShape> torus(Cursor& c) {
    const Vec3 centre = c.vec(), z = unit(c.vec());
    const double major = c.real(), minor = c.real();
    const Vec3 x = unit(c.vec());
    const Vec3 y = (c.flag() ? -1.0 : 1.0) * cross(z, x);
    if (!c.isValid || minor == 0) return {};
    SurfaceShape shape;
    for (int i = 0; i < 2; ++i) {
        shape.range[2 * i] = -std::numbers::pi;
        shape.range[2 * i + 1] = std::numbers::pi;
        shape.period[i] = TURN;
    }
    readRange(c, shape);
    const double r = std::abs(minor), u0 = shape.range[0], v0 = shape.range[2];
    shape.at = [=](double u, double v) {
        return centre + (major + r * std::cos(u)) * (std::cos(v) * x + std::sin(v) * y) + r * std::sin(u) * z;
    };
    shape.parametersOf = [=](Vec3 p, double& u, double& v) {
        const Vec3 off = p - centre;
        v = angleNear(std::atan2(dot(off, y), dot(off, x)), v0);
        const double out = std::cos(v) * dot(off, x) + std::sin(v) * dot(off, y) - major;
        u = angleNear(std::atan2(dot(off, z), out), u0);
    };
    return shape;
}

void projectByDistance(SurfaceShape& shape) {
    const auto at = shape.at;
    const std::array<double, 4> box{shape.range[0], shape.range[1], shape.range[2], shape.range[3]};
    shape.parametersOf = [at, box](Vec3 p, double& u, double& v) {
        constexpr int SAMPLES = 24;
        double best = -1;
        for (int j = 0; j <= SAMPLES; ++j)
            for (int i = 0; i <= SAMPLES; ++i) {
                const double s = box[0] + (box[1] - box[0]) * i / SAMPLES,
                             t = box[2] + (box[3] - box[2]) * j / SAMPLES;
                const double d = distance(at(s, t), p);
                if (best >= 0 && d >= best) continue;
                best = d;
                u = s;
                v = t;
            }
        geometry::nearestOnSurface(at, box.data(), p, u, v);
    };
}

std::optional<SurfaceShape> splineShape(const std::optional<NurbsSurface>& read, const bool closed[2]) {
    if (!read) return {};
    const auto spline = std::make_shared<const NurbsSurface>(*read);
    SurfaceShape shape;
    const double range[4] = {spline->startU(), spline->endU(), spline->startV(), spline->endV()};
    std::copy(range, range + 4, shape.range);
    for (int i = 0; i < 2; ++i) shape.period[i] = closed[i] ? range[2 * i + 1] - range[2 * i] : 0;
    shape.at = [spline](double u, double v) { return spline->at(u, v); };
    projectByDistance(shape);
    return shape;
}

std::optional<SurfaceShape> subSurface(const File& file, const SubRecord& sub, int depth);
std::optional<SurfaceShape> surfaceByWord(Cursor& c, std::string_view word);

/// The B-spline of a level; without one the range that stands in its place.
std::optional<SurfaceShape> levelShape(Cursor& c, double range[4]) {
    bool closed[2];
    const std::int64_t level = c.whole();
    if (level == 0) return splineShape(readSplineSurface(c, closed), closed);
    if (level == 2) {
        c.interval(range[0], range[1]);
        c.interval(range[2], range[3]);
    }
    return {};
}

std::optional<SurfaceShape> finish(SurfaceShape shape) {
    projectByDistance(shape);
    return shape;
}

/// The profile turned about an axis: u along the profile, v the angle.
std::optional<SurfaceShape> revolved(Cursor& c) {
    const auto profile = curveByWord(c, c.word());
    const Vec3 root = c.vec(), axis = unit(c.vec());
    if (!profile || !c.isValid) return {};
    double range[4] = {profile->start, profile->end, 0, TURN};
    if (auto shape = levelShape(c, range)) return shape;
    SurfaceShape shape;
    std::copy(range, range + 4, shape.range);
    if (std::abs(range[3] - range[2] - TURN) < 1e-9) shape.period[1] = TURN;
    shape.at = [=](double u, double v) {
        const Vec3 from = profile->at(u) - root, foot = dot(from, axis) * axis, out = from - foot;
        return root + foot + std::cos(v) * out + std::sin(v) * cross(axis, out);
    };
    return finish(shape);
}

std::optional<SurfaceShape> summed(Cursor& c) {
    const auto first = curveByWord(c, c.word()), second = curveByWord(c, c.word());
    const Vec3 datum = c.vec();
    if (!first || !second || !c.isValid) return {};
    double range[4] = {first->start, first->end, second->start, second->end};
    if (auto shape = levelShape(c, range)) return shape;
    SurfaceShape shape;
    std::copy(range, range + 4, shape.range);
    shape.at = [=](double u, double v) { return first->at(u) + second->at(v) - datum; };
    return finish(shape);
}

std::optional<SurfaceShape> offsetShape(Cursor& c) {
    const auto base = surfaceByWord(c, c.word());
    const double offset = c.real();
    if (!base || !c.isValid) return {};
    SurfaceShape shape = *base;
    for (int i = 0; i < 4; ++i) {
        const Value* bound = c.take();
        if (bound && bound->isNumber()) shape.range[i] = bound->number();
    }
    const Value* flip = c.take();
    const double side = flip && flip->kind == Kind::Logical && flip->integer ? -offset : offset;
    c.take();
    c.take();
    double range[4];
    if (c.peek() && c.peek()->kind == Kind::Enum)
        if (auto cached = levelShape(c, range)) return cached;
    const double du = 1e-5 * (shape.range[1] - shape.range[0]), dv = 1e-5 * (shape.range[3] - shape.range[2]);
    shape.at = [at = base->at, side, du, dv](double u, double v) {
        return at(u, v) + side * unit(cross(at(u + du, v) - at(u - du, v), at(u, v + dv) - at(u, v - dv)));
    };
    return finish(shape);
}

std::optional<SurfaceShape> partShape(Cursor& c) {
    double range[4] = {0, 0, 0, 0};
    const bool hasU = c.interval(range[0], range[1]), hasV = c.interval(range[2], range[3]);
    const bool isBounded = hasU && hasV;
    auto shape = surfaceByWord(c, c.word());
    if (shape && isBounded) std::copy(range, range + 4, shape->range);
    return shape;
}

/// Turns about an axis with a circle as its section: u along the turns, v round the section.
std::optional<SurfaceShape> helixTube(Cursor& c) {
    SurfaceShape shape;
    if (!c.interval(shape.range[0], shape.range[1]) || !c.interval(shape.range[2], shape.range[3])) return {};
    c.real();
    const auto spine = helixShape(c);
    c.vec(); // the axis
    for (int i = 0; i < 4; ++i) c.word();
    const double radius = c.real();
    if (!spine || !c.isValid) return {};
    const double h = 1e-6;
    shape.at = [at = spine->at, radius, h](double u, double v) {
        const Vec3 along = unit(at(u + h) - at(u - h));
        const Vec3 bend = at(u + 1e-3) - 2 * at(u) + at(u - 1e-3);
        const Vec3 in = unit(bend - dot(bend, along) * along);
        return at(u) + radius * (std::cos(v) * (-1 * in) + std::sin(v) * cross(along, -1 * in));
    };
    return finish(shape);
}

std::optional<SurfaceShape> helixBand(Cursor& c) {
    SurfaceShape shape;
    if (!c.interval(shape.range[0], shape.range[1]) || !c.interval(shape.range[2], shape.range[3])) return {};
    const auto spine = helixShape(c);
    c.vec();
    for (int i = 0; i < 4; ++i) c.word();
    const Vec3 line = c.vec();
    if (!spine || !c.isValid) return {};
    const double turn = 0;
    shape.at = [at = spine->at, line, turn](double u, double v) { return at(u) + (v - turn) * line; };
    return finish(shape);
}

std::optional<SurfaceShape> subSurface(const File& file, const SubRecord& sub, int depth) {
    bool closed[2];
    if (sub.isRaw || !sub.isA) {
        std::size_t count = 0;
        const std::size_t at = findSpline(file, sub, true, count);
        if (!at) return {};
        Cursor c(file, at, count, depth);
        return splineShape(readSplineSurface(c, closed), closed);
    }
    Cursor c(file, sub.first, sub.count, depth);
    const std::string_view name = sub.isA->name;
    double range[4];
    if (name == "exactsur" || name == "tubesur") return levelShape(c, range);
    if (name == "rotsur") return revolved(c);
    if (name == "sumsur") return summed(c);
    if (name == "offsur") return offsetShape(c);
    if (name == "subsur") return partShape(c);
    if (name == "helix_spl_circ") return helixTube(c);
    if (name == "helix_spl_line") return helixBand(c);
    std::size_t count = 0;
    const std::size_t at = findSpline(file, sub, true, count);
    if (!at) return {};
    Cursor shape(file, at, count, depth);
    return splineShape(readSplineSurface(shape, closed), closed);
}

std::optional<SurfaceShape> splineByWord(Cursor& c) {
    c.flag();
    const SubRecord* sub = c.sub();
    if (!sub || !c.isValid) return {};
    auto shape = subSurface(c.file, *sub, c.depth + 1);
    if (shape) readRange(c, *shape);
    return shape;
}

std::optional<SurfaceShape> surfaceByWord(Cursor& c, std::string_view word) {
    if (c.depth >= MAX_DEPTH) return {};
    if (word == "plane") return plane(c);
    if (word == "cone") return cone(c);
    if (word == "sphere") return sphere(c);
    if (word == "torus") return torus(c);
    if (word == "spline") return splineByWord(c);
    return {};
}

bool isWord(const Value& value, std::string_view word) {
    return value.kind == Kind::Word && value.view() == word;
}

/// Values of the B-spline that begins at `at`; 0 when what stands there is none.
std::size_t splineLength(const File& file, std::size_t at, std::size_t end, bool isSurface) {
    bool isClosed[2];
    Cursor c(file, at, end - at);
    const Value* const first = &file.values[at];
    (void)first;
    if (isSurface ? !readSplineSurface(c, isClosed) : !readSpline(c, isClosed[0])) return 0;
    std::size_t left = 0;
    while (c.take()) ++left;
    return end - at - left;
}

} // namespace

std::size_t findSpline(const File& file, const SubRecord& sub, bool isSurface, std::size_t& count) {
    std::size_t found = 0;
    const std::size_t end = sub.first + sub.count;
    for (std::size_t at = sub.first; at < end; ++at) {
        const Value& value = file.values[at];
        if (value.kind == Kind::Def) at += value.size;
        if (!isWord(value, "nubs") && !isWord(value, "nurbs")) continue;
        const std::size_t length = splineLength(file, at, end, isSurface);
        if (!length) continue;
        found = at;
        count = length;
        if (!isSurface) return found;
        at += length - 1;
    }
    return found;
}

std::optional<NurbsCurve> curveSpline(const File& file, std::size_t at, std::size_t count, bool& isClosed) {
    Cursor c(file, at, count);
    return readSpline(c, isClosed);
}

std::optional<NurbsSurface> surfaceSpline(const File& file, std::size_t at, std::size_t count,
                                          bool closed[2]) {
    Cursor c(file, at, count);
    return readSplineSurface(c, closed);
}

std::optional<CurveShape> curveShape(const File& file, const SubRecord& sub) {
    return subCurve(file, sub, 0);
}

std::optional<SurfaceShape> surfaceShape(const File& file, const SubRecord& sub) {
    return subSurface(file, sub, 0);
}

std::optional<CurveShape> curveShape(const File& file, const ENTITY& entity) {
    if (!entity.kind || entity.count <= PREFIX) return {};
    Cursor c(file, entity.first + PREFIX, entity.count - PREFIX);
    return curveByWord(c, wordOf(entity.kind->isA->id));
}

std::optional<SurfaceShape> surfaceShape(const File& file, const ENTITY& entity) {
    if (!entity.kind || entity.count <= PREFIX) return {};
    Cursor c(file, entity.first + PREFIX, entity.count - PREFIX);
    return surfaceByWord(c, wordOf(entity.kind->isA->id));
}

std::optional<Vec3> pointOf(const File& file, const ENTITY& entity) {
    constexpr std::size_t POINT = PREFIX + 2;
    const ENTITY* point = &entity;
    if (entity.isA(Id::Vertex) || entity.isA(Id::Tvertex)) {
        if (entity.count <= POINT) return {};
        point = file.at(file.values[entity.first + POINT]);
    }
    if (!point || !point->isA(Id::Point)) return {};
    Cursor c(file, point->first + PREFIX, point->count - PREFIX);
    const Vec3 place = c.vec();
    if (!c.isValid) return {};
    return place;
}

void edgeRange(const File& file, std::int64_t number, double& start, double& end) {
    constexpr std::size_t START = PREFIX, START_AT = PREFIX + 1, END = PREFIX + 2, END_AT = PREFIX + 3,
                          CURVE = PREFIX + 5, SENSE = PREFIX + 6;
    start = 0;
    end = 1;
    const ENTITY& edge = file.records[static_cast<std::size_t>(number)];
    if (edge.count <= SENSE) return;
    const auto value = [&](std::size_t at) -> const Value& { return file.values[edge.first + at]; };
    if (value(START_AT).kind == Kind::Real && value(END_AT).kind == Kind::Real) {
        start = value(START_AT).real;
        end = value(END_AT).real;
        return;
    }
    const ENTITY* curve = file.at(value(CURVE));
    const ENTITY *from = file.at(value(START)), *to = file.at(value(END));
    if (!curve || !from || !to) return;
    std::optional<CurveShape> shape = curveShape(file, *curve);
    const auto a = pointOf(file, *from), b = pointOf(file, *to);
    if (!shape || !a || !b) return;
    if (value(SENSE).integer) shape = reversed(shape);
    start = shape->parameterOf(*a);
    end = shape->parameterOf(*b);
    constexpr double noise = 1e-14; // what is left of a root's own digits
    if (std::abs(start) < noise * std::abs(end)) start = 0;
    if (std::abs(end) < noise * std::abs(start)) end = 0;
    const bool isTurn = from == to || (end <= start && shape->period > 0);
    if (isTurn && shape->period > 0) end = from == to ? start + shape->period : end + shape->period;
    if (from == to && shape->period <= 0 && !shape->isEndless) {
        start = shape->start;
        end = shape->end;
    }
}

} // namespace ACIS

#include "acis_shape_cursor.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace ACIS {

using geometry::NurbsCurve;
using geometry::NurbsSurface;
using geometry::Vec3;

namespace {

void readRange(ShapeCursor& c, SurfaceShape& shape) {
    for (int i = 0; i < 2; ++i) {
        double from = 0, to = 0;
        if (!c.interval(from, to)) continue;
        shape.range[2 * i] = from;
        shape.range[2 * i + 1] = to;
        shape.isEndless[i] = false;
    }
}

std::optional<SurfaceShape> plane(ShapeCursor& c) {
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
std::optional<SurfaceShape> cone(ShapeCursor& c) {
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

std::optional<SurfaceShape> sphere(ShapeCursor& c) {
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

std::optional<SurfaceShape> torus(ShapeCursor& c) {
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
std::optional<SurfaceShape> surfaceByWord(ShapeCursor& c, std::string_view word);

/// The B-spline of a level; without one the range that stands in its place.
std::optional<SurfaceShape> levelShape(ShapeCursor& c, double range[4]) {
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
std::optional<SurfaceShape> revolved(ShapeCursor& c) {
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

std::optional<SurfaceShape> summed(ShapeCursor& c) {
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

std::optional<SurfaceShape> offsetShape(ShapeCursor& c) {
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

std::optional<SurfaceShape> partShape(ShapeCursor& c) {
    double range[4] = {0, 0, 0, 0};
    const bool hasU = c.interval(range[0], range[1]), hasV = c.interval(range[2], range[3]);
    const bool isBounded = hasU && hasV;
    auto shape = surfaceByWord(c, c.word());
    if (shape && isBounded) std::copy(range, range + 4, shape->range);
    return shape;
}

/// Turns about an axis with a circle as its section: u along the turns, v round the section.
std::optional<SurfaceShape> helixTube(ShapeCursor& c) {
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

std::optional<SurfaceShape> helixBand(ShapeCursor& c) {
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
        ShapeCursor c(file, at, count, depth);
        return splineShape(readSplineSurface(c, closed), closed);
    }
    ShapeCursor c(file, sub.first, sub.count, depth);
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
    ShapeCursor shape(file, at, count, depth);
    return splineShape(readSplineSurface(shape, closed), closed);
}

std::optional<SurfaceShape> splineByWord(ShapeCursor& c) {
    c.flag();
    const SubRecord* sub = c.sub();
    if (!sub || !c.isValid) return {};
    auto shape = subSurface(c.file, *sub, c.depth + 1);
    if (shape) readRange(c, *shape);
    return shape;
}

std::optional<SurfaceShape> surfaceByWord(ShapeCursor& c, std::string_view word) {
    if (c.depth >= MAX_SHAPE_DEPTH) return {};
    if (word == "plane") return plane(c);
    if (word == "cone") return cone(c);
    if (word == "sphere") return sphere(c);
    if (word == "torus") return torus(c);
    if (word == "spline") return splineByWord(c);
    return {};
}

std::string_view wordOf(Id id) {
    switch (id) {
    case Id::Plane: return "plane";
    case Id::Cone: return "cone";
    case Id::Sphere: return "sphere";
    case Id::Torus: return "torus";
    case Id::Spline: return "spline";
    default: return "";
    }
}

} // namespace

std::optional<SurfaceShape> surfaceShape(const File& file, const SubRecord& sub) {
    return subSurface(file, sub, 0);
}

std::optional<SurfaceShape> surfaceShape(const File& file, const ENTITY& entity) {
    if (!entity.kind || entity.count <= SHAPE_PREFIX) return {};
    ShapeCursor c(file, entity.first + SHAPE_PREFIX, entity.count - SHAPE_PREFIX);
    return surfaceByWord(c, wordOf(entity.kind->isA->id));
}

} // namespace ACIS

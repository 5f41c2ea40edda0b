#include "acis_shape_cursor.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace ACIS {

using geometry::NurbsCurve;
using geometry::Vec3;

namespace {

void projectByDistance(CurveShape& shape) {
    const auto at = shape.at;
    const double start = shape.start, end = shape.end;
    shape.parameterOf = [at, start, end](Vec3 p) { return geometry::nearestOnCurve(at, start, end, p); };
}

std::optional<CurveShape> straight(ShapeCursor& c) {
    const Vec3 root = c.vec(), direction = c.vec();
    CurveShape shape;
    shape.isEndless = !c.interval(shape.start, shape.end);
    const double square = dot(direction, direction);
    if (!c.isValid || !(square > 0)) return {};
    shape.at = [=](double t) { return root + t * direction; };
    shape.parameterOf = [=](Vec3 p) { return dot(p - root, direction) / square; };
    return shape;
}

std::optional<CurveShape> ellipse(ShapeCursor& c) {
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
        ShapeCursor c(file, at, count, depth);
        return splineShape(readSpline(c, isClosed), isClosed);
    }
    ShapeCursor c(file, sub.first, sub.count, depth);
    if (sub.isA->kind != SubKind::Curve) return {};
    if (!sub.isA->hasShape) return helixShape(c);
    if (c.whole() != 0) return {};
    return splineShape(readSpline(c, isClosed), isClosed);
}

std::optional<CurveShape> intcurve(ShapeCursor& c) {
    const bool isReversed = c.flag();
    const SubRecord* sub = c.sub();
    if (!sub || !c.isValid) return {};
    std::optional<CurveShape> shape = subCurve(c.file, *sub, c.depth + 1);
    if (isReversed) shape = reversed(shape);
    if (shape) c.interval(shape->start, shape->end);
    return shape;
}

std::string_view wordOf(Id id) {
    switch (id) {
    case Id::Straight: return "straight";
    case Id::Ellipse: return "ellipse";
    case Id::Intcurve: return "intcurve";
    default: return "";
    }
}

} // namespace

std::optional<CurveShape> helixShape(ShapeCursor& c) {
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

std::optional<CurveShape> curveByWord(ShapeCursor& c, std::string_view word) {
    if (word == "straight") return straight(c);
    if (word == "ellipse") return ellipse(c);
    if (word == "intcurve") return intcurve(c);
    return {};
}

std::optional<CurveShape> curveShape(const File& file, const SubRecord& sub) {
    return subCurve(file, sub, 0);
}

std::optional<CurveShape> curveShape(const File& file, const ENTITY& entity) {
    if (!entity.kind || entity.count <= SHAPE_PREFIX) return {};
    ShapeCursor c(file, entity.first + SHAPE_PREFIX, entity.count - SHAPE_PREFIX);
    return curveByWord(c, wordOf(entity.kind->isA->id));
}

std::optional<Vec3> pointOf(const File& file, const ENTITY& entity) {
    constexpr std::size_t POINT = SHAPE_PREFIX + 2;
    const ENTITY* point = &entity;
    if (entity.isA(Id::Vertex) || entity.isA(Id::Tvertex)) {
        if (entity.count <= POINT) return {};
        point = file.at(file.values[entity.first + POINT]);
    }
    if (!point || !point->isA(Id::Point)) return {};
    ShapeCursor c(file, point->first + SHAPE_PREFIX, point->count - SHAPE_PREFIX);
    const Vec3 place = c.vec();
    if (!c.isValid) return {};
    return place;
}

void edgeRange(const File& file, std::int64_t number, double& start, double& end) {
    constexpr std::size_t START = SHAPE_PREFIX, START_AT = SHAPE_PREFIX + 1, END = SHAPE_PREFIX + 2,
                          END_AT = SHAPE_PREFIX + 3, CURVE = SHAPE_PREFIX + 5, SENSE = SHAPE_PREFIX + 6;
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

// Values of a record or sub-record that describe a shape, in their order.
#pragma once

#include "acis_shape.h"

#include <cmath>
#include <numbers>

namespace ACIS {

constexpr double TURN = 2 * std::numbers::pi;
constexpr int MAX_SHAPE_DEPTH = 32;     ///< sub-records within each other
constexpr std::size_t SHAPE_PREFIX = 3; ///< attrib, id, pattern

/// Reads values in their order; a value of another kind than asked for makes all that follows invalid.
class ShapeCursor {
public:
    ShapeCursor(const File& model, std::size_t first, std::size_t count, int within = 0)
        : file(model), depth(within), at_(first), end_(first + count) {}

    const Value* take() { return at_ < end_ ? &file.values[at_++] : nullptr; }
    const Value* peek() const { return at_ < end_ ? &file.values[at_] : nullptr; }
    double real() {
        const Value* value = take();
        if (value && value->isNumber()) return value->number();
        isValid = false;
        return 0;
    }
    geometry::Vec3 vec() {
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
        isValid &= value && (value->kind == Kind::Def || value->kind == Kind::Ref) && depth < MAX_SHAPE_DEPTH;
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

/// A B-spline; nothing when what stands there is none.
std::optional<geometry::NurbsCurve> readSpline(ShapeCursor& c, bool& isClosed);
std::optional<geometry::NurbsSurface> readSplineSurface(ShapeCursor& c, bool closed[2]);
/// A helix, whose fields stand where the cursor is.
std::optional<CurveShape> helixShape(ShapeCursor& c);
/// A curve behind its word.
std::optional<CurveShape> curveByWord(ShapeCursor& c, std::string_view word);

/// The same angle within a turn from `from` on.
inline double angleNear(double angle, double from) {
    constexpr double SLACK = 1e-9;
    if (angle >= from - SLACK && angle <= from + TURN + SLACK) return angle;
    return angle - TURN * std::floor((angle - from + SLACK) / TURN);
}

} // namespace ACIS

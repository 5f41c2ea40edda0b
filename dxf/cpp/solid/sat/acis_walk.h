// The walk through the fields of a record or sub-record. One walk serves reading, writing and looking: `Io`
// takes or gives the single values, and where a count, a code or a word decides what follows, it tells it.
//
// Io has: enter and leave around each field (enter says whether the field is to be walked), pointer, integer,
// longInteger, real, tuple, logical, code, string, lawText, bound, word, setting, sub, fits. Each gives false
// to end the walk.
#pragma once

#include "acis_class.h"

#include <cstdint>
#include <string_view>

namespace ACIS {

template <class Io>
class Walk {
public:
    explicit Walk(Io& io) : io_(io) {}

    bool fields(Layout layout) {
        for (const Field& f : layout) {
            bool isWalked = false;
            if (!io_.enter(f, isWalked)) return false;
            if (!isWalked) continue;
            if (!value(f)) return false;
            io_.leave(f);
        }
        return true;
    }

    bool value(const Field& f) {
        std::int64_t n = 0;
        double number = 0;
        bool flag = false;
        std::string_view text;
        switch (f.type) {
        case Type::Pointer: return io_.pointer(f);
        case Type::Integer: return io_.integer(n);
        case Type::Long: return io_.longInteger(n);
        case Type::Real: return io_.real(number);
        case Type::Position:
        case Type::Vector: return io_.tuple(f.type);
        case Type::Logical: return io_.logical(*f.words, flag);
        case Type::Enum: return io_.code(*f.words, n);
        case Type::String: return io_.string(text);
        case Type::Interval: return io_.bound() && io_.bound();
        case Type::Reals: return io_.integer(n) && reals(n);
        case Type::Spline2: return spline(2);
        case Type::Spline3: return spline(3);
        case Type::SplineSurface: return splineSurface();
        case Type::Curve:
        case Type::Surface: return geometry();
        case Type::Sub: return io_.sub();
        case Type::Law: return law();
        case Type::Group: return fields(f.part);
        case Type::Repeat: return io_.integer(n) && repeated(f, n);
        case Type::Choice:
            return io_.choice(f, n) && static_cast<std::uint64_t>(n) < f.parts.size() &&
                   fields(f.parts[static_cast<std::size_t>(n)]);
        case Type::Settings: return settings();
        case Type::Pcurve: return pcurve();
        default: return false;
        }
    }

private:
    bool reals(std::int64_t count) {
        double number = 0;
        if (!io_.fits(count)) return false;
        for (std::int64_t i = 0; i < count; ++i)
            if (!io_.real(number)) return false;
        return true;
    }

    bool repeated(const Field& f, std::int64_t count) {
        if (!io_.fits(count)) return false;
        for (std::int64_t i = 0; i < count; ++i)
            if (!fields(f.part)) return false;
        return true;
    }

    /// Knots, each with its multiplicity. At the ends of an open knot row one less than the degree asks for
    /// is stored, hence the number of points.
    bool knots(std::int64_t count, std::int64_t degree, std::int64_t& points) {
        double knot = 0;
        std::int64_t times = 0, sum = 0;
        if (!io_.fits(count)) return false;
        for (std::int64_t i = 0; i < count; ++i) {
            if (!io_.real(knot) || !io_.integer(times) || times < 1) return false;
            if (!io_.fits(times)) return false;
            sum += times;
        }
        points = sum - degree + 1;
        return degree > 0 && points > 0 && io_.fits(points);
    }

    bool spline(int dimension) {
        std::string_view word;
        std::int64_t degree = 0, closure = 0, count = 0, points = 0;
        if (!io_.word(word)) return false;
        if (word == "nullbs") return true;
        if (word != "nubs" && word != "nurbs") return false;
        if (!io_.integer(degree) || !io_.code(words::closure, closure) || !io_.integer(count)) return false;
        return knots(count, degree, points) && reals(points * (dimension + (word == "nurbs")));
    }

    bool splineSurface() {
        std::string_view word, rational;
        std::int64_t degrees[2], counts[2], points[2], code = 0;
        if (!io_.word(word)) return false;
        if (word == "nullbs") return true;
        if (word != "nubs" && word != "nurbs") return false;
        if (!io_.integer(degrees[0]) || !io_.integer(degrees[1])) return false;
        if (word == "nurbs" && !io_.word(rational)) return false;
        for (const Words* const names :
             {&words::closure, &words::closure, &words::singularity, &words::singularity})
            if (!io_.code(*names, code)) return false;
        if (!io_.integer(counts[0]) || !io_.integer(counts[1])) return false;
        for (int i = 0; i < 2; ++i)
            if (!knots(counts[i], degrees[i], points[i])) return false;
        return io_.fits(points[0] * points[1]) && reals(points[0] * points[1] * (3 + (word == "nurbs")));
    }

    bool geometry() {
        std::string_view word;
        bool isKnown = false;
        if (!io_.word(word)) return false;
        const Layout layout = geometryOf(word, isKnown);
        return isKnown && fields(layout);
    }

    bool law() {
        std::string_view text;
        std::int64_t count = 0;
        if (!io_.lawText(text)) return false;
        if (text == "null_law") return true;
        if (!io_.integer(count) || !io_.fits(count)) return false;
        for (std::int64_t i = 0; i < count; ++i)
            if (!lawData()) return false;
        return true;
    }

    bool lawData() {
        std::string_view kind;
        double number = 0;
        if (!io_.lawText(kind)) return false;
        if (kind == "EDGE") return geometry() && io_.real(number) && io_.real(number);
        if (kind == "TRANS") return fields(classOf(Id::Transform).fields);
        if (kind == "SURF") return geometry() && io_.bound() && io_.bound() && io_.bound() && io_.bound();
        if (kind == "WIRE") return wire();
        return false;
    }

    bool wire() {
        std::int64_t count = 0;
        double number = 0;
        if (!io_.integer(count) || !io_.fits(count)) return false;
        for (std::int64_t i = 0; i < count; ++i)
            if (!geometry() || !io_.real(number) || !io_.real(number) || !io_.bound() || !io_.bound())
                return false;
        return true;
    }

    bool settings() {
        std::string_view key;
        while (true) {
            if (!io_.string(key)) return false;
            if (key == "end_fields") return true;
            if (!io_.setting()) return false;
        }
    }

    /// 0: a curve of its own, moved by two offsets; another number: which of the two images of an
    /// intersection curve, negative when reversed.
    bool pcurve() {
        static constexpr Field own[] = {logical("sense", words::sense), field(Type::Sub, "curve"),
                                        real("u_offset"), real("v_offset")};
        static constexpr Field image[] = {ptr("curve"), real("u_offset"), real("v_offset")};
        std::int64_t type = 0;
        return io_.integer(type) && (type ? fields(image) : fields(own));
    }

    Io& io_;
};

} // namespace ACIS

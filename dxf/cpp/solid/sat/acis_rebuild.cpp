#include "acis_rebuild.h"

#include "acis_shape.h"

#include <cmath>

namespace ACIS {
namespace {

using geometry::NurbsCurve;
using geometry::NurbsSurface;

constexpr int FIRST_WITH_LEVELS = 500; ///< below, a B-spline stands without the word of its level

enum Level { FULL, SUMMARY, NONE };

/// Appends values of a sub-record to the model's store.
class Builder {
public:
    explicit Builder(File& file) : file_(file) {}

    std::uint32_t size() const { return static_cast<std::uint32_t>(file_.values.size()); }
    bool copy(std::size_t from, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) file_.values.push(Value(file_.values[from + i]));
        return true;
    }
    void absent() { file_.values.push(Value()); }
    void real(double number) { file_.values.push(makeReal(number)); }
    void integer(std::int64_t n) { file_.values.push(makeValue(Kind::Integer, n)); }
    void code(std::int64_t n) { file_.values.push(makeValue(Kind::Enum, n)); }
    void word(std::string_view text) { file_.values.push(makeText(Kind::Word, file_.texts.name(text))); }
    void infinite(int count) {
        for (int i = 0; i < count; ++i) file_.values.push(makeValue(Kind::Infinite));
    }
    void noBreaks(int count) {
        for (int i = 0; i < count; ++i) integer(0);
    }
    void point(geometry::Vec3 p) {
        real(p.x);
        real(p.y);
        real(p.z);
    }

    static std::size_t knotCount(const std::vector<double>& knots) {
        std::size_t count = 1;
        for (std::size_t i = 1; i < knots.size(); ++i) count += knots[i] != knots[i - 1];
        return count;
    }
    /// Without the one knot at each end that files leave out.
    void knots(const std::vector<double>& knots) {
        for (std::size_t i = 1; i + 1 < knots.size();) {
            std::size_t next = i;
            while (next + 1 < knots.size() && knots[next] == knots[i]) ++next;
            real(knots[i]);
            integer(static_cast<std::int64_t>(next - i));
            i = next;
        }
    }
    void points(const std::vector<geometry::Vec3>& points, const std::vector<double>& weights) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            point(points[i]);
            if (!weights.empty()) real(weights[i]);
        }
    }
    void spline(const NurbsCurve& curve, bool isClosed) {
        word(curve.weights.empty() ? "nubs" : "nurbs");
        integer(curve.degree);
        code(isClosed);
        integer(static_cast<std::int64_t>(knotCount(curve.knots)));
        knots(curve.knots);
        points(curve.points, curve.weights);
    }
    void spline(const NurbsSurface& s, const bool closed[2]) {
        word(s.weights.empty() ? "nubs" : "nurbs");
        integer(s.degreeU);
        integer(s.degreeV);
        if (!s.weights.empty()) word("both");
        code(closed[0]);
        code(closed[1]);
        code(0);
        code(0);
        integer(static_cast<std::int64_t>(knotCount(s.knotsU)));
        integer(static_cast<std::int64_t>(knotCount(s.knotsV)));
        knots(s.knotsU);
        knots(s.knotsV);
        points(s.points, s.weights);
    }

private:
    File& file_;
};

class Rebuild {
public:
    Rebuild(File& file, int version, Substitutes& substitutes)
        : file_(file), version_(version), substitutes_(substitutes), builder_(file) {}

    /// Substitutes every sub-record that doesn't fit. True when there were any among the record's.
    bool record(const ENTITY& entity) {
        bool isChanged = false;
        for (std::size_t at = entity.first; at < entity.first + entity.count; ++at) {
            const Value value = file_.values[at];
            if (value.kind == Kind::Def || value.kind == Kind::Ref)
                isChanged |= sub(static_cast<std::size_t>(value.integer));
        }
        return isChanged;
    }

private:
    bool sub(std::size_t number) {
        if (substitutes_.subs.contains(number)) return true;
        const SubRecord record = file_.subs[number];
        if (!record.isA || fits(record)) return false;
        SubRecord made;
        made.first = builder_.size();
        const bool isMade = record.isA->kind == SubKind::Curve     ? curve(record)
                            : record.isA->kind == SubKind::Surface ? surface(record)
                                                                   : false;
        if (!isMade) {
            file_.values.truncate(made.first);
            return false;
        }
        made.count = builder_.size() - made.first;
        made.isA = record.isA->kind == SubKind::Curve ? &exactCurve() : &exactSurface();
        made.name = made.isA->name;
        substitutes_.subs[number] = made;
        return true;
    }

    /// What is known only token by token fits when it was written in the older layout; one that older files
    /// make without a B-spline does not.
    bool fits(const SubRecord& record) const {
        if (!record.isA->fits700) return false;
        if (record.isRaw) return !record.isModern && file_.header.version >= FIRST_WITH_LEVELS;
        return file_.header.version >= FIRST_WITH_LEVELS || version_ < FIRST_WITH_LEVELS ||
               !isConstructed(record);
    }

    bool isConstructed(const SubRecord& record) const {
        const std::string_view name = record.isA->name;
        return name == "rotsur" || name == "sumsur" || name == "offsur";
    }

    bool curve(const SubRecord& record) {
        builder_.code(FULL);
        std::size_t count = 0;
        const std::size_t at = findSpline(file_, record, false, count);
        if (!at ? !fittedCurve(record) : !takeCurve(record, at, count)) return false;
        builder_.real(0);
        for (const char* word : {"null_surface", "null_surface", "nullbs", "nullbs"}) builder_.word(word);
        builder_.infinite(2);
        builder_.noBreaks(3);
        builder_.infinite(2);
        return true;
    }

    /// The B-spline that a sub-record has already. The values of one kept token by token aren't those that a
    /// layout wants.
    bool takeCurve(const SubRecord& record, std::size_t at, std::size_t count) {
        bool isClosed = false;
        if (!record.isRaw) return builder_.copy(at, count);
        const auto spline = curveSpline(file_, at, count, isClosed);
        if (spline) builder_.spline(*spline, isClosed);
        return spline.has_value();
    }
    bool takeSurface(const SubRecord& record, std::size_t at, std::size_t count) {
        bool closed[2] = {false, false};
        if (!record.isRaw) return builder_.copy(at, count);
        const auto spline = surfaceSpline(file_, at, count, closed);
        if (spline) builder_.spline(*spline, closed);
        return spline.has_value();
    }

    bool fittedCurve(const SubRecord& record) {
        const auto shape = curveShape(file_, record);
        NurbsCurve fitted;
        if (!shape || shape->isEndless) return false;
        if (!geometry::fitCurve(shape->at, shape->start, shape->end, REBUILD_TOLERANCE, fitted)) return false;
        builder_.spline(fitted, shape->period > 0);
        return true;
    }

    bool surface(const SubRecord& record) {
        builder_.code(FULL);
        std::size_t count = 0;
        const std::size_t at = findSpline(file_, record, true, count);
        if (!at ? !fittedSurface(record) : !takeSurface(record, at, count)) return false;
        builder_.real(0);
        builder_.noBreaks(6);
        builder_.infinite(4);
        return true;
    }

    bool fittedSurface(const SubRecord& record) {
        const auto shape = surfaceShape(file_, record);
        NurbsSurface fitted;
        if (!shape || shape->isEndless[0] || shape->isEndless[1]) return false;
        const double* r = shape->range;
        if (!geometry::fitSurface(shape->at, r[0], r[1], r[2], r[3], REBUILD_TOLERANCE, fitted)) return false;
        const bool closed[2] = {shape->period[0] > 0, shape->period[1] > 0};
        builder_.spline(fitted, closed);
        return true;
    }

    File& file_;
    int version_;
    Substitutes& substitutes_;
    Builder builder_;
};

} // namespace

std::size_t rebuildFaces(File& file, int version, Substitutes& substitutes) {
    Rebuild rebuild(file, version, substitutes);
    std::size_t count = 0;
    const std::size_t records = file.records.size();
    for (std::size_t i = 0; i < records; ++i)
        count += file.records[i].kind && rebuild.record(file.records[i]);
    return count;
}

} // namespace ACIS

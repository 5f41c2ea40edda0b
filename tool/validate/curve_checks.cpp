// Curves and meshes: counts, knots, directions, indexes.

#include "checks.h"
#include "cursor.h"

#include <algorithm>
#include <cmath>

namespace validate {

void checkLwPolyline(Session& session, const Record& record) {
    Cursor cursor(record, "AcDbPolyline");
    if (!cursor.atEnd() && cursor.code() != 90 && record.find(90))
        session.out.add(Rule::GroupOrder, session.at(cursor.tag()),
                        "the vertex count (90) must be the first group");
    bool width = false, vertex = false;
    for (; !cursor.atEnd(); cursor.step()) {
        const int code = cursor.code();
        vertex = vertex || code == 10;
        width = width || code == 40 || code == 41;
        if (!vertex && (code == 40 || code == 41 || code == 42)) {
            session.out.add(Rule::GroupOrder, session.at(cursor.tag()), "group ", code,
                            " belongs behind a vertex");
            return;
        }
    }
    if (width && record.find(43))
        session.out.add(Rule::GroupsTogether, session.place,
                        "a constant width (43) and widths of vertices (40, 41)");
}

namespace {

struct SplineLists {
    size_t knots = 0, weights = 0, points = 0;
    const Tag* falling = nullptr;
};

SplineLists countSpline(const Record& record) {
    SplineLists lists;
    double last = -HUGE_VAL;
    for (Cursor cursor(record, "AcDbSpline"); !cursor.atEnd(); cursor.step()) {
        lists.weights += cursor.code() == 41;
        lists.points += cursor.code() == 10;
        if (cursor.code() != 40) continue;
        ++lists.knots;
        if (cursor.real() < last && !lists.falling) lists.falling = &cursor.tag();
        last = cursor.real();
    }
    return lists;
}

} // namespace

void checkSpline(Session& session, const Record& record) {
    const auto value = [&](int code) {
        const Tag* tag = record.findIn(1, code);
        return tag ? readInteger(tag->value).value_or(0) : 0;
    };
    const SplineLists lists = countSpline(record);
    const int64_t flags = value(70), degree = value(71);
    if (lists.falling)
        session.out.add(Rule::KnotOrder, session.at(*lists.falling), "the knot ",
                        trimmed(lists.falling->value), " is below the one before");
    if (lists.points == 0) {
        // Without control points the fit points say it all.
        if (value(74) < 2)
            session.out.add(Rule::CurveSizes, session.place,
                            "neither control points nor at least 2 fit points");
        return;
    }
    if (degree < 1 || degree > 1000) return; // told already
    const auto points = static_cast<int64_t>(lists.points), knots = static_cast<int64_t>(lists.knots);
    if (points < degree + 1)
        session.out.add(Rule::CurveSizes, session.place, lists.points,
                        " control points are too few for degree ", degree);
    else if (knots != points + degree + 1)
        session.out.addAs(flags & 2 ? Level::Note : Level::Error, Rule::CurveSizes, session.place, knots,
                          " knots do not fit ", points, " control points of degree ", degree);
    if (lists.weights != 0 && lists.weights != lists.points)
        session.out.add(Rule::WrongCount, session.place, lists.weights, " weights (41) for ", lists.points,
                        " control points");
    if (lists.weights != 0 && !(flags & 4))
        session.out.addAs(Level::Note, Rule::GroupsTogether, session.place,
                          "weights (41) in a spline that does not say it is rational (70, bit 4)");
}

void checkXline(Session& session, const Record& record) {
    const Tag* x = record.find(11);
    const auto tags = record.tags;
    const size_t at = x ? static_cast<size_t>(x - tags.data()) : 0;
    if (!x || at + 2 >= tags.size()) return;
    const double length =
        std::hypot(readReal(tags[at].value), readReal(tags[at + 1].value), readReal(tags[at + 2].value));
    if (length != 0 && std::abs(length - 1) > 1e-6)
        session.out.addAs(Level::Warning, Rule::ValueRange, session.at(*x),
                          "the direction 11 is not of length 1");
}

void checkMline(Session& session, const Record& record) {
    int64_t directions = 0, mitres = 0, lists = 0, fills = 0, wantedParams = 0, wantedFills = 0, params = 0,
            fillParams = 0;
    const int64_t most = static_cast<int64_t>(record.tags.size()); // more than that can't be there
    for (Cursor cursor(record, "AcDbMline"); !cursor.atEnd(); cursor.step()) {
        const int64_t number = std::min(std::max<int64_t>(cursor.integer(), -1), most + 1);
        switch (cursor.code()) {
        case 12: ++directions; break;
        case 13: ++mitres; break;
        case 74: ++lists, wantedParams += number; break;
        case 75: ++fills, wantedFills += number; break;
        case 41: ++params; break;
        case 42: ++fillParams; break;
        default: break;
        }
    }
    const int64_t vertices = record.integer(72), elements = record.integer(73);
    const auto expectCount = [&](int64_t there, int64_t wanted, const char* what) {
        if (there != wanted)
            session.out.add(Rule::WrongCount, session.place, there, " ", what, ", there should be ", wanted);
    };
    if (vertices < 0 || elements < 0 || vertices > most || elements > most) return;
    expectCount(directions, vertices, "directions (12)");
    expectCount(mitres, vertices, "mitre directions (13)");
    expectCount(lists, vertices * elements, "parameter lists (74)");
    expectCount(fills, vertices * elements, "fill lists (75)");
    expectCount(params, wantedParams, "parameters (41)");
    expectCount(fillParams, wantedFills, "fill parameters (42)");
}

namespace {

/// Reads the counted lists of a mesh one behind the other.
class MeshWalk {
public:
    MeshWalk(Session& session, const Record& record) : session_(session), cursor_(record, "AcDbSubDMesh") {}

    void run() {
        int64_t vertices = 0, size = 0, edges = 0, creases = 0;
        if (!cursor_.skipTo(92) || !list(92, 10, 1, vertices)) return;
        if (!faces(size, vertices) || !list(94, 90, 2, edges)) return;
        const Tag& creaseCount = cursor_.tag();
        if (!list(95, 140, 1, creases)) return;
        if (creases != edges)
            session_.out.add(Rule::WrongCount, session_.at(creaseCount), creases, " creases (95) for ", edges,
                             " edges (94)");
    }

private:
    bool fail(const Tag& tag, int64_t said, int64_t there, int code) {
        session_.out.add(Rule::WrongCount, session_.at(tag), "group ", tag.code, " says ", said,
                         ", there are ", there, " groups ", code);
        return false;
    }

    /// A count and `times` groups for each item; a point takes its other coordinates along.
    bool list(int countCode, int itemCode, int64_t times, int64_t& count) {
        const Tag& tag = cursor_.tag();
        count = std::min(cursor_.integer(), INT64_MAX / 4); // so that the product stays in range
        if (!cursor_.take(countCode)) {
            session_.out.add(Rule::GroupOrder, session_.at(tag), "group ", countCode, " expected");
            return false;
        }
        int64_t items = 0;
        while (cursor_.code() == itemCode && (itemCode != 90 || items < count * times)) {
            ++items;
            cursor_.step();
            if (itemCode == 10) takeRest();
        }
        if (count < 0 || items % times || items / times != count) return fail(tag, count, items, itemCode);
        return true;
    }

    void takeRest() {
        cursor_.take(20);
        cursor_.take(30);
    }

    /// The face list: number of corners, then that many vertex numbers, from 0.
    bool faces(int64_t& size, int64_t vertices) {
        Cursor corners = cursor_;
        if (!list(93, 90, 1, size)) return false;
        corners.step();
        for (int64_t left = size; left > 0;) {
            const int64_t count = corners.integer();
            corners.step();
            if (count < 0 || --left < count) return fail(corners.tag(), count, left, 90);
            left -= count;
            checkCorners(corners, count, vertices);
        }
        return true;
    }

    void checkCorners(Cursor& corners, int64_t count, int64_t vertices) {
        for (; count > 0; --count, corners.step())
            if (corners.integer() < 0 || corners.integer() >= vertices)
                session_.out.add(Rule::FaceIndex, session_.at(corners.tag()), "there is no vertex ",
                                 corners.integer(), " of 0 to ", vertices - 1);
    }

    Session& session_;
    Cursor cursor_;
};

} // namespace

void checkMesh(Session& session, const Record& record) {
    MeshWalk(session, record).run();
}

} // namespace validate

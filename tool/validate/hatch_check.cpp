// HATCH: codes are used again and again, only the order says what a group means. The walk follows the order
// and tells the first place where the file leaves it.

#include "checks.h"
#include "cursor.h"

namespace validate {

namespace {

class HatchWalk {
public:
    HatchWalk(Session& session, const Record& record)
        : session_(session), record_(record), cursor_(record, "AcDbHatch") {}

    void run() {
        if (!cursor_.skipTo(91)) return;
        const int64_t paths = cursor_.integer();
        const Tag& count = cursor_.tag();
        cursor_.step();
        for (int64_t path = 0; path < paths; ++path) {
            if (cursor_.code() != 92) {
                wrongCount(count, path, "boundary paths");
                return;
            }
            if (!boundaryPath()) return;
        }
        if (cursor_.code() == 92) {
            wrongCount(count, paths + 1, "boundary paths or more");
            return;
        }
        if (fill() && seeds()) gradient();
    }

private:
    void wrongCount(const Tag& tag, int64_t there, const char* what) {
        session_.out.add(Rule::WrongCount, session_.at(tag), "group ", tag.code, " says ", trimmed(tag.value),
                         ", there are ", there, ' ', what);
    }

    bool expected(int code) {
        session_.out.add(Rule::GroupOrder, session_.at(cursor_.tag()), "group ", code, " expected",
                         cursor_.atEnd() ? " at the end" : ", not ",
                         cursor_.atEnd() ? "" : std::to_string(cursor_.code()));
        return false;
    }

    bool need(int code) { return cursor_.take(code) || expected(code); }
    bool needPoint(int code) { return need(code) && need(code + 10); }

    bool boundaryPath() {
        const int64_t flags = cursor_.integer();
        cursor_.step();
        if (!(flags & 2 ? polyline() : edges())) return false;
        return counted(97, 330, "source objects (330)");
    }

    /// A count group and that many groups of another code.
    bool counted(int countCode, int code, const char* what) {
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        if (!need(countCode)) return false;
        int64_t there = 0;
        while (cursor_.take(code)) ++there;
        if (there == wanted) return true;
        wrongCount(count, there, what);
        return false;
    }

    bool polyline() {
        if (!need(72) || !need(73)) return false;
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        if (!need(93)) return false;
        int64_t there = 0;
        while (cursor_.code() == 10) {
            if (!needPoint(10)) return false;
            cursor_.take(42);
            ++there;
        }
        if (there == wanted) return true;
        wrongCount(count, there, "vertices");
        return false;
    }

    bool edges() {
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        if (!need(93)) return false;
        int64_t there = 0;
        for (; cursor_.code() == 72; ++there)
            if (!edge()) return false;
        if (there == wanted) return true;
        wrongCount(count, there, "edges");
        return false;
    }

    bool edge() {
        const Tag& kind = cursor_.tag();
        const int64_t number = cursor_.integer();
        cursor_.step();
        switch (number) {
        case 1: return needPoint(10) && needPoint(11);
        case 2: return needPoint(10) && need(40) && need(50) && need(51) && need(73);
        case 3: return needPoint(10) && needPoint(11) && need(40) && need(50) && need(51) && need(73);
        case 4: return splineEdge();
        default:
            session_.out.add(Rule::ValueRange, session_.at(kind), "there is no edge kind ",
                             trimmed(kind.value));
            return false;
        }
    }

    bool splineEdge() {
        if (!need(94) || !need(73) || !need(74)) return false;
        const Tag& knotCount = cursor_.tag();
        const int64_t knots = cursor_.integer();
        if (!need(95)) return false;
        const Tag& pointCount = cursor_.tag();
        const int64_t points = cursor_.integer();
        if (!need(96)) return false;
        int64_t knotsThere = 0, pointsThere = 0;
        for (; cursor_.take(40); ++knotsThere) {
        }
        for (; cursor_.code() == 10; ++pointsThere) {
            if (!needPoint(10)) return false;
            cursor_.take(42);
        }
        while (cursor_.take(42)) {
        } // weights in one row behind the points
        if (knotsThere != knots) wrongCount(knotCount, knotsThere, "knots (40)");
        if (pointsThere != points) wrongCount(pointCount, pointsThere, "control points (10)");
        if (knotsThere != knots || pointsThere != points) return false;
        return !session_.atLeast(Version::R2010) || fitPoints();
    }

    bool fitPoints() {
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        if (!need(97)) return false;
        int64_t there = 0;
        for (; cursor_.code() == 11; ++there)
            if (!needPoint(11)) return false;
        if (there != wanted) {
            wrongCount(count, there, "fit points (11)");
            return false;
        }
        return (cursor_.code() != 12 || needPoint(12)) && (cursor_.code() != 13 || needPoint(13));
    }

    bool fill() {
        const bool solid = record_.integer(70) != 0;
        Cursor start = cursor_;
        if (!cursor_.skipTo(78)) {
            cursor_ = start;
            if (!solid)
                session_.out.add(Rule::MissingGroup, session_.place,
                                 "a hatch that is not solid has no pattern lines (78)");
            return solid;
        }
        if (solid)
            session_.out.add(Rule::GroupsTogether, session_.at(cursor_.tag()),
                             "pattern lines in a solid hatch");
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        cursor_.step();
        int64_t there = 0;
        for (; cursor_.code() == 53; ++there)
            if (!patternLine()) return false;
        if (there != wanted) wrongCount(count, there, "pattern lines");
        return there == wanted;
    }

    bool patternLine() {
        for (int code : {53, 43, 44, 45, 46})
            if (!need(code)) return false;
        return counted(79, 49, "dashes (49)");
    }

    bool seeds() {
        if (!cursor_.skipTo(98)) return true; // its absence is told elsewhere
        const Tag& count = cursor_.tag();
        const int64_t wanted = cursor_.integer();
        cursor_.step();
        int64_t there = 0;
        for (; cursor_.code() == 10; ++there)
            if (!needPoint(10)) return false;
        if (there != wanted) wrongCount(count, there, "seed points (10)");
        return there == wanted;
    }

    void gradient() {
        if (!cursor_.skipTo(450)) return;
        bool found[7] = {};
        constexpr int codes[7] = {451, 452, 453, 460, 461, 462, 470};
        for (; !cursor_.atEnd(); cursor_.step())
            for (size_t i = 0; i < 7; ++i) found[i] = found[i] || cursor_.code() == codes[i];
        for (size_t i = 0; i < 7; ++i)
            if (!found[i])
                session_.out.add(Rule::GroupsTogether, session_.place, "a gradient (450) without group ",
                                 codes[i]);
    }

    Session& session_;
    const Record& record_;
    Cursor cursor_;
};

} // namespace

void checkHatch(Session& session, const Record& record) {
    HatchWalk(session, record).run();
}

} // namespace validate

#include "dimension/dim_drawing.h"

#include "geometry/plane.h"
#include "ov_arrow.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double kSamePoint = 0.0001; ///< of points that an import recognised

struct Look {
    int pen, lineType;
};
struct Head {
    int kind;
    double length, width; ///< drawing units
};

/// Collects strokes; a Move where the next one doesn't begin at the pen.
class Strokes {
public:
    void line(const RPT& from, const RPT& to, const Look& look) {
        if (distance(from, to) <= 0) return;
        moveTo(from, look);
        add(ElementType::Draw, to, {0, 0}, false, look);
    }
    /// Ends that agree make a whole circle.
    void arc(const RPT& from, const RPT& to, const RPT& centre, bool ccw, const Look& look) {
        moveTo(from, look);
        add(ElementType::Arc, to, centre, ccw, look);
    }
    /// A head at `tip`, whose body lies in direction `along` (length 1).
    void head(const RPT& tip, const RPT& along, const Head& head, const Look& look) {
        const RPT side = (head.width / 2) * leftOf(along), back = head.length * along;
        switch (head.kind) {
        case OV_ARROW_FILLED: triangle(tip, tip + back + side, tip + back - side, look); break;
        case OV_ARROW_DOT: {
            const RPT onCircle{tip.x + head.length, tip.y};
            if (head.length > 0) arc(onCircle, onCircle, tip, true, look);
            break;
        }
        case OV_ARROW_TICK:
        case OV_ARROW_STROKE: {
            // The stroke rises along the direction in which the dimension runs.
            const RPT half = 0.5 * back + side;
            line(tip - half, tip + half, look);
            break;
        }
        default: break;
        }
    }
    DimDrawing take() { return std::move(drawing_); }
    void lines(const std::vector<Element>& elements) { drawing_.lines = elements; }

private:
    void triangle(const RPT& tip, const RPT& left, const RPT& right, const Look& look) {
        if (distance(tip, left) <= 0 || distance(left, right) <= 0) return;
        line(tip, left, look);
        line(left, right, look);
        line(right, tip, look);
        drawing_.fills.push_back({{tip, left, right}, look.pen});
    }
    void moveTo(const RPT& p, const Look& look) {
        const auto& lines = drawing_.lines;
        if (!lines.empty() && lines.back().x == p.x && lines.back().y == p.y) return;
        add(ElementType::Move, p, {0, 0}, false, look);
    }
    void add(ElementType type, const RPT& p, const RPT& centre, bool ccw, const Look& look) {
        Element e;
        e.type = type;
        e.x = p.x, e.y = p.y;
        e.cx = centre.x, e.cy = centre.y;
        e.ccw = ccw ? 1 : 0;
        e.pen = look.pen;
        e.lineType = static_cast<std::int16_t>(std::clamp(look.lineType, 0, 0x7fff));
        drawing_.lines.push_back(e);
    }

    DimDrawing drawing_;
};

/// One dimension on its way to lines.
class Drawer {
public:
    Drawer(const Dimension& dimension, double millimetresPerUnit)
        : dim_(dimension),
          unit_(1 / millimetresPerUnit), look_{dimension.arrow.pen, dimension.arrow.lineType},
          extLook_{dimension.arrow.extPen, dimension.arrow.extLineType}, ends_(pointsOfKind(dimension, 1)),
          free_(pointsOfKind(dimension, 2)), tips_(pointsOfKind(dimension, 3)) {}

    DimDrawing draw() {
        switch (dimFamily(dim_.kind)) {
        case 1:
        case 2:
        case 3: linear(); break;
        case OV_DIM_ANGLE:
        case OV_DIM_ARC: angular(); break;
        case OV_DIM_RADIUS: radius(); break;
        case OV_DIM_DIAMETER: diameter(); break;
        default: break;
        }
        return out_.take();
    }

private:
    Head head(int end) const {
        const auto at = static_cast<std::size_t>(end);
        return {dim_.arrow.kind[at], dim_.arrow.length[at] * unit_, dim_.arrow.width[at] * unit_};
    }
    /// The stroke of a tick runs one way at both ends; what has a body turns it inward or outward.
    void arrowAt(int end, const RPT& tip, const RPT& along, const RPT& line) {
        const Head shape = head(end);
        const bool isStroke = shape.kind == OV_ARROW_TICK || shape.kind == OV_ARROW_STROKE;
        out_.head(tip, isStroke ? line : along, shape, look_);
    }
    /// Ends of lines and gaps on the far side of a tip stand ahead of it in the list of points.
    bool isOutside() const {
        const RPT along = unit(tips_[1] - tips_[0]);
        return dot(free_[0] - tips_[0], along) < 0 || dot(free_[1] - tips_[1], along) > 0;
    }

    void linear() {
        if (ends_.size() >= 2) out_.line(ends_[0], ends_[1], extLook_);
        if (ends_.size() >= 4) out_.line(ends_[2], ends_[3], extLook_);
        if (tips_.size() >= 2) between();
    }

    /// Dimension line and arrows between two tips on a straight line.
    void between() {
        const RPT along = unit(tips_[1] - tips_[0]);
        const bool hasFree = free_.size() >= 2, outside = hasFree && isOutside();
        if (hasFree && !outside) {
            out_.line(tips_[0], free_[0], look_);
            out_.line(free_[1], tips_[1], look_);
        } else {
            out_.line(tips_[0], tips_[1], look_);
        }
        if (outside) {
            out_.line(free_[0], tips_[0], look_);
            out_.line(tips_[1], free_[1], look_);
        }
        const RPT body = outside ? -1 * along : along;
        arrowAt(0, tips_[0], body, along);
        arrowAt(1, tips_[1], -1 * body, along);
    }

    void diameter() {
        if (tips_.size() < 2) return;
        between();
        for (const RPT& end : ends_) { // a piece beyond one of the tips
            const bool atFirst = distance(end, tips_[0]) < distance(end, tips_[1]);
            out_.line(tips_[atFirst ? 0 : 1], end, look_);
        }
    }

    /// From the tip outwards: a piece up to the first point, and between each two that follow.
    void piecesFrom(const RPT& tip, std::vector<RPT> points) {
        std::stable_sort(points.begin(), points.end(),
                         [&](const RPT& a, const RPT& b) { return distance(a, tip) < distance(b, tip); });
        // Of a line that begins behind its head the pieces meet at a shoulder.
        if (points.size() == 3 && distance(points[1], points[2]) <= kSamePoint) points = {points[1]};
        if (!points.empty()) out_.line(tip, points[0], look_);
        for (std::size_t i = 1; i + 1 < points.size(); i += 2) out_.line(points[i], points[i + 1], look_);
    }

    void radius() {
        if (tips_.empty()) return;
        const RPT tip = tips_[0], centre = dim_.refs[2], outward = unit(tip - centre);
        std::vector<RPT> inner = ends_, outer, shoulder;
        for (const RPT& p : free_) {
            if (std::abs(cross(p - tip, outward)) > kSamePoint)
                shoulder.push_back(p);
            else
                (dot(p - tip, outward) > 0 ? outer : inner).push_back(p);
        }
        piecesFrom(tip, inner);
        piecesFrom(tip, outer);
        for (const RPT& p : shoulder) shoulderTo(p, outer, inner);
        const RPT body = outer.empty() ? -1 * outward : outward;
        arrowAt(0, tip, body, body);
    }

    /// From the point at the shoulder's height, if there is one, to its end.
    void shoulderTo(const RPT& end, const std::vector<RPT>& outer, const std::vector<RPT>& inner) {
        for (const auto* points : {&outer, &inner})
            for (const RPT& p : *points)
                if (p.y == end.y) return out_.line(p, end, look_);
    }

    void angular() {
        if (tips_.size() < 2) return;
        const RPT centre = dim_.refs[2], first = tips_[0], second = tips_[1];
        legs(first, second);
        const double sweep = turn(first - centre, second - centre);
        const bool hasFree = free_.size() >= 2;
        const bool outside = hasFree && turn(first - centre, free_[0] - centre) > sweep;
        if (hasFree && !outside) {
            out_.arc(first, free_[0], centre, true, look_);
            out_.arc(free_[1], second, centre, true, look_);
        } else {
            out_.arc(first, second, centre, true, look_);
        }
        if (outside) {
            out_.arc(free_[0], first, centre, true, look_);
            out_.arc(second, free_[1], centre, true, look_);
        }
        arcHead(0, first, centre, !outside);
        arcHead(1, second, centre, outside);
    }

    static double turn(const RPT& from, const RPT& to) {
        const double angle = std::fmod(angleOf(to) - angleOf(from), 2 * kPi);
        return angle < 0 ? angle + 2 * kPi : angle;
    }

    /// Pieces of the legs: those ahead of the first tip and those behind the second one.
    void legs(const RPT& first, const RPT& second) {
        std::vector<RPT> before, behind;
        bool passed = false;
        for (const RPT3& p : dim_.points) {
            passed = passed || p.z == 3;
            if (p.z == 1) (passed ? behind : before).push_back({p.x, p.y});
        }
        leg(before, first);
        leg(behind, second);
    }
    void leg(const std::vector<RPT>& points, const RPT& tip) {
        if (points.size() == 1) out_.line(points[0], tip, extLook_);
        if (points.size() >= 2) out_.line(points[0], points[1], extLook_);
    }

    /// A head whose body ends on the arc, `ccw` says on which side.
    void arcHead(int end, const RPT& tip, const RPT& centre, bool ccw) {
        const Head shape = head(end);
        const double radius = distance(tip, centre);
        const double half = radius > 0 ? std::min(shape.length / (2 * radius), 1.0) : 0;
        const double angle = angleOf(tip - centre) + (ccw ? 2 : -2) * std::asin(half);
        RPT along = unit(polar(centre, radius, angle) - tip);
        if (along.x == 0 && along.y == 0) along = (ccw ? 1 : -1) * leftOf(unit(tip - centre));
        arrowAt(end, tip, along, leftOf(unit(tip - centre)));
    }

    const Dimension& dim_;
    double unit_; ///< drawing units a millimetre on the sheet
    Look look_, extLook_;
    std::vector<RPT> ends_, free_, tips_;
    Strokes out_;
};

/// Direction from an end of a chain into it; (0, 0) for a chain of one point.
RPT bodyDirection(const std::vector<Element>& lines, bool atStart) {
    const std::size_t count = lines.size();
    if (count < 2) return {0, 0};
    const std::size_t piece = atStart ? 1 : count - 1; // the element that ends or begins there
    const RPT from{lines[piece - 1].x, lines[piece - 1].y}, to{lines[piece].x, lines[piece].y};
    if (lines[piece].type != ElementType::Arc) return atStart ? unit(to - from) : unit(from - to);
    const RPT centre{lines[piece].cx, lines[piece].cy};
    const RPT tangent = leftOf(unit((atStart ? from : to) - centre));
    return (lines[piece].ccw ? 1 : -1) * (atStart ? tangent : -1 * tangent);
}

} // namespace

DimDrawing drawDimension(const Dimension& dimension, double millimetresPerUnit) {
    if (!dimension.lines.empty() && dimension.points.empty()) return {dimension.lines, {}};
    DimDrawing own = Drawer(dimension, millimetresPerUnit).draw();
    if (!dimension.lines.empty()) own.lines = dimension.lines;
    return own;
}

DimDrawing drawArrow(const Arrow& arrow, double millimetresPerUnit) {
    if (arrow.lines.empty()) return {};
    Strokes strokes;
    strokes.lines(arrow.lines);
    const auto headAt = [&](const Element& end, int kind, bool atStart) {
        const RPT body = bodyDirection(arrow.lines, atStart);
        const Head head{kind, arrow.headLength / millimetresPerUnit, arrow.headWidth / millimetresPerUnit};
        if (body.x != 0 || body.y != 0) strokes.head({end.x, end.y}, body, head, {end.pen, end.lineType});
    };
    headAt(arrow.lines.back(), arrow.endHead, false);
    headAt(arrow.lines.front(), arrow.startHead, true);
    return strokes.take();
}

std::vector<RPT> pointsOfKind(const Dimension& dimension, int kind) {
    std::vector<RPT> points;
    for (const RPT3& p : dimension.points)
        if (p.z == kind) points.push_back({p.x, p.y});
    return points;
}

int dimFamily(int kind) {
    const int number = kind & 0xffff;
    if (number > 9) return number % 10 >= 1 && number % 10 <= 3 ? number % 10 : 0;
    const bool isRound = number == OV_DIM_ANGLE || number == OV_DIM_RADIUS || number == OV_DIM_DIAMETER;
    return isRound || number == OV_DIM_ARC || (number >= 1 && number <= 3) ? number : 0;
}

} // namespace host

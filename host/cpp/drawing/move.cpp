#include "drawing/move.h"

namespace host {

namespace {

class Move {
public:
    Move(double dx, double dy) : dx_(dx), dy_(dy) {}
    template <class Point>
    void point(Point& p) const {
        p.x += dx_;
        p.y += dy_;
    }
    void chain(std::vector<Element>& elements) const {
        for (Element& e : elements) {
            point(e);
            if (e.type != ElementType::Arc && e.type != ElementType::Circle) continue;
            e.cx += dx_;
            e.cy += dy_;
        }
    }
    void hatch(Hatch& hatch) const {
        for (Contour& contour : hatch.contours) chain(contour);
        for (HatchFamily& family : hatch.families) {
            family.originX += dx_;
            family.originY += dy_;
        }
    }

private:
    double dx_, dy_;
};

} // namespace

void moveDrawing(Drawing& drawing, double dx, double dy) {
    const Move move(dx, dy);
    for (Pattern& pattern : drawing.patterns) {
        pattern.relation.placement.tx += dx;
        pattern.relation.placement.ty += dy;
        if (pattern.workId != 0) continue;
        move.chain(pattern.elements);
        for (Spline& spline : pattern.splines)
            for (RPT& p : spline.points) move.point(p);
        for (Hatch& hatch : pattern.hatches) move.hatch(hatch);
        for (Text& text : pattern.texts) move.point(text);
        forEachPoints(pattern, [&](std::vector<RPT3>& points) {
            for (RPT3& p : points) move.point(p);
        });
    }
}

} // namespace host

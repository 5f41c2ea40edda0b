#include "drawing/move.h"

#include <cmath>

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
        for (HatchLines& lines : hatch.lines)
            lines.base += dx_ * std::sin(lines.angle) - dy_ * std::cos(lines.angle);
    }

private:
    double dx_, dy_;
};

} // namespace

void moveDrawing(Drawing& drawing, double dx, double dy) {
    const Move move(dx, dy);
    for (Pattern& pattern : drawing.patterns) {
        if (pattern.workId != 0) continue;
        move.chain(pattern.elements);
        for (Spline& spline : pattern.splines)
            for (RPT& p : spline.points) move.point(p);
        for (Hatch& hatch : pattern.hatches) move.hatch(hatch);
        for (Text& text : pattern.texts) move.point(text);
        for (Face& face : pattern.faces)
            for (RPT3& p : face.points) move.point(p);
        for (Curve& curve : pattern.curves)
            for (RPT3& p : curve.points) move.point(p);
        for (PointCloud& cloud : pattern.pointClouds)
            for (RPT3& p : cloud.points) move.point(p);
    }
}

} // namespace host

#include "drawing/move.h"

#include <cmath>
#include <unordered_set>

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

    void dimension(Dimension& dimension) const {
        for (RPT3& p : dimension.points) point(p);
        for (RPT& p : dimension.refs) point(p);
        point(dimension.textPos);
        chain(dimension.lines);
    }

private:
    double dx_, dy_;
};

} // namespace

void moveModel(Drawing& drawing, double dx, double dy) {
    const Move move(dx, dy);
    std::unordered_set<int> planesOfSheets;
    for (const Pattern& pattern : drawing.patterns)
        if (pattern.view != 0) planesOfSheets.insert(pattern.workId);
    for (auto& [id, plane] : drawing.workPlanes)
        if (!planesOfSheets.contains(id))
            for (RPT3* p : {&plane.a, &plane.b, &plane.c}) move.point(*p);
    if (drawing.geoReference.set) move.point(drawing.geoReference.point);
    drawing.originFrame.x -= dx;
    drawing.originFrame.y -= dy;
    for (Pattern& pattern : drawing.patterns) {
        if (pattern.view != 0 || pattern.definition != 0) continue;
        pattern.relation.placement.tx += dx;
        pattern.relation.placement.ty += dy;
        if (pattern.workId != 0) continue;
        for (Bitmap& bitmap : pattern.bitmaps) move.point(bitmap.origin);
        move.chain(pattern.elements);
        for (Spline& spline : pattern.splines)
            for (RPT& p : spline.points) move.point(p);
        for (Hatch& hatch : pattern.hatches) move.hatch(hatch);
        for (Text& text : pattern.texts) move.point(text);
        for (Arrow& arrow : pattern.arrows) move.chain(arrow.lines);
        for (Dimension& dimension : pattern.dimensions) move.dimension(dimension);
        forEachPoints(pattern, [&](std::vector<RPT3>& points) {
            for (RPT3& p : points) move.point(p);
        });
        for (Solid& solid : pattern.solids) move.point(solid.place[3]);
    }
}

} // namespace host

#include "drawing/transform.h"

#include "mt.h"

#include <cmath>

namespace host {

namespace {

class Transform {
public:
    explicit Transform(const Mat44 m) : m_(m), angle_(std::atan2(m[0][1], m[0][0])) {}

    void point(RPT3& p) const { Mt44MultRpt3(p, m_, &p); }
    template <class Point>
    void flat(Point& p) const {
        place(p.x, p.y);
    }
    void place(double& x, double& y) const {
        RPT3 moved{x, y, 0};
        point(moved);
        x = moved.x;
        y = moved.y;
    }
    void vector(RPT3& p) const { Mt44MultRpt3Vec(p, m_, &p); }
    void chain(std::vector<Element>& elements) const {
        for (Element& e : elements) {
            flat(e);
            if (e.type == ElementType::Arc || e.type == ElementType::Circle) place(e.cx, e.cy);
        }
    }
    void hatch(Hatch& hatch) const {
        for (Contour& contour : hatch.contours) chain(contour);
        for (HatchFamily& family : hatch.families) {
            place(family.originX, family.originY);
            family.angle += angle_;
        }
    }
    void spline(Spline& spline) const {
        for (RPT& p : spline.points) flat(p);
        spline.startAngle += angle_;
        spline.endAngle += angle_;
    }
    void text(Text& text) const {
        flat(text);
        text.angle += angle_;
    }
    void bitmap(Bitmap& bitmap) const {
        point(bitmap.origin);
        vector(bitmap.u);
        vector(bitmap.v);
    }
    /// A point by the placement, then by the matrix.
    void placement(Placement& p) const {
        const Placement old = p;
        RPT3 x{old.xx, old.xy, 0}, y{old.yx, old.yy, 0};
        vector(x);
        vector(y);
        place(p.tx, p.ty);
        p.xx = x.x, p.xy = x.y, p.yx = y.x, p.yy = y.y;
    }
    void content(Pattern& pattern) const {
        chain(pattern.elements);
        for (Spline& s : pattern.splines) spline(s);
        for (Hatch& h : pattern.hatches) hatch(h);
        for (Text& t : pattern.texts) text(t);
        for (Bitmap& b : pattern.bitmaps) bitmap(b);
        forEachPoints(pattern, [this](std::vector<RPT3>& points) {
            for (RPT3& p : points) point(p);
        });
        for (Facets& facets : pattern.facets)
            for (RPT3& n : facets.normals) vector(n);
    }

private:
    const double (*m_)[4];
    double angle_;
};

} // namespace

void transformPattern(Drawing& drawing, Pattern& pattern, const Mat44 m) {
    const Transform transform(m);
    transform.placement(pattern.relation.placement);
    const auto found = drawing.workPlanes.find(pattern.workId);
    if (found == drawing.workPlanes.end()) {
        transform.content(pattern);
        return;
    }
    WorkPlane plane = found->second;
    for (RPT3* p : {&plane.a, &plane.b, &plane.c}) transform.point(*p);
    const int old = pattern.workId;
    pattern.workId = drawing.nextWorkId++;
    drawing.workPlanes[pattern.workId] = plane;
    for (View& view : drawing.views)
        if (view.outline == pattern.number && view.workId == old) view.workId = pattern.workId;
}

} // namespace host

// A change of the drawing's unit: every coordinate and length gets its number in the new unit.
#include "drawing/drawing.h"

#include "ge.h"

#include <unordered_set>

namespace host {
namespace {

/// Multiplies by from/to, both whole numbers of nanometres, with one rounding for units of the metric system
/// in either direction.
class Rescale {
public:
    Rescale(double from, double to) : from_(from), to_(to) {}
    void operator()(double& value) const {
        value = static_cast<double>(static_cast<long double>(value) * from_ / to_);
    }
    void operator()(RPT& p) const {
        (*this)(p.x);
        (*this)(p.y);
    }
    void operator()(RPT3& p) const {
        (*this)(p.x);
        (*this)(p.y);
        (*this)(p.z);
    }
    void operator()(std::vector<Element>& chain) const {
        for (Element& e : chain) {
            (*this)(e.x);
            (*this)(e.y);
            if (e.type == ElementType::Spline) continue; // cx is an index
            (*this)(e.cx);
            (*this)(e.cy);
        }
    }
    void operator()(HatchFamily& family) const {
        (*this)(family.distance);
        (*this)(family.originX);
        (*this)(family.originY);
        (*this)(family.offset);
        for (double& dash : family.dashes) (*this)(dash);
    }
    void operator()(Hatch& hatch) const {
        for (Contour& contour : hatch.contours) (*this)(contour);
        for (HatchFamily& family : hatch.families) (*this)(family);
        for (HatchLines& lines : hatch.lines) {
            (*this)(lines.base);
            (*this)(lines.d1);
            (*this)(lines.d2);
        }
    }
    void operator()(Dimension& dimension) const {
        for (RPT3& p : dimension.points) { // z says what the point is
            (*this)(p.x);
            (*this)(p.y);
        }
        for (RPT& p : dimension.refs) (*this)(p);
        (*this)(dimension.textPos);
        (*this)(dimension.lines);
    }
    void operator()(Pattern& pattern) const;

private:
    long double from_, to_;
};

void Rescale::operator()(Pattern& pattern) const {
    (*this)(pattern.elements);
    (*this)(pattern.relation.placement.tx);
    (*this)(pattern.relation.placement.ty);
    for (Spline& spline : pattern.splines)
        for (RPT& p : spline.points) (*this)(p);
    for (Hatch& hatch : pattern.hatches) (*this)(hatch);
    for (Text& text : pattern.texts) {
        (*this)(text.x);
        (*this)(text.y);
        (*this)(text.z);
        (*this)(text.lineLength);
    }
    for (Arrow& arrow : pattern.arrows) (*this)(arrow.lines);
    for (Dimension& dimension : pattern.dimensions) (*this)(dimension);
    forEachPoints(pattern, [&](std::vector<RPT3>& points) {
        for (RPT3& p : points) (*this)(p);
    });
    for (Solid& solid : pattern.solids)
        for (RPT3& row : solid.place) (*this)(row);
    for (Bitmap& bitmap : pattern.bitmaps)
        for (RPT3* p : {&bitmap.origin, &bitmap.u, &bitmap.v}) (*this)(*p);
}

/// What content was made from has the numbers of the unit that was.
void forgetOrigins(Drawing& drawing) {
    for (Pattern& pattern : drawing.patterns) {
        pattern.origins.clear();
        pattern.placed.clear();
    }
}

} // namespace

void Drawing::changeUnit(int newUnit) {
    const double from = GeUnit(unit).factor();
    const double to = GeUnit(newUnit).factor();
    if (to <= 0 || newUnit == unit) return;
    const Rescale rescale(from, to);
    for (Pattern& pattern : patterns) rescale(pattern);
    forgetOrigins(*this);
    for (auto& [id, plane] : workPlanes) {
        rescale(plane.a);
        rescale(plane.b);
        rescale(plane.c);
    }
    for (ViewInsert& insert : viewInserts) rescale(insert.place);
    rescale(geoReference.point);
    rescale(geoReference.x);
    rescale(geoReference.y);
    unit = newUnit;
}

void Drawing::multiplyModel(double ratio) {
    if (!(ratio > 0) || ratio == 1) return;
    const Rescale rescale(ratio, 1);
    forgetOrigins(*this);
    std::unordered_set<int> planesOfSheets;
    for (Pattern& pattern : patterns) {
        if (pattern.view == 0)
            rescale(pattern);
        else
            planesOfSheets.insert(pattern.workId);
    }
    for (auto& [id, plane] : workPlanes)
        if (!planesOfSheets.contains(id))
            for (RPT3* p : {&plane.a, &plane.b, &plane.c}) rescale(*p);
    for (ViewInsert& insert : viewInserts) insert.ratio /= ratio;
    rescale(geoReference.point);
    scale /= ratio;
    if (!views.empty()) views.front().scale = scale;
}

} // namespace host

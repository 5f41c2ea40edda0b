#include "drawing/dump.h"

#include "dimension/dim_text.h"
#include "drawing/dump_space.h"

#include "ge.h"
#include "ov_arrow.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace host {
namespace {

/// Writes a drawing line by line. The pen and line type of elements are told where they change.
class Dumper {
public:
    Dumper(const Drawing& drawing, int digits) : drawing_(drawing), digits_(digits) {}

    std::string dump() {
        head();
        for (const Pattern& pattern : drawing_.patterns)
            if (pattern.isContent()) dumpPattern(pattern);
        return std::move(out_);
    }

private:
    void head();
    void views();
    std::string viewName(int number) const;
    void bitmap(const Bitmap& bitmap);
    void dumpPattern(const Pattern& pattern);
    void identify(const Pattern& pattern);
    void relate(const Relation& relation);
    void elements(const std::vector<Element>& chain, const std::vector<Spline>* splines,
                  std::string_view indent);
    void element(const Element& e, const std::vector<Spline>* splines);
    void spline(const Spline& spline);
    void hatch(const Hatch& hatch);
    void text(const Text& text);
    void arrow(const Arrow& arrow);
    void dimension(const Pattern& pattern, const Dimension& dimension);
    void arrowParameters(const OV_DIM_ARROW_PARM& parm);

    Dumper& number(double value);
    Dumper& number(int value) { return put(" ").put(std::to_string(value)); }
    Dumper& point(double x, double y) { return number(x).number(y); }
    Dumper& put(std::string_view text) {
        out_ += text;
        return *this;
    }
    Dumper& quoted(std::string_view text);
    void named(std::string_view name, std::string_view value) {
        if (!value.empty()) put(" ").put(name).put(" ").quoted(value);
    }
    void option(std::string_view name, double value, double usual) {
        if (value != usual) put(" ").put(name).number(value);
    }

    const Drawing& drawing_;
    int digits_;
    std::string out_;
};

Dumper& Dumper::number(double value) {
    return put(" ").put(dumpNumber(value, digits_));
}

Dumper& Dumper::quoted(std::string_view text) {
    put("\"");
    for (const char c : text) {
        if (c == '"' || c == '\\')
            put("\\").put({&c, 1});
        else if (c == '\n')
            put("\\n");
        else
            put({&c, 1});
    }
    return put("\"");
}

void Dumper::head() {
    put("drawing unit ").put(GeUnit(drawing_.unit).name().str()).put(" scale").number(drawing_.scale);
    put(" format").number(drawing_.format).put("\n");
    views();
    for (const Layer& layer : drawing_.layers) {
        put("layer ").quoted(layer.name).put(layer.visible ? " on" : " off");
        put(layer.locked ? " locked" : "").put(layer.look.frozen ? " frozen" : "");
        put(layer.look.plotted ? "\n" : " unplotted\n");
    }
    for (const auto& [id, type] : drawing_.lineTypes) {
        put("linetype").number(id).put(" ").quoted(type.name);
        for (const double dash : type.dashes) number(dash);
        put("\n");
    }
    for (const auto& [pen, look] : drawing_.penLooks)
        put("pen look")
            .number(pen)
            .number(look.color)
            .number(look.trueColor)
            .number(look.weight)
            .put(look.isColorOfLayer ? " of layer\n" : "\n");
    for (const auto& [pen, rgb] : drawing_.pens)
        put("pen").number(pen).put(" rgb").number(int{rgb.r}).number(int{rgb.g}).number(int{rgb.b}).put("\n");
    for (const auto& [id, plane] : drawing_.workPlanes) {
        put("work").number(id);
        for (const RPT3& p : {plane.a, plane.b, plane.c}) number(p.x).number(p.y).number(p.z);
        put("\n");
    }
}

void Dumper::views() {
    for (const View& view : drawing_.views) {
        put("view ").quoted(view.name).put(" format").number(view.format).put(" unit ");
        put(GeUnit(view.unit).name().str()).put(" scale").number(view.scale);
        if (view.paperWidth > 0) put(" paper").point(view.paperWidth, view.paperHeight);
        if (view.kind != ViewKind::Sheet) {
            put(view.kind == ViewKind::Detail3d ? " detail3d outline" : " detail outline")
                .number(view.outline);
            option("factor", view.factor, 1);
            option("display", view.display, 0);
            option("work", view.workId, 0);
            if (view.clipped) put(" clipped");
            named("filter", view.filter);
        }
        put("\n");
    }
    for (const ViewInsert& insert : drawing_.viewInserts) {
        put("detail ").quoted(viewName(insert.view)).put(" on ").quoted(viewName(insert.sheet)).put(" at");
        point(insert.place.x, insert.place.y).put(" ratio").number(insert.ratio).put("\n");
    }
    const GeoReference& reference = drawing_.geoReference;
    if (reference.set) {
        put("georeference").point(reference.point.x, reference.point.y).put(" is");
        point(reference.x, reference.y).put(" angle").number(reference.angle).put("\n");
    }
}

std::string Dumper::viewName(int number) const {
    const View* view = drawing_.findView(number);
    return view ? view->name : std::string();
}

void Dumper::bitmap(const Bitmap& bitmap) {
    put("  bitmap ").quoted(std::string_view(bitmap.file).substr(bitmap.file.rfind('/') + 1));
    put(" pixels").number(bitmap.width).number(bitmap.height);
    const auto space = [this](std::string_view name, const RPT3& p) {
        put(name).point(p.x, p.y);
        if (p.z != 0) number(p.z);
    };
    space(" at", bitmap.origin);
    space(" along", bitmap.u);
    space(" down", bitmap.v);
    if (!bitmap.outline.empty()) put(" clip");
    for (const RPT& p : bitmap.outline) point(p.x, p.y);
    put("\n");
}

void Dumper::identify(const Pattern& pattern) {
    put("pattern").number(pattern.number);
    named("group", pattern.ids.group);
    named("level", pattern.ids.level);
    named("class", pattern.ids.cls);
    named("name", pattern.ids.name);
    named("layer", pattern.ids.layer);
    named("obstat", pattern.ids.obstat);
    if (pattern.groupNumber != 0) put(" number").number(pattern.groupNumber);
    if (pattern.workId != 0) put(" work").number(pattern.workId);
    if (pattern.view != 0) named("on", viewName(pattern.view));
    put(pattern.visible ? "\n" : " hidden\n");
    for (const auto& [name, value] : pattern.attributes)
        put("  attribute ").quoted(name).put(" ").quoted(value).put("\n");
    relate(pattern.relation);
}

void Dumper::relate(const Relation& relation) {
    if (relation.parent != 0) put("  parent").number(relation.parent).put("\n");
    const Placement& p = relation.placement;
    if (p == Placement{}) return;
    put("  placed");
    for (const double value : {p.xx, p.xy, p.yx, p.yy, p.tx, p.ty}) number(value);
    put("\n");
}

void Dumper::dumpPattern(const Pattern& pattern) {
    identify(pattern);
    elements(pattern.elements, &pattern.splines, "  ");
    for (const ElementAttribute& a : pattern.elementAttributes)
        put("  of element").number(a.row).put(" ").quoted(a.name).put(" ").quoted(a.value).put("\n");
    for (const Hatch& h : pattern.hatches) hatch(h);
    for (const Text& t : pattern.texts) text(t);
    for (const Arrow& a : pattern.arrows) arrow(a);
    for (const Dimension& d : pattern.dimensions) dimension(pattern, d);
    for (const Bitmap& b : pattern.bitmaps) bitmap(b);
    out_ += dumpSpace(pattern, digits_);
}

void Dumper::elements(const std::vector<Element>& chain, const std::vector<Spline>* splines,
                      std::string_view indent) {
    int pen = -1;
    int lineType = -1;
    for (const Element& e : chain) {
        if (splines && (e.pen != pen || e.lineType != lineType)) {
            pen = e.pen;
            lineType = e.lineType;
            put(indent).put("pen").number(pen).put(" lt").number(lineType).put("\n");
        }
        put(indent);
        element(e, splines);
        if (e.info != 0) put(" info").number(int{e.info});
        put("\n");
    }
}

void Dumper::element(const Element& e, const std::vector<Spline>* splines) {
    switch (e.type) {
    case ElementType::Move: put("move").point(e.x, e.y); break;
    case ElementType::Draw: put("draw").point(e.x, e.y); break;
    case ElementType::Arc:
        put(e.ccw ? "arc ccw" : "arc cw").point(e.x, e.y).put(" about").point(e.cx, e.cy);
        break;
    case ElementType::Circle: put("circle").point(e.x, e.y).put(" about").point(e.cx, e.cy); break;
    case ElementType::Point: put("point").point(e.x, e.y); break;
    case ElementType::Spline:
        put("spline");
        if (splines && e.cx >= 0 && e.cx < static_cast<double>(splines->size()))
            spline((*splines)[static_cast<std::size_t>(e.cx)]);
        break;
    }
}

void Dumper::spline(const Spline& spline) {
    if (spline.degree != 3) put(" degree").number(spline.degree);
    if (spline.startFixed) put(" start").number(spline.startAngle);
    if (spline.endFixed) put(" end").number(spline.endAngle);
    put(" through");
    for (const RPT& p : spline.points) point(p.x, p.y);
}

void Dumper::hatch(const Hatch& hatch) {
    put("  hatch").put(hatch.solid ? " solid pen" : " pen").number(hatch.fillPen);
    named("pattern", hatch.patternName);
    option("transparency", hatch.transparency, 0);
    option("background", hatch.backPen, 0);
    for (const HatchSource& s : hatch.source)
        put(" source scale")
            .number(s.scale)
            .put(" angle")
            .number(s.angle)
            .put(" type")
            .point(s.type, s.crossed);
    put("\n");
    for (const HatchGradient& g : hatch.gradient) {
        put("    gradient").number(g.form).put(" angle").number(g.angle).put(" to pen").number(g.secondPen);
        named("name", g.name);
        put("\n");
    }
    for (const HatchLines& l : hatch.lines) {
        put("    lines angle").number(l.angle).put(" base").number(l.base).put(" steps").number(l.c1);
        number(l.d1).number(l.c2).number(l.d2).put(" pen").number(l.pen).put(" lt").number(l.lineType);
        put("\n");
    }
    for (const HatchFamily& f : hatch.families) {
        put("    family angle").number(f.angle).put(" distance").number(f.distance).put(" origin");
        point(f.originX, f.originY);
        option("offset", f.offset, 0);
        put(" pen").number(f.pen).put(" lt").number(f.lineType);
        for (const double dash : f.dashes) number(dash);
        put("\n");
    }
    for (const HatchExclusion& excluded : hatch.exclusions)
        put("    not lined: contour").number(excluded.contour).put("\n");
    for (const Contour& contour : hatch.contours) {
        put("    contour\n");
        elements(contour, nullptr, "      ");
    }
}

void Dumper::text(const Text& text) {
    const Text usual;
    put("  text").point(text.x, text.y).put(" height").number(text.height);
    option("z", text.z, 0);
    option("width", text.width, text.height);
    option("angle", text.angle, 0);
    option("slant", text.slant, 0);
    put(" font").number(text.font);
    named("face", text.face);
    option("style", text.styleBits, 0);
    put(" pen").number(text.pen);
    option("origin", text.origin, usual.origin);
    option("justified", text.justification, 0);
    option("distance", text.lineDistance, usual.lineDistance);
    option("spacing", text.spacing, usual.spacing);
    option("length", text.lineLength, 0);
    option("dimtype", text.dimType, 0);
    option("background", text.fillPen, 0);
    if (text.backOn) put(" back").number(text.backType);
    for (const std::string& line : text.lines) put(" ").quoted(line);
    put("\n");
}

void Dumper::arrow(const Arrow& arrow) {
    put("  arrow");
    option("use", arrow.use, OV_ARROW_BY_ITSELF);
    if (arrow.startHead || arrow.endHead) {
        put(" heads").number(arrow.startHead).number(arrow.endHead);
        point(arrow.headLength, arrow.headWidth);
    }
    put("\n");
    elements(arrow.lines, nullptr, "    ");
}

void Dumper::arrowParameters(const OV_DIM_ARROW_PARM& parm) {
    put(" arrow").number(parm.kind[0]).number(parm.length[0]).number(parm.width[0]);
    put(" pens").number(parm.pen).number(parm.extPen);
}

void Dumper::dimension(const Pattern& pattern, const Dimension& dimension) {
    put("  dimension kind").number(dimension.kind);
    option("place", dimension.place, 0);
    option("mode", dimension.mode, 0);
    if (dimension.lines.empty()) arrowParameters(dimension.arrow);
    named("text", dimensionText(pattern, dimension));
    if (dimension.textRow >= 0) put(" at").point(dimension.textPos.x, dimension.textPos.y);
    put("\n    refs");
    for (const RPT& p : dimension.refs) point(p.x, p.y);
    put("\n");
    for (const RPT3& p : dimension.points)
        put("    point").number(static_cast<int>(p.z)).point(p.x, p.y).put("\n");
    elements(dimension.lines, nullptr, "    ");
}

} // namespace

std::string dumpDrawing(const Drawing& drawing, int digits) {
    return Dumper(drawing, digits).dump();
}

static void countElements(const Pattern& pattern, Counts& counts) {
    for (const Element& e : pattern.elements) {
        switch (e.type) {
        case ElementType::Move: ++counts.moves; break;
        case ElementType::Draw: ++counts.draws; break;
        case ElementType::Arc: ++counts.arcs; break;
        case ElementType::Circle: ++counts.circles; break;
        case ElementType::Point: break;
        case ElementType::Spline: ++counts.splines; break;
        }
    }
}

static void countSpace(const Pattern& pattern, Counts& counts) {
    forEachFaceList(pattern, [&](const FaceList& list) {
        const FaceCounts in = countFaces(list);
        counts.faces += in.faces;
        counts.curves3d += in.runs;
    });
    counts.facets += static_cast<long>(pattern.facets.size());
    counts.curves3d += static_cast<long>(pattern.curves.size());
    counts.pointClouds += static_cast<long>(pattern.pointClouds.size());
}

Counts countDrawing(const Drawing& drawing) {
    Counts counts;
    const auto add = [](long& sum, std::size_t more) { sum += static_cast<long>(more); };
    for (const Pattern& p : drawing.patterns) {
        if (!p.isContent()) continue;
        ++counts.patterns;
        countElements(p, counts);
        add(counts.texts, p.texts.size());
        add(counts.hatches, p.hatches.size());
        add(counts.dimensions, p.dimensions.size());
        add(counts.bitmaps, p.bitmaps.size());
        countSpace(p, counts);
        add(counts.solids, p.solids.size());
        add(counts.attributes, p.attributes.size());
    }
    add(counts.views, drawing.views.size());
    return counts;
}

} // namespace host

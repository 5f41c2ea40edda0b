#include "render/page.h"

#include "drawing/extents.h"
#include "ge.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double pointsPerMm = 72 / 25.4;
constexpr double usualLine = 0.25; // millimetres

struct Size {
    double width, height;
};

/// Outline of a detail: a rectangle on the plane that it is seen on.
struct Outline {
    WorkPlane plane;
    RPT middle{0, 0};
    double width = 0, height = 0;
};

} // namespace

/// Units of the drawing in a millimetre of a view's sheet.
static double unitsPerMm(const Drawing& drawing, int view) {
    const double factor = sheetMillimetres(drawing, view);
    return std::isfinite(factor) && factor > 0 && std::isfinite(1 / factor) ? 1 / factor : 1;
}

std::unordered_set<std::string> filterLayers(const std::string& filter) {
    static const std::string head = "layer=\"", parting = "\" | ";
    std::unordered_set<std::string> layers;
    std::size_t at = 0;
    while (filter.compare(at, head.size(), head) == 0) {
        at += head.size();
        std::size_t end = filter.find(parting + head, at);
        const bool isLast = end == std::string::npos;
        if (isLast) end = filter.rfind('"');
        if (end == std::string::npos || end < at) break;
        layers.insert(filter.substr(at, end - at));
        if (isLast) break;
        at = end + parting.size();
    }
    return layers;
}

static bool outlineOf(const Drawing& drawing, const View& view, Outline& outline) {
    const Pattern* pattern = drawing.find(view.outline);
    if (!pattern) return false;
    const Extents box = patternExtents(*pattern, sheetMillimetres(drawing, 0));
    const auto plane = drawing.workPlanes.find(view.workId);
    if (plane != drawing.workPlanes.end()) outline.plane = plane->second;
    outline.middle = {(box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2};
    outline.width = box.maxX - box.minX;
    outline.height = box.maxY - box.minY;
    return !box.empty && std::isfinite(outline.width + outline.height) && outline.width > 0 &&
           outline.height > 0;
}

/// The model as a detail view shows it, with the middle of its outline at `at`.
static Scene detailScene(const Drawing& drawing, const View& view, const Outline& outline, const RPT& at,
                         double scale, const Size& page) {
    Scene scene;
    Frame& frame = scene.frame;
    const GeMat44 plane(outline.plane.a, outline.plane.b, outline.plane.c);
    const double(*m)[4] = plane.data();
    for (int i = 0; i < 3; ++i) frame.axes[i] = {scale * m[0][i], -scale * m[1][i]};
    frame.origin = {m[3][0] + outline.middle.x * m[0][0] + outline.middle.y * m[1][0],
                    m[3][1] + outline.middle.x * m[0][1] + outline.middle.y * m[1][1],
                    m[3][2] + outline.middle.x * m[0][2] + outline.middle.y * m[1][2]};
    frame.at = at;
    frame.scale = scale;
    frame.width = page.width;
    frame.height = page.height;
    frame.lineWidth = lineWidthOf(std::max(page.width, page.height));
    frame.unitsPerMm = unitsPerMm(drawing, 0);
    if (view.clipped) {
        const double w = outline.width * scale / 2, h = outline.height * scale / 2;
        scene.clip = {{at.x - w, at.y - h}, {at.x + w, at.y - h}, {at.x + w, at.y + h}, {at.x - w, at.y + h}};
    }
    if (!view.filter.empty())
        scene.layers = std::make_shared<std::unordered_set<std::string>>(filterLayers(view.filter));
    return scene;
}

/// What stands on a sheet, and the room that its details take.
static Extents sheetContent(const Drawing& drawing, const View& sheet) {
    Extents box = drawing.extents(sheet.number);
    for (const ViewInsert& insert : drawing.viewInserts) {
        Outline outline;
        const View* view = insert.sheet == sheet.number ? drawing.findView(insert.view) : nullptr;
        if (!view || !outlineOf(drawing, *view, outline)) continue;
        const double w = outline.width * insert.ratio / 2, h = outline.height * insert.ratio / 2;
        box.add(insert.place.x - w, insert.place.y - h);
        box.add(insert.place.x + w, insert.place.y + h);
    }
    return box;
}

/// Millimetres of a sheet.
static Size paperOf(const View& sheet) {
    const GeFormat format(sheet.format);
    if (sheet.paperWidth > 0 && sheet.paperHeight > 0) return {sheet.paperWidth, sheet.paperHeight};
    return {format.width(), format.height()};
}

static Page sheetPage(const Drawing& drawing, const View& sheet, int size, bool trueSize) {
    const Size paper = paperOf(sheet);
    const double perMm = trueSize ? pointsPerMm : size / std::max(paper.width, paper.height);
    const Size page{std::max(1.0, paper.width * perMm), std::max(1.0, paper.height * perMm)};
    const double unit = unitsPerMm(drawing, sheet.number);
    const Extents content = sheetContent(drawing, sheet);
    RPT middle{0, 0};
    double scale = perMm / unit;
    if (!content.empty) {
        middle = {(content.minX + content.maxX) / 2, (content.minY + content.maxY) / 2};
        // A sheet that is too small for its content shows it all the same.
        constexpr double spare = 1.001;
        const double surplus = std::max((content.maxX - content.minX) / (paper.width * unit),
                                        (content.maxY - content.minY) / (paper.height * unit));
        if (std::isfinite(surplus) && surplus > spare) scale /= surplus;
    }
    Page result{page.width, page.height, {}};
    Scene own;
    own.frame = middleFrame(middle, scale, page.width, page.height);
    own.frame.unitsPerMm = unit;
    own.view = sheet.number;
    for (const ViewInsert& insert : drawing.viewInserts) {
        Outline outline;
        const View* view = insert.sheet == sheet.number ? drawing.findView(insert.view) : nullptr;
        if (!view || !outlineOf(drawing, *view, outline)) continue;
        const RPT at = own.frame.map(insert.place.x, insert.place.y);
        result.scenes.push_back(detailScene(drawing, *view, outline, at, scale * insert.ratio, page));
    }
    result.scenes.push_back(std::move(own));
    for (Scene& scene : result.scenes)
        if (trueSize) scene.frame.lineWidth = usualLine * perMm;
    return result;
}

static Page detailPage(const Drawing& drawing, const View& view, int size) {
    Outline outline;
    Page page;
    if (!outlineOf(drawing, view, outline)) outline.width = outline.height = 1;
    const double scale = size / std::max(outline.width, outline.height);
    page.width = std::max(1.0, std::round(outline.width * scale));
    page.height = std::max(1.0, std::round(outline.height * scale));
    page.scenes.push_back(detailScene(drawing, view, outline, {page.width / 2, page.height / 2}, scale,
                                      {page.width, page.height}));
    return page;
}

Page modelPage(const Drawing& drawing, Frame frame) {
    frame.width = std::max(1.0, std::round(frame.width));
    frame.height = std::max(1.0, std::round(frame.height));
    frame.unitsPerMm = unitsPerMm(drawing, 0);
    Page page{frame.width, frame.height, {}};
    Scene& scene = page.scenes.emplace_back();
    scene.frame = frame;
    return page;
}

Frame patternFrame(const Drawing& drawing, const Pattern& pattern, const Frame& frame) {
    const auto plane =
        pattern.workId == 0 ? drawing.workPlanes.end() : drawing.workPlanes.find(pattern.workId);
    return plane == drawing.workPlanes.end() ? frame : planeFrame(frame, plane->second);
}

static const View* firstSheetWithContent(const Drawing& drawing) {
    const auto found = std::find_if(drawing.views.begin(), drawing.views.end(), [&](const View& view) {
        return view.number != 0 && view.kind == ViewKind::Sheet && !sheetContent(drawing, view).empty;
    });
    return found == drawing.views.end() ? nullptr : &*found;
}

Page makePage(const Drawing& drawing, const View* view, int size, bool trueSize) {
    size = std::clamp(size, 16, 16'000);
    if (view && view->kind != ViewKind::Sheet) return detailPage(drawing, *view, size);
    if (view && view->number != 0) return sheetPage(drawing, *view, size, trueSize);
    if (view && view != drawing.views.data()) return modelPage(drawing, sheetFrame(*view, size));
    const Extents model = drawing.extents();
    if (!view && model.empty) {
        if (const View* sheet = firstSheetWithContent(drawing))
            return sheetPage(drawing, *sheet, size, trueSize);
    }
    return modelPage(drawing, fitFrame(model, size));
}

/// Device units of a unit of the drawing on paper.
static double paperScale(const Drawing& drawing, const Extents& model, const Paper& paper, double perMm) {
    const double unitInMm = GeUnit(drawing.unit).factor() / 1e6;
    if (paper.scale > 0) return paper.scale * unitInMm * perMm;
    const double width = std::max(1.0, paper.width - 2 * paper.margin);
    const double height = std::max(1.0, paper.height - 2 * paper.margin);
    const double fit =
        std::min(width / (model.maxX - model.minX), height / (model.maxY - model.minY)) * perMm;
    return std::isfinite(fit) && fit > 0 ? fit : unitInMm * perMm;
}

Page makeWindowPage(const Drawing& drawing, const Extents& window, int size) {
    Page page = modelPage(drawing, windowFrame(window, std::clamp(size, 16, 16'000)));
    page.scenes[0].clip = {{0, 0}, {page.width, 0}, {page.width, page.height}, {0, page.height}};
    return page;
}

Page makePaperPage(const Drawing& drawing, const Paper& paper, const Extents& window, int size,
                   bool trueSize) {
    const double perMm = trueSize ? pointsPerMm : size / std::max(paper.width, paper.height);
    const Extents model = window.empty ? drawing.extents() : window;
    const RPT middle =
        model.empty ? RPT{0, 0} : RPT{(model.minX + model.maxX) / 2, (model.minY + model.maxY) / 2};
    const Size page{paper.width * perMm, paper.height * perMm};
    Page result{page.width, page.height, {}};
    Scene& scene = result.scenes.emplace_back();
    scene.frame = middleFrame(middle, paperScale(drawing, model, paper, perMm), page.width, page.height);
    scene.frame.lineWidth = usualLine * perMm;
    scene.frame.unitsPerMm = unitsPerMm(drawing, 0);
    if (window.empty) return result;
    for (const auto& [x, y] : {std::pair(window.minX, window.minY),
                               {window.maxX, window.minY},
                               {window.maxX, window.maxY},
                               {window.minX, window.maxY}})
        scene.clip.push_back(scene.frame.map(x, y));
    return result;
}

} // namespace host

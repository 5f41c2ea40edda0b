// CiView, and the active work plane that detail views are seen on.
#include "ci_view.h"

#include "drawing/context.h"
#include "drawing/extents.h"
#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "services/failure.h"

#include <cmath>

using namespace host;

static View* viewOf(const UtCString& name) {
    return callFails() ? nullptr : openDrawing().findView(name.str());
}

static bool isScale(double value) {
    return std::isfinite(value) && value > 0;
}

/// Whether a new name will do.
static bool isFree(const UtCString& name) {
    return !name.IsEmpty() && !openDrawing().findView(name.str());
}

UtCString CiView::GetDfltViewName(int /*mode*/) {
    const std::vector<View>& views = openDrawing().views;
    return views.empty() ? UtCString() : UtCString(views.front().name);
}

int CiView::GetFormatUnitScale(const UtCString& name, GeFormat* format, GeUnit* unit, GeScale* scale) {
    const View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    const Drawing& drawing = openDrawing();
    const bool isModel = view->number == 0;
    *format = GeFormat(isModel ? drawing.format : view->format);
    *unit = GeUnit(isModel ? drawing.unit : view->unit);
    *scale = GeScale(isModel ? drawing.scale : view->scale);
    return 0;
}

int CiView::Create(const UtCString& name, int kind, int /*content*/, const GeFormat& format,
                   const GeUnit& unit, const GeScale& scale, double factor, int display, _ObObject* outline,
                   _ObObject* /*parent*/) {
    if (callFails()) return errorNoMemory;
    const bool isForm = format.number() >= 0 && format.number() <= 6 && unit.factor() > 0;
    if (!isFree(name) || !isForm || !isScale(scale.value()) || !isScale(factor) || kind < 0 || kind > 2)
        return errorNotApplicable;
    View view{name.str(), format.number(), unit.code(), scale.value()};
    view.kind = kind;
    if (view.kind != ViewKind::Sheet) {
        view.outline = patternOf(outline);
        if (!openDrawing().find(view.outline)) return errorNoSuchObject;
        view.factor = factor;
        view.display = display;
        view.workId = openDrawing().activeWorkspace;
    }
    openDrawing().addView(std::move(view));
    return 0;
}

int CiView::GetOrCreate(const UtCString& name) {
    if (callFails()) return errorNoMemory;
    Drawing& drawing = openDrawing();
    if (drawing.findView(name.str())) return 0;
    if (name.IsEmpty()) return errorNotApplicable;
    drawing.addView({name.str(), drawing.format, drawing.unit, drawing.scale});
    return 0;
}

int CiView::Show(const UtCString& name) {
    const View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    openDrawing().activeView = view->kind == ViewKind::Sheet ? view->number : 0;
    return 0;
}

int CiView::ChangeName(const UtCString& from, const UtCString& to) {
    View* view = viewOf(from);
    if (!view) return errorNoSuchObject;
    if (from == to) return 0;
    if (!isFree(to)) return errorNotApplicable;
    openDrawing().renameView(*view, to.str());
    return 0;
}

int CiView::ChangeFormat(const UtCString& name, const GeFormat& format) {
    View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    if (format.number() < 0 || format.number() > 6) return errorNotApplicable;
    view->format = format.number();
    if (view->number == 0) openDrawing().format = format.number();
    return 0;
}

int CiView::ChangeScale(const UtCString& name, const GeScale& scale) {
    View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    if (!isScale(scale.value())) return errorNotApplicable;
    view->scale = scale.value();
    if (view->number == 0) openDrawing().scale = scale.value();
    return 0;
}

int CiView::ChangePaper(const UtCString& name, double width, double height) {
    constexpr double most = 1e6; // a kilometre of paper
    View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    if (!(width >= 0 && width <= most && height >= 0 && height <= most)) return errorNotApplicable;
    view->paperWidth = width;
    view->paperHeight = height;
    return 0;
}

int CiView::ClipDetail(const UtCString& name, int /*mode*/) {
    View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    view->clipped = true;
    return 0;
}

int CiView::Insert(const UtCString& name, const GeRpt3& place, _ObObject** object) {
    Drawing& drawing = openDrawing();
    const View* view = viewOf(name);
    if (!view) return errorNoSuchObject;
    const View* sheet = drawing.activeView == 0 ? nullptr : drawing.findView(drawing.activeView);
    if (!sheet || view->kind == ViewKind::Sheet) return errorNotApplicable;
    ViewInsert insert;
    insert.number = ++drawing.lastViewInsert;
    insert.sheet = sheet->number;
    insert.view = view->number;
    insert.place = scaled(place, contextFactor(contextId_));
    insert.ratio = view->scale / sheet->scale;
    drawing.viewInserts.push_back(insert);
    *object = objectOfInsert(insert.number);
    return 0;
}

int CiView::Scale(_ObObject* object, const GeRpt3& about, double factor) {
    if (callFails()) return errorNoMemory;
    if (!isScale(factor)) return errorNotApplicable;
    const int number = insertOf(object);
    for (auto insert = openDrawing().viewInserts.rbegin(); insert != openDrawing().viewInserts.rend();
         ++insert) {
        if (insert->number != number) continue;
        const RPT3 centre = scaled(about, contextFactor(contextId_));
        insert->place.x = centre.x + (insert->place.x - centre.x) * factor;
        insert->place.y = centre.y + (insert->place.y - centre.y) * factor;
        insert->ratio *= factor;
        return 0;
    }
    return errorNoSuchObject;
}

int CiView::ExportToTempView(int phase, UtCString* name) {
    if (callFails()) return errorNoMemory;
    DrawingState& state = drawingState();
    Drawing& drawing = state.drawing;
    if (phase == 1) {
        if (drawing.views.empty()) return errorNoSuchObject;
        View view = drawing.views.front();
        view.name += " (export)";
        *name = state.exportView = view.name;
        drawing.addView(std::move(view));
        return 0;
    }
    const View* made = state.exportView.empty() ? nullptr : drawing.findView(state.exportView);
    if (!made) return errorNoSuchObject;
    drawing.removeView(made->number);
    state.exportView.clear();
    return 0;
}

// ---- what views see --------------------------------------------------------------------------------

_ObObject* DsCursorGetLastPatId(const DsCsr& cursor) {
    return DsObListGetOb(cursor.Get().patNo);
}

int DsGetActiveWorkspace() {
    return openDrawing().activeWorkspace;
}

int DsSetActiveWorkspace(int workId) {
    if (callFails()) return errorNoMemory;
    if (workId != 0 && !openDrawing().workPlanes.contains(workId)) return errorNoSuchObject;
    openDrawing().activeWorkspace = workId;
    return 0;
}

int GvmSetCameraBaseToWs(int workId, int /*mode*/) {
    if (callFails()) return errorNoMemory; // there is no screen: a view is seen on its plane in any case
    return workId == 0 || openDrawing().workPlanes.contains(workId) ? 0 : errorNoSuchObject;
}

int GvmSetSelection(const UtCString& viewName, const UtCString& filter, int /*mode*/) {
    View* view = viewOf(viewName);
    if (!view) return errorNoSuchObject;
    view->filter = filter.str();
    return 0;
}

double UtGetEpsi() {
    return drawingState().epsilon;
}

void UtSetEpsi(double tolerance) {
    drawingState().epsilon = tolerance;
}

#include "dx_host_views.h"

#include "../config/dx_layers.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "ci_view.h"
#include "dx_context.h"
#include "dx_host.h"

#include <cmath>
#include <unordered_set>

namespace {

constexpr double SCALE_TOLERANCE = 0.001;

/// Both tolerances of the host at 1 for the length of a scope: outlines are no exact geometry.
class CoarseTolerance {
public:
    CoarseTolerance() {
        UtSetEpsi(1.0);
        GeSetEpsi(1.0);
    }
    CoarseTolerance(const CoarseTolerance&) = delete;
    CoarseTolerance& operator=(const CoarseTolerance&) = delete;
    ~CoarseTolerance() {
        UtSetEpsi(lengths_);
        GeSetEpsi(geometry_);
    }

private:
    double lengths_ = UtGetEpsi(), geometry_ = GeGetEpsi();
};

/// The active work plane, brought back at the end of a scope.
class WorkspaceScope {
public:
    WorkspaceScope() = default;
    WorkspaceScope(const WorkspaceScope&) = delete;
    WorkspaceScope& operator=(const WorkspaceScope&) = delete;
    ~WorkspaceScope() { DsSetActiveWorkspace(kept_); }

private:
    int kept_ = DsGetActiveWorkspace();
};

struct Form {
    GeFormat format;
    GeUnit unit;
    GeScale scale;
};

/// Default view and sheet, and what follows from them for a detail.
struct Detail {
    UtCString name;
    Form standard{GeFormat(5), GeUnit(3), GeScale(1.0)};
    double sheetScale = 1;
    double ratio = 0; ///< length on the sheet over length in the model; 0 for a named view
    double nice = 0;  ///< the ratio as a scale that one would choose, 0: none
};

/// The whole scale 1/n or n that a ratio stands for, 0 when there is none.
double niceScale(double ratio) {
    const double inverse = 1 / ratio;
    const double down = std::round(inverse), up = std::round(ratio);
    if (down >= 1 && std::fabs(inverse - down) <= SCALE_TOLERANCE) return 1 / down;
    return ratio > 1 && std::fabs(ratio - up) <= SCALE_TOLERANCE ? up : 0;
}

bool formOf(CiView& views, const UtCString& name, Form& form) {
    return !name.IsEmpty() && views.GetFormatUnitScale(name, &form.format, &form.unit, &form.scale) == 0;
}

UtCString detailName(const DX_VIEWPORT_TYPE& viewport) {
    return UtFormat("%s::%s%02d", DxSheetName().c_str(), DxMsg(5768).c_str(), viewport.id - 1);
}

/// False when the viewport shows nothing that has a scale.
bool settleScale(CiView& views, const DX_VIEWPORT_TYPE& viewport, Detail& detail) {
    Form sheet{detail.standard.format, GeUnit(DxPaperUnit), GeScale(1.0)};
    formOf(views, DxViewNameOf(DxSheetName()), sheet);
    detail.sheetScale = sheet.scale.value();
    detail.ratio = sheet.unit.factor() / detail.standard.unit.factor() *
                   (viewport.width / viewport.viewWidth) * detail.sheetScale;
    if (!std::isfinite(detail.ratio) || detail.ratio <= 0) return false;
    detail.nice = niceScale(detail.ratio);
    return true;
}

int displayOf(int renderMode) {
    if (renderMode == 2) return 1;
    return renderMode >= 3 && renderMode <= 6 ? 2 : 0;
}

/// The layers that show, as a filter of the host; empty when none do.
UtCString layerFilter(const std::vector<std::uint32_t>& frozen) {
    const std::unordered_set<std::uint32_t> hidden(frozen.begin(), frozen.end());
    UtCString filter;
    for (const DX_LAYER_TYPE& layer : DxDocuments.currentTables().layers) {
        if (hidden.contains(layer.handle)) continue;
        DX_NAME name = layer.name;
        DxTableConvLayer(1, &name);
        if (!filter.IsEmpty()) filter += " | ";
        filter += "layer=\"" + DxHostText(name.view()) + "\"";
    }
    return filter;
}

void markAsOutline(CiPat& patterns, const DsCsr& cursor, const UtCString& name) {
    patterns.ChgAttr(cursor, "object", "detailoutline");
    patterns.ChgAttr(cursor, "plotobj", "symbol");
    patterns.ChgAttr(cursor, "detail", name);
}

void makeDetail(int context, const DsCsr& cursor, int modus, int renderMode,
                const std::vector<std::uint32_t>* frozen, const Detail& detail) {
    CiPat patterns(context);
    CiView views(context);
    double scale = detail.standard.scale.value(), factor = 1;
    if (detail.nice > 0) {
        factor = detail.nice / scale;
        if (std::fabs(factor - 1) <= SCALE_TOLERANCE) factor = 1;
        scale = detail.nice;
    }
    const UtCString name = DxNewViewName(detail.name);
    markAsOutline(patterns, cursor, name);
    const WorkspaceScope workspace;
    int work = 0;
    if (patterns.GetWork(cursor, &work) == 0 && work != 0) {
        DsSetActiveWorkspace(work);
        GvmSetCameraBaseToWs(work, 1);
    }
    constexpr int inSpace = 1, flat = 2, content = 7;
    if (views.Create(name, modus == 3 ? inSpace : flat, content, detail.standard.format, detail.standard.unit,
                     GeScale(scale), factor, displayOf(renderMode), DsCursorGetLastPatId(cursor),
                     nullptr) == 0)
        views.ClipDetail(name, 0);
    if (!frozen || frozen->empty()) return;
    const UtCString filter = layerFilter(*frozen);
    if (!filter.IsEmpty()) GvmSetSelection(name, filter, 1);
}

void insertDetail(int context, const DsCsr& cursor, const Detail& detail) {
    CiView views(context);
    RPT3 low{}, high{};
    if (CiPat(context).GetBox(cursor, &low, &high)) return;
    const GeRpt3 place((low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2);
    const UtCString name = DxViewNameOf(detail.name);
    if (name.IsEmpty()) return; // the model pass didn't make it
    if (detail.nice > 0 && std::fabs(detail.sheetScale - 1) >= SCALE_TOLERANCE &&
        views.GetOrCreate(name) == 0)
        views.ChangeScale(name, GeScale(detail.nice));
    _ObObject* object = nullptr;
    views.Insert(name, place, &object);
    if (detail.nice == 0 && object)
        views.Scale(object, place, detail.sheetScale / detail.standard.scale.value() * detail.ratio);
}

} // namespace

UtCString DxSheetName() {
    return UtFormat("%s%02d", DxMsg(2828).c_str(), DxPlotCount);
}

UtCString DxNewViewName(const UtCString& wanted) {
    const DxTempContext context;
    CiView views(context.id());
    Form form;
    UtCString name = wanted;
    for (int i = 2; formOf(views, name, form); ++i) name = UtFormat("%s (%d)", wanted.c_str(), i);
    DxViewNames[wanted.str()] = name;
    return name;
}

UtCString DxViewNameOf(const UtCString& wanted) {
    const auto found = DxViewNames.find(wanted.str());
    return found == DxViewNames.end() ? UtCString() : found->second;
}

int DxCiCreateViewOrViewport(int patNo, int modus, const DX_VIEW_TYPE* view,
                             const DX_VIEWPORT_TYPE* viewport) {
    const CoarseTolerance tolerance;
    const DxTempContext context;
    if (context.result()) return context.result();
    CiView views(context.id());
    Detail detail;
    formOf(views, views.GetDfltViewName(0), detail.standard);
    detail.name = view ? DxHostText(view->name.view()) : detailName(*viewport);
    if (viewport && !settleScale(views, *viewport, detail)) return 0;
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(patNo, &cursor)) return error;
    if (DxActSpace == 0)
        makeDetail(context.id(), cursor, modus, view ? view->mode281 : viewport->renderMode,
                   viewport ? &viewport->frozen : nullptr, detail);
    else if (viewport)
        insertDetail(context.id(), cursor, detail);
    return 0;
}

#include "dx_spaces.h"

#include "../config/config_state.h"
#include "../host/dx_context.h"
#include "../host/dx_host_views.h"
#include "../host/host_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "ci_view.h"
#include "dx_entity_walk.h"
#include "dx_views_import.h"
#include "import_state.h"
#include "uo.h"

namespace {

constexpr int STOPPED = 9009;

int showModel(CiView& views) {
    const UtCString name = views.GetDfltViewName(0);
    return name.IsEmpty() ? 3006 : views.Show(name);
}

int showNewSheet(CiView& views) {
    GeFormat format(1);
    GeUnit unit;
    GeScale scale;
    const UtCString standard = views.GetDfltViewName(0);
    if (!standard.IsEmpty()) views.GetFormatUnitScale(standard, &format, &unit, &scale);
    const UtCString name = DxNewViewName(DxSheetName());
    const int error =
        views.Create(name, 0, 0, format, GeUnit(DxPaperUnit), GeScale(1.0), 1.0, 0, nullptr, nullptr);
    return error ? error : views.Show(name);
}

/// The smallest format that is larger than the paper, in millimetres; the largest where none is.
GeFormat formatFor(double width, double height) {
    constexpr int largest = 0, smallest = 6;
    GeFormat format;
    for (int number = smallest; number >= largest; --number) {
        format.Set(number, 0, 0);
        if (format.width() > width && format.height() > height) break;
    }
    return format;
}

} // namespace

int DxCiSwitchToReadSpace() {
    const DxTempContext context;
    if (context.result()) return context.result();
    if (const int error = CiContext::Update(context.id())) return error;
    CiView views(context.id());
    return DxActSpace ? showNewSheet(views) : showModel(views);
}

int DxCiChangeReadSpace(const DX_LAYOUT_TYPE* layout) {
    if (!DxActSpace || !layout) return 0;
    const DxTempContext context;
    CiView views(context.id());
    const UtCString sheet = DxSheetName();
    UtCString name = DxViewNameOf(sheet);
    if (name.IsEmpty()) name = sheet;
    if (context.result() || views.GetOrCreate(name)) return 0;
    views.ChangeScale(name, GeScale(1.0));
    const bool isTurned = layout->plotRotation == 1;
    const double width = isTurned ? layout->paperHeight : layout->paperWidth;
    const double height = isTurned ? layout->paperWidth : layout->paperHeight;
    views.ChangeFormat(name, formatFor(width, height));
    if (DxPaperSize) views.ChangePaper(name, width, height);
    const UtCString own = DxHostText(layout->name.view());
    if (own.IsEmpty() || own == name || own == sheet) return 0; // it has the name, or one like it
    const UtCString fresh = DxNewViewName(own);
    if (views.ChangeName(name, fresh) == 0) DxViewNames[sheet.str()] = fresh;
    return 0;
}

int DxDrawVP(const char* end, const Mat44 m) {
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair, 161, DxShowsPercent())) return error;
        if (pair.code != 0) continue;
        if (DxEndsEntities(pair.text, end)) return 0;
        if (pair.text == "VIEWPORT") {
            DX_VIEWPORT_TYPE viewport;
            if (const int error = DxReadViewport(&viewport)) return error;
            if (const int error = DxDrawViewport(&viewport, m)) return error;
        }
        if (++DxViewportAbortCount < 100) continue;
        DxViewportAbortCount = 0;
        if (UoCheckAbort(16)) return STOPPED;
    }
}

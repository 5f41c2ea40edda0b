// Contexts, views, pattern states and transparency: the helpers of a session.
#include "../session/session_state.h"
#include "dx_context.h"
#include "dx_host.h"

#include "ci_view.h"
#include "ge.h"

#include <algorithm>
#include <cmath>

int DxCiInit() {
    if (DxCiContextId) CiContext::Del(DxCiContextId);
    DxCiContextId = 0;
    DxCiElemReset();
    if (const int error = CiContext::Add(&DxCiContextId)) return error;
    const int unit = DxActSpace ? DxPaperUnit : DxUnit;
    return CiContext::SetUnit(DxCiContextId, GeUnit(unit, 1.0).name());
}

int DxCiViewUpdate() {
    const DxTempContext context;
    return context.result() ? context.result() : CiContext::Update(context.id());
}

int DxCiZoom2Box() {
    const DxTempContext context;
    return context.result() ? context.result() : CiContext::Zoom2Box(context.id());
}

int DxCiExportView(int id) {
    const DxTempContext context;
    UtCString name;
    return context.result() ? context.result() : CiView(context.id()).ExportToTempView(id, &name);
}

// ---- pattern states --------------------------------------------------------------------------------

int DxCiGetStatePenLt(const UtCString& obstat, int* pen, int* lineType) {
    if (obstat.IsEmpty()) return 4711;
    return CiContext::GetStatePenLtConf(DxCiContextId, obstat, pen, lineType);
}

int DxCiGetStateHatch(const UtCString& obstat, int* pen) {
    return obstat.IsEmpty() ? 4711 : CiContext::GetStateHatchConf(DxCiContextId, obstat, pen);
}

int DxCiGetStateText(const UtCString& obstat, CI_TEXT_STATE* text) {
    return obstat.IsEmpty() ? 4711 : CiContext::GetStateTextConf(DxCiContextId, obstat, text);
}

int DxCiGetState3D(const UtCString& obstat, int* pen) {
    return obstat.IsEmpty() ? 4711 : CiContext::GetState3DConf(DxCiContextId, obstat, pen);
}

// ---- transparency: DXF counts opacity from 0 to 255 --------------------------------------------------

int DxCiTransparencyToCAD(const DX_ENTITY_BASE_TYPE& base, int* percent) {
    *percent = 0;
    if (base.transparency == 0) return 3011;
    const int opacity = static_cast<int>(std::lround((base.transparency & 255) * 0.39215686274509803));
    *percent = std::clamp(100 - opacity, 0, 100);
    return 0;
}

int DxCiTransparencyToDXF(int percent, int* value) {
    const int clamped = std::clamp(percent, 0, 100);
    *value = percent ? static_cast<int>(std::lround((100 - clamped) * 2.5500000000000003)) | 0x2000000 : 0;
    return 0;
}

// ---- preparing the patterns of an export -------------------------------------------------------------

static void rememberDrawing(CiDrawing& drawing) {
    DxSplitLockFile = drawing.GetLockFileName();
    DxSplitFileName = drawing.GetLastFileName();
    if (drawing.StoreWorkFile(4) == 0) DxSplitWorkFile = drawing.GetLastWorkFileName();
}

static int bringDrawingBack(int contextId, CiDrawing& drawing) {
    if (DxSplitWorkFile.IsEmpty()) return 0;
    const int error = drawing.ReadWorkFile(DxSplitWorkFile, 0);
    if (!DxSplitLockFile.IsEmpty()) {
        drawing.UnlockDrawing();
        drawing.CheckReadLock(DxSplitLockFile);
    }
    drawing.SetLastFileName(DxSplitFileName);
    CiContext::SetTitle(contextId, DxSplitFileName);
    DxSplitWorkFile = UtCString();
    return error;
}

int DxCiSplitAndSortPats(int start) {
    if (!Cc_global.splitHatchPatterns) return 0;
    const DxTempContext context;
    if (context.result()) return context.result();
    CiDrawing drawing(context.id());
    if (!start) return bringDrawingBack(context.id(), drawing);
    if (DsDb::Act() != 8) rememberDrawing(drawing);
    return CiPat(context.id()).SplitByHatchs(65535, 1, 1);
}

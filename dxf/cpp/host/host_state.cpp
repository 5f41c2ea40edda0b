#include "host_state.h"

#include "ci.h"
#include "dx_host.h"

int DxCiContextId = 0;
DxTable<DX_PAT_ENTRY> DxPatTable;
int DxActPatIndex = -1;
int DxActPat = 0;
int DxPolyFillActive = 0;
int DxHatchActive = 0;
double DxLastOutX = 0, DxLastOutY = 0;
long DxElemsOut = 0;
int DxElemQueuePat = -1;
int DxElemPen = 1, DxElemLineType = 1;
int DxFillPat = 0;
int DxExportVisibleOnly = 0;
UtCString DxSplitWorkFile, DxSplitLockFile, DxSplitFileName;

std::map<std::string, UtCString> DxViewNames;

void DxResetHostState() {
    DxViewNames.clear();
    if (DxCiContextId) CiContext::Del(DxCiContextId);
    DxCiContextId = 0;
    DxPatTable.free();
    DxActPatIndex = -1;
    DxActPat = 0;
    DxPolyFillActive = 0;
    DxHatchActive = 0;
    DxLastOutX = DxLastOutY = 0;
    DxElemsOut = 0;
    DxElemQueuePat = -1;
    DxElemPen = DxElemLineType = 1;
    DxFillPat = 0;
    DxExportVisibleOnly = 0;
    DxSplitWorkFile = DxSplitLockFile = DxSplitFileName = UtCString();
    DxCiElemReset();
}

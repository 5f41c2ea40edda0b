#include "import_state.h"

#include "ellipse_state.h"

RPT3 DxExtMin{DX_UNKNOWN_MIN, DX_UNKNOWN_MIN, DX_UNKNOWN_MIN};
RPT3 DxExtMax{DX_UNKNOWN_MAX, DX_UNKNOWN_MAX, DX_UNKNOWN_MAX};
RPT3 DxInsBase{};
RPT DxModelShift{};
RPT3 DxLastPoint{};
DX_INSERT_LEVEL DxActLevel;
DxTable<DX_INSERT_LEVEL> DxInsertStack;
int DxPlotCount = 1, DxViewportCount = 1;
int DxActHidden = 0;
int DxPolylineOpen = 0;
int DxAbortCount = 0;
int DxViewportAbortCount = 0;
long DxEntitiesLeft = 0;
int DxPassIsLong = 0;
int DxSplineApprox = -1;
DxTable<_ObObject*> DxImportedObjects;

const DxEntityKind* DxKinds = nullptr;
std::size_t DxKindCount = 0;
std::uint8_t DxKindSlots[256] = {};
DxTable<DxEntityTally> DxKindTally;

DX_ENTITY_PARTS DxEntityParts[4] = {};
int DxEntityPartCount = 0;
int DxCountEntities = 0;
DxImportReport DxReport;

void DxResetImportState() {
    DxExtMin = {DX_UNKNOWN_MIN, DX_UNKNOWN_MIN, DX_UNKNOWN_MIN};
    DxExtMax = {DX_UNKNOWN_MAX, DX_UNKNOWN_MAX, DX_UNKNOWN_MAX};
    DxInsBase = DxLastPoint = {0, 0, 0};
    DxModelShift = {0, 0};
    DxActLevel = DX_INSERT_LEVEL{};
    DxActLevel.layer.assign("0");
    DxPlotCount = DxViewportCount = 1;
    DxActHidden = 0;
    DxPolylineOpen = 0;
    DxAbortCount = 0;
    DxViewportAbortCount = 0;
    DxEntitiesLeft = 0;
    DxPassIsLong = 0;
    DxSplineApprox = -1;
    DxEntityPartCount = 0;
    DxResetAccountState();
    DxResetEllipseState();
    DxImportedObjects.free();
    DxResetImportReport();
}

int DxBeginInsertStack(int color, std::string_view lineType) {
    DxActLevel = DX_INSERT_LEVEL{};
    DxActLevel.color = color;
    DxActLevel.lineType.assign(lineType);
    DxActLevel.layer.assign("0");
    DxInsertStack.clear();
    return DxInsertStack.add(DxActLevel);
}

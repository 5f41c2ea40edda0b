#include "session_state.h"

int DxIsExport = 0;
int DxModus = 2;
UtCString DxFileName;
UtCString DxSourceFileName;
int DxFileVersion = 1009;
int DxCodePage = 1252;
double DxFileScale = 0;
UtCString DxFileFormat;
int DxWriteVersion = 7;
int DxCheckPass = 0;
int DxReadSpace = 0;
int DxActSpace = 0;
std::uint32_t DxNextHandle = 512;
int DxSavedPen = -1, DxSavedLt = 0;
int DxPen = 0, DxLt = 0;
int DxUnit = 3, DxPaperUnit = 3;
int DxSavedUnit = 0;
double DxScale = 1;
double DxDrawUnit = 1;
double DxShiftX = 0, DxShiftY = 0;
int DxRegionCount = 0;

void DxResetSessionState(int isExport) {
    DxIsExport = isExport;
    DxFileName = UtCString();
    DxSourceFileName = UtCString();
    DxFileVersion = 1009;
    DxCodePage = 1252;
    DxFileScale = 0;
    DxFileFormat = UtCString();
    DxWriteVersion = 7;
    DxCheckPass = 0;
    DxReadSpace = 0;
    DxActSpace = 0;
    DxNextHandle = 512;
    DxPen = DxLt = 0;
    DxUnit = DxPaperUnit = 3;
    DxSavedUnit = 0;
    DxScale = 1;
    DxDrawUnit = 1;
    DxShiftX = DxShiftY = 0;
    DxRegionCount = 0;
}

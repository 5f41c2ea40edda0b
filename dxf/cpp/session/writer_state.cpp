#include "writer_state.h"

DX_PENDING DxPending;
FILE* DxHeaderStream = nullptr;
FILE* DxBodyStream = nullptr;
FILE* DxImageStream1 = nullptr;
FILE* DxImageStream2 = nullptr;
UtCString DxTargetPath;
UtCString DxHeaderPath;
UtCString DxBodyPath;
UtCString DxImagePath1;
UtCString DxImagePath2;
UtCString DxOutDir;
UtCString DxOutBase;
int DxTargetExisted = 0;
int DxBlockBuffering = 0;
std::unique_ptr<DxLineList> DxBlockLines;

std::map<int, OV_PEN_LOOK> DxWriteLooks;
int DxWriteInvisible = 0;

void DxResetWriterState(int isExport) {
    DxWriteLooks.clear();
    DxWriteInvisible = 0;
    DxHeaderStream = DxBodyStream = DxImageStream1 = DxImageStream2 = nullptr;
    DxPending.stream = nullptr;
    DxPending.size = 0;
    DxPending.error = 0;
    DxTargetPath = DxHeaderPath = DxBodyPath = DxImagePath1 = DxImagePath2 = UtCString();
    DxOutDir = DxOutBase = UtCString();
    DxTargetExisted = 0;
    DxBlockBuffering = 0;
    DxBlockLines = isExport ? std::make_unique<DxLineList>() : nullptr;
}

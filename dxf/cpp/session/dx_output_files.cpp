// The files of an export: the target and what is gathered beside it.
#include "dx_codes.h"
#include "dx_documents.h"
#include "dx_messages.h"
#include "dx_protocol.h"
#include "dx_writer.h"
#include "session_state.h"
#include "ut.h"

static FILE* openTemporary(const char* prefix, UtCString& path, int message) {
    path = UtTempFileName(UtGetTempDir(), prefix);
    FILE* stream = UtFileOpen(path, "w");
    if (stream) return stream;
    DxProtoMsg(DxMsg(message, path.c_str()), 1);
    path = UtCString();
    return nullptr;
}

/// The target is written beside its place, so that an older file of this name stays whole until the new one
/// is.
static FILE* openTarget() {
    DxTargetPath = UtFileTarget(DxFileName);
    if (DxTargetPath.IsEmpty()) return nullptr;
    DxHeaderPath = UtTempFileName(UtPathDir(DxTargetPath), ".dxf");
    return UtFileOpen(DxHeaderPath, "w");
}

int DxWriteOpen() {
    DxHeaderStream = openTarget();
    if (!DxHeaderStream) {
        DxProtoMsg(DxMsg(5809, DxFileName.c_str()), 1);
        DxHeaderPath = UtCString();
        return DX_ERR_OPEN;
    }
    DxBodyStream = openTemporary("DXF", DxBodyPath, 5707);
    if (!DxBodyStream) return DX_ERR_OPEN;
    DxImageStream1 = openTemporary("DXF_IMG1", DxImagePath1, 5809);
    if (!DxImageStream1) return DX_ERR_OPEN;
    DxImageStream2 = openTemporary("DXF_IMG2", DxImagePath2, 5809);
    return DxImageStream2 ? 0 : DX_ERR_OPEN;
}

static void removeFile(UtCString& path) {
    if (!path.IsEmpty()) UtFileRemove(path);
    path = UtCString();
}

int DxWriteClose(bool complete) {
    DxDocuments.select(nullptr);
    int result = DxWriteCloseStream(DxHeaderStream);
    DxWriteDropStream(DxBodyStream); // what they held is in the target by now, or no longer wanted
    DxWriteDropStream(DxImageStream1);
    DxWriteDropStream(DxImageStream2);
    removeFile(DxBodyPath);
    removeFile(DxImagePath1);
    removeFile(DxImagePath2);
    if (DxHeaderPath.IsEmpty()) return result;
    // An incomplete file takes the target's place only where it costs nobody a file.
    if ((complete && result == 0) || !DxTargetExisted) {
        if (UtFileRename(DxHeaderPath, DxTargetPath) == 0)
            DxHeaderPath = UtCString();
        else
            result = DxWriteFail();
    }
    removeFile(DxHeaderPath);
    return complete ? result : 0;
}

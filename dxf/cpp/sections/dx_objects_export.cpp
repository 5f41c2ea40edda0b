#include "dx_objects_export.h"

#include "../export/export_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_template.h"

namespace {

const char* templateName() {
    static constexpr const char* NAMES[] = {"objects_32", "objects_27", "objects_24",
                                            "objects_21", "objects_18", "objects_15"};
    return NAMES[DxWriteVersion >= 1 && DxWriteVersion <= 6 ? DxWriteVersion - 1 : 5];
}

/// The collected image objects are written by now: from here on they are read.
void reopenForReading(FILE*& stream, const UtCString& path) {
    DxWriteCloseStream(stream);
    stream = UtFileOpen(path, "r");
}

int writePair(int code, const std::string& value) {
    if (value == "#REFERENCE#") return DxWriteVariableReference(code);
    if (value == "#MODELSPACE_REFERENCE#") return DxWriteVariableReference2(code, DxModelSpaceHandle);
    if (value == "#MODELSPACE_OBJECTREFERENCE#") return DxWriteVariableReference2(code, DxModelSpaceDict);
    if (value == "#LTYP_REFERENCE#") return DxWriteVariableReference2(code, DxByBlockLtypeHandle);
    if (value == "#IMAGEDICT#") return DxInsertFile(DxImageStream2);
    if (value == "#IMAGEOBJECTS#") return DxInsertFile(DxImageStream1);
    return DxWriteString(code, value);
}

} // namespace

int DxInsertFile(FILE* file) {
    if (!file) return DxWriteFail(); // what can't be read back is missing in the file
    char buffer[1 << 16];
    while (const std::size_t n = std::fread(buffer, 1, sizeof buffer, file))
        if (DxWriteBytes(buffer, n)) break;
    return std::ferror(file) ? DxWriteFail() : DxWriteError();
}

int DxWriteObjects() {
    if (!DxMiscCheckVersion(6)) return DxWriteError();
    reopenForReading(DxImageStream1, DxImagePath1);
    reopenForReading(DxImageStream2, DxImagePath2);
    DxTemplate source(templateName());
    int code = 0;
    std::string value;
    while (!DxWriteError() && source.next(code, value)) writePair(code, value);
    return DxWriteError();
}

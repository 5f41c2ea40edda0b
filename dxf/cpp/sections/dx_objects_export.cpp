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
    if (!file || !DxDocuments.currentStream()) return 0;
    char buffer[1 << 16];
    while (const std::size_t n = std::fread(buffer, 1, sizeof buffer, file))
        if (const int error = DxWriteBytes(buffer, n)) return error;
    return std::ferror(file) ? 9000 : 0; // what can't be read back is missing in the file
}

int DxWriteObjects() {
    if (!DxMiscCheckVersion(6)) return 0;
    reopenForReading(DxImageStream1, DxImagePath1);
    reopenForReading(DxImageStream2, DxImagePath2);
    DxTemplate source(templateName());
    int code = 0;
    std::string value;
    int error = 0;
    while (!error && source.next(code, value)) error = writePair(code, value);
    return error;
}

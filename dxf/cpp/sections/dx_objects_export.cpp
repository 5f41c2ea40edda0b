#include "dx_objects_export.h"

#include "../session/dx_documents.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_placeholders.h"
#include "dx_template.h"

namespace {

/// The collected image objects are written by now: from here on they are read.
void reopenForReading(FILE*& stream, const UtCString& path) {
    DxWriteCloseStream(stream);
    stream = UtFileOpen(path, "r");
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
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return DxWriteError();
    reopenForReading(DxImageStream1, DxImagePath1);
    reopenForReading(DxImageStream2, DxImagePath2);
    DxTemplate source(DxObjectsTemplateName());
    int code = 0;
    std::string value;
    while (!DxWriteError() && source.next(code, value)) DxWriteTemplatePair(code, value);
    return DxWriteError();
}

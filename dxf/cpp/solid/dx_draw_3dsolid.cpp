// A queued solid becomes one of the host, by way of a file at the version that the host reads.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../host/dx_host_solid.h"
#include "../import/import_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_numbers.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_acds.h"
#include "dx_acis_import.h"
#include "dx_od.h"
#include "solid_state.h"
#include "ut_hex.h"

namespace {

constexpr int hostVersion = 700; ///< the newest that the host reads
constexpr int notMade = 9001;

/// The model's file for the host, gone with its scope.
class ModelFile {
public:
    ModelFile(std::string_view model, bool isBinary) : isBinary_(isBinary) {
        const bool isNewer = !isBinary && DxAtoi(model) > hostVersion;
        isConverted_ = isBinary || isNewer;
        // Imports that run side by side share the folder.
        path_ = UtTempFileName(UtGetTempDir(), "tmp") + (isConverted_ ? ".sab" : ".sat");
        error_ = write(model);
        if (!error_ && isConverted_) error_ = DxOdSatConv(path_, path_);
    }
    ~ModelFile() { UtFileRemove(path_); }
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;

    int error() const { return error_; }
    const UtCString& path() const { return path_; }
    bool isText() const { return !isConverted_; }

private:
    int write(std::string_view model) {
        FILE* const stream = UtFileOpen(path_, isBinary_ ? "wb" : "w");
        bool isWritten = stream && std::fwrite(model.data(), 1, model.size(), stream) == model.size();
        if (stream) isWritten &= UtFileClose(stream) == 0;
        if (isWritten) return 0;
        DxProtoMsg(DxMsg(5756, path_.c_str()), 1);
        return notMade;
    }

    bool isBinary_, isConverted_ = false;
    UtCString path_;
    int error_ = 0;
};

/// The material's handle in a line such as "material-adesk-attrib $-1 … 123 0 #".
unsigned long handleInLine(const std::string& line) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        parts.push_back(std::string_view(line).substr(at, end - at));
        at = end + 1;
    }
    while (!parts.empty() && parts.back().empty()) parts.pop_back();
    if (parts.size() < 3 || parts.back() != "#") return 0;
    const int handle = DxAtoi(parts[parts.size() - 3]);
    return handle > 0 ? static_cast<unsigned long>(handle) : 0;
}

unsigned long materialOf(const DX_3DSOLID_TYPE& solid, const ModelFile& file) {
    if (file.error() || !file.isText() || solid.base.materialHandle) return solid.base.materialHandle;
    UtCStringList lines;
    if (UtFileToStringList(file.path(), lines, "material-adesk-attrib") || lines.Count() == 0) return 0;
    return handleInLine(lines[0].str());
}

/// Brings the file into the drawing. 0 or the error that the solid is lost for.
int readIntoDrawing(const DX_3DSOLID_TYPE& solid, const ModelFile& file, int pen, int lineType) {
    constexpr int madeInPart = 10;
    if (file.error()) return file.error();
    DX_SOLID_LOOK look{pen, lineType, {}, 0};
    DxCiGetVisMatInfo(materialOf(solid, file), look.pen, look.material, look.number);
    const int error = DxCiReadSat(file.path(), look, solid.matrix);
    return error == madeInPart ? 0 : error;
}

/// The pattern that the host has active.
int activePattern() {
    int pattern = 0;
    return Dxovpat(5, &pattern) ? 0 : pattern;
}

} // namespace

int DxDraw3d3dSolid(const DX_3DSOLID_TYPE* solid, const DX_ACDSRECORD_TYPE* record) {
    int pen = 0, lineType = 0;
    if (DxCheckPass || !DxPenLtToCAD(&solid->base, &pen, &lineType)) return 0;
    const bool isBinary = record && record->ready;
    if (!isBinary && !solid->text) return 0;
    const ModelFile file(isBinary ? record->data : *solid->text, isBinary);
    const int before = activePattern();
    if (readIntoDrawing(*solid, file, pen, lineType)) {
        DxProtoMsg(DxMsg(5755), 1);
    } else if (activePattern() == before) {
        DxNewElement(1);
        return 0;
    }
    int pattern = before;
    if (pattern) Dxovpat(23, &pattern);
    return 0;
}

void DxAcisDrawQueue() {
    for (const DX_3DSOLID_TYPE& solid : DxSolidQueue) DxDraw3d3dSolid(&solid, DxAcisGetAcdsRecord(&solid));
    DxSolidQueue.clear();
}

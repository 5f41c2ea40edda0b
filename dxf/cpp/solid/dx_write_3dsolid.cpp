// Solids on their way out: the host's model, where the drawing has it, as enciphered text of version 700.
#include "../export/dx_unwritten.h"
#include "../export/dx_write_blocks.h"
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../host/dx_host_solid.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_acis_import.h"
#include "dx_od.h"
#include "dx_write_3d.h"
#include "solid_state.h"

namespace {

constexpr std::size_t fullLine = 255;

/// Targets whose solids are text: ACAD14 to ACAD24. Older ones have none, newer ones keep them in a section.
bool targetHoldsText() {
    constexpr int acad24 = 3;
    return DxMiscCheckVersion(DX_LEVEL_HANDLES) && DxWriteVersion >= acad24;
}

/// A full piece goes on in the next pair; one that ends like a record would not.
std::size_t pieceOf(std::string_view line) {
    std::size_t size = std::min(fullLine, line.size());
    while (size < line.size() && line[size - 1] == '#') ++size;
    return size;
}

void writeLine(std::string_view line) {
    int code = 1;
    while (line.size() > fullLine) {
        const std::size_t size = pieceOf(line);
        DxWriteString(code, DxAcisEncodeString(line.substr(0, size)));
        line.remove_prefix(size);
        code = 3;
    }
    DxWriteString(code, DxAcisEncodeString(line));
}

void writeModel(std::string_view text) {
    constexpr int modelVersion = 1;
    DxWriteSubClass("AcDbModelerGeometry");
    DxWriteInt(70, modelVersion);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0) writeLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

int writeSolid(const CI_SOLID& solid, int* entityCount) {
    DX_WRITE_STYLE style;
    std::string text;
    DxModelKind kind = DxModelKind::Solid;
    if (!DxSpaceStyle(solid.pen, solid.lineType, 0, style)) return 0;
    if (DxOdSatPlace(solid.model, solid.matrix, false, text, &kind)) {
        DxUnwrittenCounts[DX_UNWRITTEN_SOLID] += 1;
        return 0;
    }
    const bool isVolume = kind == DxModelKind::Solid;
    DxWriteEntityHead(isVolume ? "3DSOLID" : kind == DxModelKind::Region ? "REGION" : "BODY", style);
    writeModel(text);
    if (isVolume && DxMiscCheckVersion(DX_LEVEL_UTF8)) {
        DxWriteSubClass("AcDb3dSolid");
        DxWriteString(350, "0");
    }
    ++*entityCount;
    return DxWriteError();
}

} // namespace

int DxWriteSolidsOf(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    if (!DxWriteSolids || !targetHoldsText()) return DxCountUnwritten(pat, DX_UNWRITTEN_SOLID);
    CI_SOLID solid;
    for (int i = 0; DxCiGetSolid(pat, i, &solid) == 0; ++i) {
        if (!*blockOpen) {
            if (const int error = DxWriteBlockStart(*blockOpen)) return error;
            *blockLayer = UtCString(DxActLayer.view());
        }
        if (const int error = writeSolid(solid, entityCount)) return error;
    }
    return 0;
}

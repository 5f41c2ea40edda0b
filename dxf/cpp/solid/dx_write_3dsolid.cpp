// Solids on their way out: the host's model, where the drawing has it, at version 700, as enciphered text or
// as a record of the ACDSDATA section.
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

#include <cstdio>

namespace {

constexpr std::size_t fullLine = 255;

enum class Holds { Nothing, Text, Record };

/// ACAD14 to ACAD24 have solids as text, newer targets as records of a section, older ones not at all.
Holds targetHolds() {
    constexpr int acad24 = 3;
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES)) return Holds::Nothing;
    return DxWriteVersion >= acad24 ? Holds::Text : Holds::Record;
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

void writeText(std::string_view text) {
    constexpr int modelVersion = 1;
    DxWriteInt(70, modelVersion);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0) writeLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// Says which state of the model this is, in the form of "{8f942e25-c643-b445-9065-adb9a556eac9}".
std::string revisionOf(std::string_view model, std::uint32_t handle) {
    std::uint64_t words[2] = {0xcbf29ce484222325, handle};
    for (const char c : model) {
        words[0] = (words[0] ^ static_cast<unsigned char>(c)) * 0x100000001b3;
        words[1] = words[1] * 31 + (words[0] >> 32);
    }
    const auto part = [](std::uint64_t word, int shift) {
        return static_cast<unsigned>(word >> shift & 0xffff);
    };
    char text[40];
    std::snprintf(text, sizeof text, "{%08x-%04x-%04x-%04x-%04x%08x}", static_cast<unsigned>(words[0] >> 32),
                  part(words[0], 16), part(words[0], 0), part(words[1], 48), part(words[1], 32),
                  static_cast<unsigned>(words[1]));
    return text;
}

/// The model waits for the section.
void leaveRecord(std::string&& model, std::uint32_t handle) {
    DxWriteInt(290, 1);
    DxWriteString(2, revisionOf(model, handle));
    DxAcdsRecords.push_back({handle, std::move(model), true});
}

int writeSolid(const CI_SOLID& solid, Holds form, int* entityCount) {
    DX_WRITE_STYLE style;
    std::string model;
    DxModelKind kind = DxModelKind::Solid;
    if (!DxSpaceStyle(solid.pen, solid.lineType, 0, style)) return 0;
    if (DxOdSatPlace(solid.model, solid.matrix, form == Holds::Record, model, &kind)) {
        DxUnwrittenCounts[DX_UNWRITTEN_SOLID] += 1;
        return 0;
    }
    const bool isVolume = kind == DxModelKind::Solid;
    const std::uint32_t handle = DxGetNextReference();
    DxWriteEntityHead(isVolume ? "3DSOLID" : kind == DxModelKind::Region ? "REGION" : "BODY", style, handle);
    DxWriteSubClass("AcDbModelerGeometry");
    if (form == Holds::Record)
        leaveRecord(std::move(model), handle);
    else
        writeText(model);
    if (isVolume && DxMiscCheckVersion(DX_LEVEL_UTF8)) {
        DxWriteSubClass("AcDb3dSolid");
        DxWriteString(350, "0");
    }
    ++*entityCount;
    return DxWriteError();
}

} // namespace

int DxWriteSolidsOf(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    const Holds form = DxWriteSolids ? targetHolds() : Holds::Nothing;
    if (form == Holds::Nothing) return DxCountUnwritten(pat, DX_UNWRITTEN_SOLID);
    CI_SOLID solid;
    for (int i = 0; DxCiGetSolid(pat, i, &solid) == 0; ++i) {
        if (!*blockOpen) {
            if (const int error = DxWriteBlockStart(*blockOpen)) return error;
            *blockLayer = UtCString(DxActLayer.view());
        }
        if (const int error = writeSolid(solid, form, entityCount)) return error;
    }
    return 0;
}

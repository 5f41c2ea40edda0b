#include "dx_entity_origin.h"

#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../host/dx_host_origin.h"
#include "../session/dx_documents.h"
#include "../session/dx_reader.h"
#include "../session/session_state.h"
#include "import_state.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>

namespace {

/// Entities of one group 0 that give to one list of a pattern.
constexpr std::string_view SINGLE[] = {"3DFACE", "3DLINE", "ARC",        "CIRCLE", "DIMENSION", "ELLIPSE",
                                       "HATCH",  "LINE",   "LWPOLYLINE", "MTEXT",  "POINT",     "POLYLINE",
                                       "SOLID",  "SPLINE", "TEXT",       "TRACE"};

bool isIdentity(const Mat44 m) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (m[row][column] != (row == column ? 1.0 : 0.0)) return false;
    return true;
}

/// Whether the host's coordinates are the file's, but for the drawing shift.
bool isKept(const Mat44 m) {
    const DxfDocument* const document = DxDocuments.current_;
    if (DxActSpace != 0 && (DxShiftX != 0 || DxShiftY != 0)) return false;
    return DxModus == 2 && DxBlockLevel == DxOriginDepth && document && !document->parent.Get() &&
           isIdentity(m) && DxLengthToHost(1.0) == 1.0;
}

/// Whether each point of an entity (groups 10 to 18) is followed by its y, and no y stands alone: what
/// readers of any program want, though ours doesn't.
bool hasWholePoints(std::string_view pairs) {
    int awaited = 0;
    while (!pairs.empty()) {
        const int code = std::atoi(std::string(pairs.substr(0, pairs.find('\n'))).c_str());
        const bool isY = code >= 20 && code <= 28;
        if (awaited ? code != awaited : isY) return false;
        awaited = code >= 10 && code <= 18 ? code + 10 : 0;
        for (int line = 0; line < 2; ++line)
            pairs.remove_prefix(std::min(pairs.size(), std::min(pairs.find('\n'), pairs.size()) + 1));
    }
    return !awaited;
}

std::string textOf(std::string_view name, std::string_view bytes) {
    std::string text;
    text.reserve(name.size() + 1 + bytes.size());
    text.append(name).append("\n");
    return text += DxReadDecoded(bytes);
}

} // namespace

DxEntityOrigin::Step DxEntityOrigin::stepOf(std::string_view name) {
    if (name == "INSERT")
        return DxKeepBlocks && DxLayerToPattern && !DxBlockToPattern ? Step::Insert : Step::None;
    if (name == "ATTDEF") return DxOpenDefinition ? Step::Definition : Step::None;
    if (!DxKeepEntities) return Step::None;
    return std::find(std::begin(SINGLE), std::end(SINGLE), name) != std::end(SINGLE) ? Step::Single
                                                                                     : Step::None;
}

DxEntityOrigin::DxEntityOrigin(std::string_view name, const Mat44 m) {
    if (DxCheckPass || !(DxKeepEntities || DxKeepBlocks)) return;
    const Step step = stepOf(name);
    if (step == Step::None || !isKept(m)) return;
    step_ = step;
    name_ = name;
    start_ = DxReadTell();
    if (step == Step::Insert)
        DxPlacedWanted = 1;
    else
        DxOriginStart = {step != Step::Definition, 0, {}, name == "DIMENSION" ? OV_DIMENSIONS : -1};
}

int DxEntityOrigin::keep() const {
    if (step_ == Step::None) return 0;
    const std::string_view bytes = DxReadBytesFrom(start_);
    std::string text = bytes.empty() || !hasWholePoints(bytes) ? std::string() : textOf(name_, bytes);
    if (step_ == Step::Insert) {
        DxPlacedEnd(std::move(text));
        return 0;
    }
    if (step_ == Step::Definition) {
        DxDefinitionText += "0\n" + text;
        return 0;
    }
    return text.empty() ? 0 : DxOriginKeep(std::move(text));
}

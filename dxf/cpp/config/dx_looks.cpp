#include "dx_looks.h"

#include "../import/import_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/writer_state.h"
#include "dx_colors.h"
#include "dx_true_colors.h"
#include "looks_state.h"

#include <algorithm>

namespace {

constexpr int BY_LAYER = -1, BY_BLOCK = -2;
constexpr int USUAL_WIDTH = 25; ///< hundredths of a millimetre

/// Hundredths of a millimetre that a weight of its own comes to.
int widthOf(int weight) {
    return weight >= 0 ? std::min(weight, 211) : USUAL_WIDTH;
}

bool takesColorOfLayer(const DX_ENTITY_BASE_TYPE& entity) {
    return entity.trueColor < 0 && (entity.color < 0 || entity.color == 256);
}

OV_PEN_LOOK lookOf(const DX_ENTITY_BASE_TYPE& entity, const DxEntityLayer& layer, int colour) {
    OV_PEN_LOOK look;
    look.isColorOfLayer = takesColorOfLayer(entity);
    look.color = colour;
    look.trueColor = entity.trueColor;
    if (look.isColorOfLayer && layer.record) look.trueColor = layer.record->trueColor;
    if (entity.trueColor >= 0 && (entity.color < 1 || entity.color > 255))
        look.color = DxNearestColor(entity.trueColor);
    look.weight = entity.lineWeight == BY_BLOCK ? BY_LAYER : entity.lineWeight;
    look.width = widthOf(look.weight != BY_LAYER ? look.weight
                         : layer.record          ? layer.record->lineWeight
                                                 : -3);
    return look;
}

/// Whether the pen of the palette's colour says it all.
bool isPlain(const OV_PEN_LOOK& look) {
    return !look.isColorOfLayer && look.trueColor < 0 && look.weight == BY_LAYER && look.width == USUAL_WIDTH;
}

std::uint64_t packed(const OV_PEN_LOOK& look) {
    const auto part = [](int value, int shift) { return static_cast<std::uint64_t>(value) << shift; };
    return part(look.color & 0xFF, 0) | part((look.trueColor + 1) & 0x1FFFFFF, 8) |
           part((look.weight + 3) & 0xFFF, 33) | part(look.width & 0xFF, 45) |
           part(look.isColorOfLayer ? 1 : 0, 53);
}

/// The next pen that has this look, or none yet. 0: there is none.
int freePen(const OV_PEN_LOOK& look) {
    for (; DxNextLookPen < DX_PEN_COUNT; ++DxNextLookPen) {
        OV_PEN_LOOK present;
        const int error = UoPenGetLook(DxNextLookPen, &present);
        if (!error && !(present == look)) continue;
        if (error && UoPenSetLook(DxNextLookPen, look) != 0) return 0;
        return DxNextLookPen++;
    }
    return 0;
}

} // namespace

int DxPenOfLook(const DX_ENTITY_BASE_TYPE& entity, const DxEntityLayer& layer, int colour, int pen) {
    const OV_PEN_LOOK look = lookOf(entity, layer, colour);
    if (isPlain(look)) return pen;
    const auto [entry, isNew] = DxLookPens.try_emplace(packed(look), 0);
    if (isNew) {
        entry->second = freePen(look);
        if (!entry->second) DxProtoMsg(DxMsg(20031), 1);
    }
    return entry->second ? entry->second : pen;
}

int DxColorOfLook(int pen) {
    OV_PEN_LOOK look;
    if (!DxKeepLooks || pen < 256 || UoPenGetLook(pen, &look) != 0) return 0;
    DxWriteLooks[DX_COLOR_OF_LOOK + pen] = look;
    return DX_COLOR_OF_LOOK + pen;
}

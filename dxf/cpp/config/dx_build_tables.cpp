#include "dx_config.h"

#include "../session/dx_documents.h"
#include "dx_colors.h"
#include "dx_linetypes.h"

/// Appends the built-in pairs of all colours. A configured default stands for all that the configuration
/// doesn't name; else the built-in pens do, with `fallback` becoming the pen of colours beyond the palette.
static int appendBuiltInPens(DxTable<DX_COLOR_PAIR>& pairs, int& fallback) {
    constexpr int UNKNOWN_COLOR_PEN = 10;
    if (const int error = pairs.reserve(pairs.size() + DX_COLOR_COUNT)) return error;
    for (int color = 0; color < DX_COLOR_COUNT; ++color)
        if (const int error = pairs.add({color, fallback != -1 ? fallback : DxBuiltInPen(color)}))
            return error;
    if (fallback == -1) fallback = UNKNOWN_COLOR_PEN;
    return 0;
}

static int appendBuiltInFills() {
    if (const int error = DxFillToDxf.reserve(DxFillToDxf.size() + DX_PEN_COUNT)) return error;
    for (int pen = 0; pen < DX_PEN_COUNT; ++pen)
        if (const int error = DxFillToDxf.add({DxBuiltInColor(pen), pen})) return error;
    return 0;
}

static int buildLinetypes() {
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    if (lineTypes.empty()) {
        constexpr int CONTINUOUS = 1;
        if (const int error = DxAddLinetype(CONTINUOUS, "CONTINUOUS")) return error;
    }
    for (std::size_t i = 0; i < lineTypes.size(); ++i) {
        const DX_NAME name = lineTypes[i].name;
        DxInitLinetypes(name.view(), name.view(), static_cast<int>(i));
    }
    return 0;
}

int DxBuildTables() {
    if (const int error = appendBuiltInPens(DxFillToCad, DxDefaultFill)) return error;
    if (const int error = appendBuiltInPens(DxPenToCad, DxDefaultPen)) return error;
    if (const int error = appendBuiltInFills()) return error;
    return buildLinetypes();
}

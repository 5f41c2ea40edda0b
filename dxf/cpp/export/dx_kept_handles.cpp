#include "dx_kept_handles.h"

#include "../config/config_state.h"
#include "../host/dx_host.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "dx_write_origin.h"
#include "export_state.h"
#include "origin.h"

#include <algorithm>
#include <charconv>

namespace {

/// A file with more handles than bits here gives entities new ones.
constexpr std::uint32_t HIGHEST = 1U << 28U;

std::uint32_t handleOf(std::string_view value) {
    std::uint32_t handle = 0;
    const auto end = std::from_chars(value.data(), value.data() + value.size(), handle, 16);
    return end.ec == std::errc() && handle < HIGHEST ? handle : 0;
}

std::uint32_t highestIn(std::string_view text) {
    std::uint32_t highest = 0;
    for (const DX_KEPT_ENTITY& entity : DxKeptEntities(text))
        highest = std::max(highest, handleOf(entity.value(5)));
    return highest;
}

std::uint32_t highestOfWalk() {
    std::uint32_t highest = 0;
    int pat = -1;
    for (int error = Dxovpat(145, &pat); !error; error = Dxovpat(145, &pat)) {
        OV_ORIGIN origin;
        for (int i = 0; UoOriginGet(pat, i, &origin) == 0; ++i)
            highest = std::max(highest, highestIn(origin.text));
        std::string_view text;
        if (UoPlacedGet(pat, nullptr, &text) == 0) highest = std::max(highest, highestIn(text));
    }
    return highest;
}

} // namespace

void DxReserveKeptHandles() {
    if (!(DxKeepEntities || DxKeepBlocks) || !DxMiscCheckVersion(DX_LEVEL_HANDLES)) return;
    std::uint32_t highest = highestOfWalk();
    UtCString name;
    std::string_view text;
    for (int number = 1; UoDefinitionGet(number, &name, &text) == 0; ++number) {
        const int around = UoDefinitionOpen(number);
        highest = std::max({highest, highestOfWalk(), highestIn(text)});
        UoDefinitionOpen(around);
    }
    DxFirstKeptHandle = DxNextHandle + 1;
    DxNextHandle = std::max(DxNextHandle, highest);
    DxHandlesTaken.assign(static_cast<std::size_t>(DxNextHandle) + 1, false);
}

std::uint32_t DxTakeKeptHandle(std::string_view value) {
    const std::uint32_t handle = handleOf(value);
    if (DxFirstKeptHandle == 0 || handle < DxFirstKeptHandle || handle >= DxHandlesTaken.size() ||
        DxHandlesTaken[handle])
        return DxGetNextReference();
    DxHandlesTaken[handle] = true;
    return handle;
}

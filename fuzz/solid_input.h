// A solid model from hostile bytes: read, rewritten at version 700 in both forms and read again; the host's
// lines of it.
#pragma once

#include "solid/sat/acis_file.h"

#include "solid/solid_wires.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

inline void trySolid(std::string_view model) {
    constexpr std::size_t mostPoints = 100'000;
    host::solidWires(model, mostPoints);
    ACIS::File file;
    if (!file.load(model)) {
        if (file.problem().empty()) std::abort();
        return;
    }
    for (const std::uint32_t form : {ACIS::VERSION_TEXT, ACIS::VERSION_BINARY}) {
        const std::string written = file.save(form | ACIS::TARGET_VERSION);
        ACIS::File again;
        if (!written.empty() && !again.load(written)) std::abort();
        host::solidWires(written, mostPoints);
    }
}

/// Whether the bytes begin as the binary form does.
inline bool isBinarySolid(std::string_view model) {
    return model.starts_with("ACIS BinaryFile") || model.starts_with("ASM BinaryFile");
}

// Solid models: read in text and binary, rewritten at version 700 and read again; the host's lines of them.
#include "solid/sat/acis_file.h"

#include "solid/solid_wires.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view model(reinterpret_cast<const char*>(data), size);
    constexpr std::size_t mostPoints = 100'000;
    host::solidWires(model, mostPoints);
    ACIS::File file;
    if (!file.load(model)) {
        if (file.problem().empty()) std::abort();
        return 0;
    }
    for (const std::uint32_t form : {ACIS::VERSION_TEXT, ACIS::VERSION_BINARY}) {
        const std::string written = file.save(form | ACIS::TARGET_VERSION);
        ACIS::File again;
        if (!written.empty() && !again.load(written)) std::abort();
        host::solidWires(written, mostPoints);
    }
    return 0;
}

// Solid models in text.
#include "solid_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view model(reinterpret_cast<const char*>(data), size);
    if (isBinarySolid(model)) return 0; // the other target has them
    trySolid(model);
    return 0;
}

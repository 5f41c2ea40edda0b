// Solid models in the binary form; other bytes get its beginning.
#include "solid_input.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string model(reinterpret_cast<const char*>(data), size);
    if (!isBinarySolid(model)) model.insert(0, "ACIS BinaryFile");
    trySolid(model);
    return 0;
}

// The reader of the older configuration format.
#include "config_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    runConfig(data, size, [](const std::string& path, int isExport) { DxReadDefaultFile(path, isExport); });
    return 0;
}

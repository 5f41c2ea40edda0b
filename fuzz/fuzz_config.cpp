// The readers of ".dxd" files: the main file, and the special file for characters.
#include "config/dx_config_rows.h"
#include "config_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    runConfig(data, size, [](const std::string& path, int isExport) {
        DxReadConfig(path, isExport);
        DxReadSpezConfig(path, isExport);
    });
    return 0;
}

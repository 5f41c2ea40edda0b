// A whole import of any bytes, in 2D and in 3D, with layers as patterns and without.
#include "dx_select.h"
#include "services/session.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

struct Files {
    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("torva-fuzz-import-" + std::to_string(getpid()));
    std::string drawing = folder / "in.dxf";
    std::string config = folder / "layers.dxd";

    Files() {
        std::filesystem::create_directories(folder);
        setenv("HD_WORK_DIR", folder.c_str(), 1);
        std::ofstream(config) << "#FLAGS-START\nREAD_LAYER=ATTR\nREAD_BLOCK=NAME\n#FLAGS-END\n#EOF\n";
    }
    ~Files() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files files;
    std::ofstream(files.drawing, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    for (const int operation : {DX_IMPORT_2D, DX_IMPORT_3D}) {
        host::resetSession();
        host::session().maxElements = 200'000;
        host::session().numbers["&DxfPaper"] = 2;
        host::session().numbers["&DxfParseExt"] = 0;
        if (operation == DX_IMPORT_2D) host::session().texts["$DxfConfig"] = files.config;
        DxfSelect(0, operation, files.drawing.c_str());
    }
    std::filesystem::remove(files.folder / "dxf.proto");
    return 0;
}

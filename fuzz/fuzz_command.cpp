// The command's own way with a DXF file: looked through, imported with what it brings, its account told.
#include "account.h"
#include "environment.h"
#include "fuzz_files.h"
#include "load.h"
#include "services/session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder("command");
    setenv("HD_U", TORVA_BUILD_DATA, 0);
    tool::setDataEnvironment();
    tool::Options options;
    options.read.maxElements = 20'000;
    options.read.passport = true;
    options.read.threeD = size % 2 == 1;
    options.read.space = size % 3 == 0 ? "all" : "model";
    const std::string path = folder.write("in.dxf", data, size);
    const tool::Loaded loaded = tool::loadInput(path, options, false);
    tool::accountLines(loaded);
    folder.tidy();
    return 0;
}

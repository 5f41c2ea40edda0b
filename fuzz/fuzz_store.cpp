// The drawing file: any bytes as one; what can be loaded comes back equal from a file of our own.
#include "drawing/dump.h"
#include "fuzz_files.h"
#include "store/store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder("store");
    host::Drawing drawing, again;
    if (!host::loadDrawing(drawing, folder.write("in.tdw", data, size)).empty()) return 0;
    const std::string path = folder.file("out.tdw");
    if (!host::saveDrawing(drawing, path).empty() || !host::loadDrawing(again, path).empty()) std::abort();
    if (host::dumpDrawing(drawing) != host::dumpDrawing(again)) std::abort();
    return 0;
}

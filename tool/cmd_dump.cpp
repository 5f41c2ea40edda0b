// torva-dxf dump: a drawing as text.
#include "load.h"
#include "options.h"

#include "drawing/dump.h"

#include <iostream>

namespace tool {

int runDump(const Options& options) {
    const std::string& input = options.inputs.front();
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    if (loaded.error.empty()) std::cout << host::dumpDrawing(host::openDrawing());
    return status;
}

} // namespace tool

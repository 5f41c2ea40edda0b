// torva-dxf export: a drawing file becomes a DXF file.
#include "load.h"
#include "options.h"
#include "save.h"

namespace tool {

int runExport(const Options& options) {
    const std::string& input = options.inputs[0];
    if (!isUsableTarget(input, options.output)) return STATUS_USAGE;
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    return status == STATUS_DONE ? saveDxf(options.output, loaded, options) : status;
}

} // namespace tool

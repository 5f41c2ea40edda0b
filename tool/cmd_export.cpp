// torva-dxf export: a drawing file becomes a DXF file.
#include "account.h"
#include "load.h"
#include "options.h"
#include "save.h"

#include <algorithm>

namespace tool {

int runExport(const Options& options) {
    const std::string& input = options.inputs[0];
    if (!isUsableTarget(input, options.output)) return STATUS_USAGE;
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    if (status != STATUS_DONE) return status;
    return std::max(saveDxf(options.output, loaded, options), lossStatus(loaded, options));
}

} // namespace tool

// torva-dxf export: a drawing file becomes a DXF file.
#include "account.h"
#include "load.h"
#include "options.h"
#include "save.h"
#include "tell.h"
#include "words.h"

#include "convert/mesh_file.h"

#include <algorithm>
#include <iostream>

namespace tool {

/// The faces as a mesh; a DXF file is read in 3D for that.
static int exportMesh(const Options& given) {
    Options options = given;
    options.read.threeD = true;
    const Loaded loaded = loadInput(options.inputs[0], options, true);
    const int status = tellOutcome(options.inputs[0], loaded, options);
    if (status != STATUS_DONE) return status;
    long faces = 0;
    const std::string error = host::writeMesh(host::openDrawing(), options.output, &faces);
    if (!error.empty()) return fail(words::retold(error));
    if (faces == 0) fail(options.output, words::say("the drawing has no faces"));
    return lossStatus(loaded, options);
}

int runExport(const Options& options) {
    const std::string& input = options.inputs[0];
    const bool isMesh = host::isMeshFile(options.output);
    if (!isUsableTarget(input, options.output, isMesh ? "mesh" : "dxf")) return STATUS_USAGE;
    if (isMesh) return exportMesh(options);
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    if (status != STATUS_DONE) return status;
    return std::max(saveDxf(options.output, loaded, options), lossStatus(loaded, options));
}

} // namespace tool

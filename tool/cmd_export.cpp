// torva-dxf export: a drawing file becomes a DXF file.
#include "load.h"
#include "options.h"
#include "save.h"

#include "convert/mesh_file.h"

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
    if (!error.empty()) {
        std::cerr << "torva-dxf: " << error << '\n';
        return STATUS_FAILED;
    }
    if (faces == 0) std::cerr << "torva-dxf: " << options.output << ": the drawing has no faces\n";
    return STATUS_DONE;
}

int runExport(const Options& options) {
    const std::string& input = options.inputs[0];
    if (!isUsableTarget(input, options.output)) return STATUS_USAGE;
    if (host::isMeshFile(options.output)) return exportMesh(options);
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    return status == STATUS_DONE ? saveDxf(options.output, loaded, options) : status;
}

} // namespace tool

// torva-dxf render: a picture of a drawing.
#include "load.h"
#include "options.h"

#include "render/render.h"

#include <iostream>

namespace tool {

int runRender(const Options& options) {
    const std::string& input = options.inputs.front();
    const Loaded loaded = loadInput(input, options, true);
    const int status = tellOutcome(input, loaded, options);
    const host::Drawing& drawing = host::openDrawing();
    if (!loaded.error.empty() || (status != STATUS_DONE && drawing.elementCount == 0)) return STATUS_FAILED;

    host::RenderOptions picture;
    picture.size = options.size;
    picture.view = options.view;
    picture.dark = options.dark;
    picture.hidden = options.hidden;
    picture.shade = options.shade;
    picture.inSpace = options.hidden || options.shade || !options.direction.empty();
    if (const auto& d = options.direction; !d.empty()) picture.direction = {d[0], d[1], d[2]};
    const std::string error = host::renderDrawing(drawing, options.output, picture);
    if (error.empty()) return status;
    std::cerr << "torva-dxf: " << error << '\n';
    return STATUS_FAILED;
}

} // namespace tool

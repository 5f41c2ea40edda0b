// Writing the open drawing as a DXF file.
#pragma once

#include "load.h"
#include "options.h"

#include <string>

namespace tool {

/// Exports the open drawing to `target`. `source`: what the drawing was imported from; layers and line types
/// of that file keep their colours, flags and dash patterns. Tells the messages on standard error. Result:
/// the exit status.
int saveDxf(const std::string& target, const Loaded& source, const Options& options);

} // namespace tool

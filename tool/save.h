// Writing the open drawing as a DXF file.
#pragma once

#include "load.h"
#include "options.h"

#include <string>

namespace tool {

/// Whether a DXF file may go to `target`; why not is told on standard error. It may not be the input itself,
/// nor have a drawing file's name. "-" is standard output.
bool isUsableTarget(const std::string& input, const std::string& target, const std::string& purpose = "dxf");

/// Exports the open drawing to `target`. `source`: what the drawing was imported from; layers and line types
/// of that file keep their colours, flags and dash patterns. Tells the messages on standard error. What can
/// only be written to its end, as standard output, gets the file when it is whole. Result: the exit status.
int saveDxf(const std::string& target, const Loaded& source, const Options& options);

} // namespace tool

// What goes wrong, told on standard error.
#pragma once

#include "options.h"

#include <string>

namespace tool {

/// Tells why the command ends, behind the program's name. Result: the status.
int fail(const std::string& why, Status status = STATUS_FAILED);

/// The same about a file.
int fail(const std::string& file, const std::string& why, Status status = STATUS_FAILED);

/// Makes the folder and those above it. False when it can't be had, which is told.
bool makeFolder(const std::string& folder);

} // namespace tool

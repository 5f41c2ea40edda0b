// Paths as this system writes them.
#pragma once

#include "ut_string.h"

#include <string>

namespace host {

/// The path with "/" for a backslash, unless a file has it in its name. Empty for a path that no file can
/// have.
std::string systemPath(const UtCString& path);

} // namespace host

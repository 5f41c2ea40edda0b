// The macro variables that a run looks at.
#pragma once

#include <string>

namespace tool {

/// What is wrong with the NAME=VALUE of an option --set: its form, its name, or a number that is none. Empty
/// when all is well.
std::string whyNoVariable(const std::string& text);

} // namespace tool

#pragma once
// The check of one file that lies in memory.

#include "validate.h"

namespace validate {

/// Judges the text of a file. See validateText().
Report checkFile(std::string_view text, const Selection& selection);

} // namespace validate

#pragma once
// From the text of a file to its document.

#include "log.h"

namespace repair {

/// Reads the pairs of `document.text()` and puts them into their sections. What is out of step, stands
/// outside of sections, is left open or stands twice is told in the log and set right. False when the text
/// has no section at all.
bool parse(Document& document, Log& log);

} // namespace repair

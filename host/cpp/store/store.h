// The drawing file (.tdw): one SQLite database.
#pragma once

#include "drawing/drawing.h"

#include <string>

namespace host {

/// Writes the drawing to `path`: into a temporary file beside it, checked, then renamed over it, so that the
/// old file stays whole until the new one is. Empty, or what went wrong; then the old file is untouched.
std::string saveDrawing(const Drawing& drawing, const std::string& path);
/// Replaces `drawing` by the file's content. Empty, or what went wrong; then `drawing` is untouched. A file
/// that isn't a drawing, is of a newer version or damaged is refused.
std::string loadDrawing(Drawing& drawing, const std::string& path);

} // namespace host

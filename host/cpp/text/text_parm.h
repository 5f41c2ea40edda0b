// The parameters of texts between the API's records and the drawing's texts.
#pragma once

#include "drawing/drawing.h"
#include "ov_text.h"

#include <string_view>

namespace host {

/// True for parameters that a text can have: finite numbers, a height above 0, nothing negative.
bool isUsable(const OV_TEXT_PARM& parm);
/// Gives a text its parameters; origins, justifications and a width that are out of range get the usual ones.
void setParm(Text& text, const OV_TEXT_PARM& parm);
void setExt(Text& text, const OV_TEXT_EXT& ext);
OV_TEXT_PARM parmOf(const Text& text);
OV_TEXT_EXT extOf(const Text& text);

/// Appends a text with the current parameters to a pattern. The reference holds until the next one.
Text& addText(Pattern& pattern, std::string_view text);

/// Lines divided by line feeds; carriage returns are dropped. At least one, maybe empty.
std::vector<std::string> splitLines(std::string_view text);
UtCString joinLines(const std::vector<std::string>& lines);

} // namespace host

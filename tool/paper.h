// Paper and scales as the command line names them.
#pragma once

#include "options.h"

#include "render/render.h"

#include <optional>
#include <string>

namespace tool {

/// A0 to A5, upright, or "WxH" in millimetres.
std::optional<host::Paper> paperFromWord(const std::string& word);
/// "fit" is 0, "1:50" is 0.02.
std::optional<double> scaleFromWord(const std::string& word);
/// What the options of a picture ask for.
host::Paper paperOf(const Options& options);

} // namespace tool

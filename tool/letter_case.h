// Letter case of names, which a DXF file doesn't tell apart.
#pragma once

#include "ut_string.h"

#include <string>

namespace tool {

/// The UTF-8 text in small letters.
inline std::string lower(const std::string& text) {
    return UtCString(text).Lower().str();
}

} // namespace tool

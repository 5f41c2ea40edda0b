// Bytes as text, for pictures within pictures.
#pragma once

#include <string>
#include <string_view>

namespace host {

std::string base64(std::string_view bytes);

} // namespace host

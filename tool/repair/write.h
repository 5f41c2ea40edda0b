#pragma once
// From the document back to text.

#include "document.h"

namespace repair {

/// The whole file, its lines ended by `lineEnd`.
std::string writeText(const Document& document, std::string_view lineEnd);

} // namespace repair

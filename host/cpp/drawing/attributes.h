// Attributes of patterns by name.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// The identifying string that `name` stands for ("#G", "#E", "#K", "#M", "layer", "obstat"), else null.
std::string* identifyingString(PatternIds& ids, const std::string& name);
/// Sets an identifying string or a free attribute.
void setAttribute(Pattern& pattern, const std::string& name, const std::string& value);
/// Value of an attribute; null when it isn't set. An empty identifying string counts as not set.
const std::string* findAttribute(const Pattern& pattern, const std::string& name);

} // namespace host

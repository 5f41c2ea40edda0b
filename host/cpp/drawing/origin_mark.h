// Marks of content: equal for equal content, and as good as never for other.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// Of `count` rows of a list from `first`; 0 when there are no such rows.
std::int64_t markOf(const Pattern& pattern, int list, int first, int count);
/// Of all that a pattern and the members hold.
std::int64_t markOf(const Drawing& drawing, const Pattern& pattern, const std::vector<int>& members);

/// Takes the content as it is for untouched: a change that the texts have foreseen is none.
void renewMarks(Drawing& drawing);

} // namespace host

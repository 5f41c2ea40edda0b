// What content was made from, and the mark by which it is known to be untouched.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// What a run of a pattern's elements, texts or hatches was made from.
struct Origin {
    int list = 0; ///< an OV_CONTENT
    int first = 0, count = 0;
    std::int64_t mark = 0; ///< of the run as it was
    std::string text;
};

/// What a placed definition drew: the pattern that has this, and its members.
struct Placed {
    std::vector<int> members; ///< numbers of patterns
    std::int64_t mark = 0;
    std::string text;
};

/// What placed definitions are drawn from. The patterns that hold its content have its number.
struct Definition {
    std::string name, text;
};

} // namespace host

#pragma once
// The German tables, a file a subject. Rows are sorted by the compiler, so that they may stand as they read
// best.

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace words {

struct Row {
    std::string_view english, german;
};

template <std::size_t Count>
consteval std::array<Row, Count> sorted(std::array<Row, Count> rows) {
    std::ranges::sort(rows, {}, &Row::english);
    return rows;
}

std::span<const Row> commandRows(); ///< what the command tells
std::span<const Row> helpRows();    ///< what its help says of options, and wrong usage
std::span<const Row> hostRows();    ///< what the host and the system say
std::span<const Row> ruleRows();    ///< the rules of the judge
std::span<const Row> findingRows(); ///< pieces of the judge's findings
std::span<const Row> mendRows();    ///< pieces of what was mended

} // namespace words

// Finds a row of a table by a name in any case: a sorted index, made when the program is built.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ACIS {

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/// The order of letters of ASCII without regard to case.
constexpr bool isAhead(std::string_view a, std::string_view b) {
    const std::size_t size = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < size; ++i)
        if (lower(a[i]) != lower(b[i])) return lower(a[i]) < lower(b[i]);
    return a.size() < b.size();
}

template <std::size_t Count>
class NameIndex {
public:
    constexpr void add(std::string_view name, std::size_t row) {
        rows_[used_++] = {name, static_cast<std::uint16_t>(row)};
    }
    constexpr void sort() {
        std::sort(rows_.begin(), rows_.begin() + used_, [](Row a, Row b) { return isAhead(a.name, b.name); });
    }
    /// Number of the row, or -1.
    constexpr int find(std::string_view name) const {
        const auto end = rows_.begin() + used_;
        const auto at = std::lower_bound(
            rows_.begin(), end, name, [](Row row, std::string_view text) { return isAhead(row.name, text); });
        return at == end || isAhead(name, at->name) ? -1 : at->row;
    }

private:
    struct Row {
        std::string_view name;
        std::uint16_t row = 0;
    };
    std::array<Row, Count> rows_{};
    std::size_t used_ = 0;
};

} // namespace ACIS

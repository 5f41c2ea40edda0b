#pragma once
// A pair of group code and value, and a record of them: from a group 0 to the next.

#include "kind.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace repair {

struct Pair {
    int code = 0;
    std::string_view value{}; ///< as it stands in the file, or kept by the document
    uint32_t line = 0;        ///< of the code in the file, 0 for one that was added
};

struct Record {
    std::vector<Pair> pairs{}; ///< the first is the group 0

    std::string_view kind() const { return pairs.front().value; }
    uint32_t line() const { return pairs.front().line; }
    /// First pair of this code behind the group 0 and in front of extended data; null without one.
    Pair* find(int code);
    const Pair* find(int code) const { return const_cast<Record*>(this)->find(code); }
    /// Its value without blanks around, empty without one.
    std::string_view text(int code) const;
    int64_t integer(int code, int64_t otherwise = 0) const;

    /// The own handle, 0 when there is none or it is no handle.
    uint64_t handle() const;
    Pair* handlePair();
    /// The pair with the owner among the head's, null without one.
    Pair* ownerPair();
    uint64_t owner() const;
    /// Index of the first pair behind handle, application groups and owner.
    size_t bodyStart() const;
    /// Index of the first pair of the extended data, the number of pairs without any.
    size_t extendedStart() const;
    /// Inserts at an index, or behind the head's pairs.
    void insert(size_t at, Pair pair) { pairs.insert(pairs.begin() + static_cast<std::ptrdiff_t>(at), pair); }
    void erase(size_t from, size_t count = 1);
};

/// Group that holds the own handle of a kind.
int handleCode(std::string_view kind);

} // namespace repair

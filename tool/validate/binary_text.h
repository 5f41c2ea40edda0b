#pragma once
// Binary DXF as the text that says the same, with the place of each group in the file.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace validate {

/// Whether the bytes begin as a binary DXF does.
bool isBinaryDxf(std::string_view bytes);

struct BinaryText {
    std::string text;           ///< group n is in lines 2 n + 1 and 2 n + 2
    std::vector<size_t> places; ///< byte at which group n begins
    size_t end = 0;             ///< byte behind the last whole group
    std::string damage;         ///< why the reading ended there; empty at the end of the file or behind EOF

    /// The byte of a line of the text; of one behind the last group, the end.
    size_t byteOf(size_t line) const {
        const size_t group = (line - 1) / 2;
        return group < places.size() ? places[group] : end;
    }
};

/// Reads group by group up to EOF or to the first that is damaged.
BinaryText readBinary(std::string_view bytes);

} // namespace validate

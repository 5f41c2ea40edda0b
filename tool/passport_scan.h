// A look through a text DXF for what it says of itself: who wrote it, its styles, blocks, references,
// layouts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct PassportStyle {
    std::string name;
    std::string file;    ///< font file
    std::string bigFont; ///< of ideographs, empty for none
    std::string face;    ///< family that the extended data name, empty for none
};

struct PassportBlock {
    std::string name;
    std::string reference; ///< file that the block stands for, empty for a block of the drawing
    long inserted = 0;     ///< INSERTs that name it, wherever they stand
};

/// Texts are UTF-8.
struct PassportScan {
    std::vector<std::string> comments; ///< ahead of the first section, where programs name themselves
    std::vector<PassportStyle> styles; ///< of texts, in the order of the table
    std::vector<PassportBlock> blocks; ///< in the order of the file, but for those of layouts
    std::vector<std::string> layouts;  ///< in the order of the file
};

/// Looks through the bytes of a file once. Lists are kept up to a few thousand entries. `codePage`: of texts
/// in files that aren't UTF-8.
PassportScan scanPassport(std::string_view bytes, int codePage);

} // namespace tool

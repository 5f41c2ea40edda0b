// The floor under all speed figures: the least that any reader of text DXF must do.
#pragma once

#include <cstddef>
#include <string_view>

namespace bench {

struct FloorResult {
    std::size_t pairs = 0;
    double sum = 0; ///< of codes and reals, so that nothing is optimised away
};

/// Finds both line ends of each pair with memchr, converts codes and the values of real groups with
/// std::from_chars, keeps nothing.
FloorResult runFloor(std::string_view dxf);

/// Whether the values of a group code are reals.
bool isRealCode(int code);

} // namespace bench

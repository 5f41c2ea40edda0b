// What stands in for a face that isn't installed.
#pragma once

#include <string_view>

namespace host {

/// What a face has in the places of letters.
enum class FaceSigns { Letters, Symbols, Tolerances };

struct Substitute {
    std::string_view face;   ///< beginning of the missing face's name, lower case
    std::string_view family; ///< family that stands in for it
    double width;            ///< its characters are drawn so much wider, to fill the missing face's width
    bool bold = false, italic = false; ///< the name says so, as those of font files do
    FaceSigns signs = FaceSigns::Letters;
    bool isStroked = false; ///< the missing face has single strokes, which are lines
};

/// The stand-in for a face; one for any face that has none of its own.
const Substitute& substituteFor(std::string_view face);

} // namespace host

#pragma once
// What the format says of each variable of the HEADER section.

#include "kind.h"

namespace validate {

/// A variable whose group code changed has a row for each code.
struct HeaderVariable {
    std::string_view name;
    int16_t code = 0;
    Version since = kFirst, until = kLast;
    uint8_t dimensions = 1;
    Names names = Names::None; ///< table that the value names a record of
};

std::span<const HeaderVariable> headerVariables();

} // namespace validate

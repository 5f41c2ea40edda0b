#pragma once
// The versions of the format that the rules tell apart.

#include <cstdint>
#include <string_view>

namespace validate {

enum class Version : uint8_t {
    Old, ///< R10 and before: AC1006 and lower
    R12, ///< AC1009, R11 too
    R13,
    R14,
    R2000,
    R2004,
    R2007,
    R2010,
    R2013,
    R2018 ///< AC1032, all later releases
};
constexpr Version kFirst = Version::Old;
constexpr Version kLast = Version::R2018;

/// "R12", "2000" ... for messages.
constexpr std::string_view versionName(Version version) {
    constexpr std::string_view names[] = {"R10",  "R12",  "R13",  "R14",  "2000",
                                          "2004", "2007", "2010", "2013", "2018"};
    return names[static_cast<size_t>(version)];
}

} // namespace validate

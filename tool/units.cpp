#include "units.h"

#include "ge.h"

#include <array>

namespace tool {

int unitFromWord(const std::string& word) {
    if (word == "um" || word == "µm") return 2;
    if (word == "in") return 7;
    if (word == "ft") return 8;
    return GeUnit::fromName(word).code();
}

std::string unitWord(int code) {
    return code == 2 ? "µm" : GeUnit(code).name().str();
}

FileUnit unitOfFile(int insUnits) {
    static constexpr std::array<FileUnit, 25> units{{
        {"no unit", 3, 0, true},
        {"inches", 7, 25.4, true},
        {"feet", 8, 304.8, true},
        {"miles", 6, 1609344.0},
        {"millimetres", 3, 1, true},
        {"centimetres", 4, 10, true},
        {"metres", 5, 1000, true},
        {"kilometres", 6, 1e6, true},
        {"microinches", 1, 25.4e-6},
        {"mils", 2, 0.0254},
        {"yards", 5, 914.4},
        {"angstroms", 1, 1e-7},
        {"nanometres", 1, 1e-6, true},
        {"micrometres", 2, 1e-3, true},
        {"decimetres", 4, 100},
        {"decametres", 5, 1e4},
        {"hectometres", 6, 1e5},
        {"gigametres", 6, 1e12},
        {"astronomical units", 6, 149597870700e3},
        {"light years", 6, 9.4607304725808e18},
        {"parsecs", 6, 3.0856775814913673e19},
        {"US survey feet", 8, 1200e3 / 3937},
        {"US survey inches", 7, 100e3 / 3937},
        {"US survey yards", 5, 3600e3 / 3937},
        {"US survey miles", 6, 6336e6 / 3937},
    }};
    const bool isKnown = insUnits >= 0 && insUnits < static_cast<int>(units.size());
    return units[isKnown ? static_cast<std::size_t>(insUnits) : 0];
}

} // namespace tool

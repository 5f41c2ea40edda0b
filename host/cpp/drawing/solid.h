// Solids and materials.
#pragma once

#include "drawing/face_list.h"

#include <array>
#include <cstdint>
#include <string>

namespace host {

/// A solid: the file of its model as it was given, and lines to show it by.
struct Solid {
    std::string data; ///< SAT or SAB
    /// From the model to the drawing: a row each for its axes and its origin, in the drawing's unit.
    std::array<RPT3, 4> place{RPT3{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}};
    int pen = 1, lineType = 1;
    std::int64_t material = 0; ///< in the host's material base, 0: none
    FaceList wires;            ///< runs of edges, in the drawing's frame
};

/// A material of the host's material base, which is the drawing's.
struct Material {
    std::string name;
    std::array<double, 3> diffuse{}, specular{}; ///< red, green, blue from 0 to 1
    double diffuseIntensity = 1, specularIntensity = 0;
    std::string picture; ///< file of the diffuse map, empty: none

    friend bool operator==(const Material&, const Material&) = default;
};

} // namespace host

// Materials of the rendering engine.
#pragma once

#include "ut_string.h"

namespace RENDERING_ENGINE {

/// Colours are red, green and blue from 0 to 1.
struct MATERIAL {
    double diffuse[3];
    float diffuseIntensity;
    double specular[3];
    float specularIntensity;
};
void init(MATERIAL& material); ///< Grey, without specular light.

/// How a picture lies on a surface.
struct TEXTURE {
    double scale[2];
    double shift[2];
    double angle; ///< radians
};
void init(TEXTURE& texture); ///< Once over the surface.

/// The file of a picture; no name: no picture.
struct Image {
    UtCString file;
};

} // namespace RENDERING_ENGINE

// Records of the OBJECTS section.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"
#include "ut_string.h"

#include <cstdint>

/// Where the drawing lies on the earth.
struct DX_GEODATA_TYPE {
    std::uint32_t handle;
    int version;         ///< 90, kept as it stands
    int coordinateType;  ///< 70; 0 unknown, 1 local, 2 projected, 3 geographic
    std::uint32_t owner; ///< 330
    RPT3 designPoint;    ///< 10 20 30, a point of the drawing
    RPT3 referencePoint; ///< 11 21 31, its coordinates
    RPT3 northDirection; ///< 12 22
    RPT3 upDirection;    ///< 210 220 230
    int scaleEstimation; ///< 95, kept as it stands
    int flag294;         ///< 294; 1 if the value is "0"
    double value141, value142;
};

/// A picture file and its size.
struct DX_IMAGE_DEF_TYPE {
    std::uint32_t handle = 0;
    UtCString fileName;                    ///< 1
    double pixelsX = 0, pixelsY = 0;       ///< 10 20
    double pixelSizeX = 0, pixelSizeY = 0; ///< 11 21
    int loaded = 0;                        ///< 280
    int units = 0;                         ///< 281
};

/// A layout: the paper of a space, and how it is plotted.
struct DX_LAYOUT_TYPE {
    DX_NAME name;               ///< 1
    int flags, tabOrder;        ///< 70, 71
    RPT3 base, extMin, extMax;  ///< 12, 14, 15
    double elevation;           ///< 146
    std::uint32_t blockRecord;  ///< 330
    std::uint32_t handle;       ///< 5
    RPT3 ucsOrigin, ucsX, ucsY; ///< 13, 16, 17

    DX_NAME paperName;                       ///< 4, upper-cased
    double paperWidth, paperHeight;          ///< 44, 45, millimetres
    double marginLeft, marginBottom;         ///< 40, 41, millimetres
    int plotFlags, paperUnits, plotRotation; ///< 70, 72 (0 inches, 1 mm, 2 pixels), 73 (quarter turns)
    int scaleType;                           ///< 75
    double scaleFactor;                      ///< 147
    double scaleNumerator, scaleDenominator; ///< 142, 143
};

/// A material. Colours are RGB, red in bits 16 to 23.
struct DX_MATERIAL_TYPE {
    std::uint32_t handle = 0;
    UtCString name, description;                                           ///< 1, 2
    int ambientOverride = 0;                                               ///< 70
    double ambientFactor = 1;                                              ///< 40
    int ambientColor = 0;                                                  ///< the first 90
    int diffuseOverride = 0;                                               ///< 71
    double diffuseFactor = 1;                                              ///< 41
    int diffuseColor = 0;                                                  ///< 91
    double diffuseBlend = 1;                                               ///< 42
    int diffuseSource = 1;                                                 ///< 72
    UtCString diffuseFile;                                                 ///< 3
    int diffuseProjection = 1, diffuseTiling = 1, diffuseFit = 1;          ///< 73 74 75
    double gloss = 0.5;                                                    ///< 44
    int specularOverride = 0;                                              ///< 76
    double specularFactor = 1;                                             ///< 45
    int specularColor = 0;                                                 ///< 92
    double specularBlend = 1;                                              ///< 46
    int specularSource = 1;                                                ///< 77
    UtCString specularFile;                                                ///< 4
    int specularProjection = 1, specularTiling = 1, specularFit = 1;       ///< 78 79 170
    double reflectionBlend = 1;                                            ///< 48
    int reflectionSource = 1;                                              ///< 171
    UtCString reflectionFile;                                              ///< 6
    int reflectionProjection = 1, reflectionTiling = 1, reflectionFit = 1; ///< 172 173 174
    double opacity = 1, opacityFactor = 1;                                 ///< 140 141
    int opacitySource = 1;                                                 ///< 175
    UtCString opacityFile;                                                 ///< 7
    int opacityProjection = 1, opacityTiling = 1, opacityFit = 1;          ///< 176 177 178
    double bumpBlend = 1;                                                  ///< 143
    int bumpSource = 1;                                                    ///< 179
    UtCString bumpFile;                                                    ///< 8
    int bumpProjection = 1, bumpTiling = 1, bumpFit = 1;                   ///< the first 270 271 272
    double refractionIndex = 1, refractionBlend = 1;                       ///< 145 146
    int refractionSource = 1;                                              ///< the first 273
    UtCString refractionFile;                                              ///< 9
    int refractionProjection = 1, refractionTiling = 1, refractionFit = 1; ///< 274 275 276
    int illumination[3] = {0, 0, 0};                                       ///< the second 90; 93, 94
    int further[4] = {0, 0, 0, 0}; ///< the second 270 and 272, the third 270, the second 273
    double reals[3] = {0, 0, 0};   ///< 148 464 468
};

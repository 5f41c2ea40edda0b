// Records of the TABLES section.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"

#include <cstdint>

struct DX_LAYER_TYPE {
    DX_NAME name;         ///< 2
    DX_NAME lineType;     ///< 6
    int color;            ///< 62; negative: off (or frozen)
    int patIndex;         ///< index into DxPatTable, -1 when the layer has no pattern
    int flags;            ///< 70; 1 frozen, 4 locked, 16 depends on an external reference
    int plot;             ///< 290
    int lineWeight;       ///< 370
    int trueColor;        ///< 420; -1: none
    int hiddenPatIndex;   ///< as patIndex, of the pattern for entities that aren't shown
    std::uint32_t handle; ///< 5
    bool isOfTemplate;    ///< export: as the template has it, not one that the drawing brought
};

struct DX_LTYPE_TYPE {
    std::uint32_t handle; ///< 5
    int number;           ///< host line-type number (export side)
    DX_NAME name;         ///< 2
    int flags;            ///< 70
    DX_NAME description;  ///< 3
    int alignment;        ///< 72, 65 ('A')
    int elementCount;     ///< 73, at most 16
    double totalLength;   ///< 40
    double dashes[16];    ///< 49; positive dash, negative gap, 0 dot
};

struct DX_STYLE_TYPE {
    std::uint32_t handle; ///< 5
    DX_NAME name;         ///< 2, upper-cased
    DX_NAME fontFile;     ///< 3, cleaned by DxConvStyleFilename
    DX_NAME fontFamily;   ///< 1000 behind 1001 "ACAD"
    double height;        ///< 40
    double widthFactor;   ///< 41
    double obliqueAngle;  ///< 50
    int italic;           ///< bit 24 of 1071 behind 1001 "ACAD"
    int bold;             ///< bit 25 of the same
};

struct DX_VIEW_TYPE {
    DX_NAME name; ///< 2, upper-cased
    int flags;    ///< 70; 1: paper space, compared with DxActSpace
    std::uint32_t handle;
    double centreX, centreY;
    double width, height;
    double twist;
    double targetX, targetY, targetZ;
    double directionX, directionY, directionZ;
    double lensLength, frontClip, backClip;
    int mode71, mode281, mode72, mode73; ///< kept as they stand
};

struct DX_BLOCK_RECORD_TYPE {
    DX_NAME name;               ///< 2
    std::uint32_t handle;       ///< 5
    std::uint32_t layoutHandle; ///< 340
    std::uint32_t third;        ///< 0 on import
};

/// A dimension style, stored by group number alone: reals 40-48 → 0-8, 140-148 → 9-17; integers 71-79 → 0-8,
/// 170-179 → 9-18, 270-289 → 19-38, 340-344 → 39-43, 371-372 → 44-45.
struct DX_DIM_STYLE {
    DX_NAME name;
    DX_NAME strings[2]; ///< 3, 4
    double reals[18];
    int integers[46];
    std::uint32_t handle; ///< 105
};

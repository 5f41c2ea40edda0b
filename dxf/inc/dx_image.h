// IMAGE and OLE frames.
#pragma once

#include "dx_entity_base.h"

#include <vector>

struct DX_IMAGE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    RPT3 insertion;                      ///< 10 20 30, lower left corner
    RPT3 uVector, vVector;               ///< 11, 12; one pixel to the right and upward
    double pixelsX, pixelsY;             ///< 13 23
    int flags;                           ///< 70; 4: the boundary clips
    int clipping;                        ///< 280; 1: the boundary clips
    int brightness, contrast, fade;      ///< 281 282 283, kept as they stand
    std::uint32_t imageDefHandle;        ///< 340
    std::uint32_t imageDefReactorHandle; ///< 360
    int boundaryKind;                    ///< 71; 1 two corners, 2 a polygon
    std::vector<RPT> boundary;           ///< 14 24, pixels from the middle of the upper left one, downward
};

struct DX_OLE_FRAME_TYPE {
    DX_ENTITY_BASE_TYPE base;
    int version;                     ///< 70
    std::vector<unsigned char> data; ///< 310, as much as 90 announced
    std::uint32_t size;              ///< bytes held
};

// VIEWPORT entities.
#pragma once

#include "dx_entity_base.h"

#include <vector>

struct DX_VIEWPORT_TYPE {
    DX_ENTITY_BASE_TYPE base;               ///< group 67 starts at 1
    int id;                                 ///< 69; 1: the paper itself
    int status;                             ///< 68
    RPT3 centre;                            ///< 10 20 30, on the sheet
    double width, height;                   ///< 40, 41
    double viewCentreX, viewCentreY;        ///< 12, 22, on the plane of the view
    double viewWidth, viewHeight;           ///< what shows of the model: worked out, 45
    double twist;                           ///< 51, degrees
    RPT3 target, direction;                 ///< 17, 16
    int viewFlags;                          ///< 90
    int renderMode;                         ///< 281
    double lensLength, frontClip, backClip; ///< 42, 43, 44
    int group170, group71;
    std::vector<std::uint32_t> frozen; ///< 331 and 341: handles of the layers that don't show
    std::uint32_t clipHandle;          ///< 340
    RPT3 ucsOrigin, ucsX, ucsY;        ///< 110, 111, 112
    double elevation;                  ///< 146
};

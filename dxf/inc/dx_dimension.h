// The record of DIMENSION, ARC_DIMENSION and LARGE_RADIAL_DIMENSION.
#pragma once

#include "dx_entity_base.h"
#include "dx_tables.h"

#include <memory>

struct DX_DIM_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double normal[3];         ///< 210 220 230
    DX_NAME text;             ///< 1; empty, "<>" for what is measured, or text of the user
    DX_NAME blockName;        ///< 2, of what the dimension looks like
    DX_NAME styleName;        ///< 3, upper-cased
    int flags;                ///< 70; type in the lowest bits
    int attachment;           ///< 71
    int lineSpacingStyle;     ///< 72
    RPT3 p10, p11, p12;       ///< 10: on the dimension line; 11: middle of the text; 12: of clones
    RPT3 p13, p14, p15, p16;  ///< 13, 14: origins; 15: radial, angular; 16: on the arc
    double angle;             ///< 50, degrees, not below 0
    double measured;          ///< 42
    double lineSpacingFactor; ///< 41
    double textHeightHint;    ///< 40
    double horizontalDirection, obliqueAngle, textRotation; ///< 51, 52, 53
    int extendedKind;                                       ///< 1: ARC_DIMENSION or LARGE_RADIAL_DIMENSION
    std::unique_ptr<DX_DIM_STYLE>
        styleOverride; ///< the style with what the entity changes of it; null: nothing
};

/// Kinds of dimensions, the same in module and host.
enum DX_DIM_KIND : int {
    DX_DIM_ANGULAR = 4,
    DX_DIM_RADIUS = 5,
    DX_DIM_DIAMETER = 6,
    DX_DIM_ARC_LENGTH = 9,
    DX_DIM_HORIZONTAL = 31,
    DX_DIM_VERTICAL = 32,
    DX_DIM_ALIGNED = 33,
    DX_DIM_ORDINATE_X = 51,
    DX_DIM_ORDINATE_Y = 52,
};

// Records of INSERT, ATTRIB and ATTDEF.
#pragma once

#include "dx_entity_base.h"

#include <string>
#include <vector>

/// ATTRIB and ATTDEF. Fields mean what those of a TEXT mean.
struct DX_ATTRIB_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];   ///< 210 220 230
    int horizontalJustify; ///< 72, 0 … 5
    int verticalJustify;   ///< 74, 0 … 3
    std::string value;     ///< 1, pieces appended; bytes of the file's code page
    DX_NAME style;         ///< 7, upper-cased
    RPT3 insertion;        ///< 10 20 30
    double height;         ///< 40
    double rotation;       ///< 50, degrees
    double oblique;        ///< 51, degrees
    RPT3 alignment;        ///< 11 21 31
    double widthFactor;    ///< 41
    int generation;        ///< 71
    int flags;             ///< 70; 1 invisible, 2 constant
    DX_NAME tag;           ///< 2, trimmed
};

struct DX_INSERT_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];              ///< 210 220 230
    DX_NAME blockName;                ///< 2
    RPT3 position;                    ///< 10 20 30, object coordinates
    double scaleX, scaleY, scaleZ;    ///< 41 42 43; 0 counts as 1
    double rotation;                  ///< 50, degrees
    int columns, rows;                ///< 70, 71; kept, only the first instance is drawn
    double columnSpacing, rowSpacing; ///< 44, 45; kept
    double thickness;                 ///< 39, without use
    int attributesFollow;             ///< 66
    std::vector<DX_ATTRIB_TYPE> attribs;
};

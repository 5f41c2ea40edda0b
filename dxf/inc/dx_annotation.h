// Records of LEADER, TOLERANCE and ACAD_TABLE.
#pragma once

#include "dx_entity_base.h"
#include "dx_tables.h"

#include <memory>
#include <string>
#include <vector>

struct DX_LEADER_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];      ///< 210 220 230
    DX_NAME styleName;        ///< 3, upper-cased
    int arrowFlag;            ///< 71; 0: no head
    int pathType;             ///< 72; 1: a spline
    int creationFlag;         ///< 73; 3: nothing hangs on it
    int hookDirection;        ///< 74
    int hookline;             ///< 75
    int colour;               ///< 77
    RPT3 horizontalDirection; ///< 211 221 231
    double textHeight;        ///< 40
    double textWidth;         ///< 41
    /// 10 20 30, world coordinates, the head's first; as many as there are, whatever group 76 says
    std::vector<RPT3> vertices;
    std::unique_ptr<DX_DIM_STYLE> styleOverride; ///< as of DX_DIM_TYPE
};

struct DX_TOLERANCE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];                         ///< 210 220 230
    DX_NAME styleName;                           ///< 3, upper-cased
    RPT3 insertion;                              ///< 10 20 30, left middle of the first row
    RPT3 direction;                              ///< 11 21 31, of the rows
    std::string text;                            ///< 1, pieces appended, at most DX_TEXT_LIMIT characters
    std::unique_ptr<DX_DIM_STYLE> styleOverride; ///< as of DX_DIM_TYPE
};

struct DX_TABLE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    DX_NAME blockName; ///< 2, the first: those behind it are of cells
    RPT3 insertion;    ///< 10 20 30
    RPT3 direction;    ///< 11 21 31, kept
};

// Records of the flat entities LINE, POINT, ARC, CIRCLE, ELLIPSE, SOLID and TRACE.
#pragma once

#include "dx_entity_base.h"

struct DX_LINE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3]; ///< 210 220 230
    double thickness;    ///< 39
    RPT3 start;          ///< 10 20 30, world coordinates
    RPT3 end;            ///< 11 21 31
};

struct DX_POINT_TYPE {
    DX_ENTITY_BASE_TYPE base;
    RPT3 point;       ///< 10 20 30, world coordinates
    double thickness; ///< 39
};

struct DX_ARC_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];
    double thickness;
    RPT3 centre; ///< 10 20 30, object coordinates
    double radius;
    double startAngle;    ///< 50, degrees
    double endAngle;      ///< 51, degrees
    int counterClockwise; ///< no group: 1 from a file, 0 from callers that want the opposite sense
};

struct DX_CIRCLE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];
    double thickness;
    RPT3 centre;
    double radius;
};

struct DX_ELLIPSE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];
    RPT3 centre;       ///< 10 20 30, world coordinates
    RPT3 majorAxis;    ///< 11 21 31, from the centre
    double ratio;      ///< 40, minor to major
    double startParam; ///< 41, radians
    double endParam;   ///< 42, radians
    int counterClockwise;
};

struct DX_SOLID_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];
    double thickness;
    RPT3 corners[4]; ///< 10 … 13, object coordinates; the outline runs 1, 2, 4, 3
};

// Records of HATCH, and of a host hatch on its way out.
#pragma once

#include "dx_entity_base.h"
#include "dx_polyline.h"
#include "li.h"

#include <vector>

/// One row of lines of a pattern, in object coordinates and scaled and turned as it is drawn.
struct DX_HATCH_DEF {
    double angle;               ///< 53, degrees
    RPT base;                   ///< 43, 44: a point of the first line
    RPT offset;                 ///< 45, 46: from a line to the next
    int dashCount;              ///< 79
    std::vector<double> dashes; ///< 49: positive drawn, negative gap, 0 dot
};

enum DxHatchEdgeType : int {
    DX_EDGE_VERTEX = 0, ///< of a polyline loop
    DX_EDGE_LINE = 1,
    DX_EDGE_ARC = 2,
    DX_EDGE_ELLIPSE = 3,
    DX_EDGE_SPLINE = 4,
};

/// One edge of a loop, in object coordinates.
///
///     type      p                q               r        from, to
///     vertex    10 20 position                   42 bulge
///     line      10 20 start      11 21 end
///     arc       10 20 centre                     40 radius 50 51, degrees
///     ellipse   10 20 centre     11 21 major     40 ratio  50 51, radians from the centre, no parameters
///     spline    (DX_HATCH_PATH::splines)
struct DX_HATCH_EDGE {
    int type;
    RPT p, q;
    double r;
    double from, to;
    int counterClockwise; ///< 73. Clockwise edges count their angles clockwise
    int spline;           ///< index in DX_HATCH_PATH::splines
};

/// Flags of a loop (92).
inline constexpr int DX_PATH_POLYLINE = 2;
inline constexpr int DX_PATH_UNUSED = 32; ///< from here on: the loop takes no part

struct DX_HATCH_PATH {
    int flags;     ///< 92
    int closed;    ///< 73 of a polyline loop
    int edgeCount; ///< 93, at most what the file holds
    std::vector<DX_HATCH_EDGE> edges;
    std::vector<DX_SPLINE_TYPE> splines;
};

struct DX_HATCH_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];  ///< 210 220 230
    RPT3 elevation;       ///< 10 20 30 ahead of group 98
    DX_NAME patternName;  ///< 2
    int solid;            ///< 70
    int associative;      ///< 71
    int style;            ///< 75
    int patternType;      ///< 76
    int doubleFlag;       ///< 77
    double patternAngle;  ///< 52, degrees
    double patternScale;  ///< 41
    int gradientFlag;     ///< 450
    int colors[2];        ///< 63, by the last value of 463
    int trueColors[2];    ///< 421 likewise, -1: none
    int colorCount;       ///< 453
    double gradientAngle; ///< 460, radians
    double gradientShift; ///< 461
    DX_NAME gradientName; ///< 470, upper case
    int loopCount;        ///< 91, at most what the file holds
    int defCount;         ///< 78, likewise
    std::vector<DX_HATCH_PATH> loops;
    std::vector<DX_HATCH_DEF> defs;
};

/// An outer contour of a host hatch with the contours inside it.
struct DX_HATCH_CONT {
    std::vector<UO_ELEM> elems;
    std::vector<std::vector<UO_ELEM>> holes; ///< an empty one has been dropped
};

/// A gradient as the host tells it.
struct DX_HATCH_GRAD {
    double angle, shift; ///< 460, 461
    DX_NAME name;        ///< 470, empty: none
    int colors[2];       ///< 63
    int colorCount;      ///< 453
};

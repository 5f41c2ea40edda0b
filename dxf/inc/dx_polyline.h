// Records of POLYLINE with its VERTEX entities, LWPOLYLINE and SPLINE.
#pragma once

#include "dx_entity_base.h"

#include <vector>

/// A vertex. Its layer, line type and colour are those of its polyline, or of a style of its own.
struct DX_VERTEX_TYPE {
    RPT3 location;               ///< 10 20 30, object coordinates
    double startWidth, endWidth; ///< 40, 41
    double bulge;                ///< 42: tangent of a quarter of the arc's angle, positive counter-clockwise
    double thickness;            ///< 39
    int flags; ///< 70; 16 frame point of a spline, 32 of a 3D polyline, 64 mesh, 128 polyface
    int face1, face2, face3, face4; ///< 71 … 74
    int style;                      ///< index in DX_POLYLINE_TYPE::styles, -1: the polyline's
};

struct DX_POLYLINE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];            ///< 210 220 230
    double thickness;               ///< 39
    double elevation;               ///< POLYLINE 30, LWPOLYLINE 38
    int closed;                     ///< 70, bit value 1
    int closedInN;                  ///< 70, bit value 32
    int meshCountM, meshCountN;     ///< 71, 72
    int hasWidth;                   ///< a default width is to be shown
    double startWidth, endWidth;    ///< 40, 41; LWPOLYLINE 43 for both
    int flags;                      ///< 70; 8: a 3D polyline
    int smoothCountM, smoothCountN; ///< 73, 74
    int curveType;                  ///< 75
    int vertexCount;                ///< LWPOLYLINE 90 as it stands; POLYLINE: its vertices
    int variableWidth;              ///< LWPOLYLINE: a vertex has a width
    int revisionCloud;              ///< the first 1001 is "RevcloudProps"
    std::vector<DX_VERTEX_TYPE> vertices;
    std::vector<DX_ENTITY_BASE_TYPE> styles; ///< of the vertices that differ from the polyline
};

/// A control point of a spline with its weight.
struct DX_CONTROL_POINT {
    RPT3 point;
    double weight;
};

struct DX_SPLINE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3];                                  ///< 210 220 230; the points are world points
    int flags;                                            ///< 70; 1 closed, 16 linear
    int degree;                                           ///< 71
    int knotCount;                                        ///< 72
    int controlCount;                                     ///< 73
    int fitCount;                                         ///< 74
    double knotTolerance, controlTolerance, fitTolerance; ///< 42 43 44, without use
    RPT3 startTangent, endTangent;                        ///< 12, 13, without use
    std::vector<double> knots;                            ///< 40
    std::vector<DX_CONTROL_POINT> controlPoints;          ///< 10 20 30, 41
    std::vector<RPT3> fitPoints;                          ///< 11 21 31
};

// Groups of HATCH, as tests write them.
#pragma once

#include "../import/drawn.h"
#include "hatch_area.h"

#include <initializer_list>
#include <string>
#include <vector>

/// A vertex of a polyline loop.
struct LoopVertex {
    double x, y, bulge = 0;
};
inline DxfGroup real(int code, double value) {
    return at(code, {value}).front();
}
inline DxfGroup whole(int code, std::size_t value) {
    return {code, std::to_string(value)};
}

inline DxfGroups polylineLoop(const std::vector<LoopVertex>& vertices, int flags = 7) {
    DxfGroups groups{
        whole(92, static_cast<std::size_t>(flags)), {72, "1"}, {73, "1"}, whole(93, vertices.size())};
    for (const LoopVertex& v : vertices)
        groups = groups + DxfGroups{real(10, v.x), real(20, v.y), real(42, v.bulge)};
    return groups + DxfGroups{{97, "0"}};
}
inline DxfGroups squareLoop(double low, double high, int flags = 7) {
    return polylineLoop({{low, low}, {high, low}, {high, high}, {low, high}}, flags);
}
/// Edges of a loop, each with its groups behind 72.
inline DxfGroups edgeLoop(const std::vector<DxfGroups>& edges, int flags = 1) {
    DxfGroups groups{whole(92, static_cast<std::size_t>(flags)), whole(93, edges.size())};
    for (const DxfGroups& edge : edges) groups = groups + edge;
    return groups + DxfGroups{{97, "0"}};
}
inline DxfGroups lineEdge(double x0, double y0, double x1, double y1) {
    return DxfGroups{{72, "1"}} + at(10, {x0, y0}) + at(11, {x1, y1});
}
inline DxfGroups arcEdge(double x, double y, double radius, double from, double to, bool ccw) {
    return DxfGroups{{72, "2"}} + at(10, {x, y}) +
           DxfGroups{real(40, radius), real(50, from), real(51, to), whole(73, ccw)};
}
inline DxfGroups ellipseEdge(double x, double y, double ax, double ay, double ratio, double from, double to,
                             bool ccw) {
    return DxfGroups{{72, "3"}} + at(10, {x, y}) + at(11, {ax, ay}) +
           DxfGroups{real(40, ratio), real(50, from), real(51, to), whole(73, ccw)};
}

/// A row of lines of a pattern.
struct Row {
    double angle, baseX, baseY, offsetX, offsetY;
    std::vector<double> dashes;
};
inline DxfGroups patternRows(const std::vector<Row>& rows) {
    DxfGroups groups{{52, "0"}, {41, "1"}, {77, "0"}, whole(78, rows.size())};
    for (const Row& r : rows) {
        groups = groups + DxfGroups{real(53, r.angle),   real(43, r.baseX),   real(44, r.baseY),
                                    real(45, r.offsetX), real(46, r.offsetY), whole(79, r.dashes.size())};
        for (const double dash : r.dashes) groups.push_back(real(49, dash));
    }
    return groups;
}

/// A whole hatch: loops, then what stands behind them, then a seed point, which is no elevation.
inline DxfGroups hatchGroups(const std::vector<DxfGroups>& loops, bool solid, const DxfGroups& behind = {},
                             const DxfGroups& ahead = {}, const std::string& name = "ANSI31") {
    DxfGroups groups = ahead + DxfGroups{{100, "AcDbHatch"}} + at(10, {0, 0, 0}) +
                       DxfGroups{{2, solid ? "SOLID" : name}, whole(70, solid), {71, "0"}};
    groups.push_back(whole(91, loops.size()));
    for (const DxfGroups& loop : loops) groups = groups + loop;
    groups = groups + DxfGroups{{75, "0"}, {76, "1"}} + behind;
    return groups + DxfGroups{{98, "1"}} + at(10, {3, 4, 99});
}

// Blocks and their INSERTs as tests write them.
#pragma once

#include "drawn.h"

inline DxfGroups line(double x0, double y0, double x1, double y1, const DxfGroups& more = {}) {
    return DxfGroups{{0, "LINE"}} + more + at(10, {x0, y0}) + at(11, {x1, y1});
}
inline DxfGroups insertOf(const std::string& block, double x = 0, double y = 0, const DxfGroups& more = {}) {
    return DxfGroups{{2, block}} + at(10, {x, y, 0}) + more;
}
/// The same as an entity of a block.
inline DxfGroups nested(const std::string& block, double x = 0, double y = 0, const DxfGroups& more = {}) {
    return DxfGroups{{0, "INSERT"}} + insertOf(block, x, y, more);
}
inline DxfGroups base(double x, double y) {
    return DxfGroups{{70, "0"}} + at(10, {x, y, 0});
}
inline DxfText drawing(const DxfGroups& variables = {}) {
    return dxf().header("AC1015", variables);
}
inline int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) ++found;
    return found;
}

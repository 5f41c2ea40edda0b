#include "dx_text_placement.h"

#include <cmath>

namespace {

/// Points of a line whose cell the host places by its origin.
DX_LINE_PLACE placeCell(const DX_TEXT_SHAPE& shape, const RPT& p, const DX_LINE_LENGTHS& lengths) {
    const int column = shape.column();
    const int row = shape.row();
    DX_LINE_PLACE place;
    place.hor = column;
    place.ver = row == 0 ? 0 : row + 1;
    place.first = DxTextMoved(shape, p, -column * 0.5 * lengths.host, -row * 0.5 * shape.step);
    if (shape.origin == 0)
        place.second = place.first = DxTextMoved(shape, p, 0.5 * lengths.dxf, 0);
    else if (shape.isMtext || (shape.isFace && column > 0))
        place.second = DxTextMoved(shape, p, 0, row * 0.5 * (shape.height - shape.step));
    else
        place.second = DxTextMoved(shape, place.first, column * 0.5 * lengths.dxf, row * 0.5 * shape.height);
    return place;
}

/// A text between two points on its line, whatever its origin was.
void layBetweenPoints(const DX_TEXT_SHAPE& shape, double dxfLength, DX_LINE_PLACE& place) {
    constexpr int aligned = 3, fit = 5;
    place.ver = 0;
    place.hor = shape.pointsMode == 1 ? fit : aligned;
    place.second = DxTextMoved(shape, place.first, dxfLength, 0);
}

/// From the host's cell to the character in it. Characters that stand closer than side by side are moved
/// forward as well. The block of an MTEXT that hangs on its middle or its bottom begins below the line.
void moveToCharacters(const DX_TEXT_SHAPE& shape, double depth, DX_LINE_PLACE& place) {
    const double right = std::abs(shape.padX);
    const bool isAtCell =
        shape.isMtext || (shape.isFace && place.hor == shape.column()); // not at the characters' length
    const double below = shape.isMtext ? (1 - shape.row() * 0.5) * depth * shape.height : 0;
    place.first = DxTextMoved(shape, place.first, right, shape.padY);
    place.second = DxTextMoved(shape, place.second, isAtCell ? (1 - shape.column()) * shape.padX : right,
                               shape.padY - below);
}

} // namespace

RPT DxTextMoved(const DX_TEXT_SHAPE& shape, const RPT& point, double right, double up) {
    const double c = std::cos(shape.angle);
    const double s = std::sin(shape.angle);
    return {point.x + right * c - up * s, point.y + right * s + up * c};
}

RPT DxTextTopLine(DX_TEXT_SHAPE& shape, const RPT& point, int lines, double blockWidth) {
    const double blockHeight = lines * shape.step;
    const RPT top = DxTextMoved(shape, point, -shape.column() * 0.5 * blockWidth,
                                (1 - shape.row() * 0.5) * blockHeight - shape.step);
    if (shape.origin != 0) shape.origin = 1;
    return top;
}

RPT DxTextJustified(const DX_TEXT_SHAPE& shape, const RPT& point, double blockWidth, double length) {
    const bool isMoved = shape.justification == 1 || shape.justification == 2;
    return isMoved ? DxTextMoved(shape, point, shape.justification * 0.5 * (blockWidth - length), 0) : point;
}

DX_LINE_PLACE DxPlaceLine(const DX_TEXT_SHAPE& shape, const RPT& point, const DX_LINE_LENGTHS& lengths,
                          double depth) {
    DX_LINE_PLACE place = placeCell(shape, point, lengths);
    if (!shape.isMtext && (shape.pointsMode == 1 || shape.pointsMode == 2))
        layBetweenPoints(shape, lengths.dxf, place);
    moveToCharacters(shape, depth, place);
    return place;
}

int DxTextAttachment(const DX_TEXT_SHAPE& shape) {
    return shape.origin == 0 ? 7 : 3 * (2 - shape.row()) + shape.column() + 1;
}

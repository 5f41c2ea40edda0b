// The arithmetic between DXF's and the host's way of placing and sizing a text.
#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_text_codes.h"
#include "dx_text_host.h"
#include "dx_text_import.h"
#include "ov_text.h"

#include <algorithm>
#include <cmath>

namespace {

double distance(const RPT3& a, const RPT3& b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// Length of a host text relative to its character width. `count`: its characters.
double relativeLength(std::string_view converted, int count, int font, double spacing, int* proportional) {
    double hundredths = 0;
    DxTextGetCadFontLen(converted, font, &hundredths, proportional);
    return (count - 1) * (spacing - 1) + hundredths * 0.01;
}

constexpr double smallestSpacing = 0.75, largestSpacing = 4.0;
constexpr double widening = 0.46153846153846156, shiftPerSpacing = 0.16923076923076924;

bool isCharSpacing(double spacing) {
    return spacing >= smallestSpacing && spacing <= largestSpacing;
}

/// The column of a TEXT's alignment: 0 left, 1 centre, 2 right.
int columnOf(int hor, int ver) {
    if (ver != 0) return hor < 3 ? hor : 0;
    return hor == 1 || hor == 4 ? 1 : hor == 2 ? 2 : 0;
}

/// 1 moves to the right half a space, -1 to the left: the host's outer edge includes half a space.
double spaceSide(int column) {
    return column == 0 ? 1 : column == 2 ? -1 : 0;
}

} // namespace

void DxCharSpacingFactor(double charSpacing, double* dx) {
    if (isCharSpacing(charSpacing)) *dx = (charSpacing - smallestSpacing) * widening + 1.0;
}

void DxCharSpacingToCAD(const DX_TEXT_TYPE& text, double* dx, RPT3* first, RPT3* second) {
    DxCharSpacingFactor(text.charSpacing, dx);
    const double shift = text.height * DxCharSpacingShift(text.charSpacing);
    first->x -= shift;
    second->x -= shift;
}

double DxCharSpacingToDXF(double dx) {
    const double spacing = (dx - 1.0) / widening + smallestSpacing;
    return dx != 1.0 && isCharSpacing(spacing) ? spacing : -1.0;
}

bool DxReachesBelow(std::string_view text) {
    return text.find_first_of("gjpqy") != std::string_view::npos;
}

double DxCharSpacingShift(double charSpacing) {
    return isCharSpacing(charSpacing) ? shiftPerSpacing * (charSpacing - smallestSpacing) : 0;
}

int DxTextCalcBreite(const DX_TEXT_TYPE& text, int count, const RPT3& p1, const RPT3& p2, double height,
                     double angle, double* width) {
    switch (text.horAlign) {
    case 0: {
        OV_TEXT_PARM host;
        ovtextparamsttf(5, &host);
        *width = (text.widthFactor == 0 ? 1.0 : text.widthFactor) * height;
        if (count != 1) *width *= ((count - 1) * host.spacing + 1) * DxTextFactor;
        return 0;
    }
    case 1: *width = 2 * distance(p1, p2); return 0;
    case 2:
    case 3:
    case 5: *width = distance(p1, p2); return 0;
    case 4: {
        const double half = height / 2;
        *width = 2 * distance(p1, {p2.x + half * std::cos(angle), p2.y + half * std::sin(angle), p2.z});
        return 0;
    }
    default: DxProtoMsg(DxMsg(5741, text.horAlign), 0); return -1;
    }
}

DxTextCadParams DxTextCalcCadParams(double height, double length, int font, std::string_view converted,
                                    double space, double dx) {
    DxTextCadParams parms{DxLengthToSheet(height), DxLengthToSheet(length), dx != 0 ? dx : space + 1.0};
    if (DxCiTextIsTtf(static_cast<unsigned short>(font))) return parms;
    int proportional = 0;
    const int count = DxTextHostCount(converted);
    const double relative = relativeLength(converted, count, font, parms.spacing, &proportional);
    if (!proportional) {
        const double cells = (count - 1) * (parms.spacing - 1) + count;
        if (count > 1) parms.width = cells > 0 ? parms.width / cells : parms.height;
    } else {
        parms.width = relative > 0 ? parms.width / relative : parms.height;
    }
    return parms;
}

double DxTextCalcDxfParams(std::string_view converted, int font, std::string_view dxfFont, double height,
                           double width, double spacing) {
    int proportional = 0;
    const double length =
        relativeLength(converted, DxTextHostCount(converted), font, spacing, &proportional) * width;
    if (DxCiTextIsTtf(static_cast<unsigned short>(font))) return height > 0 ? width / height : 1.0;
    double widths = 0, spaces = 0;
    DxTextGetDxfFontSpace(converted, dxfFont, &widths, &spaces);
    constexpr double smallest = 0.01;
    return widths + spaces > smallest && height > 0 ? length / ((widths + spaces) * height) : 1.0;
}

double DxTextCalcTextRahmenLen(std::string_view converted, int font, double width, double spacing) {
    int proportional = 0;
    return relativeLength(converted, DxTextHostCount(converted), font, spacing, &proportional) * width;
}

double DxTextCalcTextLen(std::string_view converted, int font, double width, double spacing) {
    return DxLengthFromSheet(DxTextCalcTextRahmenLen(converted, font, width, spacing));
}

int DxTextConvOrigin(const DxTextAlignment& a, int* origin, int* justification, RPT3* point,
                     const RPT3& second) {
    const bool isAtFirst = a.ver == 0 && (a.hor == 0 || a.hor == 3 || a.hor == 5);
    const bool isMiddle = a.ver == 0 && a.hor == 4;
    const int column = columnOf(a.hor, a.ver);
    *justification = a.just > 2 ? column : a.just;
    if (!isAtFirst) *point = second;
    *origin = a.ver != 0 ? a.hor + 3 * a.ver - 2 : isMiddle ? 5 : column + 1;
    if (a.isMirrored) *origin += 2 * (1 - (*origin - 1) % 3);
    const double side = a.ver != 0 && a.hor > 2 ? 0 : spaceSide(a.isMirrored ? 2 - column : column);
    const double x = side * (a.spacing - 1) * a.width * 0.5;
    const double gap = (a.lineDistance - 1) * a.height;
    double y = 0;
    if (isMiddle)
        y = -gap * 0.25;
    else if (a.ver == 0)
        y = gap * 0.5;
    else if (a.ver == 3)
        y = -gap * 0.5;
    const double c = std::cos(a.angle), s = std::sin(a.angle);
    point->x -= x * c - y * s;
    point->y -= x * s + y * c;
    return 0;
}

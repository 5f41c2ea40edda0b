#include "dx_write_entities.h"

#include "../config/dx_pens.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "export_state.h"
#include "mt.h"
#include "ut.h"

#include <cmath>

namespace {

constexpr double DEGREES = 57.29577951308232;

RPT through(double x, double y, const Mat32 mat) {
    const RPT point{x, y};
    RPT result;
    MtTransRPt(point, mat, &result);
    return result;
}

/// A point under group `code` and `code` + 10.
int writePoint(int code, const RPT& p) {
    const int error = DxWriteDouble(code, p.x);
    return error ? error : DxWriteDouble(code + 10, p.y);
}

/// In the block of a dimension, lines and arcs take the line type of the dimension.
DX_WRITE_STYLE byBlockInDimension(DX_WRITE_STYLE style) {
    if (DxBlockType == DX_BLOCK_DIMENSION) style.lineType = "ByBlock";
    return style;
}

bool near(const RPT& a, const RPT& b, double tolerance) {
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance;
}

double angleDegrees(const RPT& centre, const RPT& p) {
    double angle = 0;
    DxGetAngle(centre.x, centre.y, p.x, p.y, &angle);
    return angle < 0 ? angle + 360.0 : angle;
}

} // namespace

bool DxWriteStyleOf(int pen, int lt, DX_WRITE_STYLE& style) {
    DX_NAME lineType;
    lineType.clear();
    style.colour = 0;
    if (lt == -1)
        DxFillToDXF(pen, &style.colour);
    else
        DxPenLtToDXF(pen, lt, &style.colour, &lineType, 0);
    style.layer = UtCString(DxActLayer.view());
    style.lineType = UtCString(lineType.view());
    return DxShouldWriteColor(style.colour, pen);
}

int DxWriteEntityIds(std::uint32_t handle, std::uint32_t owner) {
    int error = DxWriteVariableReference2(5, handle ? handle : DxGetNextReference());
    if (!error && owner) error = DxWriteVariableReference2(330, owner);
    return error ? error : DxWriteSubClass("AcDbEntity");
}

int DxWriteEntityHead(const char* name, const DX_WRITE_STYLE& style, std::uint32_t handle) {
    int error = DxWriteString(0, name);
    if (!error) error = DxWriteEntityIds(handle, DxOwnerHandle);
    if (!error) error = DxWriteString(8, style.layer);
    if (!error) error = DxWriteLinetype(style.lineType);
    return error ? error : DxWriteColor(style.colour);
}

int DxWriteLine(double x1, double y1, double x2, double y2, int pen, int lt, const Mat32 mat) {
    DX_WRITE_STYLE style;
    if (!DxWriteStyleOf(pen, lt, style)) return 0;
    int error = DxWriteEntityHead("LINE", byBlockInDimension(style));
    if (!error) error = DxWriteSubClass("AcDbLine");
    if (!error) error = writePoint(10, through(x1, y1, mat));
    if (!error) error = writePoint(11, through(x2, y2, mat));
    if (!error) DxStoreMaxXY(x2, y2);
    return error;
}

int DxWritePoint(double x, double y, int pen, int lt, const Mat32 mat) {
    DX_WRITE_STYLE style;
    if (!DxWriteStyleOf(pen, lt, style)) return 0;
    int error = DxWriteEntityHead("POINT", byBlockInDimension(style));
    if (!error) error = DxWriteSubClass("AcDbPoint");
    if (!error) error = writePoint(10, through(x, y, mat));
    if (!error) DxStoreMaxXY(x, y);
    return error;
}

void DxGetAngle(double x0, double y0, double x1, double y1, double* angle) {
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    if (dx == 0.0)
        *angle = dy >= 0.0 ? 90.0 : -90.0;
    else
        *angle = std::atan(dy / dx) * DEGREES + (dx < 0.0 ? 180.0 : 0.0);
}

int DxWriteArc(int type, double x1, double y1, double x2, double y2, double xc, double yc, int pen, int lt,
               const Mat32 mat) {
    DX_WRITE_STYLE style;
    if (!DxWriteStyleOf(pen, lt, style)) return 0;
    const RPT start = through(x1, y1, mat);
    const RPT end = through(x2, y2, mat);
    const RPT centre = through(xc, yc, mat);
    const bool counterClockwise = (type == 4) != MtIsMirrored(mat);
    const bool circle = near(start, end, UtConv(50));
    double from = angleDegrees(centre, start);
    double to = angleDegrees(centre, end);
    if (!counterClockwise) std::swap(from, to);

    int error = DxWriteEntityHead(circle ? "CIRCLE" : "ARC", byBlockInDimension(style));
    if (!error) error = DxWriteSubClass("AcDbCircle");
    if (!error) error = writePoint(10, centre);
    if (!error) error = DxWriteDouble(40, std::hypot(end.x - centre.x, end.y - centre.y));
    if (!error && !circle) error = DxWriteSubClass("AcDbArc");
    if (!error && !circle) error = DxWriteDouble(50, from);
    if (!error && !circle) error = DxWriteDouble(51, to);
    if (!error) DxStoreMaxXY(x2, y2);
    return error;
}

int DxWriteSolid(const RPT* corners, int pen, int lt, const Mat32 mat) {
    DX_WRITE_STYLE style;
    if (!DxWriteStyleOf(pen, lt, style)) return 0;
    int error = DxWriteEntityHead("SOLID", style);
    if (!error) error = DxWriteSubClass("AcDbTrace");
    for (int i = 0; i < 4 && !error; ++i) {
        error = writePoint(10 + i, through(corners[i].x, corners[i].y, mat));
        if (!error) DxStoreMaxXY(corners[i].x, corners[i].y);
    }
    return error;
}

int DxWriteDonut(const RPT& a, const RPT& b, int pen, double width, const Mat32 mat) {
    const RPT centre{(a.x + b.x) * 0.5, (a.y + b.y) * 0.5};
    DX_WRITE_POLYLINE ring;
    int open = 0;
    int error = DxWritePolyLineStart(pen, -1, width, &open, ring);
    if (error || !open) return error;
    error = DxWriteVertex(2, a, a, centre, pen, -1, mat, &open, ring);
    if (!error && open) error = DxWriteVertex(3, a, b, centre, pen, -1, mat, &open, ring);
    if (!error && open) error = DxWriteVertex(3, b, a, centre, pen, -1, mat, &open, ring);
    DxWritePolySeqEnd(ring);
    return error;
}

#include "dx_write_entities.h"

#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../import/dx_extents.h"
#include "dx_codes.h"
#include "export_state.h"
#include "mt.h"
#include "ut.h"

#include <cmath>

namespace {

RPT through(const RPT& point, const Mat32 mat) {
    RPT result;
    MtTransRPt(point, mat, &result);
    return result;
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

/// One entity of fixed groups, put together and written as a whole.
class Entity {
public:
    /// `name`: group 0 as it stands in the file.
    Entity(std::string_view name, std::string_view lookGroups) {
        run_.pairs(name);
        run_.handle(5, DxGetNextReference());
        if (DxOwnerHandle) run_.handle(330, DxOwnerHandle);
        marker("100\nAcDbEntity\n");
        run_.pairs(lookGroups);
    }
    void marker(std::string_view pair) {
        if (DxMiscCheckVersion(DX_LEVEL_HANDLES)) run_.pairs(pair);
    }
    void real(int code, double value) { run_.real(code, value); }
    void size(int code, double value) { run_.size(code, value); }
    /// A point under group `code` and those that belong to it.
    void point(int code, const RPT& p) {
        run_.real(code, p.x);
        run_.real(code + 10, p.y);
        DxRunFlatZ(run_, code + 20);
    }
    /// Writes it; its last point, in the host's frame, belongs to the extents.
    int end(const RPT& last) {
        DxStoreMaxXY(last.x, last.y);
        return run_.end();
    }

private:
    DxPairRun run_;
};

std::string lookGroups(const DX_WRITE_STYLE& style) {
    std::string groups = DxPairText(8, style.layer);
    if (!style.lineType.IsEmpty()) groups += DxPairText(6, style.lineType);
    return groups + DxColorText(style.colour);
}

} // namespace

void DxRunFlatZ(DxPairRun& run, int code) {
    static constexpr std::string_view ZEROS[] = {" 30\n0.0\n", " 31\n0.0\n", " 32\n0.0\n", " 33\n0.0\n"};
    if (DxFullGroups) run.pairs(ZEROS[code - 30]);
}

DX_WRITE_LOOK DxWriteLookOf(int pen, int lt) {
    DX_WRITE_LOOK look;
    DX_NAME lineType;
    lineType.clear();
    if (lt == -1)
        DxFillToDXF(pen, &look.style.colour);
    else
        DxPenLtToDXF(pen, lt, &look.style.colour, &lineType, 0);
    look.style.layer = UtCString(DxActLayer.view());
    look.style.lineType = UtCString(lineType.view());
    look.isShown = DxShouldWriteColor(look.style.colour, pen);
    if (look.isShown) look.groups = lookGroups(byBlockInDimension(look.style));
    return look;
}

int DxWriteEntityIds(std::uint32_t handle, std::uint32_t owner) {
    DxWriteVariableReference2(5, handle ? handle : DxGetNextReference());
    if (!owner) owner = DxOwnerHandle;
    if (owner) DxWriteVariableReference2(330, owner);
    return DxWriteSubClass("AcDbEntity");
}

int DxWriteEntityStart(std::string_view name, DxOutText layer, std::uint32_t handle, std::uint32_t owner) {
    DxWriteString(0, name);
    DxWriteEntityIds(handle, owner);
    return DxWriteString(8, layer);
}

int DxWriteEntityLook(const DX_WRITE_STYLE& style) {
    DxWriteLinetype(style.lineType);
    return DxWriteColor(style.colour);
}

int DxWriteEntityHead(std::string_view name, const DX_WRITE_STYLE& style, std::uint32_t handle,
                      std::uint32_t owner) {
    DxWriteEntityStart(name, style.layer, handle, owner);
    return DxWriteEntityLook(style);
}

int DxWriteLine(const RPT& from, const RPT& to, const DX_WRITE_LOOK& look, const Mat32 mat) {
    if (!look.isShown) return 0;
    Entity line("  0\nLINE\n", look.groups);
    line.marker("100\nAcDbLine\n");
    line.point(10, through(from, mat));
    line.point(11, through(to, mat));
    return line.end(to);
}

int DxWriteLine(double x1, double y1, double x2, double y2, int pen, int lt, const Mat32 mat) {
    return DxWriteLine({x1, y1}, {x2, y2}, DxWriteLookOf(pen, lt), mat);
}

static int writePoint(const RPT& at, const DX_WRITE_LOOK& look, const Mat32 mat) {
    Entity point("  0\nPOINT\n", look.groups);
    point.marker("100\nAcDbPoint\n");
    point.point(10, through(at, mat));
    return point.end(at);
}

int DxWritePoint(double x, double y, int pen, int lt, const Mat32 mat) {
    const DX_WRITE_LOOK look = DxWriteLookOf(pen, lt);
    return look.isShown ? writePoint({x, y}, look, mat) : 0;
}

void DxGetAngle(double x0, double y0, double x1, double y1, double* angle) {
    const double dx = x1 - x0;
    const double dy = y1 - y0;
    if (dx == 0.0)
        *angle = dy >= 0.0 ? 90.0 : -90.0;
    else
        *angle = std::atan(dy / dx) * DX_DEGREES + (dx < 0.0 ? 180.0 : 0.0);
}

int DxWriteArc(int type, const RPT& from, const RPT& to, const RPT& about, double tolerance,
               const DX_WRITE_LOOK& look, const Mat32 mat) {
    if (!look.isShown) return 0;
    const RPT start = through(from, mat);
    const RPT end = through(to, mat);
    const RPT centre = through(about, mat);
    const bool counterClockwise = (type == 4) != MtIsMirrored(mat);
    const bool circle = near(start, end, tolerance);
    const double radius = std::hypot(end.x - centre.x, end.y - centre.y);
    if (!(radius > 0)) return writePoint(to, look, mat); // no circle is that small

    Entity arc(circle ? "  0\nCIRCLE\n" : "  0\nARC\n", look.groups);
    arc.marker("100\nAcDbCircle\n");
    arc.point(10, centre);
    arc.size(40, radius);
    if (circle) return arc.end(to);
    arc.marker("100\nAcDbArc\n");
    arc.real(50, angleDegrees(centre, counterClockwise ? start : end));
    arc.real(51, angleDegrees(centre, counterClockwise ? end : start));
    return arc.end(to);
}

int DxWriteArc(int type, double x1, double y1, double x2, double y2, double xc, double yc, int pen, int lt,
               const Mat32 mat) {
    return DxWriteArc(type, {x1, y1}, {x2, y2}, {xc, yc}, UtConv(50), DxWriteLookOf(pen, lt), mat);
}

int DxWriteSolid(const RPT* corners, int pen, int lt, const Mat32 mat) {
    const DX_WRITE_LOOK look = DxWriteLookOf(pen, lt);
    if (!look.isShown) return 0;
    Entity solid("  0\nSOLID\n", lookGroups(look.style));
    solid.marker("100\nAcDbTrace\n");
    for (int i = 0; i < 4; ++i) solid.point(10 + i, through(corners[i], mat));
    for (int i = 1; i < 4; ++i) DxStoreMaxXY(corners[i].x, corners[i].y);
    return solid.end(corners[0]);
}

int DxWriteDonut(const RPT& a, const RPT& b, int pen, double width, const Mat32 mat) {
    const RPT centre{(a.x + b.x) * 0.5, (a.y + b.y) * 0.5};
    DX_WRITE_POLYLINE ring;
    int open = 0;
    DxWritePolyLineStart(pen, -1, width, &open, ring);
    if (!open) return DxWriteError();
    int error = DxWriteVertex(2, a, a, centre, pen, -1, mat, &open, ring);
    if (!error && open) error = DxWriteVertex(3, a, b, centre, pen, -1, mat, &open, ring);
    if (!error && open) error = DxWriteVertex(3, b, a, centre, pen, -1, mat, &open, ring);
    DxWritePolySeqEnd(ring);
    return error;
}

// Polylines on their way out: LWPOLYLINE where the target has it and all pieces look alike, else POLYLINE.
#include "dx_codes.h"
#include "dx_write_entities.h"

#include "../config/config_state.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "export_state.h"
#include "mt.h"

#include <cmath>

namespace {

constexpr double TWO_PI = 6.283185307179586;

/// Bulge of the arc from `start` to `point` about `centre`, all in the file's frame.
double bulgeOf(const RPT& start, const RPT& point, const RPT& centre, bool clockwise) {
    const double a1 = std::atan2(centre.y - start.y, centre.x - start.x);
    const double a2 = std::atan2(centre.y - point.y, centre.x - point.x);
    double sweep = clockwise ? a1 - a2 : a2 - a1;
    if (sweep < 0.0) sweep += TWO_PI;
    const double bulge = std::abs(std::tan(sweep / 4.0));
    return clockwise ? -bulge : bulge;
}

bool looksAlike(const DX_WRITE_POLYLINE& poly) {
    return poly.vertices.front().style == poly.vertices.back().style; // a change gives a new style
}

/// `inSpace`: the entity is one whose points have a z.
void putPlace(DxPairRun& run, const DX_WRITE_VERTEX& vertex, bool inSpace) {
    run.real(10, vertex.x);
    run.real(20, vertex.y);
    if (inSpace) DxRunFlatZ(run, 30);
    run.real(42, vertex.bulge);
}

/// `layer`: group 8 as it stands in the file.
int writeVertex(const DX_WRITE_VERTEX& vertex, std::string_view layer, std::uint32_t owner) {
    DxPairRun run;
    run.pairs("  0\nVERTEX\n");
    run.handle(5, DxGetNextReference());
    run.handle(330, owner);
    const bool hasMarkers = DxMiscCheckVersion(DX_LEVEL_HANDLES);
    if (hasMarkers) run.pairs("100\nAcDbEntity\n");
    run.pairs(layer);
    if (hasMarkers) run.pairs("100\nAcDbVertex\n100\nAcDb2dVertex\n");
    putPlace(run, vertex, true);
    return run.end();
}

int writeHead(const DX_WRITE_POLYLINE& poly, const DX_WRITE_STYLE& style, std::uint32_t handle) {
    DxWriteEntityStart("POLYLINE", style.layer, handle);
    DxWriteInt(66, 1);
    DxWriteEntityLook(style);
    DxWriteSubClass("AcDb2dPolyline");
    if (DxFullGroups) // a dummy point, whose z is the elevation
        for (const int code : {10, 20, 30}) DxWriteDouble(code, 0.0);
    if (poly.startWidth != 0.0 || poly.endWidth != 0.0) {
        DxWriteDouble(40, poly.startWidth);
        DxWriteDouble(41, poly.endWidth);
    }
    return DxWriteError();
}

/// Writes the run of equally styled pieces that begins at vertex `first`. Gives the vertex whose piece
/// differs, which isn't in the run; the number of vertices at the end.
std::size_t writeRun(const DX_WRITE_POLYLINE& poly, std::size_t first, const DX_WRITE_STYLE& style) {
    const std::uint32_t handle = DxGetNextReference();
    writeHead(poly, style, handle);
    const std::string layer = DxPairText(8, style.layer);
    std::size_t i = first;
    for (; i < poly.vertices.size(); ++i) {
        if (i >= first + 2 && poly.vertices[i].style != poly.vertices[i - 1].style) break;
        writeVertex(poly.vertices[i], layer, handle);
    }
    DxWriteEntityStart("SEQEND", style.layer, 0, handle);
    return i;
}

} // namespace

int DxWritePolyLineStart(int pen, int lt, double width, int* open, DX_WRITE_POLYLINE& poly) {
    return DxWritePolyLineStart(DxWriteLookOf(pen, lt), width, open, poly);
}

int DxWritePolyLineStart(const DX_WRITE_LOOK& look, double width, int* open, DX_WRITE_POLYLINE& poly) {
    poly.vertices.clear(); // but not their memory
    poly.styles.clear();
    *open = 0;
    if (!look.isShown) return 0;
    poly.style = look.style;
    poly.handle = DxGetNextReference();
    poly.startWidth = poly.endWidth = width;
    *open = 1;
    return 0;
}

int DxWriteVertex(int type, const RPT& start, const RPT& point, const RPT& centre, int pen, int lt,
                  const Mat32 mat, int* open, DX_WRITE_POLYLINE& poly) {
    return DxWriteVertex(type, start, point, centre, DxWriteLookOf(pen, lt), mat, open, poly);
}

int DxWriteVertex(int type, const RPT& start, const RPT& point, const RPT& centre, const DX_WRITE_LOOK& look,
                  const Mat32 mat, int* open, DX_WRITE_POLYLINE& poly) {
    *open = 0;
    if (!look.isShown) return 0;
    RPT p;
    MtTransRPt(point, mat, &p);
    if (type != 2 && !poly.vertices.empty()) {
        double bulge = 0.0;
        if (type == 3 || type == 4) {
            RPT s;
            RPT c;
            MtTransRPt(start, mat, &s);
            MtTransRPt(centre, mat, &c);
            bulge = bulgeOf(s, p, c, (type == 3) != MtIsMirrored(mat));
        }
        poly.vertices.back().bulge = bulge;
    }
    DxGetNextReference(); // a vertex has a handle in reserve
    *open = 1;
    if (poly.styles.empty() || !(poly.styles.back() == look.style)) poly.styles.push_back(look.style);
    poly.vertices.push_back({p.x, p.y, 0.0, poly.styles.size() - 1});
    DxStoreMaxXY(point.x, point.y);
    return 0;
}

int DxWritePolySeqEnd(DX_WRITE_POLYLINE& poly) {
    if (poly.vertices.size() >= 2) {
        if (DxMiscCheckVersion(DX_LEVEL_HANDLES) && looksAlike(poly))
            DxWriteLWPolyline(poly);
        else
            DxWritePolyline(poly, -1);
    }
    poly.vertices.clear();
    return 0;
}

int DxWritePolyline(const DX_WRITE_POLYLINE& poly, int fromVertex) {
    const auto count = poly.vertices.size();
    const bool whole = fromVertex < 0 || static_cast<std::size_t>(fromVertex) + 1 >= count;
    std::size_t first = whole ? 0 : static_cast<std::size_t>(fromVertex);
    DX_WRITE_STYLE style = whole ? poly.style : poly.styles[poly.vertices[first + 1].style];
    while (true) {
        const std::size_t next = writeRun(poly, first, style);
        if (next >= count) return DxWriteError();
        first = next - 1; // the runs share a point
        style = poly.styles[poly.vertices[next].style];
    }
}

int DxWriteLWPolyline(const DX_WRITE_POLYLINE& poly) {
    DxWriteEntityHead("LWPOLYLINE", poly.style, poly.handle);
    DxWriteSubClass("AcDbPolyline");
    DxWriteInt(90, static_cast<int>(poly.vertices.size()));
    if (DxFullGroups) DxWriteInt(70, 0);
    if (poly.startWidth != 0.0 || poly.endWidth != 0.0)
        DxWriteDouble(43, (poly.startWidth + poly.endWidth) / 2.0);
    DxPairRun run;
    for (const DX_WRITE_VERTEX& vertex : poly.vertices) putPlace(run, vertex, false);
    return run.end();
}

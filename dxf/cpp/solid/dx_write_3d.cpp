#include "dx_write_3d.h"

#include "../config/dx_layers.h"
#include "../config/dx_pens.h"
#include "../export/dx_block_table.h"
#include "../export/dx_layer_choice.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_unwritten.h"
#include "../export/dx_write_blocks.h"
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../host/dx_host_read_3d.h"
#include "../import/dx_extents.h"
#include "../import/import_state.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "dx_triangle_pair.h"
#include "solid_state.h"

namespace {

void writePoint(int code, double x, double y, double z) {
    DxWriteDouble(code, x);
    DxWriteDouble(code + 10, y);
    DxWriteDouble(code + 20, z);
}

/// The lines of the polygons that are runs of edges. Gives how many were written.
int writeEdges(const DX_FACE_ARRAYS& f, int* entityCount) {
    int written = 0;
    for (int polygon = 0; polygon < f.polygonCount; ++polygon) {
        if (f.facePen[polygon] != 0) continue;
        for (int j = f.first(polygon); j < f.ends[polygon]; ++j) {
            if (f.edgeKind[j] != 1) continue;
            const int error = DxWrite3dLine(f.x[j - 1], f.y[j - 1], f.z[j - 1], f.x[j], f.y[j], f.z[j],
                                            f.edgePen[j], f.edgeLt[j]);
            if (!error) ++written;
            ++*entityCount;
        }
    }
    return written;
}

/// Edges and faces don't share a block: ends the one and begins another of a new name.
int changeBlock(int pat, int* blockOpen, const UtCString& blockLayer) {
    if (const int error = DxWriteBlockEnd(*blockOpen)) return error;
    if (const int error = DxAddBlock(DxPatNames[DX_PAT_NAME], blockLayer, pat)) return error;
    if (const int error = DxPatGetInfo(pat)) return error;
    DxCheckBlockname(DxPatNames[DX_PAT_NAME]);
    return DxWriteBlockStart(*blockOpen);
}

bool writePair(const DX_FACE_ARRAYS& f, int* entityCount) {
    RPT3 c[4];
    if (!DxIsTrianglePair(f, c)) return false;
    const double x[4] = {c[0].x, c[1].x, c[2].x, c[3].x}, y[4] = {c[0].y, c[1].y, c[2].y, c[3].y},
                 z[4] = {c[0].z, c[1].z, c[2].z, c[3].z};
    DxWrite3Dface(x, y, z, 0, f.facePen[0], f.edgeLt[0]);
    ++*entityCount;
    return true;
}

/// A polygon of 4 entries is a triangle, one of 5 a quadrilateral; others have no entity.
void writeFace(const DX_FACE_ARRAYS& f, int polygon, int* entityCount) {
    const int s = f.first(polygon), size = f.size(polygon);
    if (size != 4 && size != 5) {
        DxUnwrittenCounts[DX_UNWRITTEN_POLYGON] += 1;
        return;
    }
    const int fourth = size == 5 ? s + 3 : s;
    const double x[4] = {f.x[s], f.x[s + 1], f.x[s + 2], f.x[fourth]},
                 y[4] = {f.y[s], f.y[s + 1], f.y[s + 2], f.y[fourth]},
                 z[4] = {f.z[s], f.z[s + 1], f.z[s + 2], f.z[fourth]};
    // The fourth edge of a triangle is that of its repeated corner and has no length.
    const int last = size == 5 ? 8 * f.hidden[s + 4] : 8;
    const int flags = f.hidden[s + 1] + 2 * f.hidden[s + 2] + 4 * f.hidden[s + 3] + last;
    DxWrite3Dface(x, y, z, flags, f.facePen[polygon], f.edgeLt[s]);
    ++*entityCount;
}

/// The points of the pattern's clouds.
int writeClouds(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    constexpr int continuous = 1;
    DxCloudReader clouds(pat);
    DX_WRITE_STYLE style;
    bool isShown = false;
    RPT3 point;
    for (int pen = 0, last = -1; clouds.next(&point, &pen); last = pen) {
        if (!*blockOpen) {
            if (const int error = DxWriteBlockStart(*blockOpen)) return error;
            *blockLayer = UtCString(DxActLayer.view());
        }
        if (pen != last) isShown = DxSpaceStyle(pen, continuous, 0, style);
        if (!isShown) continue;
        DxWriteEntityHead("POINT", style);
        DxWriteSubClass("AcDbPoint");
        writePoint(10, point.x, point.y, point.z);
        DxStoreMaxXY(point.x, point.y);
        ++*entityCount;
    }
    return DxWriteError();
}

} // namespace

bool DxSpaceStyle(int pen, int lt, int kind, DX_WRITE_STYLE& style) {
    DX_NAME lineType;
    lineType.clear();
    DxPenLtToDXF(pen, lt, &style.colour, &lineType, kind);
    style.layer = UtCString(DxActLayer.view());
    style.lineType = UtCString(lineType.view());
    return DxShouldWriteColor(style.colour, pen);
}

int DxWrite3dPat(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    DxShowPattern();
    if (const int error = DxNewLayer(DxLayerKinds[DX_CLASS_ELEMENT], DxLayerFixedNames[DX_CLASS_ELEMENT]))
        return error;
    int error = DxWrite3dPatEl(pat, entityCount, blockOpen, blockLayer);
    if (!error) error = DxWriteSolidsOf(pat, entityCount, blockOpen, blockLayer);
    if (!error && DxWriteClouds) error = writeClouds(pat, entityCount, blockOpen, blockLayer);
    if (!error && *entityCount > 0) return DxAddLayer(DxActLayer.view());
    return error;
}

int DxWriteFlatPat(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    int error = DxCountUnwritten(pat, DX_UNWRITTEN_3D);
    if (error || !DxWriteSolids) return error;
    const auto before = DxUnwrittenCounts[DX_UNWRITTEN_SOLID];
    error = DxCountUnwritten(pat, DX_UNWRITTEN_SOLID);
    const auto solids = DxUnwrittenCounts[DX_UNWRITTEN_SOLID] - before;
    if (error || solids == 0) return error;
    DxUnwrittenCounts[DX_UNWRITTEN_3D] -= solids; // they have a count of their own
    DxUnwrittenCounts[DX_UNWRITTEN_SOLID] = before;
    error = DxNewLayer(DxLayerKinds[DX_CLASS_ELEMENT], DxLayerFixedNames[DX_CLASS_ELEMENT]);
    if (!error) error = DxWriteSolidsOf(pat, entityCount, blockOpen, blockLayer);
    if (!error && *entityCount > 0) return DxAddLayer(DxActLayer.view());
    return error;
}

int DxWrite3dPatEl(int pat, int* entityCount, int* blockOpen, UtCString* blockLayer) {
    const bool wasOpen = *blockOpen != 0;
    DX_FACE_ARRAYS faces;
    int result = 0;
    if (!DxRead3dPat(pat, &faces, &result)) return 0;
    if (!wasOpen) {
        const int error = DxWriteBlockStart(*blockOpen);
        if (!result) result = error;
        *blockLayer = UtCString(DxActLayer.view());
    }
    const int lines = writeEdges(faces, entityCount);
    if (!wasOpen && lines > 0 && !result) result = changeBlock(pat, blockOpen, *blockLayer);
    if (writePair(faces, entityCount)) return result;
    for (int polygon = 0; polygon < faces.polygonCount; ++polygon)
        if (faces.facePen[polygon] > 0) writeFace(faces, polygon, entityCount);
    return result;
}

int DxWrite3Dface(const double* x, const double* y, const double* z, int flags, int pen, int lt) {
    constexpr int faces = 6;
    DX_WRITE_STYLE style;
    if (!DxSpaceStyle(pen, lt, faces, style)) return 0;
    DxWriteEntityHead("3DFACE", style);
    DxWriteSubClass("AcDbFace");
    for (int k = 0; k < 4; ++k) writePoint(10 + k, x[k], y[k], z[k]);
    if (const int error = DxWriteInt(70, flags)) return error;
    for (int k = 0; k < 4; ++k) DxStoreMaxXY(x[k], y[k]);
    DxLastPoint = {x[3], y[3], z[3]};
    return 0;
}

int DxWrite3dLine(double x1, double y1, double z1, double x2, double y2, double z2, int pen, int lt) {
    DX_WRITE_STYLE style;
    if (!DxSpaceStyle(pen, lt, 0, style)) return 0;
    DxWriteEntityHead("LINE", style);
    DxWriteSubClass("AcDbLine");
    writePoint(10, x1, y1, z1);
    writePoint(11, x2, y2, z2);
    if (const int error = DxWriteError()) return error;
    DxStoreMaxXY(x2, y2);
    DxLastPoint = {x2, y2, z2};
    return 0;
}

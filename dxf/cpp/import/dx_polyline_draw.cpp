// Draw stages of POLYLINE and LWPOLYLINE.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "../solid/dx_space_import.h"
#include "dx_entity_base.h"
#include "dx_entity_walk.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_polyline_import.h"
#include "dx_transform.h"
#include "mt.h"
#include "uo.h"
#include "uo_elem.h"
#include "ut.h"

#include <cmath>

namespace {

constexpr double samePoint = 0.0001;

enum VertexFlags { FRAME_POINT = 16, MESH_VERTEX = 64, POLYFACE = 128 };
constexpr int IS_3D_POLYLINE = 8;

/// The matrix from the polyline's coordinates to world coordinates.
class PolylineMatrix {
public:
    explicit PolylineMatrix(const Mat44 m)
        : rows_(DxActPolyline.flags & IS_3D_POLYLINE ? m
                                                     : DxObjectMatrix(DxActPolyline.extrusion, m, storage_)) {
    }
    PolylineMatrix(const PolylineMatrix&) = delete;
    PolylineMatrix& operator=(const PolylineMatrix&) = delete;
    const double (*rows() const)[4] { return rows_; }
    RPT3 toWorld(RPT3 p) const {
        DxTrans3DRpt(&p, rows_);
        return p;
    }

private:
    Mat44 storage_;
    const double (*rows_)[4];
};

const DX_ENTITY_BASE_TYPE& baseOf(const DX_VERTEX_TYPE& vertex) {
    const auto style = static_cast<std::size_t>(vertex.style);
    return vertex.style >= 0 && style < DxActPolyline.styles.size() ? DxActPolyline.styles[style]
                                                                    : DxActPolyline.base;
}

/// Pen and line type of a vertex; asked once for a run of vertices that look alike.
const DX_POLY_STYLE& styleOf(const DX_VERTEX_TYPE& vertex) {
    if (DxPolyStyle.style != vertex.style) {
        DxPolyStyle.style = vertex.style;
        DxPolyStyle.isDrawn = DxPenLtToCAD(&baseOf(vertex), &DxPolyStyle.pen, &DxPolyStyle.lineType);
    }
    return DxPolyStyle;
}

unsigned char figureInfo() {
    if (!DxActPolyline.closed) return 4;
    return DxActPolyline.revisionCloud ? 12 : 5;
}

bool isNear(const RPT3& a, const RPT3& b, double tolerance) {
    return std::fabs(a.x - b.x) < tolerance && std::fabs(a.y - b.y) < tolerance;
}

/// The arc as an ellipse, for matrices that don't leave a circle round.
int drawEllipsePiece(const RPT3& to, double bulge, const DX_ENTITY_BASE_TYPE& base,
                     const PolylineMatrix& matrix) {
    double cx = 0, cy = 0;
    if (!DxGetMidXY(DxPolyPrev.x, DxPolyPrev.y, to.x, to.y, bulge, &cx, &cy)) return 0;
    const DX_ELLIPSE_TYPE piece = DxAsEllipse(
        base, {cx, cy, DxPolyPrev.z}, std::hypot(DxPolyPrev.x - cx, DxPolyPrev.y - cy),
        std::atan2(DxPolyPrev.y - cy, DxPolyPrev.x - cx), std::atan2(to.y - cy, to.x - cx), bulge > 0);
    return DxDrawEllipse(&piece, matrix.rows(), 1);
}

int drawArcPiece(const RPT3& world, double bulge, unsigned char info) {
    double cx = 0, cy = 0;
    if (!DxGetMidXY(DxLastPoint.x, DxLastPoint.y, world.x, world.y, bulge, &cx, &cy)) return 0;
    if (DxCheckPass) {
        DxCheckXYZ(world.x, world.y, world.z);
        return 0;
    }
    if (isNear(DxLastPoint, world, DxDrawingTolerance()) || !std::isfinite(cx) || !std::isfinite(cy))
        return Dxovdraw(1, world.x, world.y, info);
    return Dxovarc(bulge > 0 ? 4 : 3, world.x, world.y, cx, cy, info);
}

/// The piece from the last point to `to` (object coordinates), which is `world` in world coordinates.
int drawPiece(const RPT3& to, const RPT3& world, unsigned char info, const DX_ENTITY_BASE_TYPE& base,
              const PolylineMatrix& matrix, bool mayChangePattern) {
    if (DxPolyBulge != 0) {
        if (!DxStaysRound(DxActPolyline.extrusion)) return drawEllipsePiece(to, DxPolyBulge, base, matrix);
        return drawArcPiece(world, DxMirrors(matrix.rows()) ? -DxPolyBulge : DxPolyBulge, info);
    }
    if (DxCheckPass) {
        DxCheckXYZ(world.x, world.y, world.z);
        return 0;
    }
    if (mayChangePattern && DxActPat != DxPolyPat)
        if (const int error = Dxovdraw(2, DxLastPoint.x, DxLastPoint.y)) return error;
    return Dxovdraw(1, world.x, world.y, info);
}

int drawFirstVertex(const DX_VERTEX_TYPE& vertex, const RPT3& world) {
    DxPolyStart = vertex.location;
    DxPolyStartWorld = world;
    DxPolyFirst = 0;
    if (!DxCheckPass) return Dxovdraw(2, world.x, world.y, 0);
    DxCheckXYZ(world.x, world.y, world.z);
    return 0;
}

int drawStep(const DX_VERTEX_TYPE& vertex, const PolylineMatrix& matrix) {
    const DX_POLY_STYLE& style = styleOf(vertex);
    if (!style.isDrawn) return 0;
    const DX_ENTITY_BASE_TYPE& base = baseOf(vertex);
    if (!DxCheckPass && (base.color != -1 || !base.lineType.empty())) {
        const int error =
            DxStartDrawing(base.color != -1 ? style.pen : -1, base.lineType.empty() ? -1 : style.lineType);
        if (error) return error;
    }
    if (vertex.flags & FRAME_POINT) return 0;
    if ((vertex.flags & POLYFACE) && !(vertex.flags & MESH_VERTEX)) return 0;
    const RPT3 world = matrix.toWorld(vertex.location);
    if (!DxIsFinite(world)) return 0;
    const bool first = DxPolyFirst != 0;
    const int error = first ? drawFirstVertex(vertex, world)
                            : drawPiece(vertex.location, world, figureInfo(), base, matrix, true);
    if (error) return error;
    if (!(first && DxCheckPass)) DxPolyPat = DxActPat;
    DxLastPoint = world;
    DxPolyBulge = vertex.bulge;
    DxPolyPrev = vertex.location;
    return 0;
}

/// Notes how many elements the centre line has behind the last piece: a piece is none, one or several, and
/// its widths hold for these.
void noteElements() {
    if (DxCheckPass || !DxPolyFillActive || !DxActPolyline.variableWidth || !DxLineAsHatch) return;
    DxPolyRows.push_back(DxElemsOut - DxPolyElemsBefore);
}

int drawVertices(const std::vector<DX_VERTEX_TYPE>& vertices, const Mat44 m) {
    const PolylineMatrix matrix(m);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        if (const int error = drawStep(vertices[i], matrix)) return error;
        noteElements();
        if (DxIsStoppedAt(i)) return 9009;
    }
    if (!vertices.empty()) DxActVertex = vertices.back();
    return 0;
}

/// A pattern of its own for the centre line of a wide polyline. Line and outline have the polyline's pen.
int beginOutlinePattern(int fillPen) {
    if (const int error = DxCiElemDrawPat()) return error;
    DxFillSavedPat = DxActPat;
    int pattern = 0;
    if (const int error = Dxovpat(211, &pattern)) return error;
    UoCopyAllAttrs(DxActPat, pattern);
    DxActPat = pattern;
    DxPolyElemsBefore = DxElemsOut;
    if (const int error = DxSetFillPen(pattern, fillPen)) return error;
    int pen = 0, lineType = 0;
    return DxPenLtToCAD(&DxActPolyline.base, &pen, &lineType) ? DxStartDrawing(pen, lineType) : 0;
}

/// The pattern of the centre line stays the active one, and counts its elements from here on.
int keepOutlinePattern() {
    int elements = 0;
    if (const int error = DxCiElemDrawPat()) return error;
    if (const int error = UoElemS(27, DxActPat, &elements)) return error;
    if (const int error = DxPatTable.add({DxActPat, elements, 0, 0, 0})) return error;
    DxActPatIndex = static_cast<int>(DxPatTable.size()) - 1;
    return 0;
}

int finishOutline() {
    DxPolyFillActive = 0;
    if (DxCheckPass) return 0;
    if (!DxLineAsHatch) return keepOutlinePattern();
    DxDrawPolyfill(); // a failed outline is no error of the import
    // A pattern that has become full goes on in another, which is active already then.
    return DxActPatIndex >= 0 && DxPatTable[static_cast<std::size_t>(DxActPatIndex)].number == DxActPat
               ? 0
               : DxReturnToPat(DxActPatIndex, DxFillSavedPat);
}

} // namespace

int DxGetMidXY(double x1, double y1, double x2, double y2, double bulge, double* cx, double* cy) {
    constexpr double halfPi = 1.5707963267948966;
    if (std::fabs(x1 - x2) < samePoint && std::fabs(y1 - y2) < samePoint) return 0;
    *cx = (x1 + x2) * 0.5;
    *cy = (y1 + y2) * 0.5;
    if (std::fabs(bulge) == 1.0) return 1;
    const double a = std::atan(bulge);
    const double r = std::fabs(std::hypot(x2 - x1, y2 - y1) * 0.5 / std::sin(2 * a));
    const double angle = std::atan2(y2 - y1, x2 - x1);
    const double c = halfPi - 2 * a;
    if (bulge > 0) {
        *cx = x1 + r * std::cos(c + angle);
        *cy = y1 + r * std::sin(c + angle);
    } else {
        *cx = x2 + r * std::cos(angle - c);
        *cy = y2 + r * std::sin(angle - c);
    }
    return 1;
}

int DxDrawVertex(DX_VERTEX_TYPE* vertex, const Mat44 m) {
    DxActVertex = *vertex;
    return drawStep(DxActVertex, PolylineMatrix(m));
}

int DxSeqEnd(const Mat44 m) {
    if (!DxPolylineOpen) return 0;
    int error = 0;
    if (DxActPolyline.closed && !DxPolyFirst) {
        const PolylineMatrix matrix(m);
        error = drawPiece(DxPolyStart, DxPolyStartWorld, figureInfo(), baseOf(DxActVertex), matrix, false);
        if (!error) noteElements();
        DxLastPoint = DxPolyStartWorld;
    }
    if (DxPolyFillActive) {
        const int finished = finishOutline();
        if (!error) error = finished;
    }
    return error;
}

int DxDrawPolyline(const DX_POLYLINE_TYPE* rec, const Mat44 m) {
    if (rec != &DxActPolyline) DxActPolyline = *rec;
    DX_POLYLINE_TYPE& polyline = DxActPolyline;
    DxPolyStyle = DX_POLY_STYLE{};
    bool isMesh = false;
    if (const int failed = DxDrawFlatMesh(polyline, m, &isMesh); failed || isMesh) return failed;
    if (!DxCheckPass && DxIsPolylineOfSpace(polyline, m)) return 0;
    int pen = 0, lineType = 0;
    if (!(polyline.hasWidth ? DxFillPenToCAD(&polyline.base, &pen)
                            : DxPenLtToCAD(&polyline.base, &pen, &lineType)))
        return 0;
    DxPolylineOpen = 1;
    DxPolyBulge = 0;
    DxPolyFirst = 1;
    DxPolyFillActive = polyline.hasWidth || polyline.variableWidth;
    DxPolyRows.clear();
    int error = 0;
    if (!DxCheckPass) error = DxPolyFillActive ? beginOutlinePattern(pen) : DxStartDrawing(pen, lineType);
    if (!DxCheckPass) DxEntityDrawn = 1;
    if (!error) error = drawVertices(polyline.vertices, m);
    if (!error) error = DxSeqEnd(m);
    DxPolylineOpen = 0;
    if (error) DxPolyFillActive = 0;
    return error;
}

bool DxIsStoppedAt(std::size_t vertex) {
    constexpr std::size_t verticesBetweenQuestions = 1000;
    return vertex % verticesBetweenQuestions == verticesBetweenQuestions - 1 && DxAskForStop();
}

// ---- rows of the table of kinds ----------------------------------------------------------------------

int DxReadPolylineRow(DX_POLYLINE_ROW* /*row*/) {
    return DxReadPolyline(&DxActPolyline);
}
int DxReadLwPolylineRow(DX_POLYLINE_ROW* /*row*/) {
    return DxReadLwPolyline(&DxActPolyline);
}
int DxDrawPolylineRow(DX_POLYLINE_ROW* /*row*/, const Mat44 m) {
    return DxDrawPolyline(&DxActPolyline, m);
}
int DxReadVertexRow(DX_VERTEX_TYPE* vertex) {
    DxPolyStyle = DX_POLY_STYLE{};
    return DxReadVertex(&DxActPolyline, vertex);
}
int DxReadSeqEndRow(DX_POLYLINE_ROW* /*row*/) {
    return 0; // its groups are passed over by the walk
}
int DxDrawSeqEndRow(DX_POLYLINE_ROW* /*row*/, const Mat44 m) {
    const int error = DxSeqEnd(m);
    DxPolylineOpen = 0;
    return error;
}

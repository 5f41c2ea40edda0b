#include "dx_kinds.h"

#include "../dimension/dx_dim_import.h"
#include "../hatch/dx_hatch_import.h"
#include "../text/dx_text_import.h"
#include "dx_attributes.h"
#include "dx_images.h"
#include "dx_insert_import.h"
#include "dx_linework_import.h"
#include "dx_polyline_import.h"
#include "dx_spline_import.h"
#include "dx_views_import.h"

#include <algorithm>
#include <iterator>

std::size_t dxBytesBeside(const DX_TEXT_TYPE& text) {
    return text.text.capacity();
}
std::size_t dxBytesBeside(const DX_ATTRIB_TYPE& attrib) {
    return attrib.value.capacity();
}
std::size_t dxBytesBeside(const DX_INSERT_TYPE& insert) {
    std::size_t bytes = insert.attribs.capacity() * sizeof insert.attribs[0];
    for (const DX_ATTRIB_TYPE& attrib : insert.attribs) bytes += dxBytesBeside(attrib);
    return bytes;
}
std::size_t dxBytesBeside(const DX_POLYLINE_TYPE& polyline) {
    return polyline.vertices.capacity() * sizeof polyline.vertices[0] +
           polyline.styles.capacity() * sizeof polyline.styles[0];
}
std::size_t dxBytesBeside(const DX_DIM_TYPE& dim) {
    return dim.styleOverride ? sizeof *dim.styleOverride : 0;
}
std::size_t dxBytesBeside(const DX_SPLINE_TYPE& spline) {
    return spline.knots.capacity() * sizeof spline.knots[0] +
           spline.controlPoints.capacity() * sizeof spline.controlPoints[0] +
           spline.fitPoints.capacity() * sizeof spline.fitPoints[0];
}
std::size_t dxBytesBeside(const DX_HATCH_TYPE& hatch) {
    std::size_t bytes = hatch.loops.capacity() * sizeof hatch.loops[0];
    for (const DX_HATCH_PATH& loop : hatch.loops) {
        bytes += loop.edges.capacity() * sizeof loop.edges[0];
        for (const DX_SPLINE_TYPE& spline : loop.splines) bytes += sizeof spline + dxBytesBeside(spline);
    }
    for (const DX_HATCH_DEF& def : hatch.defs) bytes += sizeof def + def.dashes.capacity() * sizeof(double);
    return bytes;
}

namespace {

constexpr DxEntityKind storedAsPolyline(DxEntityKind kind) {
    return dxStoredBy(kind, dxStage<DxReadPolyline>, dxStage<DxDrawPolyline>, dxNoStage);
}
constexpr DxEntityKind storedAsLwPolyline(DxEntityKind kind) {
    return dxStoredBy(kind, dxStage<DxReadLwPolyline>, dxStage<DxDrawPolyline>, dxNoStage);
}

// clang-format off
constexpr DxEntityKind kinds[] = {
    //            name                  read                     draw                       3D stage
    dxKind(       "3DLINE",             dxStage<DxReadLine>,     dxStage<DxDrawLine>,       dxNoStage),
    dxSkippedKind("3DSOLID"),
    dxSkippedKind("ACAD_PROXY_ENTITY"),
    dxKind(       "ARC",                dxStage<DxReadArc>,      dxStage<DxDrawArc>,        dxNoStage),
    dxKind(       "ARC_DIMENSION",      dxStage<DxReadExtendedDim>, dxStage<DxDrawDim>,     dxNoStage),
    dxKind(       "ATTDEF",             dxStage<DxReadAttrib>,   dxStage<DxDrawAttdef>,     dxNoStage),
    dxKind(       "ATTRIB",             dxStage<DxReadAttrib>,   dxStage<DxDrawAttrib>,     dxNoStage),
    dxSkippedKind("BODY"),
    dxKind(       "CIRCLE",             dxStage<DxReadCircle>,   dxStage<DxDrawCircle>,     dxNoStage),
    dxKind(       "DIMENSION",          dxStage<DxReadDim>,      dxStage<DxDrawDim>,        dxNoStage),
    dxKind(       "ELLIPSE",            dxStage<DxReadEllipse>,  dxStage<DxDrawOneEllipse>, dxNoStage),
    dxKind(       "HATCH",              dxStage<DxReadHatch>,    dxStage<DxDrawHatchRow>,   dxNoStage),
    dxKind(       "IMAGE",              dxStage<DxReadImage>,    dxStage<DxDrawImage>,      dxNoStage),
    dxKind(       "INSERT",             dxStage<DxReadInsert>,   dxStage<DxDrawInsertRow>,  dxNoStage),
    dxKind(       "LARGE_RADIAL_DIMENSION", dxStage<DxReadExtendedDim>, dxStage<DxDrawDim>, dxNoStage),
    dxKind(       "LINE",               dxStage<DxReadLine>,     dxStage<DxDrawLine>,       dxNoStage),
    storedAsLwPolyline(
    dxKind(       "LWPOLYLINE",         dxStage<DxReadLwPolylineRow>, dxStage<DxDrawPolylineRow>, dxNoStage)),
    dxSkippedKind("MLINE"),
    dxKind(       "MTEXT",              dxStage<DxReadMtext>,    dxStage<DxDrawMtext>,      dxNoStage),
    dxKind(       "OLE2FRAME",          dxStage<DxReadOleFrame>, dxStage<DxDrawOleFrame>,   dxNoStage),
    dxKind(       "OLEFRAME",           dxStage<DxReadOleFrame>, dxStage<DxDrawOleFrame>,   dxNoStage),
    dxKind(       "POINT",              dxStage<DxReadPoint>,    dxStage<DxDrawPoint>,      dxNoStage),
    storedAsPolyline(
    dxKind(       "POLYLINE",           dxStage<DxReadPolylineRow>, dxStage<DxDrawPolylineRow>, dxNoStage)),
    dxSkippedKind("REGION"),
    dxKind(       "SEQEND",             dxStage<DxReadSeqEndRow>, dxStage<DxDrawSeqEndRow>,  dxNoStage),
    dxKind(       "SOLID",              dxStage<DxReadSolid>,    dxStage<DxDrawSolid>,      dxNoStage),
    dxKind(       "SPLINE",             dxStage<DxReadSpline>,   dxStage<DxDrawFlatSpline>, dxStage<DxDrawSplineInSpace>),
    dxSkippedKind("SURFACE"),
    dxKind(       "TEXT",               dxStage<DxReadText>,     dxStage<DxDrawTextEntity>, dxNoStage),
    dxKind(       "TRACE",              dxStage<DxReadSolid>,    dxStage<DxDrawSolid>,      dxNoStage),
    dxKind(       "VERTEX",             dxStage<DxReadVertexRow>, dxStage<DxDrawVertex>,     dxNoStage),
    dxKind(       "VIEWPORT",           dxStage<DxReadViewport>, dxStage<DxDrawViewport>,   dxNoStage),
};
// clang-format on

constexpr bool isSortedAndUnique() {
    for (std::size_t i = 1; i < std::size(kinds); ++i) {
        if (kinds[i - 1].name >= kinds[i].name) return false;
    }
    return true;
}
static_assert(isSortedAndUnique(), "the table of kinds is sorted by name, each name once");
static_assert(std::size(kinds) < 256, "the walk's index holds one byte a kind");

} // namespace

std::span<const DxEntityKind> DxEntityKinds() {
    return kinds;
}

void DxRegisterKinds() {
    DxSetEntityKinds(kinds);
}

#include "dx_kinds.h"

#include "../dimension/dx_dim_import.h"
#include "../hatch/dx_hatch_import.h"
#include "../solid/dx_acis_import.h"
#include "../solid/dx_space_import.h"
#include "../text/dx_text_import.h"
#include "dx_annotation_import.h"
#include "dx_attributes.h"
#include "dx_images.h"
#include "dx_insert_import.h"
#include "dx_linework_import.h"
#include "dx_mleader_import.h"
#include "dx_mline_import.h"
#include "dx_polyline_import.h"
#include "dx_ray_import.h"
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
std::size_t dxBytesBeside(const DX_LEADER_TYPE& leader) {
    return leader.vertices.capacity() * sizeof leader.vertices[0] +
           (leader.styleOverride ? sizeof *leader.styleOverride : 0);
}
std::size_t dxBytesBeside(const DX_MLEADER_TYPE& leader) {
    std::size_t bytes = leader.text.capacity() + leader.branches.capacity() * sizeof leader.branches[0] +
                        leader.attributes.capacity() * sizeof leader.attributes[0];
    for (const DX_MLEADER_ATTRIBUTE& attribute : leader.attributes) bytes += attribute.text.capacity();
    for (const DX_MLEADER_BRANCH& branch : leader.branches)
        for (const DX_MLEADER_LINE& line : branch.lines)
            bytes += sizeof line + line.vertices.capacity() * sizeof line.vertices[0];
    return bytes;
}
std::size_t dxBytesBeside(const DX_MLINE_TYPE& mline) {
    std::size_t bytes = mline.vertices.capacity() * sizeof mline.vertices[0];
    for (const DX_MLINE_VERTEX& vertex : mline.vertices)
        for (const std::vector<double>& line : vertex.lines)
            bytes += sizeof line + line.capacity() * sizeof line[0];
    return bytes;
}
std::size_t dxBytesBeside(const DX_TOLERANCE_TYPE& tolerance) {
    return tolerance.text.capacity() + (tolerance.styleOverride ? sizeof *tolerance.styleOverride : 0);
}
std::size_t dxBytesBeside(const DX_SPLINE_TYPE& spline) {
    return spline.knots.capacity() * sizeof spline.knots[0] +
           spline.controlPoints.capacity() * sizeof spline.controlPoints[0] +
           spline.fitPoints.capacity() * sizeof spline.fitPoints[0];
}
std::size_t dxBytesBeside(const DX_SUB_DMESH_TYPE& mesh) {
    return mesh.vertices.capacity() * sizeof mesh.vertices[0] +
           (mesh.faceList.capacity() + mesh.edgeList.capacity()) * sizeof(int);
}
std::size_t dxBytesBeside(const DX_3DSOLID_TYPE& solid) {
    return solid.text ? solid.text->capacity() : 0;
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
    return dxStoredBy(kind, dxStage<DxReadPolyline>, dxStage<DxDrawPolyline>, dxStage<DxDraw3dPolyline>);
}
constexpr DxEntityKind storedAsLwPolyline(DxEntityKind kind) {
    return dxStoredBy(kind, dxStage<DxReadLwPolyline>, dxStage<DxDrawPolyline>, dxStage<DxDraw3dPolyline>);
}

// clang-format off
constexpr DxEntityKind kinds[] = {
    //            name                  read                     draw                       3D stage
    dxKind(       "3DFACE",             dxStage<DxRead3Dface>,   dxStage<DxDrawFace>,       dxStage<DxDraw3Dface>),
    dxKind(       "3DLINE",             dxStage<DxReadLine>,     dxStage<DxDrawLine>,       dxStage<DxDraw3dLine>),
    dxInSpace(
    dxKind(       "3DSOLID",            dxStage<DxRead3dSolid>,  dxStage<DxDraw3dSolidEntity>, dxNoStage)),
    dxSkippedKind("ACAD_PROXY_ENTITY"),
    dxKind(       "ACAD_TABLE",         dxStage<DxReadTable>,    dxStage<DxDrawTable>,      dxNoStage),
    dxKind(       "ARC",                dxStage<DxReadArc>,      dxStage<DxDrawArc>,        dxStage<DxDraw3dArc>),
    dxKind(       "ARC_DIMENSION",      dxStage<DxReadExtendedDim>, dxStage<DxDrawDim>,     dxNoStage),
    dxKind(       "ATTDEF",             dxStage<DxReadAttrib>,   dxStage<DxDrawAttdef>,     dxNoStage),
    dxKind(       "ATTRIB",             dxStage<DxReadAttrib>,   dxStage<DxDrawAttrib>,     dxNoStage),
    dxInSpace(
    dxKind(       "BODY",               dxStage<DxRead3dSolid>,  dxStage<DxDraw3dSolidEntity>, dxNoStage)),
    dxKind(       "CIRCLE",             dxStage<DxReadCircle>,   dxStage<DxDrawCircle>,     dxStage<DxDraw3dCircle>),
    dxKind(       "DIMENSION",          dxStage<DxReadDim>,      dxStage<DxDrawDim>,        dxNoStage),
    dxKind(       "ELLIPSE",            dxStage<DxReadEllipse>,  dxStage<DxDrawOneEllipse>, dxNoStage),
    dxKind(       "HATCH",              dxStage<DxReadHatch>,    dxStage<DxDrawHatchRow>,   dxNoStage),
    dxFurther(
    dxKind(       "HELIX",              dxStage<DxReadSpline>,   dxStage<DxDrawFlatSpline>, dxStage<DxDrawSplineInSpace>)),
    dxKind(       "IMAGE",              dxStage<DxReadImage>,    dxStage<DxDrawImage>,      dxNoStage),
    dxKind(       "INSERT",             dxStage<DxReadInsert>,   dxStage<DxDrawInsertRow>,  dxNoStage),
    dxKind(       "LARGE_RADIAL_DIMENSION", dxStage<DxReadExtendedDim>, dxStage<DxDrawDim>, dxNoStage),
    dxKind(       "LEADER",             dxStage<DxReadLeader>,   dxStage<DxDrawLeader>,     dxNoStage),
    dxKind(       "LINE",               dxStage<DxReadLine>,     dxStage<DxDrawLine>,       dxStage<DxDraw3dLine>),
    storedAsLwPolyline(
    dxKind(       "LWPOLYLINE",         dxStage<DxReadLwPolylineRow>, dxStage<DxDrawPolylineRow>, dxStage<DxDraw3dPolylineRow>)),
    dxKind(       "MESH",               dxStage<DxReadSubDMesh>, dxStage<DxDrawSubDMesh>,   dxNoStage),
    dxFurther(
    dxKind(       "MLEADER",            dxStage<DxReadMLeader>,  dxStage<DxDrawMLeader>,    dxNoStage)),
    dxFurther(
    dxKind(       "MLINE",              dxStage<DxReadMline>,    dxStage<DxDrawMline>,      dxNoStage)),
    dxKind(       "MTEXT",              dxStage<DxReadMtext>,    dxStage<DxDrawMtext>,      dxNoStage),
    dxFurther(
    dxKind(       "MULTILEADER",        dxStage<DxReadMLeader>,  dxStage<DxDrawMLeader>,    dxNoStage)),
    dxKind(       "OLE2FRAME",          dxStage<DxReadOleFrame>, dxStage<DxDrawOleFrame>,   dxNoStage),
    dxKind(       "OLEFRAME",           dxStage<DxReadOleFrame>, dxStage<DxDrawOleFrame>,   dxNoStage),
    dxKind(       "POINT",              dxStage<DxReadPoint>,    dxStage<DxDrawPoint>,      dxStage<DxDraw3dPoint>),
    storedAsPolyline(
    dxKind(       "POLYLINE",           dxStage<DxReadPolylineRow>, dxStage<DxDrawPolylineRow>, dxStage<DxDraw3dPolylineRow>)),
    dxFurther(
    dxKind(       "RAY",                dxStage<DxReadRay>,      dxStage<DxDrawRay>,        dxNoStage)),
    dxInSpace(
    dxKind(       "REGION",             dxStage<DxRead3dSolid>,  dxStage<DxDraw3dSolidEntity>, dxNoStage)),
    dxKind(       "SEQEND",             dxStage<DxReadSeqEndRow>, dxStage<DxDrawSeqEndRow>,  dxStage<DxDraw3dSeqEndRow>),
    dxKind(       "SOLID",              dxStage<DxReadSolid>,    dxStage<DxDrawSolid>,      dxStage<DxDraw3dSolid>),
    dxKind(       "SPLINE",             dxStage<DxReadSpline>,   dxStage<DxDrawFlatSpline>, dxStage<DxDrawSplineInSpace>),
    dxInSpace(
    dxKind(       "SURFACE",            dxStage<DxRead3dSolid>,  dxStage<DxDraw3dSolidEntity>, dxNoStage)),
    dxKind(       "TEXT",               dxStage<DxReadText>,     dxStage<DxDrawTextEntity>, dxNoStage),
    dxKind(       "TOLERANCE",          dxStage<DxReadTolerance>, dxStage<DxDrawTolerance>, dxNoStage),
    dxKind(       "TRACE",              dxStage<DxReadSolid>,    dxStage<DxDrawSolid>,      dxStage<DxDraw3dSolid>),
    dxKind(       "VERTEX",             dxStage<DxReadVertexRow>, dxStage<DxDrawVertex>,     dxStage<DxDraw3dVertex>),
    dxKind(       "VIEWPORT",           dxStage<DxReadViewport>, dxStage<DxDrawViewport>,   dxNoStage),
    dxFurther(
    dxKind(       "XLINE",              dxStage<DxReadRay>,      dxStage<DxDrawXline>,      dxNoStage)),
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

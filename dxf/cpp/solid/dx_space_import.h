// The 3D stages: faces that entities get in a 3D import, beside their flat elements; and the entities that
// are faces themselves.
#pragma once

#include "dx_3d.h"
#include "dx_types.h"

/// Whether what stands in space has a plan among the flat elements too: always in a flat import.
bool DxDrawsPlan();
/// Whether a line is to stand in space alone: there are no plans, and it has a thickness or a height.
bool DxIsLineOfSpace(const DX_LINE_TYPE& line, const Mat44 m);
/// The same for a polyline with heights of its own.
bool DxIsPolylineOfSpace(const DX_POLYLINE_TYPE& polyline, const Mat44 m);

// ---- 3DFACE ------------------------------------------------------------------------------------------
int DxRead3Dface(DX_3DFACE_TYPE* rec);
int DxDrawFace(const DX_3DFACE_TYPE* rec, const Mat44 m); ///< The flat stage: its outline.
int DxDraw3Dface(const DX_3DFACE_TYPE* rec, const Mat44 m);

// ---- 3D stages of flat entities. Without a thickness they make something only with Dx3dLines on. ------
int DxDraw3dLine(const DX_LINE_TYPE* rec, const Mat44 m);
int DxDraw3dPoint(const DX_POINT_TYPE* rec, const Mat44 m); ///< A point of its layer's cloud.
int DxDraw3dArc(const DX_ARC_TYPE* rec, const Mat44 m);
int DxDraw3dCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m);
int DxDraw3dSolid(const DX_SOLID_TYPE* solid, const Mat44 matrix);

// ---- polylines and the meshes that they may be --------------------------------------------------------
int DxDraw3dPolyline(const DX_POLYLINE_TYPE* rec, const Mat44 m);
int DxDraw3dVertex(DX_VERTEX_TYPE* vertex, const Mat44 m);
int DxSeqEnd3d(const Mat44 m);
int DxDrawPolyNet(const DX_POLYLINE_TYPE* polyline, const Mat44 m); ///< polyface mesh
int DxDrawPolyMat(const DX_POLYLINE_TYPE* polyline, const Mat44 m); ///< polygon mesh
/// With DxMeshEdges on, draws a mesh flat, as the visible edges of its faces. `*isMesh` says whether it was
/// one; else nothing is done.
int DxDrawFlatMesh(const DX_POLYLINE_TYPE& polyline, const Mat44 m, bool* isMesh);

// ---- MESH --------------------------------------------------------------------------------------------
int DxReadSubDMesh(DX_SUB_DMESH_TYPE* rec);
int DxDrawSubDMesh(const DX_SUB_DMESH_TYPE* rec, const Mat44 m);
int DxDraw3dSubDMesh(const DX_SUB_DMESH_TYPE* rec, const Mat44 m);

// ---- rows of the table of kinds, whose record is DxActPolyline ---------------------------------------
struct DX_POLYLINE_ROW;
int DxDraw3dPolylineRow(DX_POLYLINE_ROW* row, const Mat44 m);
int DxDraw3dSeqEndRow(DX_POLYLINE_ROW* row, const Mat44 m);

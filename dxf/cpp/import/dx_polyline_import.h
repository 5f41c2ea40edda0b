// POLYLINE, VERTEX, SEQEND and LWPOLYLINE.
#pragma once

#include "dx_polyline.h"
#include "polyline_state.h"

/// Reads the POLYLINE entity and all VERTEX entities behind it; the entity behind them, normally SEQEND, is
/// taken too.
int DxReadPolyline(DX_POLYLINE_TYPE* rec);
/// Reads one VERTEX of `owner`.
int DxReadVertex(DX_POLYLINE_TYPE* owner, DX_VERTEX_TYPE* vertex);
int DxReadLwPolyline(DX_POLYLINE_TYPE* rec);

/// Draws all vertices and the end.
int DxDrawPolyline(const DX_POLYLINE_TYPE* rec, const Mat44 m);
/// Draws the piece that ends at the vertex. A vertex of a closed polyline is drawn by DxSeqEnd.
int DxDrawVertex(DX_VERTEX_TYPE* vertex, const Mat44 m);
/// Closes the open polyline, if it is one that closes, and fills a wide one.
int DxSeqEnd(const Mat44 m);

/// Replaces the centre line in the active pattern by what a line of the polyline's widths covers. 0 or an
/// error.
int DxDrawPolyfill();
/// True when the host wants to stop at this vertex of a long polyline; it is asked now and then.
bool DxIsStoppedAt(std::size_t vertex);
/// Centre of the arc of this bulge between two points. 0 when they are one point, else 1.
int DxGetMidXY(double x1, double y1, double x2, double y2, double bulge, double* cx, double* cy);

// ---- rows of the table of kinds: the record is DxActPolyline, which outlives the entity ----------------
struct DX_POLYLINE_ROW {};
int DxReadPolylineRow(DX_POLYLINE_ROW* row);
int DxReadLwPolylineRow(DX_POLYLINE_ROW* row);
int DxDrawPolylineRow(DX_POLYLINE_ROW* row, const Mat44 m);
int DxReadVertexRow(DX_VERTEX_TYPE* vertex); ///< A VERTEX by itself, read against the last polyline.
int DxReadSeqEndRow(DX_POLYLINE_ROW* row);
int DxDrawSeqEndRow(DX_POLYLINE_ROW* row, const Mat44 m);

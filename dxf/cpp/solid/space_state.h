// Options of an import in space, and the open polyline there, from its first vertex to its end.
#pragma once

#include "rpt.h"

extern int DxMeshCaps; ///< MESH_CAPS: open ends of a polygon mesh that closes are faces
extern int DxFlatPlan; ///< FLAT_PLAN: what stands in space has its flat plan beside

extern int Dx3dPolyFirst;                 ///< 1: the next vertex is the first
extern RPT3 Dx3dPolyStart;                ///< first vertex, object coordinates
extern RPT3 Dx3dLastPoint;                ///< previous vertex, object coordinates; of a LINE its end
extern int Dx3dPolyRaised;                ///< 1: its pieces are edges in space, whatever else is wanted
extern double Dx3dPolyBulge;              ///< of the previous vertex
extern int Dx3dPolyPen, Dx3dPolyLineType; ///< of the polyline, for the piece that closes it

void DxResetSpaceState();

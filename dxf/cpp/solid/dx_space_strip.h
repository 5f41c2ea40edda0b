// The strip that a straight piece makes in space.
#pragma once

#include "../host/dx_face_list.h"

/// Adds the face from `from` to `to`, raised by `rise`. Without a thickness it is a run of edges that shows
/// the piece alone, raised by 1 so that it can still be measured as a face. Points go through `m`. 0 or an
/// allocation error.
int DxAddStrip(DxFaceList& faces, const RPT3& from, const RPT3& to, const RPT3& rise, bool isThick,
               const Mat44 m);
/// Measures a face list in the check pass; else gives it to the host where 3D lines are wanted or it has a
/// thickness. Lists that aren't finite are dropped.
int DxFinishFaces(DxFaceList& faces, bool isThick);

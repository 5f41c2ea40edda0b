// Point clouds: the points of a layer, given to the host together at the end of a pass.
#pragma once

#include "dx_linework.h"

/// Takes a point, through `m`, into the cloud of its layer. 0 or an allocation error.
int DxCiPointCloudPushPt(const DX_POINT_TYPE* point, const Mat44 m);
/// Gives all clouds to the host, each in a pattern of its own. An error ends none but its own cloud; the
/// result is that of the last cloud that is drawn. The clouds stay: where several spaces are read, each gives
/// those of the earlier ones again.
int DxCiDrawPointClouds();
int DxCiFreePointClouds(); ///< Frees all clouds. 0.

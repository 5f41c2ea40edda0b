// Point clouds: the points of a layer, given to the host together at the end of a pass.
#pragma once

int DxCiDrawPointClouds(); ///< Gives the clouds to the host. None are collected yet. 0 or an error number.
int DxCiFreePointClouds(); ///< Frees all clouds. 0.

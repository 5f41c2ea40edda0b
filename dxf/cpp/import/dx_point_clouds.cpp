#include "dx_point_clouds.h"

int DxCiDrawPointClouds() {
    return 0;
}

int DxCiFreePointClouds() {
    return 0;
}

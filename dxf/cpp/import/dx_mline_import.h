// MLINE: lines side by side.
#pragma once

#include "dx_mline.h"

int DxReadMline(DX_MLINE_TYPE* rec);
int DxDrawMline(const DX_MLINE_TYPE* rec, const Mat44 m);

// Images that wait for the end of a pass.
#pragma once

#include "dx_image.h"
#include "rpt.h"

#include <vector>

/// An image with the matrix that it was met under.
struct DX_QUEUED_IMAGE {
    DX_IMAGE_TYPE image;
    Mat44 matrix;
    int patIndex; ///< its pattern in DxPatTable
};

extern std::vector<DX_QUEUED_IMAGE> DxImageQueue; ///< of the pass that runs, in the order of the file

void DxResetImageState();

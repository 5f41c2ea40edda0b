// Pictures: IMAGE entities, which wait for their definitions until the end of a pass, and OLE frames, which
// are read and dropped.
#pragma once

#include "dx_image.h"
#include "rpt.h"

int DxReadImage(DX_IMAGE_TYPE* image);
/// Measures, or gives the image a pattern of its own and puts it into the queue. 0 or the host's error.
int DxDrawImage(DX_IMAGE_TYPE* image, const Mat44 m);

int DxImageQueueAdd(const DX_IMAGE_TYPE* image, const Mat44 m, int patIndex); ///< 0.
/// Gives the images of a pass to the host. The first error ends the walk and is returned.
int DxImageQueueDraw();
void DxImageQueueFree(); ///< Empties the queue.

/// Makes one image in its pattern. An image without a definition is left out silently, one without a file or
/// without a size with a report. 0 or the host's error.
int DxCiDrawImage(const DX_IMAGE_TYPE* image, const Mat44 m, int patIndex);

int DxReadOleFrame(DX_OLE_FRAME_TYPE* frame); ///< 0, the reader's error, or 4009 for what is no hexadecimal.
int DxDrawOleFrame(DX_OLE_FRAME_TYPE* frame, const Mat44 m); ///< Frees the data. 0.

// Hatches of a pattern on their way out.
#pragma once

#include "ds.h"
#include "dx_hatch.h"
#include "hatch.h"

#include <vector>

/// All hatches of a pattern, fills first, so that lines lie above them. `toBlock` 0: entities of the open
/// block or section; 1: a block of each (WRITE_HATCH 2).
int DxWritePatHatch(int pat, int toBlock);
/// The pattern's hatches as blocks of their own.
int DxWriteHatchBlock(int pat);

/// A HATCH for each contour: with lines a pattern, without a fill. `gradient` may be null.
int DxWriteHatchs(const std::vector<DX_HATCH_CONT>& conts, const std::vector<DX_HATCH_DEF>& defs,
                  const OV_HATCH_PATTERN* source, const DX_HATCH_GRAD* gradient, int pen, int transparency,
                  const Mat32 mat);
/// One element of a polyline loop; the first one, index 0, writes its start too.
int DxWriteHatchElem(const UO_ELEM& elem, int index, const Mat32 mat);
/// The lines of the current hatch as rows of pattern lines in the file's frame.
int DxGetHatchParams(std::vector<DX_HATCH_DEF>* defs, const Mat32 mat);

/// Whether the current hatch still has the lines that this pattern folded into: it hasn't been edited since.
bool DxHatchCarriesSource(const OV_HATCH_PATTERN& source);

int DxCiGetGradHatchParams(const DsCsr& hatch, DX_HATCH_GRAD* gradient);
int DxCiGetHatchTransparency(const DsCsr& hatch, unsigned short* percent);

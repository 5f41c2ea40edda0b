// What a host dimension measures, and where its points lie: what an export asks of one.
//
// Reference points, points and their kinds are those of ov_dim.h. `family` is 1 horizontal, 2 vertical,
// 3 aligned, or the kind itself for all others.
#pragma once

#include "ov_dim.h"
#include "rpt.h"

#include <vector>

using DX_DIM_PTS = std::vector<OV_DIM_PT>;

/// The family of a kind, with or without its place in a chain.
int DxDimFamily(int kind);
/// The k-th point of a kind, k from 1; null if there is none.
const OV_DIM_PT* DxDimFind(int kind, const DX_DIM_PTS& pts, int k);
/// The same as an index, -1 if there is none.
int DxFindPt(int kind, const DX_DIM_PTS& pts, int k);

/// The points on the two legs of an angular dimension.
void DxDimGetAngRefPoints(const RPT refs[3], const DX_DIM_PTS& pts, RPT* first, RPT* second);
/// How far the extension lines begin from what is measured, and how far they reach beyond the dimension line;
/// drawing units.
void DxDimGetDimPointDist(int family, const RPT refs[3], const DX_DIM_PTS& pts, double* exo, double* exe);
/// 1 when the foot of the text's position lies between the tips.
int DxDimGetDimTextPos(const RPT& textPos, const DX_DIM_PTS& pts);
/// What the dimension measures, drawing units or degrees. 0, or 3011 for a family that measures nothing or
/// points that are missing.
int DxDimpatGetDimValue(int family, const RPT refs[3], const DX_DIM_PTS& pts, double* value);

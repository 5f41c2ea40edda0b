// What a dimension is, given only the points of its block and a few definition points.
//
// A file doesn't say which line of a dimension's block is an extension line, where the arrow lies or whether
// the dimension line is broken for the text. Each decoder sorts every point of the block by where it lies
// among the definition points, rebuilds the list of points in the order that the host wants (see ov_dim.h),
// and tells the arrow from what is left over:
//
//        X                        X     X: ends of extension lines
//     P1 ◁────────  12  ────────▷ P2    on the dimension line: ends of pieces, sorted out in pairs
//        │                        │     beside it: the arrow's corners, "peak points"
//       p13                      p14
//
// Tolerances are 0.0001 on each of x and y unless a rule says otherwise.
#pragma once

#include "dx_tables.h"
#include "ov_dim.h"
#include "rpt.h"

#include <span>
#include <vector>

inline constexpr double DX_DIM_EPS = 0.0001;
inline constexpr int DX_DIM_NO_INDEX = 0x7fffffff;
/// A dimension that can't be decoded, and a dimension line whose points don't fit together.
inline constexpr int DX_DIM_UNDECODED = 9008;
inline constexpr int DX_DIM_BAD_COUNT = 9011;

using DX_DIM_PTS = std::vector<OV_DIM_PT>;

/// An arrow: 0 none, 1 filled triangle, 2 dot, 3 tick; sizes in the file's unit.
struct DX_DIM_PEAK {
    int type = 0;
    double length = 0, width = 0;
};

/// What a decoder finds beside the points.
struct DX_DIM_DECODED {
    int kind = 0;
    int textPlace = 5;              ///< 5 in the line, 2 above it, 8 at a shoulder
    int dimIndex = DX_DIM_NO_INDEX; ///< first raw point of dimension line or arrow
    int extIndex = DX_DIM_NO_INDEX; ///< first raw point of an extension line
    int isTwoSided = 0;             ///< a radius with pieces on both sides of its centre
    DX_DIM_PEAK peak;
};

/// Linear. The two origins come back in order, `p10` as a point of the dimension line; angle in degrees.
/// `rawKinds`: drawing codes of the points, 2 move and 1 draw.
int DxDecodeLinDimPts(RPT& p13, RPT& p14, RPT& p10, const RPT& textPos, double angle,
                      std::span<const int> rawKinds, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out);
/// Angular. `points`: those of groups 10 to 16; `threePoint`: centre and two points, else two lines.
/// `arcRefs` receives arc start, arc end and centre.
int DxDecodeAngDimPts(bool threePoint, const RPT points[7], const RPT& textPos, const DX_DIM_STYLE* style,
                      RPT arcRefs[3], DX_DIM_PTS& pts, DX_DIM_DECODED& out);
/// Diameter from a to b.
int DxDecodeDiaDimPts(const RPT& a, const RPT& b, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out);
/// Radius to a, on the curve, about b.
int DxDecodeRadDimPts(const RPT& a, const RPT& b, bool textHorizontal, const DX_DIM_STYLE* style,
                      DX_DIM_PTS& pts, DX_DIM_DECODED& out);
/// Ordinate of feature p13 with a leader to p14; `out.kind` is 51 or 52.
int DxDecodeOrdDimPts(const RPT& p13, const RPT& p14, const DX_DIM_STYLE* style, DX_DIM_PTS& pts,
                      DX_DIM_DECODED& out);

// ---- what the decoders have in common ------------------------------------------------------------------

/// The arrow from its points; n may say that there are fewer or more than `peaks` holds.
void DxGetPeakParms(const RPT& a, const RPT& b, int n, const std::vector<RPT>& peaks, bool hasCircle,
                    const DX_DIM_STYLE* style, DX_DIM_PEAK& peak);
/// Removes points from index 4 on that have a twin among these, both of them. 0, or 9008 for fewer than four.
int DxCrunchLinearPts(DX_DIM_PTS& pts, double eps);
/// Makes eight points of four extension points and four candidates on the dimension line. 0 or 9011.
int DxDimSortDim8(const RPT& tip1, const RPT& tip2, const DX_DIM_PTS& rawPts, std::span<const int> rawKinds,
                  DX_DIM_PTS& pts);
/// Sorts by distance from `ref`.
void DxSortMinMax(std::vector<RPT>& pts, const RPT& ref, bool descending);
/// Turns an index into the list without negative kinds into an index into the raw list.
int DxRecalcIndex(int index, const DX_DIM_PTS& rawPts);
/// 0 for a list with some but not too many points of each kind, else 9011.
int DxCountDimTypes(const DX_DIM_PTS& pts);
/// Removes entries of negative kind, order kept, and with them their drawing codes.
void DxDelMarkedPts(DX_DIM_PTS& pts, std::vector<int>& rawKinds);

/// Equal in x and in y within the tolerance.
bool DxDimSamePoint(const RPT& a, const RPT& b, double eps = DX_DIM_EPS);
double DxDimDistance(const RPT& a, const RPT& b);
/// Adds a point unless the list has it.
void DxDimAddPeak(std::vector<RPT>& peaks, const RPT& point);
inline RPT DxDimPoint(const OV_DIM_PT& p) {
    return {p.x, p.y};
}
inline OV_DIM_PT DxDimMake(const RPT& p, int kind) {
    return {p.x, p.y, kind};
}

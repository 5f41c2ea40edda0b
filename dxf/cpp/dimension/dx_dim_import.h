// DIMENSION and its kin: reading the entity and its block, and what becomes of it in the host.
#pragma once

#include "dx_dim_chain.h"
#include "dx_dim_decode.h"
#include "dx_dim_parms.h"
#include "dx_dimension.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// ---- reading -------------------------------------------------------------------------------------------

int DxReadDim(DX_DIM_TYPE* dim);
int DxReadExtendedDim(DX_DIM_TYPE* dim); ///< ARC_DIMENSION and LARGE_RADIAL_DIMENSION
/// The first style of exactly this name in the current document's table, null when there is none. O(1) on
/// average.
const DX_DIM_STYLE* DxFindDimStyle(std::string_view name);

/// The points and texts of a dimension's block. The lists run in parallel. Points are those of lines and
/// curves with 2, 1 and 4 as drawing codes: move, draw, arc, of which two points follow a move. `kind` of a
/// point is 4 for the first of a circle and -1 for one that is geometry alone: a centre, the repeated corner
/// of a SOLID.
struct DX_DIM_GEO {
    DX_DIM_PTS pts;
    std::vector<int> rawKinds;
    std::vector<DX_DIM_LOOK> looks;
    DX_DIM_TEXTS texts;
    /// With KEEP_DIM all lines of the block as they are to be seen: POLYLINEs and bulges too, which nothing
    /// is recognised by.
    std::shared_ptr<DX_DIM_GEO> seen;
    long entities = 0; ///< met so far
};
/// So many points or entities are no dimension any more.
inline constexpr std::size_t DX_DIM_MOST_POINTS = 4000;
inline constexpr long DX_DIM_MOST_ENTITIES = 20'000;
/// The result for a block beyond these bounds.
inline constexpr int DX_DIM_TOO_LARGE = 9018;

/// Reads entities up to a group 0 of `end`, through the matrix. 0, the reader's error, or DX_DIM_TOO_LARGE.
int DxReadDimGeo(std::string_view end, DX_DIM_GEO& geo, const Mat44 m);

/// Joins the block's texts: value, and behind a byte 1 each the upper and the lower tolerance. Texts change
/// their order. 0, or 9010 for more than two tolerances.
int DxGetDimText(std::string_view entityText, DX_DIM_TEXTS& texts, std::string& out);
inline constexpr int DX_DIM_TOO_MANY_TOLERANCES = 9010;
/// The middle of a text in the coordinates of its block.
RPT3 DxDimTextMiddle(const DX_TEXT_TYPE& text);

/// The block's points as those of an arrow of the host.
std::vector<DX_ARROW_PT> DxDimArrowPoints(const DX_DIM_GEO& geo, bool ofLeader);

// ---- drawing -------------------------------------------------------------------------------------------

/// A new pattern with the layer's name where the configuration puts it. 0 or the host's error.
int DxDimNewPat(const DX_NAME& layer);

int DxDrawDim(const DX_DIM_TYPE* dim, const Mat44 m);
/// A dimension of drawn lines from all of the block's geometry (mode 8), or the leader of an ordinate (5).
int DxDrawDimFree(const DX_DIM_GEO& geo, const Mat44 m, int kind, int mode, const RPT refs[3]);
/// Where the host's lines of a dimension leave out some of `seen`, those of its block, it shows these. Null:
/// they aren't kept.
int DxDimKeepLines(const DX_DIM_GEO* seen, int pat, int row);
int DxDimKeepLinesOfLast(const DX_DIM_GEO* seen, int pat); ///< The same for a pattern's last dimension.
/// An ordinate: its leader and texts.
int DxDimDrawOrd(int kind, const DX_DIM_PTS& pts, const RPT refs[3], const DX_DIM_TEXTS& texts, const Mat44 m,
                 const DX_DIM_LOOK& look);

// Hatches: their look, the walk over them, and the contour services of an export.
//
// A hatch has closed contours (see ovhatch in ov.h) and either lines in up to two directions or a fill, with
// a second colour for a gradient. What its lines look like in its source can stand beside that. Lengths are
// in the drawing's unit, angles in radians. Functions give 0 on success: 1005 where there is no such hatch,
// pattern or setting, 3011 for what can't be done.
#pragma once

#include "ds.h"
#include "uo_elem.h"
#include "ut_string.h"

#include <vector>

// ---- the look of hatches to come, and of the current one ---------------------------------------------

/// One line direction. A line lies at `base`, which is measured from the drawing's origin to the right of the
/// direction; the next ones follow at distance d1, c1 times, and at d2, c2 times, and so on round:
///
///     base |  d1 |  d1 |    d2    |  d1 | …      c1 = 2, c2 = 1, period 2 * d1 + d2
///
/// A direction without counts has no lines.
struct UO_HATCH_PAR {
    int number = 1; ///< 1, 2
    int pen = 1, lineType = 1;
    double angle = 0;
    double base = 0, d1 = 0, d2 = 0;
    int c1 = 0, c2 = 0;
    int reserved = 0;
    int useBase = 1; ///< 0: the first line goes through the origin
};
/// 6: sets direction `par[0].number` of the hatches to come. 20: reads both directions of the current hatch
/// into par[0] and par[1].
int UoHatchPar(int code, UO_HATCH_PAR* par);

/// A colour of a gradient: pen, transparency in percent, angle, shift, size in percent of the area.
struct OV_HATCH_COLOR {
    int pen = 1, transparency = 0;
    double angle = 0, shift = 0, size = 0;
    int reserved = 0;
};
/// 6: hatches to come are gradients: type 3, form 0 from side to side or 1 from the middle, two colours. The
/// angle is that of the first colour.
int ovglobhatchparams(int* code, const UtCString& name, int type, int form, const OV_HATCH_COLOR* first,
                      const OV_HATCH_COLOR* second);

/// One row of lines of a pattern as its source has it: through `base`, the next one at `offset` from there.
struct OV_PATTERN_LINE {
    double angle = 0;
    RPT base{0, 0}, offset{0, 0};
    std::vector<double> dashes; ///< positive drawn, negative gap, 0 dot; none: continuous
};
/// The pattern that a hatch was made from. Its lines show in place of the hatch's own directions.
struct OV_HATCH_PATTERN {
    UtCString name;
    double scale = 1, angle = 0;
    int type = 0, crossed = 0;
    std::vector<OV_PATTERN_LINE> lines;
};
/// 6: hatches to come keep this pattern. 20: reads that of the current hatch; 1005 when it has none.
int ovhatchpattern(int code, OV_HATCH_PATTERN* pattern);

/// The fill behind the lines, pen << 6: 6 sets that of hatches to come, 20 reads that of the current hatch,
/// 1005 when it has none.
int ovdrawhatchparams(int code, int* fill);
/// 20: pen and line type of direction `number` of the current hatch; of a fill its pen and line type 0.
int ovhatchparams(int code, int number, int* pen, int* lineType);

// ---- the walk ------------------------------------------------------------------------------------------

/// 38: the first hatch of pattern patNo, 24: the one behind hatch `*row`; 1005 at the end. It becomes the
/// current hatch. Kind: 0 lines, 1 fill, 3 gradient, 4 texture.
int ovnexthatch2(int code, int patNo, int* row, int* kind);
int ovnexthatch(int code, int patNo, int* row);
int OvGetHatchCursor(DsCsr* cursor); ///< A cursor on the current hatch.

/// 86: a new scratch pattern, active, with all lines of the current hatch as elements. 3011 when they are
/// more than the host makes of one hatch. 32: deletes that pattern again.
int ovhatchelems(int code, int* patNo);

// ---- contours ------------------------------------------------------------------------------------------

/// The contours of the current hatch, each as a scratch pattern, to be deleted by the caller. The active
/// pattern stays. The second element of a contour that counts for fills only has the attribute "hatch" with
/// the value EXCLUDE; a contour pattern that ovhatch takes may have that mark too.
int UoGetHatchContour(std::vector<int>* patterns);

/// The lines and arcs of a pattern in order, without those shorter than the tolerance. Mode 1.
int UoElemSFiltXPts(int patNo, int mode, double tolerance, std::vector<UO_ELEM>* elems);
/// Turns a closed chain so that it runs counter-clockwise (direction 1) or clockwise (-1). 3011 for one that
/// encloses no area.
int UoElemSSortDir(UO_ELEM* elems, int count, int direction);
/// Cuts the arcs of a chain into chords: `perQuarter` a quarter turn, or for 0 none longer than `length`. A
/// chord isn't shorter than the tolerance, and a whole circle has three at least.
int UoElemSArcsToDraws(std::vector<UO_ELEM>* elems, int perQuarter, double length, double tolerance);

int UoPatAct(int* patNo);           ///< The active pattern's number; 1005 when there is none.
int UoPatEdit(int patNo);           ///< Makes a pattern active.
int UoPatEmpty(int patNo, int* is); ///< 1 when a pattern holds nothing.
/// Deletes those elements of a pattern that lie on elements of another.
int UoPatDelEqualPatElems(int patNo, int otherPat, double tolerance);

/// 6: makes the area within the closed chain of a pattern the region of the cuts to come. 3011 when it
/// encloses none.
int ovblock(int code, int patNo);
/// 7: cuts the elements of a pattern at the border of the region: what lies within or on the border goes to
/// pattern `inside`, the rest to `outside`. Border 0, rest 3, mode 1.
int ovsplitblock(int code, int patNo, int inside, int outside, int border, int rest, int mode);

// Hatches through the layer over the host.
//
// What is read from the file comes in the frame of the other Dxov… calls: the active space's unit, ahead of
// the drawing shift. Patterns of loops and contours hold what the host has already.
#pragma once

#include "hatch.h"
#include "rpt.h"

/// Begins the look of the hatches to come: lines, without any direction yet.
int DxovHatchBegin();
/// A direction of lines; `isPlaced` false hands it over as it is, for lines that no file has.
int DxovHatchPar(UO_HATCH_PAR par, bool isPlaced);
/// The pattern that the hatches to come were made from.
int DxovHatchPattern(OV_HATCH_PATTERN pattern);
/// Transparency in percent of the hatches to come.
int DxovHatchTransparency(int percent);
/// The hatches to come are gradients; `name` is told to the host.
int DxovHatchGradient(const UtCString& name, int form, const OV_HATCH_COLOR& first,
                      const OV_HATCH_COLOR& second);

/// Rewrites a pattern of several contours into one hatch contour in a new pattern: a later Move becomes a
/// marked jump (info 2), and every second contour counts as an inner one (info 1).
int DxCiChgHatchCont(int pat, int* newPat);

/// Makes one chain of the elements of a pattern: sorted, turned, gaps up to the drawing tolerance closed,
/// short elements taken out. Where they don't join, a marked jump leads on. 0 or an error.
int DxovCleanLoop(int pat);

/// Box of a pattern; 1005 when it is empty.
int DxovLoopBox(int pat, RPT* min, RPT* max);

/// A hatch contour in the making: loops join into one chain, from its start out to each later loop by a jump
/// (info 2), round it, and back.
class DxHatchChain {
public:
    int begin();                        ///< Makes its pattern.
    int add(int loopPat, bool isInner); ///< `isInner` marks the elements (info 1).
    bool isEmpty() const { return !isOpen_; }
    /// Makes the hatch in pattern `toPat`. 3011 where the contour encloses nothing. The contour pattern is
    /// gone in any case.
    int makeHatch(int toPat);
    void drop();

private:
    int append(int loopPat, const RPT& start, bool isInner);

    int pat_ = 0;
    bool isOpen_ = false;
    RPT first_{0, 0};
};

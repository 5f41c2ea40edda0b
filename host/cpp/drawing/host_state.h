// What the drawing calls of the host remember between two calls.
#pragma once

#include "dimension/dim_settings.h"
#include "drawing/drawing.h"
#include "li.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host {

class Region;

/// The hatch that a walk stands on; pattern 0: none.
struct CurrentHatch {
    int pattern = 0, row = 0;
};

/// A context: 0 is the unit of the drawing, whatever that is.
struct Context {
    bool open = false;
    int unit = 0;
};

/// What ov3dleseflaechen gives out.
struct FaceArrays {
    std::vector<int> ends, edgeKind, edgePen, edgeLt, hidden, facePen;
    std::vector<double> x, y, z;
};

/// Hatch parameters before anything was set.
inline Hatch noHatchYet() {
    Hatch hatch;
    hatch.solid = false;
    return hatch;
}

struct DrawingState {
    Drawing drawing;
    Hatch hatch = noHatchYet(); ///< what the hatches to come will look like; its contours don't count
    CurrentHatch currentHatch;
    std::shared_ptr<const Region> region; ///< of ovblock, null: none
    int regionPattern = 0;                ///< the pattern that it was made of
    Text textParameters;           ///< what texts to come will look like; its lines and place don't count
    std::optional<Text> savedText; ///< of UoTextParSave(1)
    double tolerance3d = 0;        ///< of 3D operations; 0: the drawing tolerance
    double epsilon = 1e-9;         ///< of UtSetEpsi
    double epsilonFactor = 1.0;    ///< of UoStartInitEpsNew
    int screenOff = 0;             ///< how many times the screen output was switched off
    FaceArrays faceArrays;         ///< of the last ov3dleseflaechen
    int notifications3d = 0;       ///< calls of ov3dfunc
    int assemblyUpdate = 1;        ///< flag of the assembly manager
    std::vector<Context> contexts; ///< by id - 1
    std::string title;             ///< of the window
    std::map<std::string, std::string> keptPictures; ///< file that an export replaced → what it held before
    std::string exportView;                          ///< the view made for an export, empty: none
    std::optional<Drawing> workFile;                 ///< copy made by StoreWorkFile
    std::string workFileName, lockFileName;          ///< empty: none
    std::map<std::string, std::pair<std::string, int>> declaredAttributes; ///< name → label, length
    std::vector<RPT> splineChain; ///< the curve of spline chainRow of pattern chainPattern as points
    int chainPattern = 0, chainRow = -1;
    std::vector<UO_ELEM> splineArcs; ///< the curve of spline arcsRow of pattern arcsPattern as lines and arcs
    int arcsPattern = 0, arcsRow = -1;
    DimensionState dimension;
};

DrawingState& drawingState();
void resetDrawingState(); ///< A fresh drawing and all of the above at its start.

/// Appends an element to a pattern; the one place that keeps elementCount.
void appendElement(Pattern& pattern, const Element& element);
/// Where the pattern's plot stands: the target of its last element; (0, 0) before the first.
RPT currentPoint(const Pattern& pattern);

/// The error of a call that the failure switch made fail, and of one that found no memory.
inline constexpr int errorNoMemory = 1001;
inline constexpr int errorNoSuchObject = 1005;
inline constexpr int errorNotApplicable = 3011;

} // namespace host

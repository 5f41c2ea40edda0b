// The lines of a hatch, whatever way they are told.
#pragma once

#include "drawing/drawing.h"

namespace host {

/// All lines of a hatch as rows with dashes: those of its source, else of its own directions, whose line
/// types are measured on the sheet.
std::vector<HatchFamily> hatchFamilies(const Drawing& drawing, const Hatch& hatch);

/// True for the directions that stand for a pattern which isn't a hatch's own: the first one has no base.
bool isStandardHatch(const Hatch& hatch);

/// The hatches of a drawing by their kind.
struct HatchCounts {
    long families = 0;  ///< lines in one or two directions
    long fills = 0;     ///< one colour
    long gradients = 0; ///< a colour that runs to another
    long standard = 0;  ///< standing for a pattern that isn't a hatch's own
    long kept = 0;      ///< of families and standard, those that show the lines of their source
};
HatchCounts countHatches(const Drawing& drawing);

/// Segments that an expansion makes of one hatch at most.
inline constexpr std::size_t kHatchBudget = 2'000'000;

/// The lines of a hatch within its contours, dashes one by one, as chains of Move and Draw. False, with
/// nothing made, when they are more than the budget.
bool expandHatch(const Drawing& drawing, const Hatch& hatch, std::vector<Element>* elements);

} // namespace host

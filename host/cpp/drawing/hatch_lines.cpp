#include "drawing/hatch_lines.h"

#include <cmath>

namespace host {

/// Dashes of the host's own line types on the sheet, millimetres; a drawing that defines a number itself has
/// other ones.
static std::vector<double> usualDashes(int lineType) {
    struct Usual {
        double factor;
        std::vector<double> dashes;
    };
    static const std::vector<double> dashed{0.5, -0.5}, dashDot{0.78, -0.09, 0.04, -0.09};
    std::vector<double> dashes;
    double factor = 0;
    switch (lineType) {
    case 2: dashes = dashed, factor = 3; break;
    case 3: dashes = dashed, factor = 1.5; break;
    case 4: dashes = dashed, factor = 4.5; break;
    case 5: dashes = dashed, factor = 7; break;
    case 6: dashes = dashDot, factor = 7; break;
    case 7: dashes = dashDot, factor = 10; break;
    case 8: dashes = {0.7, -0.1, 0.1, -0.1}, factor = 9; break;
    case 9: dashes = {0.5, -0.1, 0.1, -0.1, 0.1, -0.1}, factor = 10; break;
    default: break;
    }
    for (double& dash : dashes) dash *= factor;
    return dashes;
}

static std::vector<double> dashesOf(const Drawing& drawing, int lineType) {
    const auto own = drawing.lineTypes.find(lineType);
    std::vector<double> dashes = own != drawing.lineTypes.end() ? own->second.dashes : usualDashes(lineType);
    const double sheet = unitInMm(drawing) * drawing.scale;
    for (double& dash : dashes) dash /= sheet;
    return dashes;
}

/// The rows of one direction: one for each line of a period.
static void addRows(const Drawing& drawing, const HatchLines& lines, std::vector<HatchFamily>& rows) {
    const double period = lines.period();
    if (!(std::fabs(period) > 0) || !std::isfinite(period)) return;
    HatchFamily row;
    row.angle = lines.angle;
    row.distance = std::fabs(period);
    row.pen = lines.pen;
    row.lineType = lines.lineType;
    row.dashes = dashesOf(drawing, lines.lineType);
    double at = lines.base;
    constexpr int mostRows = 1000;
    for (int i = 0; i < lines.c1 + lines.c2 && i < mostRows; ++i) {
        row.originX = at * std::sin(lines.angle);
        row.originY = -at * std::cos(lines.angle);
        rows.push_back(row);
        at += i < lines.c1 ? lines.d1 : lines.d2;
    }
}

std::vector<HatchFamily> hatchFamilies(const Drawing& drawing, const Hatch& hatch) {
    if (!hatch.families.empty()) return hatch.families;
    std::vector<HatchFamily> rows;
    for (const HatchLines& lines : hatch.lines) addRows(drawing, lines, rows);
    return rows;
}

bool isStandardHatch(const Hatch& hatch) {
    return !hatch.lines.empty() && hatch.lines[0].base == 0 && hatch.lines[0].c1 == 1 &&
           hatch.lines[0].c2 == 0 && hatch.lines[0].d1 == hatch.lines[0].d2;
}

static void count(const Hatch& hatch, HatchCounts& counts) {
    if (!hatch.gradient.empty())
        ++counts.gradients;
    else if (hatch.solid)
        ++counts.fills;
    else
        ++(isStandardHatch(hatch) ? counts.standard : counts.families);
    if (!hatch.solid && !hatch.families.empty()) ++counts.kept;
}

HatchCounts countHatches(const Drawing& drawing) {
    HatchCounts counts;
    for (const Pattern& pattern : drawing.patterns) {
        if (!pattern.isContent()) continue;
        for (const Hatch& hatch : pattern.hatches) count(hatch, counts);
    }
    return counts;
}

} // namespace host

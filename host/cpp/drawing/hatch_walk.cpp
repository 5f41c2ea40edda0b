// The walk over hatches, their parameters, and their expansion.
#include "hatch.h"

#include "ci_objects.h"
#include "drawing/hatch_lines.h"
#include "drawing/host_state.h"
#include "ov.h"
#include "services/failure.h"

#include <algorithm>
#include <cmath>

using namespace host;

namespace {

constexpr int FIRST = 38, NEXT = 24, SET = 6, READ = 20;
constexpr std::size_t DIRECTIONS = 2;

const Hatch* hatchAt(int patNo, int row) {
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->hatches.size()) return nullptr;
    return &pattern->hatches[static_cast<std::size_t>(row)];
}

const Hatch* currentHatch() {
    const CurrentHatch& at = drawingState().currentHatch;
    return at.pattern ? hatchAt(at.pattern, at.row) : nullptr;
}

int kindOf(const Hatch& hatch) {
    if (!hatch.gradient.empty()) return 3;
    return hatch.solid ? 1 : 0;
}

/// The patterns that the walk and its services make don't become active.
Pattern& addScratch(const std::vector<Element>& elements) {
    Pattern& pattern = openDrawing().addPattern(true);
    for (const Element& e : elements) appendElement(pattern, e);
    return pattern;
}

} // namespace

// ---- walk --------------------------------------------------------------------------------------------

int ovnexthatch2(int code, int patNo, int* row, int* kind) {
    if (callFails()) return errorNoMemory;
    if (code != FIRST && code != NEXT) return errorNotApplicable;
    const int next = code == FIRST ? 0 : *row + 1;
    const Hatch* hatch = hatchAt(patNo, next);
    if (!hatch) return errorNoSuchObject;
    drawingState().currentHatch = {patNo, next};
    *row = next;
    *kind = kindOf(*hatch);
    return 0;
}

int ovnexthatch(int code, int patNo, int* row) {
    int kind = 0;
    return ovnexthatch2(code, patNo, row, &kind);
}

int OvGetHatchCursor(DsCsr* cursor) {
    if (callFails()) return errorNoMemory;
    if (!currentHatch()) return errorNoSuchObject;
    cursor->Get() = DS_CURSOR_STRUCT{};
    cursor->Get().patNo = drawingState().currentHatch.pattern;
    cursor->Get().partNo = drawingState().currentHatch.row;
    return 0;
}

// ---- parameters ----------------------------------------------------------------------------------------

static UO_HATCH_PAR toPar(const HatchLines& lines, int number) {
    UO_HATCH_PAR par;
    par.number = number;
    par.pen = lines.pen;
    par.lineType = lines.lineType;
    par.angle = lines.angle;
    par.base = lines.base;
    par.d1 = lines.d1;
    par.d2 = lines.d2;
    par.c1 = lines.c1;
    par.c2 = lines.c2;
    return par;
}

static HatchLines fromPar(const UO_HATCH_PAR& par) {
    HatchLines lines;
    lines.pen = par.pen;
    lines.lineType = par.lineType;
    lines.angle = par.angle;
    lines.base = par.useBase ? par.base : 0;
    lines.d1 = par.d1;
    lines.d2 = par.d2;
    lines.c1 = std::max(par.c1, 0);
    lines.c2 = std::max(par.c2, 0);
    return lines;
}

int UoHatchPar(int code, UO_HATCH_PAR* par) {
    if (callFails()) return errorNoMemory;
    if (code == READ) {
        const Hatch* hatch = currentHatch();
        if (!hatch) return errorNoSuchObject;
        for (std::size_t i = 0; i < DIRECTIONS; ++i)
            par[i] = toPar(i < hatch->lines.size() ? hatch->lines[i] : HatchLines{}, static_cast<int>(i) + 1);
        return 0;
    }
    if (code != SET || par->number < 1 || par->number > static_cast<int>(DIRECTIONS))
        return errorNotApplicable;
    Hatch& hatch = drawingState().hatch;
    const auto index = static_cast<std::size_t>(par->number) - 1;
    if (hatch.lines.size() <= index) hatch.lines.resize(index + 1);
    hatch.lines[index] = fromPar(*par);
    if (index == 0) hatch.fillPen = par->pen;
    return 0;
}

int ovglobhatchparams(int* code, const UtCString& name, int type, int form, const OV_HATCH_COLOR* first,
                      const OV_HATCH_COLOR* second) {
    if (callFails()) return errorNoMemory;
    constexpr int gradientType = 3;
    if (*code != SET || type != gradientType) return errorNotApplicable;
    Hatch hatch;
    hatch.fillPen = first->pen;
    hatch.transparency = std::clamp(first->transparency, 0, 100);
    hatch.gradient.push_back(
        {form == 1 ? 1 : 0, first->angle, first->shift, first->size, second->pen, name.str()});
    drawingState().hatch = std::move(hatch);
    return 0;
}

static OV_PATTERN_LINE toLine(const HatchFamily& family) {
    const double c = std::cos(family.angle), s = std::sin(family.angle);
    OV_PATTERN_LINE line;
    line.angle = family.angle;
    line.base = {family.originX, family.originY};
    line.offset = {c * family.offset - s * family.distance, s * family.offset + c * family.distance};
    line.dashes = family.dashes;
    return line;
}

static HatchFamily fromLine(const OV_PATTERN_LINE& line, int pen) {
    const double c = std::cos(line.angle), s = std::sin(line.angle);
    HatchFamily family;
    family.angle = line.angle;
    family.originX = line.base.x;
    family.originY = line.base.y;
    family.offset = c * line.offset.x + s * line.offset.y;
    family.distance = c * line.offset.y - s * line.offset.x;
    family.pen = pen;
    family.dashes = line.dashes;
    return family;
}

static int readPattern(const Hatch& hatch, OV_HATCH_PATTERN* pattern) {
    if (hatch.source.empty()) return errorNoSuchObject;
    const HatchSource& source = hatch.source[0];
    *pattern = {hatch.patternName.c_str(), source.scale, source.angle, source.type, source.crossed, {}};
    for (const HatchFamily& family : hatch.families) pattern->lines.push_back(toLine(family));
    return 0;
}

int ovhatchpattern(int code, OV_HATCH_PATTERN* pattern) {
    if (callFails()) return errorNoMemory;
    if (code == READ) {
        const Hatch* hatch = currentHatch();
        return hatch ? readPattern(*hatch, pattern) : errorNoSuchObject;
    }
    if (code != SET) return errorNotApplicable;
    Hatch& hatch = drawingState().hatch;
    hatch.patternName = pattern->name.str();
    hatch.source.assign(1, {pattern->scale, pattern->angle, pattern->type, pattern->crossed});
    hatch.families.clear();
    for (const OV_PATTERN_LINE& line : pattern->lines)
        hatch.families.push_back(fromLine(line, hatch.fillPen));
    return 0;
}

int ovdrawhatchparams(int code, int* fill) {
    constexpr int penShift = 6;
    if (callFails()) return errorNoMemory;
    if (code == SET) {
        drawingState().hatch.backPen = *fill >> penShift;
        return 0;
    }
    const Hatch* hatch = currentHatch();
    if (!hatch || hatch->backPen == 0) return errorNoSuchObject;
    *fill = hatch->backPen << penShift;
    return 0;
}

int ovhatchparams(int code, int number, int* pen, int* lineType) {
    if (callFails()) return errorNoMemory;
    const Hatch* hatch = currentHatch();
    if (!hatch) return errorNoSuchObject;
    const auto index = static_cast<std::size_t>(number) - 1;
    if (code != READ || index >= DIRECTIONS) return errorNotApplicable;
    *pen = hatch->fillPen;
    *lineType = hatch->solid ? 0 : 1;
    if (!hatch->solid && index < hatch->lines.size()) {
        *pen = hatch->lines[index].pen;
        *lineType = hatch->lines[index].lineType;
    }
    return 0;
}

int CiHatch::GetTypeParams(const DsCsr& cursor, int* type, int* form) {
    if (callFails()) return errorNoMemory;
    const Hatch* hatch = hatchAt(cursor.Get().patNo, cursor.Get().partNo);
    if (!hatch) return errorNoSuchObject;
    *type = kindOf(*hatch);
    *form = hatch->gradient.empty() ? 0 : hatch->gradient[0].form;
    return 0;
}

int CiHatch::GetParams(const DsCsr& cursor, int record, int* pen, double* angle, double* shift, double* size,
                       unsigned short* high, unsigned short* low) {
    if (callFails()) return errorNoMemory;
    const Hatch* hatch = hatchAt(cursor.Get().patNo, cursor.Get().partNo);
    const bool isGradient = hatch && !hatch->gradient.empty();
    if (!hatch || record < 1 || record > (isGradient ? 2 : 1)) return errorNoSuchObject;
    const HatchGradient gradient = isGradient ? hatch->gradient[0] : HatchGradient{};
    *pen = record == 1 ? hatch->fillPen : gradient.secondPen;
    *angle = gradient.angle;
    *shift = gradient.shift;
    *size = gradient.size;
    *high = static_cast<unsigned short>(hatch->transparency / 16);
    *low = static_cast<unsigned short>(hatch->transparency % 16);
    return 0;
}

// ---- contents ------------------------------------------------------------------------------------------

int ovhatchelems(int code, int* patNo) {
    constexpr int EXPAND = 86, RELEASE = 32;
    if (callFails()) return errorNoMemory;
    if (code == RELEASE) return openDrawing().remove(*patNo) ? 0 : errorNoSuchObject;
    const Hatch* hatch = currentHatch();
    if (!hatch) return errorNoSuchObject;
    std::vector<Element> elements;
    if (code != EXPAND || !expandHatch(openDrawing(), *hatch, &elements)) return errorNotApplicable;
    *patNo = openDrawing().activeNumber = addScratch(elements).number;
    return 0;
}

int UoGetHatchContour(std::vector<int>* patterns) {
    if (callFails()) return errorNoMemory;
    const Hatch* hatch = currentHatch();
    if (!hatch) return errorNoSuchObject;
    patterns->clear();
    for (const Contour& contour : hatch->contours) patterns->push_back(addScratch(contour).number);
    for (const HatchExclusion& excluded : hatch->exclusions) {
        const auto at = static_cast<std::size_t>(excluded.contour);
        if (at < patterns->size())
            openDrawing().find((*patterns)[at])->elementAttributes = {{1, "hatch", "EXCLUDE"}};
    }
    return 0;
}

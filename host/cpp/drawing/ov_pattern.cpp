// Pattern control, identifying strings, group numbers, placement, rectangle.
#include "ov.h"

#include "drawing/extents.h"
#include "drawing/host_state.h"
#include "pattern.h"
#include "services/failure.h"
#include "text/layout.h"

using namespace host;

static int makePattern(bool scratch, int* patNo) {
    Drawing& drawing = openDrawing();
    drawing.activeNumber = drawing.addPattern(scratch).number;
    *patNo = drawing.activeNumber;
    return 0;
}

static int activatePattern(int patNo) {
    if (!openDrawing().find(patNo)) return errorNoSuchObject;
    openDrawing().activeNumber = patNo;
    return 0;
}

static int stepPattern(int* patNo) {
    const Pattern* next = openDrawing().next(*patNo < 0 ? 0 : *patNo);
    if (!next) return errorNoSuchObject;
    *patNo = next->number;
    return 0;
}

static int reportActive(int* patNo) {
    if (!openDrawing().active()) return errorNoSuchObject;
    *patNo = openDrawing().activeNumber;
    return 0;
}

int ovpat(int* code, int* patNo) {
    if (callFails()) return errorNoMemory;
    switch (*code) {
    case -1: ++drawingState().screenOff; return 0;
    case -2: --drawingState().screenOff; return 0;
    case 5: return reportActive(patNo);
    case 11: return makePattern(true, patNo);
    case 17: return openDrawing().remove(*patNo) ? 0 : errorNoSuchObject;
    case 23: return activatePattern(*patNo);
    case 145: return stepPattern(patNo);
    case 211: return makePattern(false, patNo);
    default: return errorNotApplicable;
    }
}

int ovpatinfo(int* code, int* patNo, UtCString* level, UtCString* cls, UtCString* group, UtCString* name) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = *code == 5 ? openDrawing().active() : openDrawing().find(*patNo);
    if (!pattern) return errorNoSuchObject;
    PatternIds& ids = pattern->ids;
    if (*code == 21) {
        ids.level = level->str();
        ids.cls = cls->str();
        ids.group = group->str();
        ids.name = name->str();
        return 0;
    }
    if (*code != 5 && *code != 20) return errorNotApplicable;
    *patNo = pattern->number;
    *level = ids.level;
    *cls = ids.cls;
    *group = ids.group;
    *name = ids.name;
    return 0;
}

int ovgroup(int* code, int* patNo, int* group) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().find(*patNo);
    if (!pattern) return errorNoSuchObject;
    if (*code == 20)
        *group = pattern->groupNumber;
    else if (*code == 6)
        pattern->groupNumber = *group;
    else
        return errorNotApplicable;
    return 0;
}

int ovpatmatrix(int* code, int* patNo, double matrix[6]) {
    if (callFails()) return errorNoMemory;
    if (*code != 20 && *code != 21) return errorNotApplicable;
    Pattern* pattern = openDrawing().find(*patNo);
    if (!pattern) return errorNoSuchObject;
    Placement& p = pattern->relation.placement;
    double* const members[6] = {&p.xx, &p.xy, &p.yx, &p.yy, &p.tx, &p.ty};
    for (int i = 0; i < 6; ++i) *code == 20 ? matrix[i] = *members[i] : *members[i] = matrix[i];
    return 0;
}

int UoPatSetVisible(int patNo, bool visible) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().find(patNo);
    if (!pattern) return errorNoSuchObject;
    pattern->visible = visible;
    return 0;
}

int ovpatrect(int* code, int* patNo, double rect[4]) {
    if (callFails()) return errorNoMemory;
    if (*code != 256) return errorNotApplicable;
    const Pattern* pattern = openDrawing().find(*patNo);
    if (!pattern) return errorNoSuchObject;
    const Extents box = patternExtents(*pattern, sheetMillimetres(openDrawing(), pattern->view));
    if (box.empty) return errorNoSuchObject;
    rect[0] = box.minX;
    rect[1] = box.minY;
    rect[2] = box.maxX;
    rect[3] = box.maxY;
    return 0;
}

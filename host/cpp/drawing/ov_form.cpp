// Sheet, unit and scale; text parameters.
#include "ov.h"

#include "drawing/host_state.h"
#include "drawing/space_frame.h"
#include "ge.h"
#include "services/failure.h"
#include "text/text_parm.h"
#include "uo.h"
#include "ut.h"

#include <algorithm>
#include <cmath>

using namespace host;

static constexpr int smallestFormat = 6; // A5

/// The sheet that is shown, null for the model.
static View* shownSheet() {
    return openDrawing().activeView == 0 ? nullptr : openDrawing().findView(openDrawing().activeView);
}

static int setScale(int format, double scale) {
    constexpr int errorScaleRange = 2030;
    constexpr int errorSheetTooSmall = 3012;
    if (!(scale >= 1e-8 && scale <= 1e8)) return errorScaleRange;
    Drawing& drawing = openDrawing();
    View* const shown = shownSheet();
    int& ownFormat = shown ? shown->format : drawing.format;
    if (format < 0 || format > smallestFormat) format = ownFormat;
    const GeFormat sheet(format);
    const double side = std::min(sheet.width(), sheet.height()) / scale / unitInMm(drawing);
    if (side < drawingTolerance(drawing)) return errorSheetTooSmall;
    ownFormat = format;
    (shown ? shown->scale : drawing.scale) = scale;
    return 0;
}

int ovform(int mode, int* format, double* scale, int* unit, double* factor3d) {
    if (callFails()) return errorNotApplicable;
    Drawing& drawing = openDrawing();
    if (mode == 7) return setScale(format ? *format : drawing.format, *scale);
    if (mode == 8) {
        if (GeUnit(*unit).factor() <= 0) return errorNotApplicable;
        drawing.changeUnit(*unit);
        drawingState().chainRow = -1;
        return 0;
    }
    if (mode != 5) return errorNotApplicable;
    const View* const shown = shownSheet();
    *format = shown ? shown->format : drawing.format;
    *scale = drawing.viewScale(drawing.activeView);
    *unit = drawing.unit;
    if (factor3d) *factor3d = spaceFactor(drawing.scale);
    return 0;
}

int ovconv(int unitCode, int mode, double value, double* result) {
    if (callFails()) return errorNotApplicable;
    if (unitCode != 100 || mode != 3) return errorNotApplicable;
    *result = value * unitInMm(openDrawing()) * openDrawing().viewScale(openDrawing().activeView);
    return 0;
}

double UtConv(int code) {
    return code == 50 ? drawingTolerance(openDrawing()) : 0;
}

int UoStartInitEpsNew(double factor) {
    if (callFails()) return errorNotApplicable;
    drawingState().epsilonFactor = factor;
    return 0;
}

int ovtextparams(int* code, int* font, double* height, double* spacing) {
    if (callFails()) return errorNoMemory;
    Text& parameters = drawingState().textParameters;
    if (*code == 5) {
        *font = parameters.font;
        *height = parameters.height;
        *spacing = parameters.spacing;
        return 0;
    }
    if (*code != 6) return errorNotApplicable;
    OV_TEXT_PARM changed = parmOf(parameters);
    changed.font = *font;
    changed.height = *height;
    changed.spacing = *spacing;
    if (!isUsable(changed)) return errorNotApplicable;
    setParm(parameters, changed);
    return 0;
}

int UoTextParSave(int code) {
    if (callFails()) return errorNoMemory;
    DrawingState& state = drawingState();
    if (code == 1) {
        state.savedText = state.textParameters;
        return 0;
    }
    if (code != 2 || !state.savedText) return errorNotApplicable;
    state.textParameters = *state.savedText;
    return 0;
}

int ovredraw(int* /*code*/) {
    return callFails() ? errorNoMemory : 0; // there is no screen
}

#include "uo_text.h"

#include "ci_text.h"
#include "drawing/host_state.h"
#include "services/failure.h"
#include "text/layout.h"
#include "uo.h"

using namespace host;

int UoFiltPatPerAttr(const UtCString& name, const UtCString& value, int* patNo) {
    if (callFails()) return errorNoSuchObject;
    Drawing& drawing = openDrawing();
    for (Pattern* p = drawing.next(0); p; p = drawing.next(p->number)) {
        UtCString found;
        if (UoGetSingleAttr(p->number, name, &found) != 0 || found != value) continue;
        *patNo = p->number;
        return 0;
    }
    return errorNoSuchObject;
}

int UoFirstText(int patNo, int* row) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || pattern->texts.empty()) return errorNoSuchObject;
    *row = 0;
    return 0;
}

int UoTextGetMultiLines(int patNo, int row, std::vector<UtCString>* lines) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->texts.size())
        return errorNoSuchObject;
    const std::vector<std::string>& text = pattern->texts[static_cast<std::size_t>(row)].lines;
    lines->assign(text.begin(), text.end());
    return 0;
}

int UoTextSetParamsSimple(double height, double lineDistance) {
    if (callFails()) return errorNoMemory;
    if (!(height > 0) || !(lineDistance > 0)) return errorNotApplicable;
    drawingState().textParameters.height = height;
    drawingState().textParameters.lineDistance = lineDistance;
    return 0;
}

int UoGetTextBalloonPat(int patNo, int row, int* framePat) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= pattern->texts.size())
        return errorNoSuchObject;
    const Text& text = pattern->texts[static_cast<std::size_t>(row)];
    if (text.backType == 0) return errorNoSuchObject;
    const TextCorners corners = textCorners(text, sheetMillimetres(openDrawing(), pattern->view));
    Pattern& frame = openDrawing().addPattern(true);
    for (int i = 0; i <= 4; ++i) {
        Element side;
        side.type = i == 0 ? ElementType::Move : ElementType::Draw;
        side.x = corners.p[i % 4].x;
        side.y = corners.p[i % 4].y;
        side.pen = text.pen;
        side.info = 5;
        appendElement(frame, side);
    }
    *framePat = frame.number;
    return 0;
}

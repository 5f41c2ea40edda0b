// Copying the content of patterns.
#include "ov.h"

#include "drawing/host_state.h"
#include "services/failure.h"

using namespace host;

int ovcopy(int* code, int* fromPat, int* toPat) {
    constexpr int copyContent = 8;
    if (callFails()) return errorNoMemory;
    const Pattern* from = openDrawing().find(*fromPat);
    Pattern* to = openDrawing().find(*toPat);
    if (!from || !to || from == to) return errorNoSuchObject;
    if (*code != copyContent) return errorNotApplicable;
    const auto firstSpline = static_cast<double>(to->splines.size());
    for (Element element : from->elements) {
        if (element.type == ElementType::Spline) element.cx += firstSpline;
        appendElement(*to, element);
    }
    to->splines.insert(to->splines.end(), from->splines.begin(), from->splines.end());
    to->hatches.insert(to->hatches.end(), from->hatches.begin(), from->hatches.end());
    to->texts.insert(to->texts.end(), from->texts.begin(), from->texts.end());
    openDrawing().elementCount += from->hatches.size() + from->texts.size();
    return 0;
}

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
    const auto firstText = static_cast<int>(to->texts.size());
    to->splines.insert(to->splines.end(), from->splines.begin(), from->splines.end());
    to->hatches.insert(to->hatches.end(), from->hatches.begin(), from->hatches.end());
    to->texts.insert(to->texts.end(), from->texts.begin(), from->texts.end());
    to->arrows.insert(to->arrows.end(), from->arrows.begin(), from->arrows.end());
    for (Dimension dimension : from->dimensions) {
        if (dimension.textRow >= 0) dimension.textRow += firstText;
        if (dimension.tolRow >= 0) dimension.tolRow += firstText;
        to->dimensions.push_back(std::move(dimension));
    }
    openDrawing().elementCount +=
        from->hatches.size() + from->texts.size() + from->arrows.size() + from->dimensions.size();
    return 0;
}

// Hidden lines of a pattern: the image of its faces as flat elements of another.
#include "ov_3d.h"

#include "drawing/host_state.h"
#include "drawing/space_view.h"
#include "services/failure.h"

using namespace host;

/// The direction from which a pattern is looked at: the normal of its work plane.
static RPT3 lookingFrom(const Pattern& pattern) {
    const auto plane = openDrawing().workPlanes.find(pattern.workId);
    if (plane == openDrawing().workPlanes.end()) return {0, 0, 1};
    const auto& [a, b, c] = plane->second;
    const RPT3 u{b.x - a.x, b.y - a.y, b.z - a.z}, v{c.x - a.x, c.y - a.y, c.z - a.z};
    return {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
}

static void drawLine(Pattern& pattern, const SeenLine& line) {
    Element element;
    element.pen = line.pen;
    element.lineType = static_cast<std::int16_t>(line.lineType);
    element.x = line.a.x, element.y = line.a.y;
    appendElement(pattern, element);
    element.type = ElementType::Draw;
    element.x = line.b.x, element.y = line.b.y;
    appendElement(pattern, element);
}

int ov3dhidden(int* code, int* fromPat, int* toPat) {
    if (callFails()) return errorNoMemory;
    const Pattern* from = openDrawing().find(*fromPat);
    Pattern* to = openDrawing().find(*toPat);
    if (!from || !to) return errorNoSuchObject;
    if (*code != 1) return errorNotApplicable;
    SpaceView view(viewFrom(lookingFrom(*from)));
    view.add(*from);
    for (const SeenLine& line : view.visibleLines()) drawLine(*to, line);
    return 0;
}

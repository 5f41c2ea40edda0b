#include "drawing/host_state.h"

namespace host {

static DrawingState state; // NOLINT: the one open drawing

DrawingState& drawingState() {
    return state;
}

void resetDrawingState() {
    state = DrawingState{};
}

Drawing& openDrawing() {
    return state.drawing;
}

void appendElement(Pattern& pattern, const Element& element) {
    pattern.elements.push_back(element);
    ++state.drawing.elementCount;
}

RPT currentPoint(const Pattern& pattern) {
    if (pattern.elements.empty()) return {0, 0};
    return {pattern.elements.back().x, pattern.elements.back().y};
}

} // namespace host

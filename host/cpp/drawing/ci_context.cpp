// CiContext: contexts, their units, and what is asked of the host at large.
#include "ci.h"

#include "drawing/attributes.h"
#include "drawing/context.h"
#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "ge.h"
#include "services/failure.h"

#include <cstdio>

namespace host {

static Context* findContext(int id) {
    std::vector<Context>& contexts = drawingState().contexts;
    if (id < 1 || static_cast<std::size_t>(id) > contexts.size()) return nullptr;
    Context& context = contexts[static_cast<std::size_t>(id) - 1];
    return context.open ? &context : nullptr;
}

double contextFactor(int contextId) {
    const Context* context = findContext(contextId);
    if (!context || context->unit == 0 || context->unit == openDrawing().unit) return 1;
    return GeUnit(context->unit).factor() / GeUnit(openDrawing().unit).factor();
}

RPT3 scaled(const RPT3& p, double factor) {
    return {p.x * factor, p.y * factor, p.z * factor};
}

} // namespace host

using namespace host;

int CiContext::Add(int* id) {
    if (callFails()) return errorNoMemory;
    std::vector<Context>& contexts = drawingState().contexts;
    std::size_t index = 0;
    while (index < contexts.size() && contexts[index].open) ++index;
    if (index == contexts.size()) contexts.emplace_back();
    contexts[index] = {true, 0};
    *id = static_cast<int>(index) + 1;
    return 0;
}

int CiContext::Del(int id) {
    Context* context = findContext(id);
    if (!context) return errorNoSuchObject;
    context->open = false;
    return 0;
}

int CiContext::SetUnit(int id, const UtCString& unitName) {
    if (callFails()) return errorNoMemory;
    Context* context = findContext(id);
    if (!context) return errorNoSuchObject;
    const int unit = GeUnit::fromName(unitName).code();
    if (unit == 0) return errorNotApplicable;
    context->unit = unit;
    return 0;
}

int CiContext::Update(int id) {
    return !callFails() && findContext(id) ? 0 : errorNoSuchObject;
}

int CiContext::Zoom2Box(int id) {
    if (callFails() || !findContext(id)) return errorNoSuchObject;
    return 0;
}

int CiContext::SetTitle(int id, const UtCString& title) {
    if (callFails() || !findContext(id)) return errorNoSuchObject;
    drawingState().title = title.str();
    return 0;
}

int CiContext::GetAttrColPens(int id, const _ObObject* object, int* pen, int* fillPen) {
    *pen = *fillPen = -1;
    const Pattern* pattern = openDrawing().find(patternOf(object));
    if (callFails() || !findContext(id) || !pattern) return errorNoSuchObject;
    const std::string* value = findAttribute(*pattern, "color");
    // "pen" or "pen,fill"; a text that isn't numbers leaves both at -1.
    if (value) std::sscanf(value->c_str(), "%9d,%9d", pen, fillPen); // NOLINT: bounded, result in the values
    return 0;
}

int CiContext::DefParamAttrLong(int id, const UtCString& name, const UtCString& label, int length) {
    if (callFails()) return errorNoMemory;
    if (!findContext(id)) return errorNoSuchObject;
    if (name.IsEmpty() || length < 0) return errorNotApplicable;
    drawingState().declaredAttributes[name.str()] = {label.str(), length};
    return 0;
}

/// The settings of a pattern state, null when there is no such state.
static const StateSettings* findState(int id, const UtCString& obstat) {
    if (callFails() || !findContext(id)) return nullptr;
    const auto found = openDrawing().states.find(obstat.str());
    return found == openDrawing().states.end() ? nullptr : &found->second;
}

static constexpr int errorNoState = 4711;

int CiContext::GetStatePenLtConf(int id, const UtCString& obstat, int* pen, int* lineType) {
    const StateSettings* state = findState(id, obstat);
    if (!state) return errorNoState;
    *pen = state->pen;
    *lineType = state->lineType;
    return 0;
}

int CiContext::GetStateHatchConf(int id, const UtCString& obstat, int* pen) {
    const StateSettings* state = findState(id, obstat);
    if (!state) return errorNoState;
    *pen = state->hatchPen;
    return 0;
}

int CiContext::GetStateTextConf(int id, const UtCString& obstat, CI_TEXT_STATE* text) {
    const StateSettings* state = findState(id, obstat);
    if (!state) return errorNoState;
    *text = {state->textPen, state->textBackOn, state->textBits, state->swapsTextColours};
    return 0;
}

int CiContext::GetState3DConf(int id, const UtCString& obstat, int* pen) {
    const StateSettings* state = findState(id, obstat);
    if (!state) return errorNoState;
    *pen = state->pen3d;
    return 0;
}

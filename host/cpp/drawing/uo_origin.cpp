#include "origin.h"

#include "drawing/host_state.h"
#include "drawing/origin_mark.h"
#include "services/failure.h"

#include <utility>

using namespace host;

int UoContentCount(int patNo, OV_CONTENT list) {
    const Pattern* const pattern = openDrawing().find(patNo);
    if (!pattern) return 0;
    std::size_t size = pattern->elements.size();
    if (list == OV_TEXTS) size = pattern->texts.size();
    if (list == OV_HATCHES) size = pattern->hatches.size();
    if (list == OV_DIMENSIONS) size = pattern->dimensions.size();
    return static_cast<int>(size);
}

int UoOriginAdd(int patNo, OV_CONTENT list, int first, int count, std::string text) {
    if (callFails()) return errorNoMemory;
    Pattern* const pattern = openDrawing().find(patNo);
    if (!pattern) return errorNoSuchObject;
    const std::int64_t mark = markOf(*pattern, list, first, count);
    if (mark == 0) return errorNotApplicable;
    pattern->origins.push_back({list, first, count, mark, std::move(text)});
    return 0;
}

void UoOriginFrame(double dx, double dy) {
    openDrawing().originFrame = {dx, dy};
}

static bool isInFrame(const Drawing& drawing) {
    return drawing.originFrame.x == 0 && drawing.originFrame.y == 0;
}

static const Origin* originOf(const Pattern* pattern, int index) {
    const bool isThere = pattern && index >= 0 && static_cast<std::size_t>(index) < pattern->origins.size();
    return isThere ? &pattern->origins[static_cast<std::size_t>(index)] : nullptr;
}

int UoOriginGet(int patNo, int index, OV_ORIGIN* origin) {
    const Origin* const kept = originOf(openDrawing().find(patNo), index);
    if (!kept) return errorNoSuchObject;
    *origin = {static_cast<OV_CONTENT>(kept->list), kept->first, kept->count, kept->text};
    return 0;
}

bool UoOriginIsIntact(int patNo, int index) {
    const Drawing& drawing = openDrawing();
    const Pattern* const pattern = drawing.find(patNo);
    const Origin* const kept = originOf(pattern, index);
    return kept && isInFrame(drawing) && markOf(*pattern, kept->list, kept->first, kept->count) == kept->mark;
}

int UoPlacedSet(int patNo, const std::vector<int>& members, std::string_view text) {
    if (callFails()) return errorNoMemory;
    Drawing& drawing = openDrawing();
    Pattern* const pattern = drawing.find(patNo);
    if (!pattern) return errorNoSuchObject;
    const std::int64_t mark = markOf(drawing, *pattern, members);
    if (mark == 0) return errorNoSuchObject;
    for (const int member : members) drawing.find(member)->relation.parent = patNo;
    pattern->placed = {{members, mark, std::string(text)}};
    return 0;
}

int UoPlacedGet(int patNo, bool* isIntact, std::string_view* text) {
    const Drawing& drawing = openDrawing();
    const Pattern* const pattern = drawing.find(patNo);
    if (!pattern || pattern->placed.empty()) return errorNoSuchObject;
    const Placed& placed = pattern->placed.front();
    if (isIntact) *isIntact = isInFrame(drawing) && markOf(drawing, *pattern, placed.members) == placed.mark;
    *text = placed.text;
    return 0;
}

int UoPlacedOwner(int patNo) {
    const Drawing& drawing = openDrawing();
    const Pattern* pattern = drawing.find(patNo);
    if (!pattern) return 0;
    if (!pattern->placed.empty()) return patNo;
    const int parent = pattern->relation.parent;
    pattern = parent != 0 ? drawing.find(parent) : nullptr;
    return pattern && !pattern->placed.empty() ? parent : 0;
}

int UoDefinitionAdd(const UtCString& name) {
    std::vector<Definition>& definitions = openDrawing().definitions;
    definitions.push_back({name.str(), {}});
    return static_cast<int>(definitions.size());
}

int UoDefinitionText(int number, std::string_view text) {
    std::vector<Definition>& definitions = openDrawing().definitions;
    if (number < 1 || static_cast<std::size_t>(number) > definitions.size()) return errorNoSuchObject;
    definitions[static_cast<std::size_t>(number) - 1].text = text;
    return 0;
}

int UoDefinitionGet(int number, UtCString* name, std::string_view* text) {
    const std::vector<Definition>& definitions = openDrawing().definitions;
    if (number < 1 || static_cast<std::size_t>(number) > definitions.size()) return errorNoSuchObject;
    const Definition& definition = definitions[static_cast<std::size_t>(number) - 1];
    *name = UtCString(definition.name);
    *text = definition.text;
    return 0;
}

int UoDefinitionOpen(int number) {
    return std::exchange(openDrawing().openDefinition, number);
}

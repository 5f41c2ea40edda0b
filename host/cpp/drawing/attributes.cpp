#include "drawing/attributes.h"

#include "drawing/host_state.h"
#include "ds.h"
#include "services/failure.h"
#include "uo.h"
#include "ut.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace host {

std::string* identifyingString(PatternIds& ids, const std::string& name) {
    if (name == "#G") return &ids.group;
    if (name == "#E") return &ids.level;
    if (name == "#K") return &ids.cls;
    if (name == "#M") return &ids.name;
    if (name == "layer") return &ids.layer;
    if (name == "obstat") return &ids.obstat;
    return nullptr;
}

static constexpr std::size_t manyAttributes = 32;

/// Index of the attribute, or their number when there is none of this name.
static std::size_t placeOf(Pattern& pattern, const std::string& name) {
    const auto& list = pattern.attributes;
    if (list.size() < manyAttributes) {
        const auto known = std::find_if(list.begin(), list.end(),
                                        [&](const auto& attribute) { return attribute.first == name; });
        return static_cast<std::size_t>(known - list.begin());
    }
    auto& places = pattern.attributePlaces;
    if (places.size() != list.size()) {
        places.clear();
        for (std::size_t i = 0; i < list.size(); ++i) places.try_emplace(list[i].first, i);
    }
    const auto known = places.find(name);
    return known == places.end() ? list.size() : known->second;
}

void setAttribute(Pattern& pattern, const std::string& name, const std::string& value) {
    if (std::string* id = identifyingString(pattern.ids, name)) {
        *id = value;
        return;
    }
    const std::size_t place = placeOf(pattern, name);
    if (place < pattern.attributes.size()) {
        pattern.attributes[place].second = value;
        return;
    }
    if (pattern.attributes.size() >= manyAttributes) pattern.attributePlaces[name] = place;
    pattern.attributes.emplace_back(name, value);
}

const std::string* findAttribute(const Pattern& pattern, const std::string& name) {
    if (const std::string* id = identifyingString(const_cast<PatternIds&>(pattern.ids), name))
        return id->empty() ? nullptr : id;
    for (const auto& [known, value] : pattern.attributes)
        if (known == name) return &value;
    return nullptr;
}

} // namespace host

using namespace host;

int UoSetSingleAttr(int patNo, const UtCString& name, const UtCString& value) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().find(patNo);
    if (!pattern) return errorNoSuchObject;
    if (name.IsEmpty()) return errorNotApplicable;
    setAttribute(*pattern, name.str(), value.str());
    return 0;
}

int UoSetSingleAttrInt(int patNo, const UtCString& name, int value) {
    return UoSetSingleAttr(patNo, name, std::to_string(value));
}

int UoGetSingleAttr(int patNo, const UtCString& name, UtCString* value) {
    const Pattern* pattern = openDrawing().find(patNo);
    const std::string* found = pattern ? findAttribute(*pattern, name.str()) : nullptr;
    if (!found) return errorNoSuchObject;
    *value = *found;
    return 0;
}

int UoGetSingleAttrInt(int patNo, const UtCString& name, int* value) {
    UtCString text;
    if (const int error = UoGetSingleAttr(patNo, name, &text)) return error;
    const char* end = text.c_str() + text.Len();
    int number = 0;
    if (std::from_chars(text.c_str(), end, number).ec != std::errc{}) return errorNotApplicable;
    *value = number;
    return 0;
}

int UoGetAttr(int patNo, int index, UtCString* name, UtCString* value) {
    const Pattern* pattern = openDrawing().find(patNo);
    if (!pattern || index < 0 || static_cast<std::size_t>(index) >= pattern->attributes.size())
        return errorNoSuchObject;
    const auto& attribute = pattern->attributes[static_cast<std::size_t>(index)];
    *name = attribute.first;
    *value = attribute.second;
    return 0;
}

int UoFiltAttrToPatList(const UtCString& filter, int type, int** list, int* count) {
    constexpr int allPatterns = 2;
    *count = 0;
    if (callFails()) return errorNoMemory;
    if (!filter.IsEmpty() || type != allPatterns) return errorNotApplicable;
    std::vector<int> numbers;
    for (const Pattern& pattern : openDrawing().patterns)
        if (pattern.isContent()) numbers.push_back(pattern.number);
    if (numbers.empty()) return 0;
    void* block = *list;
    const int error = UtAllocMemoryBlock(&block, numbers.size(), sizeof(int), 1, 0);
    *list = static_cast<int*>(block);
    if (error) return error;
    std::copy(numbers.begin(), numbers.end(), *list);
    *count = static_cast<int>(numbers.size());
    return 0;
}

int UoCopyAllAttrs(int fromPat, int toPat) {
    if (callFails()) return errorNoMemory;
    const Pattern* from = openDrawing().find(fromPat);
    Pattern* to = openDrawing().find(toPat);
    if (!from || !to) return errorNoSuchObject;
    if (from == to) return 0;
    to->ids = from->ids;
    to->groupNumber = from->groupNumber;
    if (to->attributes.empty()) {
        to->attributes = from->attributes;
        to->attributePlaces = from->attributePlaces;
        return 0;
    }
    for (const auto& [name, value] : from->attributes) setAttribute(*to, name, value);
    return 0;
}

/// Characters of a UTF-8 text.
static std::size_t countCharacters(const std::string& text) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

int DsAttrSetSingle(const DsCsr* cursor, const UtCString& name, const UtCString& value) {
    const auto declared = drawingState().declaredAttributes.find(name.str());
    if (declared == drawingState().declaredAttributes.end()) return errorNotApplicable;
    const auto longest = static_cast<std::size_t>(declared->second.second);
    if (countCharacters(value.str()) > longest) return errorNotApplicable;
    return UoSetSingleAttr(cursor->Get().patNo, name, value);
}

int DsAttrSetSingleCheckFree(const DsCsr* cursor, const UtCString& name, const UtCString& value, int check) {
    constexpr std::size_t longestName = 255;
    if (check && (name.IsEmpty() || name.Len() > longestName)) return errorNotApplicable;
    return UoSetSingleAttr(cursor->Get().patNo, name, value);
}

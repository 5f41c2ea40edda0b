// CiPat: patterns by cursor, and elements in bulk.
#include "ci.h"

#include "drawing/attributes.h"
#include "drawing/context.h"
#include "drawing/extents.h"
#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "drawing/transform.h"
#include "mt.h"
#include "services/failure.h"
#include "text/layout.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace host;

static Pattern* patternAt(const DsCsr& cursor) {
    return openDrawing().find(cursor.Get().patNo);
}

int CiPat::Add(DsCsr& cursor) {
    if (callFails()) return errorNoMemory;
    const Pattern& pattern = openDrawing().addPattern(false);
    openDrawing().activeNumber = pattern.number;
    cursor.PutId(objectOf(pattern.number));
    return 0;
}

int CiPat::AddNormal(DsCsr& cursor) {
    return Add(cursor); // new patterns have nothing set here
}

static int aimAtNext(DsCsr& cursor, int number) {
    if (callFails()) return errorNoMemory;
    const Pattern* next = openDrawing().next(number);
    if (!next) return errorNoSuchObject;
    cursor.PutId(objectOf(next->number));
    return 0;
}

int CiPat::First(DsCsr& cursor) {
    return aimAtNext(cursor, 0);
}

int CiPat::Next(DsCsr& cursor) {
    return aimAtNext(cursor, cursor.Get().patNo);
}

int CiPat::GetAttr(const DsCsr& cursor, const UtCString& name, UtCString* value) {
    const Pattern* pattern = patternAt(cursor);
    const std::string* found = pattern ? findAttribute(*pattern, name.str()) : nullptr;
    if (!found) return errorNoSuchObject;
    *value = *found;
    return 0;
}

int CiPat::ChgAttr(const DsCsr& cursor, const UtCString& name, const UtCString& value) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    if (name.IsEmpty()) return errorNotApplicable;
    setAttribute(*pattern, name.str(), value.str());
    return 0;
}

/// Lowest and highest z of a pattern; flat content has z 0.
static std::pair<double, double> heightRange(const Pattern& pattern) {
    const bool flat = pattern.size() != pattern.spaceSize();
    double low = flat ? 0 : std::numeric_limits<double>::infinity();
    double high = -low;
    forEachPoints(pattern, [&](const std::vector<RPT3>& points) {
        for (const RPT3& p : points) {
            low = std::min(low, p.z);
            high = std::max(high, p.z);
        }
    });
    return {low, high};
}

int CiPat::GetBox(const DsCsr& cursor, RPT3* min, RPT3* max) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    const Extents box = patternExtents(*pattern, sheetMillimetres(openDrawing(), pattern->view));
    if (box.empty) return errorNoSuchObject;
    const auto [low, high] = heightRange(*pattern);
    const double back = 1 / contextFactor(contextId_);
    *min = scaled({box.minX, box.minY, low}, back);
    *max = scaled({box.maxX, box.maxY, high}, back);
    return 0;
}

int CiPat::DelElems(const DsCsr& cursor) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    openDrawing().elementCount -= std::min(openDrawing().elementCount, pattern->elements.size());
    pattern->elements.clear();
    pattern->elementAttributes.clear();
    pattern->splines.clear();
    return 0;
}

/// A new pattern with the attributes, layer, group and plane of another one.
static Pattern& addLike(const Pattern& original) {
    Pattern& pattern = openDrawing().addPattern(false);
    pattern.visible = original.visible;
    pattern.groupNumber = original.groupNumber;
    pattern.workId = original.workId;
    pattern.view = original.view;
    pattern.ids = original.ids;
    pattern.attributes = original.attributes;
    pattern.relation = original.relation;
    return pattern;
}

int CiPat::SplitByHatchs(int /*mask*/, int /*a*/, int /*b*/) {
    if (callFails()) return errorNoMemory;
    const int last = openDrawing().lastNumber;
    for (Pattern* p = openDrawing().next(0); p && p->number <= last; p = openDrawing().next(p->number)) {
        // A pattern that is nothing but one hatch stays as it is.
        const std::size_t keep = p->size() == p->hatches.size() ? 1 : 0;
        for (std::size_t i = keep; i < p->hatches.size(); ++i)
            addLike(*p).hatches.push_back(std::move(p->hatches[i]));
        if (p->hatches.size() > keep) p->hatches.resize(keep);
    }
    return 0;
}

int CiPat::Trans(const DsCsr& cursor, const Mat44 matrix, int /*elements*/, int /*objects*/) {
    Pattern* pattern = callFails() ? nullptr : patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    Mat44 m;
    Mt44Copy(matrix, m);
    for (double& shift : m[3]) shift *= contextFactor(contextId_);
    m[3][3] = 1;
    transformPattern(openDrawing(), *pattern, m);
    return 0;
}

int CiPat::ChgWork(const DsCsr& cursor, int workId) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternAt(cursor);
    if (!pattern || (workId != 0 && !openDrawing().workPlanes.contains(workId))) return errorNoSuchObject;
    pattern->workId = workId;
    return 0;
}

int CiPat::GetWork(const DsCsr& cursor, int* workId) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    *workId = pattern->workId;
    return 0;
}

int CiPat::AddElemsColLtAttrInfo(const DsCsr& cursor, int /*flags*/, int count, const int* type,
                                 const short* direction, const RPT3* first, const RPT3* second,
                                 const int* pen, const short* lineType, const void* /*color*/,
                                 const void* /*attribute*/, const unsigned char* info) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    if (count < 0) return errorNotApplicable;
    const auto known = [](int t) { return t >= 1 && t <= 3; };
    if (!std::all_of(type, type + count, known)) return errorNotApplicable;
    const double factor = contextFactor(contextId_);
    std::vector<Element>& elements = pattern->elements;
    const std::size_t wanted = elements.size() + static_cast<std::size_t>(count);
    if (wanted > elements.capacity()) elements.reserve(std::max(wanted, 2 * elements.capacity()));
    for (int i = 0; i < count; ++i)
        elements.push_back({second[i].x * factor, second[i].y * factor, first[i].x * factor,
                            first[i].y * factor, pen[i], lineType[i], static_cast<ElementType>(type[i]),
                            static_cast<std::uint8_t>(info[i] & 0x7f),
                            static_cast<std::uint8_t>(direction[i] > 0)});
    openDrawing().elementCount += static_cast<std::size_t>(count);
    return 0;
}

int CiPat::GetParent(const DsCsr& cursor, DsCsr& parent) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern || !openDrawing().find(pattern->relation.parent)) return errorNoSuchObject;
    parent.PutId(objectOf(pattern->relation.parent));
    return 0;
}

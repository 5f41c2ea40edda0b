// The objects beside the elements of a pattern.
#include "ci_objects.h"

#include "drawing/host_state.h"
#include "services/failure.h"

using namespace host;

namespace {

using CountOf = std::size_t (*)(const Pattern&);

const Pattern* patternAt(const DsCsr& cursor) {
    return openDrawing().find(cursor.Get().patNo);
}

int aim(DsCsr& cursor, int row, CountOf countOf) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= countOf(*pattern)) return errorNoSuchObject;
    cursor.Get().partNo = row;
    return 0;
}

int countObjects(const DsCsr& cursor, long* count, CountOf countOf) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = patternAt(cursor);
    if (!pattern) return errorNoSuchObject;
    *count = static_cast<long>(countOf(*pattern));
    return 0;
}

std::size_t hatches(const Pattern& p) {
    return p.hatches.size();
}
std::size_t arrows(const Pattern& p) {
    return p.arrows.size();
}

} // namespace

#define TORVA_OBJECT_WALK(Name, countOf)                                                                     \
    int Name::First(DsCsr& cursor) {                                                                         \
        return aim(cursor, 0, countOf);                                                                      \
    }                                                                                                        \
    int Name::Next(DsCsr& cursor) {                                                                          \
        return aim(cursor, cursor.Get().partNo + 1, countOf);                                                \
    }                                                                                                        \
    int Name::Count(const DsCsr& pattern, long* count) {                                                     \
        return countObjects(pattern, count, countOf);                                                        \
    }

TORVA_OBJECT_WALK(CiHatch, hatches)
TORVA_OBJECT_WALK(CiArrow, arrows)

#include "store/space_rows.h"

#include "store/sqlite.h"

namespace host {

/// Ends of runs, every `step`-th number of a list, ascend from above 0 to `count`.
static bool reaches(const std::vector<std::int32_t>& runs, std::size_t step, std::size_t count) {
    std::int32_t last = 0;
    if (runs.size() % step != 0) return false;
    for (std::size_t i = 0; i < runs.size(); i += step) {
        if (runs[i] <= last) return false;
        last = runs[i];
    }
    return static_cast<std::size_t>(last) == count;
}

static void check(const FaceList& list) {
    const std::size_t points = list.points.size();
    if (list.marks.size() != points || !reaches(list.ends, 1, points) ||
        !reaches(list.edgeLooks, 3, points) || !reaches(list.facePens, 2, list.ends.size()))
        throw StoreError("a list of faces contradicts itself");
}

void checkSpace(const SpaceContent& content) {
    forEachFaceList(content, check);
    for (const Facets& facets : content.facets)
        if (!reaches(facets.normalEnds, 1, facets.list.points.size()) ||
            facets.normals.size() != facets.normalEnds.size())
            throw StoreError("the normals of facets don't fit");
    for (const PointCloud& cloud : content.pointClouds)
        if (cloud.pens.size() != cloud.points.size()) throw StoreError("the pens of a cloud don't fit");
}

} // namespace host

#include "drawing/space_content.h"

namespace host {

std::size_t SpaceContent::spaceSize() const {
    std::size_t size = facets.size() + curves.size() + pointClouds.size() + solids.size();
    for (const FaceList& list : faceLists) size += list.ends.size();
    return size;
}

void SpaceContent::clearSpace() {
    *this = SpaceContent{};
}

} // namespace host

#include "drawing/face_list.h"

#include <algorithm>

namespace host {

void FaceList::addPoint(const RPT3& point, char mark, int pen, int lineType) {
    points.push_back(point);
    if (pen == 0) mark = static_cast<char>(mark | NO_PEN);
    marks.push_back(mark);
    const auto end = static_cast<std::int32_t>(points.size());
    const std::size_t n = edgeLooks.size();
    // A point without a pen goes with its neighbours, whatever theirs is.
    const bool goesOn = n != 0 && (pen == 0 || edgeLooks[n - 2] == pen) && edgeLooks[n - 1] == lineType;
    if (goesOn)
        edgeLooks[n - 3] = end;
    else
        edgeLooks.insert(edgeLooks.end(), {end, pen, lineType});
}

void FaceList::endFace(int pen) {
    ends.push_back(static_cast<std::int32_t>(points.size()));
    const auto end = static_cast<std::int32_t>(ends.size());
    if (!facePens.empty() && facePens.back() == pen)
        facePens[facePens.size() - 2] = end;
    else
        facePens.insert(facePens.end(), {end, pen});
}

bool FaceView::isArea() const {
    return pen != 0 && count > 3 &&
           std::all_of(marks + 1, marks + count, [](char mark) { return mark & EDGE; });
}

EdgeLook EdgeLooks::at(int point) {
    while (list_.edgeLooks[run_] <= point) run_ += 3;
    const bool hasPen = !(list_.marks[static_cast<std::size_t>(point)] & NO_PEN);
    return {hasPen ? list_.edgeLooks[run_ + 1] : 0, list_.edgeLooks[run_ + 2]};
}

FaceCounts countFaces(const FaceList& list) {
    FaceCounts counts;
    forEachFace(list, [&](const FaceView& face) { ++(face.isArea() ? counts.faces : counts.runs); });
    return counts;
}

} // namespace host

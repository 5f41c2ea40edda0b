// Lists of faces, facets, curves, clouds of points. All points are in the drawing's unit.
#pragma once

#include "rpt.h"

#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// What a mark says of the point that it belongs to.
enum EdgeMark : char {
    EDGE = 1,   ///< an edge runs to this point
    HIDDEN = 2, ///< it isn't shown
    NO_PEN = 4, ///< it has pen 0
};

/// Faces that were given together. A face repeats its first point at the end.
struct FaceList {
    std::vector<RPT3> points;            ///< of all faces in turn
    std::vector<std::int32_t> ends;      ///< of a face: number of points up to its end
    std::string marks;                   ///< EdgeMark of each point
    std::vector<std::int32_t> edgeLooks; ///< runs of (end, pen, line type) over the points
    std::vector<std::int32_t> facePens;  ///< runs of (end, pen) over the faces

    void addPoint(const RPT3& point, char mark, int pen, int lineType);
    void endFace(int pen);
};

/// One face of a list.
struct FaceView {
    const RPT3* points;
    const char* marks;
    int count; ///< of points, with the one that repeats the first
    int first; ///< place of its first point in the list
    int pen;
    /// Whether it encloses an area: it has a pen, and edges run to all of its points. Else it is a run of
    /// edges.
    bool isArea() const;
};

/// Calls `visit(FaceView)` for each face.
template <class Visit>
void forEachFace(const FaceList& list, Visit visit) {
    int first = 0;
    std::size_t run = 0;
    for (std::size_t face = 0; face < list.ends.size(); ++face) {
        if (static_cast<std::size_t>(list.facePens[run]) <= face) run += 2;
        visit(FaceView{&list.points[static_cast<std::size_t>(first)],
                       &list.marks[static_cast<std::size_t>(first)], list.ends[face] - first, first,
                       list.facePens[run + 1]});
        first = list.ends[face];
    }
}

/// Pen and line type of a point.
struct EdgeLook {
    int pen, lineType;
};
/// Reads the looks of a list's points, which must be asked for in ascending order.
class EdgeLooks {
public:
    explicit EdgeLooks(const FaceList& list) : list_(list) {}
    EdgeLook at(int point);

private:
    const FaceList& list_;
    std::size_t run_ = 0;
};

/// Faces as one object, each point with a normal.
struct Facets {
    FaceList list;
    std::vector<RPT3> normals;            ///< each for the points of a run
    std::vector<std::int32_t> normalEnds; ///< of a run: number of points up to its end
    int pen = 1;
    std::int64_t material = 0; ///< in the host's material base, 0: none
};

/// A curve in space through its points.
struct Curve {
    std::vector<RPT3> points;
    int pen = 1;
};

struct PointCloud {
    std::vector<RPT3> points;
    std::vector<std::int32_t> pens; ///< of the points
};

/// Numbers of faces and of runs of edges in a list.
struct FaceCounts {
    long faces = 0, runs = 0;
};
FaceCounts countFaces(const FaceList& list);

} // namespace host

// What stands in space in a pattern.
#pragma once

#include "drawing/face_list.h"
#include "drawing/solid.h"

#include <vector>

namespace host {

/// What stands in space in a pattern.
struct SpaceContent {
    std::vector<FaceList> faceLists;
    bool facesJoined = false; ///< the faces are one surface set
    std::vector<Facets> facets;
    std::vector<Curve> curves;
    std::vector<PointCloud> pointClouds;
    std::vector<Solid> solids;

    bool hasFaces() const { return !faceLists.empty() || !facets.empty(); }
    std::size_t spaceSize() const; ///< faces, runs of edges, objects
    void clearSpace();
};

/// Calls `visit` for each list of faces, those of facets too.
template <class Visit>
void forEachFaceList(const SpaceContent& content, Visit visit) {
    for (const FaceList& list : content.faceLists) visit(list);
    for (const Facets& facets : content.facets) visit(facets.list);
}
/// Calls `visit` for each list of faces or edges that is to be seen, those of solids too.
template <class Visit>
void forEachShownList(const SpaceContent& content, Visit visit) {
    forEachFaceList(content, visit);
    for (const Solid& solid : content.solids) visit(solid.wires);
}
/// Calls `visit` for each vector of points.
template <class Content, class Visit>
void forEachPoints(Content& content, Visit visit) {
    for (auto& list : content.faceLists) visit(list.points);
    for (auto& facets : content.facets) visit(facets.list.points);
    for (auto& curve : content.curves) visit(curve.points);
    for (auto& cloud : content.pointClouds) visit(cloud.points);
    for (auto& solid : content.solids) visit(solid.wires.points);
}
/// Calls `visit(pen)` for the pens of faces, edges, curves and points, some of them more than once.
template <class Visit>
void forEachPenInSpace(const SpaceContent& content, Visit visit) {
    forEachShownList(content, [&](const FaceList& list) {
        for (std::size_t i = 1; i < list.facePens.size(); i += 2) visit(list.facePens[i]);
        for (std::size_t i = 1; i < list.edgeLooks.size(); i += 3) visit(list.edgeLooks[i]);
    });
    for (const Curve& curve : content.curves) visit(curve.pen);
    for (const PointCloud& cloud : content.pointClouds)
        for (const std::int32_t pen : cloud.pens) visit(pen);
}

} // namespace host

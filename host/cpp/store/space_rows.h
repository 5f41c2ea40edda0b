// Tables of what stands in space: face lists, facets, curves, clouds of points.
#pragma once

#include "drawing/face_list.h"

#include <array>

namespace host {

template <class Record>
struct Row;

template <class V, class R>
void faceListColumns(V& v, R& r) {
    v("points", r.points), v("ends", r.ends);
    v.bytes("marks", r.marks);
    v("edge_looks", r.edgeLooks), v("face_pens", r.facePens);
}

template <>
struct Row<FaceList> {
    static constexpr int since = 4;
    static constexpr const char* table = "face_lists";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        faceListColumns(v, r);
    }
};

template <>
struct Row<Facets> {
    static constexpr int since = 4;
    static constexpr const char* table = "facets";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        faceListColumns(v, r.list);
        v("normals", r.normals), v("normal_ends", r.normalEnds), v("pen", r.pen), v("material", r.material);
    }
};

template <>
struct Row<Curve> {
    static constexpr int since = 2;
    static constexpr const char* table = "curves";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("pen", r.pen), v("points", r.points);
    }
};

template <>
struct Row<PointCloud> {
    static constexpr int since = 4;
    static constexpr const char* table = "clouds";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("points", r.points), v("pens", r.pens);
    }
};

/// Throws StoreError where the lists of a pattern's content contradict each other.
void checkSpace(const SpaceContent& content);

} // namespace host

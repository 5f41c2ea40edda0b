// Faces of the host's drawing, made by hand.
#pragma once

#include "drawing/face_list.h"

/// Adds a face over the corners, all edges shown.
inline void addFace(host::FaceList& list, const std::vector<RPT3>& corners, int pen = 1) {
    for (std::size_t i = 0; i <= corners.size(); ++i)
        list.addPoint(corners[i % corners.size()], i == 0 ? 0 : host::EDGE, pen, 1);
    list.endFace(pen);
}
inline host::FaceList faceList(const std::vector<RPT3>& corners, int pen = 1) {
    host::FaceList list;
    addFace(list, corners, pen);
    return list;
}

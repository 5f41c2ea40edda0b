// What stands in space.
#include "render/painter.h"

namespace host {

void Painter::addEdge(int pen, int lineType, const RPT3& from, const RPT3& to) {
    usePen(pen, lineType);
    path_.moveTo(frame_.map(from.x, from.y, from.z));
    path_.lineTo(frame_.map(to.x, to.y, to.z));
}

void Painter::drawFaces(const Pattern& pattern) {
    forEachFaceList(pattern, [&](const FaceList& list) {
        EdgeLooks looks(list);
        forEachFace(list, [&](const FaceView& face) {
            for (int i = 1; i < face.count; ++i) {
                const EdgeLook look = looks.at(face.first + i);
                const bool isShown = (face.marks[i] & EDGE) && !(face.marks[i] & HIDDEN);
                if (isShown) addEdge(look.pen, look.lineType, face.points[i - 1], face.points[i]);
            }
        });
    });
    strokePending();
}

void Painter::drawCurves(const Pattern& pattern) {
    for (const Curve& curve : pattern.curves)
        for (std::size_t i = 1; i < curve.points.size(); ++i)
            addEdge(curve.pen, 1, curve.points[i - 1], curve.points[i]);
    strokePending();
}

void Painter::drawLines(const std::vector<SeenLine>& lines) {
    for (const SeenLine& line : lines) {
        usePen(line.pen, line.lineType);
        path_.moveTo(frame_.map(line.a.x, line.a.y));
        path_.lineTo(frame_.map(line.b.x, line.b.y));
    }
    strokePending();
}

void Painter::drawPoints(const Pattern& pattern) {
    for (const PointCloud& cloud : pattern.pointClouds) {
        for (std::size_t i = 0; i < cloud.points.size(); ++i) {
            usePen(cloud.pens[i], 1);
            const RPT3& p = cloud.points[i];
            dot(frame_.map(p.x, p.y, p.z));
        }
    }
    strokePending();
}

} // namespace host

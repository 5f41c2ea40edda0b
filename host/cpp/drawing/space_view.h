// What stands in space, as seen from a direction by a viewer who is far away.
#pragma once

#include "drawing/face_list.h"
#include "geometry/hidden_lines.h"

#include <vector>

namespace host {

/// Axes of a parallel projection.
struct ViewAxes {
    RPT3 right{1, 0, 0}, up{0, 1, 0}, toward{0, 0, 1};
    /// View coordinates: x to the right, y up, z toward the viewer.
    RPT3 map(const RPT3& p) const;
};
/// The axes for a viewer who stands in `direction` of the drawing. Upright is z, from above and below y. No
/// direction is from above.
ViewAxes viewFrom(const RPT3& direction);

/// A line in view coordinates.
struct SeenLine {
    RPT3 a, b;
    int pen, lineType;
};
/// A triangle of a face in view coordinates.
struct SeenTriangle {
    SightTriangle triangle;
    int pen;
};

/// Collects faces and lines, and says what can be seen of them.
class SpaceView {
public:
    explicit SpaceView(const ViewAxes& axes) : axes_(axes) {}
    void add(const SpaceContent& content);
    void addLine(const RPT3& a, const RPT3& b, int pen, int lineType); ///< in the drawing's frame
    /// All edges that are to be shown: each once, and those that the outline of a round surface runs along.
    std::vector<SeenLine> lines() const;
    /// What of these lines is in front of all faces, and the lines along which faces run through each other.
    std::vector<SeenLine> visibleLines() const;
    const std::vector<SeenTriangle>& triangles() const { return triangles_; }

private:
    /// An edge of a face, from the lower to the higher of its ends, or a line by itself.
    struct Edge {
        RPT3 a, b;
        int pen, lineType;
        bool isHidden;
        int side; ///< of it on which the face lies, as seen: -1, 1; 0 for lines and faces seen edge-on
    };
    void addFace(const FaceView& face, EdgeLook* looks);
    void addList(const FaceList& list);

    ViewAxes axes_;
    std::vector<Edge> edges_;
    std::vector<SeenTriangle> triangles_;
    std::vector<RPT3> corners_; ///< of the face being added
};

} // namespace host

// Hidden lines: which stretches of a line are not behind a triangle. Everything is in view coordinates, x to
// the right, y up, z toward the viewer, who is far away.
#pragma once

#include "rpt.h"

#include <utility>
#include <vector>

namespace host {

struct SightTriangle {
    RPT3 a, b, c;
};

/// A stretch of a line from its start, 0, to its end, 1.
using Stretch = std::pair<double, double>;

/// Triangles that lines are looked up behind. Looking up costs the logarithm of their number and what lies
/// along the line.
class Sight {
public:
    explicit Sight(std::vector<SightTriangle> triangles);

    /// The stretches of the line from `a` to `b` that can be seen, in order. A line in the plane of a
    /// triangle can be seen.
    std::vector<Stretch> visible(const RPT3& a, const RPT3& b) const;

    /// Where two triangles run through each other.
    struct Crossing {
        RPT3 a, b;
        int triangle; ///< one of the two, by its place in the list that was given
    };
    std::vector<Crossing> crossings() const;

    double size() const { return size_; } ///< of all of it, the measure of tolerances

private:
    struct Box {
        double low[3], high[3];
        void add(const Box& other);
        bool meets(const Box& other) const;
    };
    struct Plate {
        SightTriangle t; ///< counter-clockwise, as seen
        RPT3 normal;     ///< of length 1, toward the viewer
        int given;       ///< place in the list
        bool isEdgeOn;   ///< covers nothing
    };
    struct Node {
        Box box;
        int first, count; ///< of plates; count 0: the node's halves stand at first and first + 1
    };

    static Box boxOf(const Plate& plate);
    void build(int node, int first, int end);
    void hide(const Plate& plate, const RPT3& a, const RPT3& b, class StretchSet& hidden) const;
    bool crosses(const Plate& p, const Plate& q, RPT3& from, RPT3& to) const;

    std::vector<Plate> plates_;
    std::vector<Node> nodes_;
    double size_ = 0;
};

} // namespace host

// The trapezoids of a polygon: its segments go in one by one, in random order, and cut the plane at the
// height of their ends.
//
// Points are ordered by y, then by x, so that no two are of one height. A trapezoid lies between two segments
// and between the heights of two points. Of its neighbours above, one lies left of the upper point and one
// right of it, or the same on both sides; likewise below.
//
//            up[0]   |  up[1]
//       -------------*------------   high
//        \                      /
//         \ left         right /
//       ----------*-------------     low
//         down[0] | down[1]
#pragma once

#include "rpt.h"

#include <array>
#include <vector>

struct DX_SEGMENT {
    int start, end; ///< in the direction of the contour
    int low, high;  ///< the same by order
    int root;       ///< query node from which its lower end is found
    bool isIn;
};

struct DX_TRAPEZOID {
    int left, right;             ///< segments, -1: none
    int low, high;               ///< points, -1: none
    std::array<int, 2> up, down; ///< -1: none
    int sink;                    ///< its query node
    bool isValid;
};

class DxTrapezoids {
public:
    /// Points by index from 1. They outlive this.
    explicit DxTrapezoids(const RPT* points) : points_(points) {}

    void addSegment(int start, int end);
    /// Puts all segments in. False, after a message on the standard error stream, for input that can't be
    /// placed: segments that cross.
    bool build(unsigned seed);

    const std::vector<DX_TRAPEZOID>& all() const { return traps_; }
    const DX_SEGMENT& segment(int i) const { return segments_[static_cast<std::size_t>(i)]; }
    /// Between the segments of a contour: outer ones run counter-clockwise, holes clockwise.
    bool isInside(const DX_TRAPEZOID& t) const;
    bool isBelow(int a, int b) const; ///< By y, then x, then index.

private:
    enum class NodeKind : char { Sink, Point, Segment };
    struct Node {
        NodeKind kind;
        int what;       ///< trapezoid, point or segment
        int less, more; ///< below and above, left and right
    };
    struct Thread;

    void reset();
    bool insert(int segment);
    bool thread(int segment, int first);
    int addTrap(const DX_TRAPEZOID& t);
    int addSink(int trap);
    /// The trapezoid that holds the segment's lower end, or just above it where the point is in already.
    int locate(const DX_SEGMENT& s, int from) const;
    int locatePoint(int point) const;
    int splitAtPoint(int trap, int point);
    void renameBelow(int above, int from, int to);
    void enterFirst(Thread& t, int trap);
    void passPoint(Thread& t, int below, int trap);
    void leaveLast(Thread& t, int trap);
    void settle(const Thread& t, int trap);
    double sideOf(int point, int segment) const; ///< Positive to the left.
    void traceRoots();

    const RPT* points_;
    std::vector<DX_SEGMENT> segments_;
    std::vector<DX_TRAPEZOID> traps_;
    std::vector<int> free_;
    std::vector<Node> nodes_;
    std::vector<char> isPointIn_;
    std::size_t nodeLimit_ = 0, trapLimit_ = 0;
    bool overflowed_ = false;
};

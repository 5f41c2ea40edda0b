#include "dx_trapezoids.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

void DxTrapezoids::addSegment(int start, int end) {
    DX_SEGMENT s{start, end, start, end, 0, false};
    if (isBelow(end, start)) std::swap(s.low, s.high);
    segments_.push_back(s);
}

bool DxTrapezoids::isBelow(int a, int b) const {
    const RPT& p = points_[a];
    const RPT& q = points_[b];
    if (p.y != q.y) return p.y < q.y;
    return p.x != q.x ? p.x < q.x : a < b;
}

bool DxTrapezoids::isInside(const DX_TRAPEZOID& t) const {
    return t.isValid && t.left >= 0 && t.right >= 0 && segment(t.left).start == segment(t.left).high;
}

double DxTrapezoids::sideOf(int point, int segment) const {
    const DX_SEGMENT& s = segments_[static_cast<std::size_t>(segment)];
    const RPT& a = points_[s.low];
    const RPT& b = points_[s.high];
    const RPT& p = points_[point];
    const long double ux = static_cast<long double>(b.x) - a.x, uy = static_cast<long double>(b.y) - a.y;
    const long double vx = static_cast<long double>(p.x) - a.x, vy = static_cast<long double>(p.y) - a.y;
    return static_cast<double>(ux * vy - uy * vx);
}

// ---- tables ------------------------------------------------------------------------------------------

void DxTrapezoids::reset() {
    const std::size_t s = segments_.size() + 1;
    int highest = 0;
    for (const DX_SEGMENT& seg : segments_) highest = std::max({highest, seg.start, seg.end});
    trapLimit_ = 5 * s + 8;
    nodeLimit_ = 60 * s + 64;
    traps_.clear();
    free_.clear();
    nodes_.clear();
    traps_.reserve(trapLimit_);
    nodes_.reserve(10 * s);
    isPointIn_.assign(static_cast<std::size_t>(highest) + 1, 0);
    overflowed_ = false;
    addTrap({-1, -1, -1, -1, {-1, -1}, {-1, -1}, 0, true});
    for (DX_SEGMENT& seg : segments_) seg.root = 0, seg.isIn = false;
}

int DxTrapezoids::addSink(int trap) {
    if (nodes_.size() >= nodeLimit_ && !overflowed_) {
        overflowed_ = true;
        std::fputs("newnode: Query-table overflow\n", stderr);
    }
    nodes_.push_back({NodeKind::Sink, trap, -1, -1});
    return static_cast<int>(nodes_.size()) - 1;
}

int DxTrapezoids::addTrap(const DX_TRAPEZOID& t) {
    int index = 0;
    if (free_.empty()) {
        if (traps_.size() >= trapLimit_ && !overflowed_) {
            overflowed_ = true;
            std::fputs("newtrap: Trapezoid-table overflow\n", stderr);
        }
        index = static_cast<int>(traps_.size());
        traps_.push_back(t);
    } else {
        index = free_.back();
        free_.pop_back();
        traps_[static_cast<std::size_t>(index)] = t;
    }
    traps_[static_cast<std::size_t>(index)].isValid = true;
    traps_[static_cast<std::size_t>(index)].sink = addSink(index);
    return index;
}

// ---- location ----------------------------------------------------------------------------------------

int DxTrapezoids::locate(const DX_SEGMENT& s, int from) const {
    int at = from;
    for (;;) {
        const Node& node = nodes_[static_cast<std::size_t>(at)];
        if (node.kind == NodeKind::Sink) return node.what;
        if (node.kind == NodeKind::Point) {
            at = s.low == node.what || isBelow(node.what, s.low) ? node.more : node.less;
            continue;
        }
        // From a common end the way goes to where the segment leads.
        const bool common = segment(node.what).low == s.low;
        const double side = sideOf(common ? s.high : s.low, node.what);
        at = side > 0 || (side == 0 && sideOf(s.high, node.what) > 0) ? node.less : node.more;
    }
}

int DxTrapezoids::locatePoint(int point) const {
    const DX_SEGMENT probe{point, point, point, point, 0, false};
    return locate(probe, 0);
}

/// After a phase the segments to come start from where they are now.
void DxTrapezoids::traceRoots() {
    for (DX_SEGMENT& s : segments_)
        if (!s.isIn) s.root = traps_[static_cast<std::size_t>(locate(s, s.root))].sink;
}

// ---- points ------------------------------------------------------------------------------------------

void DxTrapezoids::renameBelow(int above, int from, int to) {
    if (above < 0) return;
    for (int& below : traps_[static_cast<std::size_t>(above)].down)
        if (below == from) below = to;
}

/// Cuts a trapezoid at the height of a point within it. The lower part keeps its number; gives the upper one.
int DxTrapezoids::splitAtPoint(int trap, int point) {
    DX_TRAPEZOID upper = traps_[static_cast<std::size_t>(trap)];
    const int node = upper.sink;
    upper.low = point;
    upper.down = {trap, trap};
    const int index = addTrap(upper);
    for (const int above : upper.up) renameBelow(above, trap, index);
    DX_TRAPEZOID& lower = traps_[static_cast<std::size_t>(trap)];
    lower.high = point;
    lower.up = {index, index};
    lower.sink = addSink(trap);
    nodes_[static_cast<std::size_t>(node)] = {NodeKind::Point, point, lower.sink,
                                              traps_[static_cast<std::size_t>(index)].sink};
    isPointIn_[static_cast<std::size_t>(point)] = 1;
    return index;
}

// ---- segments ----------------------------------------------------------------------------------------

/// What a segment has left and right of it on its way up.
struct DxTrapezoids::Thread {
    int segment;
    int left = -1, right = -1; ///< the open trapezoids on both sides
    DX_TRAPEZOID below{};      ///< the last one that was cut, as it was
};

void DxTrapezoids::enterFirst(Thread& t, int trap) {
    const DX_TRAPEZOID whole = traps_[static_cast<std::size_t>(trap)];
    DX_TRAPEZOID left = whole, right = whole;
    left.right = right.left = t.segment;
    left.down[1] = right.down[0] = -1;
    t.left = addTrap(left);
    t.right = addTrap(right);
    if (whole.down[0] >= 0) traps_[static_cast<std::size_t>(whole.down[0])].up[0] = t.left;
    if (whole.down[1] >= 0) traps_[static_cast<std::size_t>(whole.down[1])].up[1] = t.right;
}

/// The segment passes the point between the trapezoid cut last and `trap`: on the point's side the open
/// trapezoid ends and a new one begins.
void DxTrapezoids::passPoint(Thread& t, int below, int trap) {
    const DX_TRAPEZOID whole = traps_[static_cast<std::size_t>(trap)];
    const int point = t.below.high;
    const bool pointIsLeft = sideOf(point, t.segment) > 0;
    const std::size_t far = pointIsLeft ? 0 : 1, near = 1 - far; // seen from the point, the segment is near
    int& open = pointIsLeft ? t.left : t.right;
    DX_TRAPEZOID next = whole;
    (pointIsLeft ? next.right : next.left) = t.segment;
    next.down[near] = open;
    const int index = addTrap(next);
    DX_TRAPEZOID& ended = traps_[static_cast<std::size_t>(open)];
    ended.high = point;
    ended.up[near] = index;
    ended.up[far] = t.below.up[far];
    renameBelow(t.below.up[far], below, open);
    if (whole.down[far] >= 0 && whole.down[far] != below)
        for (int& up : traps_[static_cast<std::size_t>(whole.down[far])].up)
            if (up == trap) up = index;
    open = index;
}

void DxTrapezoids::leaveLast(Thread& t, int trap) {
    const DX_TRAPEZOID whole = traps_[static_cast<std::size_t>(trap)];
    DX_TRAPEZOID& left = traps_[static_cast<std::size_t>(t.left)];
    DX_TRAPEZOID& right = traps_[static_cast<std::size_t>(t.right)];
    left.high = right.high = whole.high;
    left.up = {whole.up[0], -1};
    right.up = {-1, whole.up[1]};
    if (whole.up[0] >= 0) traps_[static_cast<std::size_t>(whole.up[0])].down[0] = t.left;
    if (whole.up[1] >= 0) traps_[static_cast<std::size_t>(whole.up[1])].down[1] = t.right;
}

/// The trapezoid that was cut is none any more; its place in the query asks for the segment's side.
void DxTrapezoids::settle(const Thread& t, int trap) {
    DX_TRAPEZOID& cut = traps_[static_cast<std::size_t>(trap)];
    nodes_[static_cast<std::size_t>(cut.sink)] = {NodeKind::Segment, t.segment,
                                                  traps_[static_cast<std::size_t>(t.left)].sink,
                                                  traps_[static_cast<std::size_t>(t.right)].sink};
    cut.isValid = false;
}

bool DxTrapezoids::thread(int segment, int first) {
    const DX_SEGMENT& s = segments_[static_cast<std::size_t>(segment)];
    Thread t{segment};
    std::vector<int> cut;
    int trap = first, below = -1;
    for (;;) {
        if (trap < 0 || cut.size() > traps_.size() || overflowed_) return false;
        if (below < 0)
            enterFirst(t, trap);
        else
            passPoint(t, below, trap);
        const DX_TRAPEZOID whole = traps_[static_cast<std::size_t>(trap)];
        settle(t, trap);
        cut.push_back(trap);
        if (whole.high == s.high) {
            traps_[static_cast<std::size_t>(trap)].isValid = true; // for its neighbours above
            leaveLast(t, trap);
            traps_[static_cast<std::size_t>(trap)].isValid = false;
            break;
        }
        if (whole.high < 0 || !isBelow(whole.high, s.high)) return false;
        t.below = whole;
        below = trap;
        trap = whole.up[sideOf(whole.high, segment) > 0 ? 1 : 0];
    }
    free_.insert(free_.end(), cut.begin(), cut.end());
    return true;
}

bool DxTrapezoids::insert(int segment) {
    DX_SEGMENT& s = segments_[static_cast<std::size_t>(segment)];
    int first = locate(s, s.root);
    if (!isPointIn_[static_cast<std::size_t>(s.low)]) first = splitAtPoint(first, s.low);
    if (!isPointIn_[static_cast<std::size_t>(s.high)]) splitAtPoint(locatePoint(s.high), s.high);
    s.isIn = true;
    if (thread(segment, first)) return true;
    std::fputs("add_segment: error\n", stderr);
    return false;
}

bool DxTrapezoids::build(unsigned seed) {
    reset();
    const std::size_t n = segments_.size();
    std::vector<int> order(n);
    for (std::size_t i = 0; i < n; ++i) order[i] = static_cast<int>(i);
    std::minstd_rand random(seed);
    for (std::size_t i = 0; i + 1 < n; ++i) std::swap(order[i], order[i + random() % (n - i)]);

    // Phase i ends at n / log(log(… n)), taken i times.
    double iterated = static_cast<double>(n);
    std::size_t done = 0;
    while (done < n) {
        iterated = iterated > 2 ? std::log2(iterated) : 0;
        const bool isLast = !(iterated > 1);
        const auto end = isLast ? n : static_cast<std::size_t>(std::ceil(static_cast<double>(n) / iterated));
        for (; done < std::min(end, n); ++done)
            if (!insert(order[done])) return false;
        if (!isLast) traceRoots();
    }
    return !overflowed_;
}

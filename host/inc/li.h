// Contour lists: chains of lines and arcs in the plane, such as the outline of a hatch or the centre line of
// a wide polyline.
#pragma once

#include "rpt.h"

#include <cstdint>
#include <deque>

/// One contour element as the host's contour services give it. The end of an element is the start of the
/// next one of its contour.
struct UO_ELEM {
    std::int32_t type = 1; ///< 1 line, 2 move, 3 clockwise arc, 4 counter-clockwise arc
    RPT start{0, 0};
    RPT end{0, 0};
    RPT centre{0, 0};
    // Of the host: the module passes these along.
    std::int32_t patNo = 0;
    std::int32_t row = 0;
    std::int32_t pen = 1;
    std::int32_t lineType = 1;
    std::uint8_t info = 0;
    std::int32_t piece = 0; ///< which piece of a row that is given in several, from 0
};

/// An element of a list, with what LiElemExpand derives from its points.
struct LI_ELEM : UO_ELEM {
    double radius = 0;     ///< arcs
    double startAngle = 0; ///< arcs: radians at the centre
    double sweep = 0;      ///< arcs: turning angle, positive counter-clockwise; 2 pi for equal ends
    double length = 0;
    int contour = 0;     ///< LiSortKont: number of its contour, from 0
    bool turned = false; ///< LiSortKont: start and end have changed places
    int source = 0;      ///< LiChain: its place in the order of chaining, from 0; the caller may set another
    LI_ELEM* next = nullptr;

    bool isArc() const { return type == 3 || type == 4; }
};

/// A chained list that owns its elements. They keep their addresses until LiRemove or the list's end.
class LiList {
public:
    LiList() = default;
    LiList(LiList&&) noexcept;
    LiList& operator=(LiList&&) noexcept;
    LiList(const LiList&) = delete;
    LiList& operator=(const LiList&) = delete;
    ~LiList() = default;

    LI_ELEM* first = nullptr;
    LI_ELEM* last = nullptr;
    int count = 0;               ///< elements that are chained
    std::deque<LI_ELEM> storage; ///< all elements, chained or not
};

/// A new element of the list, not chained yet. Null when there is no memory.
LI_ELEM* LiNew(LiList& list);
/// Puts the element behind the last one.
void LiChain(LiList& list, LI_ELEM* elem);
/// The element behind `elem`, the first one for a null `elem`; null behind the last.
LI_ELEM* LiSucc(const LiList& list, const LI_ELEM* elem);
/// Frees all elements; the list is empty then.
void LiRemove(LiList& list);

/// Derives radius, angles and length. An arc whose ends agree within GeEpsiGetTol is a whole circle.
void LiElemExpand(LI_ELEM* elem);
/// Moves an arc's centre so that both ends have the same distance from it: to the nearest point of the
/// chord's bisector. Lines and whole circles stay as they are.
void LiRadKorr(LI_ELEM* elem);

/// Chains loose elements into contours and numbers these. An element joins the contour whose end it meets
/// within the tolerance (0: GeEpsiGetTol), turned where needed; gaps up to the tolerance close by moving the
/// start of the later element. What stands in order already stays in order. `mode` is 0.
/// 1001 when there is no memory, with the chain as it was.
int LiSortKont(LiList& list, int mode, double tolerance = 0);
/// Takes out elements shorter than the tolerance; their neighbours meet instead. The ends of an open contour
/// stay where they are. A contour that is altogether shorter vanishes.
void LiRemShort(LiList& list, double tolerance);

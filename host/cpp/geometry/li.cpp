#include "li.h"

#include "ge.h"
#include "geometry/li_piece.h"

#include <new>
#include <utility>

using namespace host;

// ---- the list --------------------------------------------------------------------------------------

LiList::LiList(LiList&& other) noexcept {
    *this = std::move(other);
}

LiList& LiList::operator=(LiList&& other) noexcept {
    if (this == &other) return *this;
    storage.swap(other.storage);
    first = std::exchange(other.first, nullptr);
    last = std::exchange(other.last, nullptr);
    count = std::exchange(other.count, 0);
    other.storage.clear();
    return *this;
}

LI_ELEM* LiNew(LiList& list) try { return &list.storage.emplace_back(); } catch (const std::bad_alloc&) {
    return nullptr;
}

void LiChain(LiList& list, LI_ELEM* elem) {
    elem->next = nullptr;
    elem->source = list.count++;
    (list.last ? list.last->next : list.first) = elem;
    list.last = elem;
}

LI_ELEM* LiSucc(const LiList& list, const LI_ELEM* elem) {
    return elem ? elem->next : list.first;
}

void LiRemove(LiList& list) {
    list = LiList();
}

// ---- elements --------------------------------------------------------------------------------------

namespace host {

Piece pieceOf(const LI_ELEM& elem) {
    if (!elem.isArc()) return makeLine(elem.start, elem.end);
    Piece p = makeArc(elem.start, elem.end, elem.centre, elem.type == 4 ? 1 : -1);
    if (distance(p.start, p.end) <= GeEpsiGetTol()) p.end = p.start;
    return p;
}

void setPiece(LI_ELEM* elem, const Piece& piece) {
    elem->type = piece.isArc() ? (piece.sense > 0 ? 4 : 3) : 1;
    elem->start = piece.start;
    elem->end = piece.end;
    elem->centre = piece.centre;
    LiElemExpand(elem);
}

} // namespace host

void LiElemExpand(LI_ELEM* elem) {
    const Piece piece = pieceOf(*elem);
    elem->radius = piece.radius;
    elem->startAngle = piece.isArc() ? angleOf(piece.start - piece.centre) : 0.0;
    elem->sweep = piece.sweep();
    elem->length = piece.length();
}

void LiRadKorr(LI_ELEM* elem) {
    const RPT chord = elem->end - elem->start;
    const double size = length(chord);
    if (!elem->isArc() || size <= GeEpsiGetTol()) return;
    const RPT middle = 0.5 * (elem->start + elem->end);
    const RPT along = unit(chord);
    elem->centre = elem->centre - dot(elem->centre - middle, along) * along;
}

// ---- short elements --------------------------------------------------------------------------------

namespace {

// Rebuilds a list contour by contour with only the elements that are long enough.
class ShortRemover {
public:
    ShortRemover(LiList& list, double tolerance) : list_(list), tolerance_(tolerance) {}
    void run();

private:
    LI_ELEM* contour(LI_ELEM* first);
    bool keep(LI_ELEM* elem, const RPT& from) const;
    void append(LI_ELEM* elem);

    LiList& list_;
    double tolerance_;
    LI_ELEM* kept_ = nullptr; ///< last element of the rebuilt chain
    int count_ = 0;
};

// An element runs from where the last kept one ends, so that a row of short ones adds up.
bool ShortRemover::keep(LI_ELEM* elem, const RPT& from) const {
    if (distance(elem->start, from) > 0.0) {
        elem->start = from;
        LiRadKorr(elem);
        LiElemExpand(elem);
    }
    return elem->length >= tolerance_;
}

void ShortRemover::append(LI_ELEM* elem) {
    (kept_ ? kept_->next : list_.first) = elem;
    kept_ = elem;
    ++count_;
}

LI_ELEM* ShortRemover::contour(LI_ELEM* first) {
    const int number = first->contour;
    const int before = count_;
    RPT from = first->start;
    RPT end = first->end;
    LI_ELEM* elem = first;
    for (LI_ELEM* next = nullptr; elem && elem->contour == number; elem = next) {
        next = elem->next;
        const bool chained = elem == first || distance(elem->start, end) <= tolerance_;
        end = elem->end;
        if (!keep(elem, chained ? from : elem->start)) continue;
        append(elem);
        from = elem->end;
    }
    if (count_ > before && distance(kept_->end, end) > 0.0) {
        kept_->end = end;
        LiRadKorr(kept_);
        LiElemExpand(kept_);
    }
    return elem;
}

void ShortRemover::run() {
    LI_ELEM* elem = list_.first;
    list_.first = nullptr;
    while (elem) elem = contour(elem);
    if (kept_) kept_->next = nullptr;
    list_.last = kept_;
    list_.count = count_;
}

} // namespace

void LiRemShort(LiList& list, double tolerance) {
    if (tolerance > 0.0) ShortRemover(list, tolerance).run();
}

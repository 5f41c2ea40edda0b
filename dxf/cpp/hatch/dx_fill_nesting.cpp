// Nesting of a hatch's contours.
#include "../host/dx_host.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_codes.h"
#include "dx_fill_contours.h"
#include "hatch.h"
#include "ov.h"
#include "ut.h"

#include <algorithm>

namespace {

/// A contour pattern during the nesting.
struct Contour {
    int pat;
    int depth = 1; ///< 1 outermost; 0: dropped
    bool isExcluded = false;
    RPT min{0, 0}, max{0, 0};
    std::vector<std::size_t> inside; ///< contours that lie in this one
};

enum class Relation { Apart, Crossing, Inside, Failed };

bool isWithin(const Contour& a, const Contour& b, double t) {
    return a.min.x >= b.min.x - t && a.min.y >= b.min.y - t && a.max.x <= b.max.x + t &&
           a.max.y <= b.max.y + t;
}
bool overlaps(const Contour& a, const Contour& b, double t) {
    return a.min.x <= b.max.x + t && b.min.x <= a.max.x + t && a.min.y <= b.max.y + t &&
           b.min.y <= a.max.y + t;
}

/// A contour counts if it has an arc or at least three Draws.
bool enclosesSomething(int pat) {
    UO_ELEM e{};
    e.patNo = pat;
    int draws = 0;
    bool hasArc = false;
    for (int end = Dxovelem(DX_ELEM_FIRST, &e); !end; end = Dxovelem(DX_ELEM_NEXT, &e)) {
        draws += e.type == 1;
        hasArc = hasArc || e.type == 3 || e.type == 4;
    }
    return hasArc || draws >= 3;
}

/// The mark stands in an attribute of the second element.
bool isMarkedExcluded(int pat) {
    DsCsr cursor;
    CiElem elements(DxCiContextId);
    int type = 0;
    UtCString value;
    if (DsCursorFromPatNo(pat, &cursor) != 0 || elements.First(cursor, &type) != 0 ||
        elements.Next(cursor, &type) != 0)
        return false;
    return elements.GetAttr(cursor, "hatch", &value) == 0 && value.str().find("EXCLUDE") != std::string::npos;
}

void tellPoint(const RPT& p) {
    DxProtoMsg(DxMsg(5750, p.x, p.y), 0);
}

/// Two scratch patterns for the parts of a cut; the pattern that was active is so again at the end.
class Parts {
public:
    Parts() { error_ = makeTwo(); }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() {
        for (int pat : {outside_, inside_})
            if (pat) Dxovpat(17, &pat);
    }
    int inside() const { return inside_; }
    int outside() const { return outside_; }
    int error() const { return error_; }

private:
    int makeTwo() {
        if (const int error = Dxovpat(11, &inside_)) return error;
        return Dxovpat(11, &outside_);
    }
    int inside_ = 0, outside_ = 0, error_ = 0;
};

class Nesting {
public:
    explicit Nesting(std::vector<int> pats) {
        for (const int pat : pats) {
            if (!enclosesSomething(pat)) continue;
            Contour c;
            c.pat = pat;
            c.isExcluded = isMarkedExcluded(pat);
            int code = 256, number = pat;
            double rect[4];
            if (ovpatrect(&code, &number, rect) == 0) {
                c.min = {rect[0], rect[1]};
                c.max = {rect[2], rect[3]};
            }
            contours_.push_back(std::move(c));
        }
        for (std::size_t i = 0; i < contours_.size(); ++i) byLeft_.push_back(i);
        std::sort(byLeft_.begin(), byLeft_.end(),
                  [&](std::size_t a, std::size_t b) { return contours_[a].min.x < contours_[b].min.x; });
    }

    void nest() {
        for (std::size_t i = 0; i < contours_.size(); ++i)
            if (contours_[i].depth != 0) nestIn(i);
    }

    int build(std::vector<DX_HATCH_CONT>* conts, bool withExcluded) const {
        bool took = true;
        for (int level = 1; took; level += 2) {
            took = false;
            for (const Contour& c : contours_) {
                if (c.depth != level) continue;
                took = true;
                if (c.isExcluded && !withExcluded) continue;
                if (const int error = buildOne(c, conts)) return error;
            }
        }
        return 0;
    }

private:
    /// Of the contours that begin no farther left than i, up to its right end, those inside or across it.
    void nestIn(std::size_t i) {
        if (ovblock(6, contours_[i].pat) != 0) {
            drop(i);
            return;
        }
        const auto from = std::lower_bound(byLeft_.begin(), byLeft_.end(), contours_[i].min.x - tolerance_,
                                           [&](std::size_t a, double x) { return contours_[a].min.x < x; });
        std::vector<std::size_t> candidates;
        for (auto at = from; at != byLeft_.end() && contours_[*at].min.x <= contours_[i].max.x; ++at)
            if (*at != i) candidates.push_back(*at);
        std::sort(candidates.begin(), candidates.end());
        for (const std::size_t j : candidates) {
            if (contours_[i].depth == 0) return;
            if (contours_[j].depth != 0) relate(i, j);
        }
    }

    void relate(std::size_t i, std::size_t j) {
        Contour& a = contours_[i];
        Contour& b = contours_[j];
        if (!overlaps(a, b, tolerance_)) return;
        // Where i's box lies in j's, the pair is looked at with j as the region: that is the shorter cut.
        const bool equal = isWithin(a, b, tolerance_) && isWithin(b, a, tolerance_);
        if (isWithin(a, b, tolerance_) && !equal) return;
        RPT where{0, 0};
        switch (cut(b.pat, a.pat, &where)) {
        case Relation::Apart: break;
        case Relation::Crossing:
            DxProtoMsg(DxMsg(5747), 0);
            tellPoint(where);
            drop(std::max(i, j)); // of two that cross the first one stays
            break;
        case Relation::Inside:
            a.inside.push_back(j);
            ++b.depth;
            break;
        case Relation::Failed: drop(j); break;
        }
    }

    Relation cut(int pat, int regionPat, RPT* where) const {
        const Parts parts;
        if (parts.error() || ovsplitblock(7, pat, parts.inside(), parts.outside(), 0, 3, 1) != 0 ||
            UoPatDelEqualPatElems(parts.inside(), regionPat, tolerance_) != 0)
            return Relation::Failed;
        int insideEmpty = 1, outsideEmpty = 1;
        if (UoPatEmpty(parts.inside(), &insideEmpty) != 0 || UoPatEmpty(parts.outside(), &outsideEmpty) != 0)
            return Relation::Failed;
        if (insideEmpty) return Relation::Apart;
        if (outsideEmpty) return Relation::Inside;
        UO_ELEM e{};
        e.patNo = parts.outside();
        if (Dxovelem(DX_ELEM_FIRST, &e) == 0) *where = e.end;
        return Relation::Crossing;
    }

    void drop(std::size_t i) {
        DxProtoMsg(DxMsg(5744), 1);
        contours_[i].depth = 0;
    }

    int buildOne(const Contour& c, std::vector<DX_HATCH_CONT>* conts) const {
        DX_HATCH_CONT cont;
        if (const int error = UoElemSFiltXPts(c.pat, 1, tolerance_, &cont.elems)) return error;
        if (cont.elems.empty()) return 0;
        for (const std::size_t j : c.inside) {
            if (contours_[j].depth != c.depth + 1) continue;
            std::vector<UO_ELEM> hole;
            if (const int error = UoElemSFiltXPts(contours_[j].pat, 1, tolerance_, &hole)) return error;
            if (!hole.empty()) cont.holes.push_back(std::move(hole));
        }
        conts->push_back(std::move(cont));
        return 0;
    }

    std::vector<Contour> contours_;
    std::vector<std::size_t> byLeft_; ///< by the left end of their boxes
    double tolerance_ = UtConv(50);
};

} // namespace

int DxFillHatchCont(std::vector<DX_HATCH_CONT>* conts, int withExcluded) {
    conts->clear();
    int noted = 0;
    const bool hadActive = UoPatAct(&noted) == 0;
    std::vector<int> pats;
    int error = UoGetHatchContour(&pats);
    if (!error && !pats.empty()) {
        Nesting nesting(pats);
        nesting.nest();
        error = nesting.build(conts, withExcluded != 0);
    }
    for (auto pat = pats.rbegin(); pat != pats.rend(); ++pat) Dxovpat(17, &*pat);
    if (hadActive) UoPatEdit(noted);
    return error;
}

#include "ln.h"

#include "ge.h"
#include "geometry/band.h"
#include "geometry/li_piece.h"
#include "geometry/unite.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <new>

using namespace host;

namespace {

bool isClosed(const std::vector<Band>& bands) {
    const RPT& a = bands.front().centre.start;
    const RPT& b = bands.back().centre.end;
    return a.x == b.x && a.y == b.y;
}

bool isVisible(const Band& band, double eps) {
    return band.widest() > eps;
}

// A contour whose chain is broken by pieces without width falls into open chains.
void splitAtHairlines(std::vector<Band> contour, double eps, std::vector<BandChain>* chains,
                      std::vector<Band>* hairlines) {
    const auto visible = [&](const Band& b) { return isVisible(b, eps); };
    const auto hidden = std::find_if_not(contour.begin(), contour.end(), visible);
    if (hidden == contour.end()) {
        const bool closed = isClosed(contour);
        chains->push_back({std::move(contour), closed});
        return;
    }
    if (isClosed(contour)) std::rotate(contour.begin(), hidden, contour.end());
    std::vector<Band> bands;
    for (const Band& band : contour) {
        if (visible(band)) {
            bands.push_back(band);
            continue;
        }
        hairlines->push_back(band);
        if (!bands.empty()) chains->push_back({std::move(bands), false});
        bands.clear();
    }
    if (!bands.empty()) chains->push_back({std::move(bands), false});
}

PieceBox boxOfBands(const std::vector<Band>& bands) {
    PieceBox box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const Band& b : bands) box.add(boxOf(b.centre).grown(b.widest()));
    return box;
}

// What the outline of bands needs to know of all of them.
class Outline : public ILnOutline {
public:
    explicit Outline(std::vector<std::vector<Band>> contours) : contours_(std::move(contours)) {}
    int Calculate(double tolerance) override;
    const LiList& Contours() const override { return list_; }

private:
    BandLimits limitsFor(double tolerance);
    bool exactLoops(const BandLimits& limits, std::vector<PieceLoop>* loops, bool* tooMany) const;
    bool chainsMeet() const;
    void cleanLoops(const BandLimits& limits, std::vector<PieceLoop>* loops) const;
    int store(const std::vector<PieceLoop>& loops);

    std::vector<std::vector<Band>> contours_;
    std::vector<BandChain> chains_;
    std::vector<Band> hairlines_;
    double widest_ = 0;
    LiList list_;
};

BandLimits Outline::limitsFor(double tolerance) {
    PieceBox box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
    for (const std::vector<Band>& contour : contours_) {
        box.add(boxOfBands(contour));
        for (const Band& b : contour) widest_ = std::max(widest_, b.widest());
    }
    const double reach =
        std::max({std::fabs(box.minX), std::fabs(box.maxX), std::fabs(box.minY), std::fabs(box.maxY)});
    const double eps = 1e-10 * box.size() + 1e-14 * reach;
    const bool usable = tolerance > 0.0 && std::isfinite(tolerance);
    return {usable ? tolerance : 1e-6 * box.size(), eps};
}

// Two outlines, one inside the other, would cancel each other when filled even-odd.
bool Outline::chainsMeet() const {
    std::vector<PieceBox> boxes;
    for (const BandChain& c : chains_) boxes.push_back(boxOfBands(c.bands));
    std::sort(boxes.begin(), boxes.end(),
              [](const PieceBox& a, const PieceBox& b) { return a.minX < b.minX; });
    for (std::size_t i = 0; i < boxes.size(); ++i)
        for (std::size_t j = i + 1; j < boxes.size() && boxes[j].minX <= boxes[i].maxX; ++j)
            if (boxes[i].meets(boxes[j])) return true;
    return false;
}

// The loops chain by chain; true when they can be filled as they are. Corners too tight for an edge leave the
// loops of the single bands. With `*tooMany` crossings, more than anyone could see, nobody need clean them.
bool Outline::exactLoops(const BandLimits& limits, std::vector<PieceLoop>* loops, bool* tooMany) const {
    bool sound = true;
    for (const BandChain& chain : chains_) {
        std::vector<PieceLoop> own;
        if (!outlineChain(chain, limits, &own)) {
            sound = false;
            own.clear();
            sweepChain(chain, limits, &own);
        }
        std::move(own.begin(), own.end(), std::back_inserter(*loops));
    }
    std::size_t pieces = 0;
    for (const PieceLoop& loop : *loops) pieces += loop.size();
    const bool crossing = loopsCross(*loops, limits.eps, 64 * pieces + 100'000, tooMany);
    return sound && !crossing && !chainsMeet();
}

void Outline::cleanLoops(const BandLimits& limits, std::vector<PieceLoop>* loops) const {
    std::vector<PieceLoop> sweep;
    for (const BandChain& chain : chains_) sweepChain(chain, limits, &sweep);
    // Corners are worked out exactly afterwards: the chords need only keep the shape.
    uniteLoops(sweep, std::max(limits.tolerance, 0.01 * widest_), loops);
}

int Outline::store(const std::vector<PieceLoop>& loops) {
    int number = 0;
    for (const PieceLoop& loop : loops) {
        // An arc with ends so near would count as a whole circle.
        const PieceLoop pieces = withoutPoints(loop, 2 * GeEpsiGetTol());
        for (const Piece& piece : pieces) {
            LI_ELEM* elem = LiNew(list_);
            if (!elem) return 1001;
            setPiece(elem, piece);
            elem->contour = number;
            LiChain(list_, elem);
        }
        number += !pieces.empty();
    }
    return 0;
}

int Outline::Calculate(double tolerance) try {
    LiRemove(list_);
    chains_.clear();
    hairlines_.clear();
    const BandLimits limits = limitsFor(tolerance);
    for (const std::vector<Band>& contour : contours_)
        splitAtHairlines(contour, limits.eps, &chains_, &hairlines_);
    std::vector<PieceLoop> loops;
    bool tooMany = false;
    if (!exactLoops(limits, &loops, &tooMany) && !tooMany) cleanLoops(limits, &loops);
    for (const Band& h : hairlines_) loops.push_back({h.centre, h.centre.reversed()});
    const int err = store(loops);
    return err ? err : list_.count > 0 ? 0 : 3011;
} catch (const std::bad_alloc&) {
    return 1001;
}

// ---- algorithms ------------------------------------------------------------------------------------

class Algorithm : public ILnLineOffsettingAlgorithm {
public:
    explicit Algorithm(std::vector<std::vector<Band>> contours)
        : empty_(contours.empty()), outline_(std::move(contours)) {}
    int GetOutline(ILnOutline** outline) override {
        if (empty_) return 3011;
        *outline = &outline_;
        return 0;
    }

private:
    bool empty_;
    Outline outline_;
};

// Products of coordinates beyond this may overflow.
constexpr double kFarthest = 1e120;

double cleanWidth(double width) {
    return width > 0.0 && width < kFarthest ? width : 0.0;
}

void setWidth(Band& band, int end, int side, double width) {
    const double w = cleanWidth(width);
    band.left[end] = side == 0 ? 0.5 * w : side > 0 ? w : 0.0;
    band.right[end] = side == 0 ? 0.5 * w : side < 0 ? w : 0.0;
}

bool isWorkable(const Piece& p) {
    const auto within = [](const RPT& q) { return std::fabs(q.x) < kFarthest && std::fabs(q.y) < kFarthest; };
    return within(p.start) && within(p.end) && within(p.centre) && p.length() > 0.0;
}

// Puts the list into bands, contour by contour; a break in the chain begins a new contour too.
std::vector<std::vector<Band>> bandsOf(const LiList& list,
                                       const std::function<void(const LI_ELEM&, Band&)>& setWidths) {
    std::vector<std::vector<Band>> contours;
    const LI_ELEM* before = nullptr;
    for (const LI_ELEM* e = list.first; e; e = e->next) {
        Band band;
        band.centre = pieceOf(*e);
        if (!isWorkable(band.centre)) continue;
        setWidths(*e, band);
        const bool follows = before && before->contour == e->contour && before->end.x == e->start.x &&
                             before->end.y == e->start.y;
        if (!follows) contours.emplace_back();
        contours.back().push_back(band);
        before = e;
    }
    return contours;
}

double widthAt(const std::vector<double>& widths, std::size_t i) {
    return i < widths.size() ? widths[i] : 0.0;
}

} // namespace

std::unique_ptr<ILnLineOffsettingAlgorithm> LnParallelOffsettingAlgorithm::Create(const LiList& list,
                                                                                  int side, double width) {
    return std::make_unique<Algorithm>(bandsOf(list, [=](const LI_ELEM&, Band& band) {
        setWidth(band, 0, side, width);
        setWidth(band, 1, side, width);
    }));
}

std::unique_ptr<ILnLineOffsettingAlgorithm>
LnExtendedOffsettingAlgorithm::Create(const LiList& list, int side, const std::vector<double>& widths,
                                      const std::vector<double>& extra) {
    return std::make_unique<Algorithm>(bandsOf(list, [&](const LI_ELEM& e, Band& band) {
        if (e.source < 0) return;
        for (int end = 0; end < 2; ++end) {
            const std::size_t i = 2 * static_cast<std::size_t>(e.source) + (e.turned ? 1 - end : end);
            setWidth(band, end, side, widthAt(widths, i) + widthAt(extra, i));
        }
    }));
}

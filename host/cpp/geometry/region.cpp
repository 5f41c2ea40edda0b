#include "geometry/region.h"

#include <algorithm>
#include <numbers>
#include <utility>

namespace host {

static std::vector<PieceBox> boxesOf(const std::vector<Piece>& pieces) {
    std::vector<PieceBox> boxes;
    boxes.reserve(pieces.size());
    for (const Piece& piece : pieces) boxes.push_back(boxOf(piece));
    return boxes;
}

static bool enclosesArea(const std::vector<Piece>& border, double tolerance) {
    double area = 0, length = 0;
    for (const Piece& piece : border) {
        area += piece.signedArea();
        length += piece.length();
    }
    return std::isfinite(area) && std::fabs(area) > tolerance * length * 0.5;
}

/// Its pieces with (0, 0) moved to the chain, so that areas don't drown in the distance from the origin.
static std::vector<Piece> nearOrigin(std::vector<Piece> pieces) {
    if (pieces.empty()) return pieces;
    const RPT at = pieces[0].start;
    for (Piece& p : pieces) {
        p.start = p.start - at;
        p.end = p.end - at;
        p.centre = p.centre - at;
    }
    return pieces;
}

Region::Region(std::vector<Piece> border, double tolerance)
    : border_(std::move(border)), tolerance_(tolerance), boxes_(boxesOf(border_)), tree_(boxes_),
      hasArea_(enclosesArea(nearOrigin(border_), tolerance)) {}

bool Region::isOnBorder(const RPT& p) const {
    bool found = false;
    const PieceBox at = PieceBox{p.x, p.y, p.x, p.y}.grown(tolerance_);
    tree_.search(at, 0, [&](std::size_t i) {
        const Piece& piece = border_[i];
        found =
            (distanceToCarrier(piece, p) <= tolerance_ && isOn(piece, footOnCarrier(piece, p), tolerance_)) ||
            distance(piece.start, p) <= tolerance_ || distance(piece.end, p) <= tolerance_;
        return !found;
    });
    return found;
}

/// Splits an arc at its highest and lowest point, so that each part rises or falls throughout.
static int risingParts(const Piece& piece, Piece parts[4]) {
    if (!piece.isArc()) {
        parts[0] = piece;
        return 1;
    }
    const double from = angleOf(piece.start - piece.centre), sweep = piece.sweep();
    double cuts[4];
    int count = 0;
    for (int quarter = -3; quarter <= 3; ++quarter) {
        const double angle = kPi / 2 + quarter * kPi; // up and down
        const double t = (angle - from) / sweep;
        if (t > 0 && t < 1 && count < 3) cuts[count++] = t;
    }
    std::sort(cuts, cuts + count);
    RPT at = piece.start;
    for (int i = 0; i <= count; ++i) {
        const RPT to = i < count ? piece.pointAt(cuts[i]) : piece.end;
        parts[i] = piece;
        parts[i].start = at;
        parts[i].end = to;
        at = to;
    }
    return count + 1;
}

/// The abscissa at which a part that rises or falls throughout has the height of y.
static double abscissaAt(const Piece& part, double y) {
    if (!part.isArc()) {
        const double t = (y - part.start.y) / (part.end.y - part.start.y);
        return part.start.x + t * (part.end.x - part.start.x);
    }
    const double dy = y - part.centre.y;
    const double dx = std::sqrt(std::max(part.radius * part.radius - dy * dy, 0.0));
    const bool right = part.pointAt(0.5).x > part.centre.x;
    return right ? part.centre.x + dx : part.centre.x - dx;
}

bool Region::isOddAlongRay(const RPT& p) const {
    bool odd = false;
    tree_.search({p.x, p.y, HUGE_VAL, p.y}, 0, [&](std::size_t i) {
        Piece parts[4];
        const int count = risingParts(border_[i], parts);
        for (int k = 0; k < count; ++k) {
            const Piece& part = parts[k];
            if ((part.start.y > p.y) == (part.end.y > p.y)) continue;
            if (abscissaAt(part, p.y) > p.x) odd = !odd;
        }
        return true;
    });
    return odd;
}

Region::Side Region::sideOf(const RPT& p) const {
    if (isOnBorder(p)) return Side::Border;
    return isOddAlongRay(p) ? Side::Inside : Side::Outside;
}

bool Region::isApart(const Piece& piece) const {
    bool apart = true;
    tree_.search(boxOf(piece).grown(tolerance_), 0, [&](std::size_t i) {
        apart = meetingsOf(border_[i], piece, tolerance_).count == 0;
        return apart;
    });
    return apart;
}

/// How far along the piece a point of it lies, 0 to 1.
static double placeOn(const Piece& piece, const RPT& p) {
    if (!piece.isArc()) {
        const RPT way = piece.end - piece.start;
        return dot(p - piece.start, way) / dot(way, way);
    }
    const double sweep = piece.sweep();
    double turned = angleOf(p - piece.centre) - angleOf(piece.start - piece.centre);
    if (sweep > 0 && turned < 0) turned += 2 * kPi;
    if (sweep < 0 && turned > 0) turned -= 2 * kPi;
    return turned / sweep;
}

std::vector<Piece> Region::partsOf(const Piece& piece) const {
    std::vector<double> places{0, 1};
    const double length = piece.length();
    tree_.search(boxOf(piece).grown(tolerance_), 0, [&](std::size_t i) {
        const PieceMeetings found = meetingsOf(border_[i], piece, tolerance_);
        for (int k = 0; k < found.count; ++k) {
            const double t = placeOn(piece, found.points[k]);
            if (t * length > tolerance_ && (1 - t) * length > tolerance_) places.push_back(t);
        }
        return true;
    });
    if (places.size() == 2) return {piece};
    std::sort(places.begin(), places.end());
    std::vector<Piece> parts;
    for (std::size_t i = 1; i < places.size(); ++i) {
        if ((places[i] - places[i - 1]) * length <= tolerance_) continue;
        Piece part = piece;
        if (places[i - 1] > 0) part.start = piece.pointAt(places[i - 1]);
        if (places[i] < 1) part.end = piece.pointAt(places[i]);
        parts.push_back(part);
    }
    return parts;
}

} // namespace host

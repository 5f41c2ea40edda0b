#include "text/join.h"

#include "text/layout.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

/// A text as a line, in millimetres on the sheet in the frame turned by the common angle.
struct Piece {
    const Text* text;
    double left, right; ///< of its block
    double baseline;    ///< of its first line
    bool isBroken;      ///< longer than its line length
};

bool looksAlike(const Text& a, const Text& b) {
    constexpr double same = 1e-6;
    constexpr double sameWidth = 0.1; // of a font by number, it varies with the letters of a text
    return a.font == b.font && a.face == b.face && a.styleBits == b.styleBits && a.pen == b.pen &&
           a.backOn == b.backOn && a.fillPen == b.fillPen && a.backType == b.backType &&
           std::abs(a.height - b.height) < same * a.height &&
           std::abs(a.width - b.width) < sameWidth * a.width && std::abs(a.angle - b.angle) < same &&
           std::abs(a.slant - b.slant) < same && std::abs(a.spacing - b.spacing) < same &&
           a.justification == b.justification && a.lineLength == b.lineLength && a.z == b.z &&
           a.dimType == b.dimType;
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}
/// Blank texts hold the place of an empty line, whatever they look like.
bool isBlankText(const Text& text) {
    return text.lines.size() == 1 && isBlank(text.lines.front());
}

Piece pieceOf(const Text& text, double perUnit) {
    const TextLayout layout = layoutText(text, perUnit);
    const double c = std::cos(text.angle), s = std::sin(text.angle);
    const double along = (text.x * c + text.y * s) * perUnit, up = (text.y * c - text.x * s) * perUnit;
    return {&text, along + layout.left, along + layout.left + layout.width,
            up + layout.lines.front().baseline, layout.lines.size() > 1};
}

/// Pieces from top to bottom, those of one line from left to right.
void sortPieces(std::vector<Piece>& pieces, double tolerance) {
    std::sort(pieces.begin(), pieces.end(),
              [](const Piece& a, const Piece& b) { return a.baseline > b.baseline; });
    for (auto first = pieces.begin(); first != pieces.end();) {
        const auto last = std::find_if(
            first, pieces.end(), [&](const Piece& p) { return first->baseline - p.baseline > tolerance; });
        std::sort(first, last, [](const Piece& a, const Piece& b) { return a.left < b.left; });
        first = last;
    }
}

struct Line {
    std::string text;
    double left, right, baseline;
};

/// Lines of pieces; a gap of half a character between two pieces counts as a blank.
std::vector<Line> mergeLines(const std::vector<Piece>& pieces, double tolerance) {
    std::vector<Line> lines;
    for (const Piece& piece : pieces) {
        if (lines.empty() || lines.back().baseline - piece.baseline > tolerance) {
            lines.push_back({piece.text->lines.front(), piece.left, piece.right, piece.baseline});
            continue;
        }
        Line& line = lines.back();
        if (isBlankText(*piece.text)) continue;
        if (isBlank(line.text)) {
            line = {piece.text->lines.front(), piece.left, piece.right, line.baseline};
            continue;
        }
        if (piece.left - line.right > piece.text->width / 2) line.text += ' ';
        line.text += piece.text->lines.front();
        line.right = std::max(line.right, piece.right);
    }
    return lines;
}

/// Distance from line to line; 0 when it isn't even.
double evenDistance(const std::vector<Line>& lines, double tolerance) {
    if (lines.size() < 2) return 0;
    const double distance =
        (lines.front().baseline - lines.back().baseline) / static_cast<double>(lines.size() - 1);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (std::abs(lines[i - 1].baseline - lines[i].baseline - distance) > tolerance) return 0;
    }
    return distance;
}

/// Height of the lines' cells: that which their places tell, or the texts' own where lines are broken and so
/// follow each other by themselves. 0 when the places are uneven.
double lineDistanceOf(const Text& text, const std::vector<Line>& lines, bool isBroken, double tolerance) {
    if (isBroken || lines.size() < 2) return text.lineDistance;
    return evenDistance(lines, tolerance) / text.height;
}

std::vector<Line>::const_iterator firstWithText(const std::vector<Line>& lines) {
    return std::find_if_not(lines.begin(), lines.end(), [](const Line& line) { return isBlank(line.text); });
}

/// Which edge the lines have in common: 0 left, 1 middle, 2 right, -1 none.
int commonEdge(const std::vector<Line>& lines, double tolerance) {
    const auto first = firstWithText(lines);
    for (const int edge : {0, 1, 2}) {
        const auto at = [&](const Line& l) { return l.left + (l.right - l.left) * edge / 2; };
        const bool common = std::all_of(first, lines.end(), [&](const Line& l) {
            return isBlank(l.text) || std::abs(at(l) - at(*first)) <= tolerance;
        });
        if (common) return edge;
    }
    return -1;
}

/// The first text that shows something; all that do look like it. Null when they can't be joined.
const Text* modelOf(const std::vector<Text>& texts) {
    const auto model = std::find_if_not(texts.begin(), texts.end(), isBlankText);
    if (texts.size() < 2 || model == texts.end()) return nullptr;
    const bool fits = std::all_of(texts.begin(), texts.end(), [&](const Text& text) {
        return isBlankText(text) || (text.lines.size() == 1 && looksAlike(*model, text));
    });
    return fits ? &*model : nullptr;
}

} // namespace

std::optional<Text> joinTexts(const std::vector<Text>& texts, const Drawing& drawing) {
    const Text* const model = modelOf(texts);
    if (!model) return std::nullopt;
    const double perUnit = sheetMillimetres(drawing);
    const double tolerance = model->height * 0.05;
    std::vector<Piece> pieces;
    pieces.reserve(texts.size());
    for (const Text& text : texts) pieces.push_back(pieceOf(text, perUnit));
    sortPieces(pieces, tolerance);
    const std::vector<Line> lines = mergeLines(pieces, tolerance);
    Text joined = *model;
    const bool isBroken =
        std::any_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.isBroken; });
    joined.lineDistance = lineDistanceOf(joined, lines, isBroken, tolerance);
    const int edge = commonEdge(lines, tolerance);
    if (edge < 0 || joined.lineDistance <= 0) return std::nullopt;
    joined.origin = 7 + edge;
    joined.justification = edge;
    joined.lines.clear();
    joined.lines.reserve(lines.size());
    for (const Line& line : lines) joined.lines.push_back(line.text);
    const Line& first = *firstWithText(lines);
    const double along = first.left + (first.right - first.left) * edge / 2;
    const double up = lines.front().baseline + (joined.lineDistance + 1) * joined.height / 2;
    const double c = std::cos(joined.angle), s = std::sin(joined.angle);
    joined.x = (along * c - up * s) / perUnit;
    joined.y = (along * s + up * c) / perUnit;
    return joined;
}

} // namespace host

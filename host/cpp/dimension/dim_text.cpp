#include "dimension/dim_text.h"

#include "dimension/dim_drawing.h"
#include "geometry/plane.h"
#include "text/layout.h"
#include "text/text_parm.h"

#include <cmath>

namespace host {

namespace {

constexpr int kOfDimension = 3;
constexpr char kDivider = 1;

/// A direction as an angle from which a text can be read: above -90 up to 90 degrees.
double readable(const RPT& along) {
    constexpr double noise = 1e-9;
    double angle = angleOf(along);
    if (angle > kPi / 2 + noise) angle -= kPi;
    if (angle <= -kPi / 2 + noise) angle += kPi;
    return angle;
}

/// Index of the settings of a family: linear, radial, angular.
std::size_t settingsOf(int family) {
    if (family == OV_DIM_RADIUS || family == OV_DIM_DIAMETER) return 1;
    return family == OV_DIM_ANGLE || family == OV_DIM_ARC ? 2 : 0;
}

double textAngle(const Dimension& dimension) {
    const int family = dimFamily(dimension.kind);
    if (dimension.txt.horizontal[settingsOf(family)]) return 0;
    const std::vector<RPT> tips = pointsOfKind(dimension, 3);
    const RPT centre = dimension.refs[2];
    switch (settingsOf(family)) {
    case 1: return tips.empty() ? 0 : readable((tips.size() > 1 ? tips[1] : centre) - tips[0]);
    case 2: return readable(leftOf(dimension.textPos - centre));
    default: return tips.size() < 2 ? 0 : readable(tips[1] - tips[0]);
    }
}

/// The look of the value or of the tolerance; both sets have these members.
template <class Parm>
Text makeText(const Parm& parm, double angle) {
    Text text;
    text.pen = parm.pen;
    text.height = parm.height;
    text.width = parm.width > 0 ? parm.width : parm.height;
    text.spacing = parm.fontKind == 0 ? 1 : parm.spacing; // a face's characters bring their own
    text.slant = parm.oblique;
    text.font = parm.fontKind;
    text.face = parm.face;
    for (int bit = 0; bit < 8; ++bit) text.styleBits |= parm.words[bit] ? 1 << bit : 0;
    text.angle = angle;
    text.dimType = kOfDimension;
    return text;
}

/// The middle of a value of several lines, of which the lowest stands at the dimension's text position.
RPT middleOf(const Text& value, const RPT& lowest, double millimetresPerUnit) {
    if (value.lines.size() < 2) return lowest;
    const double step = value.lineDistance * value.height / millimetresPerUnit;
    const double up = step * static_cast<double>(value.lines.size() - 1) / 2;
    return {lowest.x - up * std::sin(value.angle), lowest.y + up * std::cos(value.angle)};
}

/// The tolerance stands behind the value, in the middle of its height.
RPT behind(const Text& value, double millimetresPerUnit) {
    double width = 0;
    TextFont& font = fontOf(value);
    for (const std::string& line : value.lines) width = std::max(width, lineWidth(value, font, line));
    const double right = (width / 2 + value.height * 0.25) / millimetresPerUnit;
    return {value.x + right * std::cos(value.angle), value.y + right * std::sin(value.angle)};
}

int append(Pattern& pattern, Text&& text) {
    pattern.texts.push_back(std::move(text));
    return static_cast<int>(pattern.texts.size()) - 1;
}

const Text* textAt(const Pattern& pattern, int row) {
    const bool inside = row >= 0 && static_cast<std::size_t>(row) < pattern.texts.size();
    return inside ? &pattern.texts[static_cast<std::size_t>(row)] : nullptr;
}

} // namespace

void addDimensionTexts(Pattern& pattern, Dimension& dimension, std::string_view text,
                       const Drawing& drawing) {
    const std::size_t divider = text.find(kDivider);
    Text value = makeText(dimension.txt, textAngle(dimension));
    value.lines = splitLines(text.substr(0, divider));
    value.origin = 5;
    value.justification = 1;
    const RPT at = middleOf(value, dimension.textPos, sheetMillimetres(drawing));
    value.x = at.x, value.y = at.y;
    if (divider != std::string_view::npos) {
        Text tolerance = makeText(dimension.tol, value.angle);
        std::string lines(text.substr(divider + 1));
        for (char& c : lines)
            if (c == kDivider) c = '\n';
        tolerance.lines = splitLines(lines);
        tolerance.origin = 4;
        const RPT place = behind(value, sheetMillimetres(drawing));
        tolerance.x = place.x, tolerance.y = place.y;
        dimension.textRow = append(pattern, std::move(value));
        dimension.tolRow = append(pattern, std::move(tolerance));
    } else {
        dimension.textRow = append(pattern, std::move(value));
    }
}

std::string dimensionText(const Pattern& pattern, const Dimension& dimension) {
    std::string text;
    if (const Text* value = textAt(pattern, dimension.textRow)) text = joinLines(value->lines).str();
    if (const Text* tolerance = textAt(pattern, dimension.tolRow))
        for (const std::string& line : tolerance->lines) text += kDivider + line;
    return text;
}

void forgetTextRow(Pattern& pattern, int row) {
    const auto moveUp = [row](int& known) {
        if (known == row)
            known = -1;
        else if (known > row)
            --known;
    };
    for (Dimension& dimension : pattern.dimensions) {
        moveUp(dimension.textRow);
        moveUp(dimension.tolRow);
    }
}

} // namespace host

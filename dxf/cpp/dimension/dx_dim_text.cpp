// The texts of a dimension's block as the dimension's text.
#include "../config/config_state.h"
#include "../text/dx_text_fonts.h"
#include "dx_dim_import.h"
#include "ut_plane.h"
#include "ut_string.h"

#include <cmath>
#include <utility>

namespace {

constexpr double toRadians = 0.017453292519943295;
constexpr std::size_t limit = 161;
constexpr char divider = 1;
constexpr std::string_view measured = "<>";

RPT middleOf(const DX_TEXT_TYPE& text) {
    const RPT3 p = DxDimTextMiddle(text);
    return {p.x, p.y};
}

/// A point beside `from`, in the direction of the text or across it.
RPT beside(const RPT& from, const DX_TEXT_TYPE& text, double turn) {
    const double angle = text.rotation * toRadians + turn;
    return {from.x + std::cos(angle), from.y + std::sin(angle)};
}

/// Texts like the first one make the value; others, and those with a sign, are tolerances.
bool isValue(const DX_TEXT_TYPE& text, const DX_TEXT_TYPE& first) {
    const bool isAlike =
        text.base.color == first.base.color && text.height == first.height && text.oblique == first.oblique;
    return isAlike && text.text != "5" && text.text.find_first_of("+-") == std::string::npos;
}

/// Puts the value together, line by line.
class Joiner {
public:
    Joiner(std::vector<DX_TEXT_TYPE>& texts, const std::string& out) : texts_(texts), out_(out) {}

    void take(std::size_t i) {
        const std::string& text = texts_[i].text;
        if (out_.find(text) != std::string::npos) return;
        if (joined.empty()) {
            joined = text;
        } else if (i > 0) {
            place(i);
        }
    }

    std::string joined;

private:
    void place(std::size_t i) {
        const RPT at = middleOf(texts_[0]), other = middleOf(texts_[i]);
        const double above = UtNormAbstand(other, at, beside(at, texts_[0], 0));
        const std::string text = texts_[i].text;
        const bool fits = joined.size() + 1 + text.size() < limit;
        if (std::fabs(above) < texts_[0].height / 2) {
            const bool isAhead = UtNormAbstand(other, at, beside(at, texts_[0], 90 * toRadians)) >= 0;
            if (fits) joined = isAhead ? text + " " + joined : joined + " " + text;
        } else if (above < 0) {
            if (fits) joined += "\n" + text;
            std::swap(texts_[0], texts_[i]);
        } else if (fits) {
            joined = text + "\n" + joined;
        }
    }

    std::vector<DX_TEXT_TYPE>& texts_;
    const std::string& out_;
};

int noteTolerance(DX_DIM_TEXTS& texts, std::size_t i) {
    if (texts.lowerIndex) return DX_DIM_TOO_MANY_TOLERANCES;
    (texts.upperIndex ? texts.lowerIndex : texts.upperIndex) = static_cast<int>(i);
    return 0;
}

void orderTolerances(DX_DIM_TEXTS& texts) {
    const DX_TEXT_TYPE& upper = texts.texts[static_cast<std::size_t>(texts.upperIndex)];
    const RPT at = middleOf(upper);
    const RPT other = middleOf(texts.texts[static_cast<std::size_t>(texts.lowerIndex)]);
    if (UtNormAbstand(other, at, beside(at, upper, 0)) > 0) std::swap(texts.upperIndex, texts.lowerIndex);
}

/// The user's text with the value in the place of "<>".
void finishValue(std::string& out, const std::string& joined) {
    const std::size_t place = DxDimUsrTxt ? out.find(measured) : std::string::npos;
    if (place == std::string::npos) {
        out = joined;
        return;
    }
    for (std::size_t at = place; at != std::string::npos; at = out.find(measured, at + joined.size())) {
        if (out.size() - measured.size() + joined.size() >= limit) return;
        out.replace(at, measured.size(), joined);
    }
}

} // namespace

RPT3 DxDimTextMiddle(const DX_TEXT_TYPE& text) {
    enum { LEFT, CENTRE, RIGHT, ALIGNED, MIDDLE };
    const bool isPlain = text.horAlign == LEFT && text.verAlign == 0;
    const RPT3& anchor = isPlain ? text.point : text.second;
    if (text.horAlign == MIDDLE) return anchor;
    DxTextLength measure;
    if (text.horAlign != CENTRE) DxTextGetDxfLen(text, &measure);
    const double along = text.horAlign == LEFT ? 0.5 : text.horAlign == RIGHT ? -0.5 : 0;
    const double up = text.verAlign == 2 ? 0 : text.verAlign == 3 ? -0.5 : 0.5;
    const double c = std::cos(text.rotation * toRadians), s = std::sin(text.rotation * toRadians);
    const double x = along * measure.length, y = up * text.height;
    return {anchor.x + c * x - s * y, anchor.y + s * x + c * y, anchor.z};
}

int DxGetDimText(std::string_view entityText, DX_DIM_TEXTS& texts, std::string& out) {
    out.clear();
    texts.upperIndex = texts.lowerIndex = 0;
    if (DxDimUsrTxt && entityText.find(measured) != std::string_view::npos) out = entityText;
    Joiner joiner(texts.texts, out);
    for (std::size_t i = 0; i < texts.texts.size(); ++i) {
        if (i == 0 || isValue(texts.texts[i], texts.texts[0])) {
            joiner.take(i);
        } else if (const int error = noteTolerance(texts, i)) {
            return error;
        }
    }
    finishValue(out, joiner.joined);
    if (texts.upperIndex && texts.lowerIndex) orderTolerances(texts);
    for (const int index : {texts.upperIndex, texts.lowerIndex})
        if (index) out += divider + texts.texts[static_cast<std::size_t>(index)].text;
    return 0;
}

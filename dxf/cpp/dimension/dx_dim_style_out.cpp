// The DIMSTYLE of a dimension on its way out. Dimensions that come out alike share one.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../session/dx_documents.h"
#include "../session/dx_numbers.h"
#include "../session/dx_writer.h"
#include "dimension_state.h"
#include "dx_codes.h"
#include "dx_dim_decode.h"
#include "dx_dim_measure.h"
#include "dx_dim_out.h"
#include "dx_dimstyle.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

namespace {

enum TextFamily { LINEAR, RADIAL, ANGULAR };
constexpr int PLACE_IN_LINE = 5;

bool isRadial(int family) {
    return family == OV_DIM_RADIUS || family == OV_DIM_DIAMETER;
}
bool isAngular(int family) {
    return family == OV_DIM_ANGLE || family == OV_DIM_ARC;
}

double rounded(double value, int places) {
    const double factor = std::pow(10.0, places);
    return std::round(value * factor) / factor;
}

double sheetRounded(double length) {
    return rounded(DxLengthToSheet(length), 3);
}

/// Values that are the same in every style; those that aren't named are 0.
struct RealRow {
    DX_DIM_REAL variable;
    double value;
};
constexpr RealRow FIXED_REALS[] = {{DIMALTF, 25.4}, {DIMLFAC, 1.0}, {DIMTFAC, 1.0}, {DIMGAP, 0.09}};
struct IntegerRow {
    DX_DIM_INTEGER variable;
    int value;
};
constexpr IntegerRow FIXED_INTEGERS[] = {
    {DIMALTD, 2}, {DIMUNIT, 2}, {DIMALTU, 2}, {DIMALTTD, 2}, {DIMLUNIT, 2}, {DIMADEC, 4},
    {DIMDEC, 4},  {DIMTDEC, 4}, {DIMTOLJ, 1}, {DIMFIT, 3},   {DIMATFIT, 3}, {DIMTOFL, 1},
};

/// One dimension becoming a style.
class StyleMaker {
public:
    StyleMaker(const DX_DIM_OUT& out, DX_DIM_STYLE& style) : out_(out), txt_(out.sets.txt), style_(style) {
        if (isRadial(out.family)) DxDimparKorr(out.family, out.horizontal, txt_);
    }

    int make() {
        style_ = {};
        int arrowType = -1;
        if (const int error = DxDimparGetArrowType(out_.pat, out_.row, &arrowType)) return error;
        setName();
        setText();
        for (const RealRow& row : FIXED_REALS) style_.reals[row.variable] = row.value;
        for (const IntegerRow& row : FIXED_INTEGERS) style_.integers[row.variable] = row.value;
        setSizes(arrowType);
        setColours();
        setPlaces();
        setZeros();
        setTolerance();
        return 0;
    }

private:
    void setName() {
        const std::size_t number = DxDocuments.currentTables().dimStyles.size() + 1;
        style_.name.assign(UtFormat("TORVA-DIM%d", static_cast<int>(number)).str());
    }

    void setText() {
        const DX_STYLE_TYPE* style = DxDimparExtractFormat(out_.family, out_.parts.value, txt_, &style_);
        if (style) style_.integers[DIMTXSTY] = static_cast<int>(style->handle);
    }

    void setSizes(int arrowType) {
        const OV_DIM_ARROW_PARM& arrow = out_.sets.arrow;
        double exo = 0, exe = 0;
        DxDimGetDimPointDist(out_.family, out_.dim.refs, out_.dim.points, &exo, &exe);
        style_.reals[DIMSCALE] = DxLengthFromSheet(1.0);
        style_.reals[DIMASZ] = arrowType == 1 ? arrow.length[0] : 0;
        style_.reals[DIMEXO] = sheetRounded(exo);
        style_.reals[DIMEXE] = sheetRounded(exe);
        style_.reals[DIMDLE] = sheetRounded(arrow.lineOvershoot2);
        style_.reals[DIMTXT] = txt_.height;
        style_.reals[DIMTSZ] = arrowType == 3 || arrowType == 4 ? arrow.width[0] : 0;
        if (out_.family == OV_DIM_RADIUS)
            style_.integers[DIMTOFL] = DxDimparGetRadDir(out_.dim.refs, out_.dim.points);
    }

    void setColours() {
        const OV_DIM_ARROW_PARM& arrow = out_.sets.arrow;
        const auto colourOf = [](int pen, int lineType, int kind) {
            int colour = 0;
            DX_NAME name;
            name.clear();
            DxPenLtToDXF(pen, lineType, &colour, &name, kind);
            return colour;
        };
        style_.integers[DIMCLRD] = colourOf(arrow.pen, arrow.lineType, 0);
        style_.integers[DIMCLRE] = colourOf(arrow.extPen, arrow.extLineType, 0);
        style_.integers[DIMCLRT] = colourOf(txt_.pen, 1, 1);
    }

    int place() const {
        return txt_.place[isRadial(out_.family) ? RADIAL : isAngular(out_.family) ? ANGULAR : LINEAR];
    }

    bool hasPoint(int kind, int k) const { return DxFindPt(kind, out_.dim.points, k) >= 0; }

    /// The text inside, for a radius: the line ends within the circle.
    int isTextInCircle() const {
        if (txt_.horizontal[RADIAL]) return 0;
        const OV_DIM_PT* end = DxDimFind(2, out_.dim.points, 1);
        const OV_DIM_PT* tip = DxDimFind(3, out_.dim.points, 1);
        if (!end || !tip) return 0;
        const RPT centre = out_.dim.refs[2];
        return DxDimDistance(DxDimPoint(*end), centre) <= DxDimDistance(DxDimPoint(*tip), centre) ? 1 : 0;
    }

    int isTextInside() const {
        if (out_.family >= 1 && out_.family <= 3)
            return DxDimGetDimTextPos(out_.dim.textPos, out_.dim.points);
        if (out_.family == OV_DIM_RADIUS) return isTextInCircle();
        if (out_.family != OV_DIM_DIAMETER || hasPoint(1, 1)) return 0;
        return !hasPoint(2, 1) || (place() == PLACE_IN_LINE && hasPoint(2, 2)) ? 1 : 0;
    }

    void setPlaces() {
        const bool isHorizontal = (isAngular(out_.family) && txt_.horizontal[ANGULAR]) ||
                                  (out_.family == OV_DIM_RADIUS && txt_.horizontal[RADIAL]);
        style_.integers[DIMTIH] = style_.integers[DIMTOH] = isHorizontal ? 1 : 0;
        const bool isKnown = out_.family <= OV_DIM_DIAMETER || isAngular(out_.family);
        style_.integers[DIMTAD] = isKnown && place() == PLACE_IN_LINE ? 0 : 1;
        style_.integers[DIMTIX] = isTextInside();
    }

    void setZeros() {
        struct Row {
            int lengths, angles;
        };
        static constexpr Row rows[2][2] = {{{12, 3}, {4, 1}}, {{8, 2}, {0, 0}}};
        const Row& row = rows[txt_.leadingZero ? 1 : 0][txt_.decimalsShown ? 1 : 0];
        style_.integers[DIMZIN] = style_.integers[DIMALTZ] = row.lengths;
        style_.integers[DIMAZIN] = row.angles;
        style_.integers[DIMDSEP] = txt_.comma ? ',' : '.';
    }

    // ---- tolerances
    // ----------------------------------------------------------------------------------------

    double number(std::string_view text) const {
        std::string plain(text);
        if (txt_.comma) std::replace(plain.begin(), plain.end(), ',', '.');
        return DxAtof(plain);
    }

    /// A tolerance of one value both ways: the digits behind the sign; empty without it.
    static std::string_view behindPlusMinus(std::string_view text) {
        constexpr std::string_view sign = "\u00B1";
        return text.starts_with(sign) ? text.substr(sign.size()) : std::string_view();
    }

    void setBoth(double upper, double lower) {
        style_.reals[DIMTP] = upper;
        style_.reals[DIMTM] = lower;
    }

    /// Two limits in the text, one below the other.
    void setLimits(const std::string& text, std::size_t lineEnd) {
        double value = 0;
        DxDimpatGetDimValue(out_.family, out_.dim.refs, out_.dim.points, &value);
        value = rounded(value, isAngular(out_.family) ? txt_.angleDecimals : txt_.decimals);
        setBoth(number(text.substr(0, lineEnd)) - value, number(text.substr(lineEnd + 1)) - value);
        style_.integers[DIMLIM] = 1;
    }

    void setOne() {
        const std::string& upper = out_.parts.upper;
        if (const std::string_view both = behindPlusMinus(upper); !both.empty())
            setBoth(number(both), number(both));
        else if (upper.starts_with('-'))
            setBoth(0, std::abs(number(upper)));
        else
            setBoth(number(upper), 0);
    }

    void setTolerance() {
        if (out_.tolRow == OV_DIM_NO_TEXT || !DxWriteTol) return;
        const OV_DIM_TOL_PARM& tol = out_.sets.tol;
        if (tol.kind == 1) {
            const std::size_t lineEnd = out_.parts.value.find('\n');
            if (lineEnd != std::string::npos) return setLimits(out_.parts.value, lineEnd);
            setOne();
        } else if (tol.kind == 2) {
            const std::string_view both = behindPlusMinus(out_.parts.upper);
            if (out_.parts.lower.empty() && !both.empty())
                setBoth(number(both), number(both));
            else
                setBoth(number(out_.parts.upper), number(out_.parts.lower));
        }
        if (txt_.height > 0) style_.reals[DIMTFAC] = tol.height / txt_.height;
        style_.integers[DIMTOL] = 1;
    }

    const DX_DIM_OUT& out_;
    OV_DIM_TXT_PARM txt_;
    DX_DIM_STYLE& style_;
};

bool isEqual(const DX_DIM_STYLE& a, const DX_DIM_STYLE& b) {
    return std::equal(std::begin(a.reals), std::end(a.reals), b.reals) &&
           std::equal(std::begin(a.integers), std::end(a.integers), b.integers) &&
           a.strings[0].view() == b.strings[0].view() && a.strings[1].view() == b.strings[1].view();
}

std::size_t hashOf(const DX_DIM_STYLE& style) {
    std::size_t hash = std::hash<std::string_view>()(style.strings[0].view());
    const auto mix = [&hash](std::size_t value) { hash = hash * 1'000'003 ^ value; };
    for (const double value : style.reals) mix(std::hash<double>()(value));
    for (const int value : style.integers) mix(std::hash<int>()(value));
    return hash;
}

} // namespace

int DxDimparFindDimStyle(DX_DIM_STYLE* style) {
    const auto& styles = DxDocuments.currentTables().dimStyles;
    const auto [from, to] = DxDimStyleIndex.equal_range(hashOf(*style));
    for (auto at = from; at != to; ++at) {
        if (at->second >= styles.size() || !isEqual(styles[at->second], *style)) continue;
        style->name = styles[at->second].name;
        return 0;
    }
    return 1;
}

int DxDimparAddDimStyle(const DX_DIM_STYLE& style) {
    auto& styles = DxDocuments.currentTables().dimStyles;
    DxDimStyleIndex.emplace(hashOf(style), styles.size());
    return styles.add(style) ? DX_ERR_EXCEPTION : 0;
}

int DxDimparCadToDxf(const DX_DIM_OUT& out, DX_DIM_STYLE* style) {
    if (const int error = StyleMaker(out, *style).make()) return error;
    if (DxDimparFindDimStyle(style) == 0) return 0;
    style->handle = DxGetNextReference();
    return DxDimparAddDimStyle(*style);
}

#include "dx_dim_parms.h"

#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../import/import_state.h"
#include "../session/dx_unicode.h"
#include "../text/dx_text_fonts.h"
#include "dimension_state.h"
#include "dx_dimstyle.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr double toRadians = 0.017453292519943295;
enum Family { LINEAR, RADIAL, ANGULAR };

/// A size that was measured between points of the block, without the noise of their coordinates: the style's
/// where it is that, so that equal arrows in different places are equal.
double settled(double measured, double ofStyle) {
    constexpr double near = 1e-4, places = 1e6;
    const bool isOfStyle = ofStyle > 0 && std::fabs(measured - ofStyle) <= near * ofStyle;
    return std::round(DxLengthToSheet(isOfStyle ? ofStyle : measured) * places) / places;
}

void setArrow(OV_DIM_ARROW_PARM& arrow, const DX_DIM_DECODED& decoded, const DX_DIM_LOOK& line,
              const DX_DIM_LOOK& extension, const DX_DIM_STYLE* style) {
    arrow.pen = arrow.extPen = line.pen;
    arrow.lineType = arrow.extLineType = line.lineType;
    if (extension.pen != DX_DIM_NO_INDEX) {
        arrow.extPen = extension.pen;
        arrow.extLineType = extension.lineType;
    }
    const double ofStyle = style ? style->reals[DIMASZ] * style->reals[DIMSCALE] : 0;
    for (int i = 0; i < 3; ++i) {
        arrow.kind[i] = decoded.peak.type;
        arrow.length[i] = settled(decoded.peak.length, ofStyle);
        arrow.width[i] = settled(decoded.peak.width, 0);
    }
    if (!style) return;
    arrow.extOffset = DxLengthToSheet(style->reals[DIMEXO]);
    arrow.extOvershoot = DxLengthToSheet(style->reals[DIMEXE]);
    arrow.lineOvershoot = DxLengthToSheet(style->reals[DIMDLE]);
    arrow.lineOvershoot2 = 0;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// How the number in a text is written: "12,50" has a comma and two decimals.
void setNumberFormat(OV_DIM_TXT_PARM& txt, const std::string& text) {
    constexpr std::string_view digits = "0123456789";
    const std::size_t start = text.find_first_of(".,0123456789");
    const std::string number = start == std::string::npos ? "" : text.substr(start);
    const std::size_t whole = std::min(number.find_first_not_of(digits), number.size());
    const bool hasSeparator = whole < number.size() && (number[whole] == '.' || number[whole] == ',');
    std::size_t decimals = 0;
    while (hasSeparator && whole + 1 + decimals < number.size() && isDigit(number[whole + 1 + decimals]))
        ++decimals;
    txt.decimals = static_cast<int>(decimals);
    txt.leadingZero = whole > 0 && number[0] == '0';
    txt.decimalsShown = decimals > 0;
    txt.comma = hasSeparator && number[whole] == ',';
}

double sheetHeight(const DX_TEXT_TYPE& text) {
    return DxLengthToSheet(DxBlockScaleX * text.height);
}

template <class Parm>
void takeFace(Parm& parm, const DxCharset& charset) {
    parm.fontKind = 0;
    parm.width = parm.height;
    parm.face = DxHostText(charset.face.view()).str();
    std::copy_n(charset.bits, 8, parm.words);
}

void setFont(OV_DIM_TXT_PARM& txt, const DX_TEXT_TYPE& text, const DxCharset& charset) {
    txt.height = sheetHeight(text);
    txt.fontKind = charset.font;
    if (charset.font == 0) {
        takeFace(txt, charset);
        txt.widthFactor = 1.0;
    } else {
        txt.width = txt.height * DxTextFactor;
    }
    txt.oblique = text.oblique * toRadians;
}

void setPlace(OV_DIM_TXT_PARM& txt, int place, bool isHorizontal) {
    for (int& flag : txt.horizontal) flag = isHorizontal ? 1 : 0;
    txt.place[LINEAR] = txt.place[ANGULAR] = txt.place[RADIAL] = place;
    if (place == 2) txt.place[RADIAL] = isHorizontal ? 5 : 8;
}

void setModes(OV_DIM_TXT_PARM& txt, const DX_DIM_TYPE& dim) {
    int kind = 0;
    DxGetDimType(dim, &kind);
    const bool isCompatible = DxDimStyleCompat && kind != DX_DIM_ANGULAR;
    txt.modeA = isCompatible ? 1 : 0;
    txt.modeB = isCompatible ? 0 : 1;
    for (int& flag : txt.modeC) flag = isCompatible ? 1 : 0;
}

/// The look of a tolerance that there isn't: that of the text, smaller.
void setNoTolerance(OV_DIM_TOL_PARM& tol, const OV_DIM_TXT_PARM& txt) {
    constexpr double part = 0.6;
    tol.kind = 0;
    tol.pen = txt.pen;
    tol.height = part * txt.height;
    tol.width = part * txt.width;
    tol.oblique = txt.oblique;
    tol.spacing = txt.spacing;
    tol.widthFactor = txt.widthFactor;
    tol.fontKind = txt.fontKind;
    std::copy_n(txt.words, 8, tol.words);
    tol.face = txt.face;
}

void setTolerance(OV_DIM_TOL_PARM& tol, const OV_DIM_TXT_PARM& txt, const DX_DIM_TEXTS& texts,
                  const DxCharset& charset) {
    const DX_TEXT_TYPE& upper = texts.texts[static_cast<std::size_t>(texts.upperIndex)];
    int lineType = 0;
    tol.kind = texts.lowerIndex ? 2 : 1;
    DxPenLtToCAD(&upper.base, &tol.pen, &lineType);
    tol.height = sheetHeight(upper);
    if (txt.fontKind == 0) {
        takeFace(tol, charset);
    } else {
        tol.fontKind = 1;
        tol.width = tol.height * DxTextFactor;
    }
    tol.oblique = upper.oblique * toRadians;
}

} // namespace

int DxSetDimParams(const DX_DIM_TYPE& dim, const DX_DIM_DECODED& decoded, const DX_DIM_LOOK& line,
                   const DX_DIM_LOOK& extension, const DX_DIM_TEXTS& texts, const DX_DIM_STYLE* style) {
    if (!DxDimParamsSaved) {
        DxDimParamsSaved = 1;
        if (const int error = DxovGetDimSets(&DxDimSets)) return error;
        DxDimSavedSets = DxDimSets;
    }
    const DX_TEXT_TYPE& text = texts.texts[0];
    const DxCharset& charset = DxTextGetCharset(text.style.view(), DxTextDefaultFont());
    OV_DIM_TXT_PARM& txt = DxDimSets.txt;
    txt.fixed = 1;
    setArrow(DxDimSets.arrow, decoded, line, extension, style);
    int lineType = 0;
    DxPenLtToCAD(&text.base, &txt.pen, &lineType);
    std::string converted = text.text;
    DxConvTextToCAD(converted, charset);
    setNumberFormat(txt, converted);
    setFont(txt, text, charset);
    setPlace(txt, decoded.textPlace, text.rotation == 0);
    if (texts.upperIndex == 0)
        setNoTolerance(DxDimSets.tol, txt);
    else
        setTolerance(DxDimSets.tol, txt, texts, charset);
    setModes(txt, dim);
    const int kind = decoded.kind;
    if (kind == DX_DIM_RADIUS && decoded.isTwoSided) return DX_DIM_UNDECODED;
    return DxovSetDimSets(DxDimSets);
}

int DxRestoreDimParams() {
    return DxovSetDimSets(DxDimSavedSets);
}

int DxGetDimType(const DX_DIM_TYPE& dim, int* kind) {
    struct Row {
        int flags, kind, extendedKind; // 0: no such dimension
    };
    static constexpr Row rows[] = {
        {0, DX_DIM_HORIZONTAL, DX_DIM_HORIZONTAL},
        {1, DX_DIM_ALIGNED, DX_DIM_ALIGNED},
        {2, DX_DIM_ANGULAR, DX_DIM_ANGULAR},
        {3, DX_DIM_DIAMETER, DX_DIM_DIAMETER},
        {4, DX_DIM_RADIUS, DX_DIM_RADIUS},
        {5, DX_DIM_ANGULAR, DX_DIM_ARC_LENGTH},
        {6, DX_DIM_ORDINATE_Y, DX_DIM_ORDINATE_Y},
        {8, 0, DX_DIM_ARC_LENGTH},
        {9, 0, DX_DIM_RADIUS},
        {70, DX_DIM_ORDINATE_X, DX_DIM_ORDINATE_X},
    };
    constexpr int typeBits = 95; // without "block referenced by this one alone" and "text placed by the user"
    for (const Row& row : rows) {
        const int found = dim.extendedKind ? row.extendedKind : row.kind;
        if (row.flags != (dim.flags & typeBits) || found == 0) continue;
        *kind = found;
        return 0;
    }
    return DX_DIM_UNDECODED;
}

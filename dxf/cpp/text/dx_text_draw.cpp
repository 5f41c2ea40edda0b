// From the record of a text to the host's text.
//
// The host places a text by the corner, edge or middle of a cell that includes half the space around its
// characters; DXF by the characters themselves. So width, spacing and point are worked out anew.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_frame.h"
#include "../host/dx_host.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "dx_mtext_layout.h"
#include "dx_text_codes.h"
#include "dx_text_host.h"
#include "dx_text_import.h"
#include "ov_text.h"
#include "uo.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double toRadians = 0.017453292519943295;
constexpr double halfTurn = 180.0 * toRadians;
constexpr double smallestHeight = 0.0001;
constexpr int aligned = 3, fit = 5;

/// A text on its way to the host.
struct Placing {
    Placing(const DX_TEXT_TYPE& text, const DxCharset& style) : record(&text), charset(&style) {}

    const DX_TEXT_TYPE* record;
    const DxCharset* charset;
    std::string converted;   ///< the host's characters
    int bits[DX_BIT_COUNT];  ///< known with `converted`
    double dx = 0;           ///< spacing that overrides the font's, 0: none
    RPT3 first, second;      ///< world coordinates
    double rotation = 0;     ///< degrees, in the drawing
    bool isMirrored = false; ///< its characters would be mirrored
    double height = 0;       ///< world coordinates
    DxTextLength measure;
    double stretch = 1.0; ///< of a text that fits between its points, 1 for others
};

/// A line that runs along the whole text is a mark of the text; its codes then go.
void dropSwitches(std::string& text, const int bits[DX_BIT_COUNT]) {
    if (!bits[DX_BIT_UNDERLINE] && !bits[DX_BIT_OVERLINE]) return;
    std::erase_if(text, [&](char c) {
        return (c == OV_SWITCH_UNDERLINE && bits[DX_BIT_UNDERLINE]) ||
               (c == OV_SWITCH_OVERLINE && bits[DX_BIT_OVERLINE]);
    });
}

void convert(Placing& placing) {
    int lines[DX_BIT_COUNT];
    DxParseFormatFlags(placing.record->text, lines);
    placing.converted = placing.record->text;
    DxCutChars(placing.converted, DX_TEXT_LIMIT);
    DxConvTextToCAD(placing.converted, *placing.charset);
    DxResolveEscapes(placing.converted);
    std::copy_n(placing.charset->bits, DX_BIT_COUNT, placing.bits);
    for (int i = 0; i < DX_BIT_COUNT; ++i) {
        if (lines[i]) placing.bits[i] = lines[i];
    }
    dropSwitches(placing.converted, lines);
}

/// Degrees of a direction's image in the plane.
double rotationUnder(double degrees, const Mat44 m) {
    const double angle = std::fmod(degrees, 360.0) * toRadians;
    const double x = std::cos(angle), y = std::sin(angle);
    return std::atan2(x * m[0][1] + y * m[1][1], x * m[0][0] + y * m[1][0]) / toRadians;
}

/// Degrees by which a plane is turned that isn't turned over, scaled unevenly or with two signs though it may
/// be; the rotation of the INSERTs for one that is seen from its edge.
double turnOf(const Mat44 m) {
    if (m[0][1] == 0 && m[0][0] > 0) return 0;
    const bool isSeen = m[0][0] != 0 || m[0][1] != 0;
    return isSeen ? std::atan2(m[0][1], m[0][0]) / toRadians : DxBlockRotation;
}

void toWorld(Placing& placing, const Mat44 m) {
    const DX_TEXT_TYPE& record = *placing.record;
    Mat44 storage;
    const auto* matrix = DxObjectMatrix(record.extrusion, m, storage);
    placing.first = record.point;
    placing.second = record.second;
    placing.dx = placing.charset->factor;
    DxCharSpacingToCAD(record, &placing.dx, &placing.first, &placing.second);
    if (placing.charset->font == 0) {
        placing.first.x -= record.height * DX_FACE_SHIFT;
        placing.second.x -= record.height * DX_FACE_SHIFT;
    }
    DxTrans3DRpt(&placing.first, matrix);
    DxTrans3DRpt(&placing.second, matrix);
    const bool isTurnedOver = DxMirrors(matrix);
    const bool isBackward = (record.generation & DX_TEXT_BACKWARD) != 0;
    const bool isUpsideDown = (record.generation & DX_TEXT_UPSIDE_DOWN) != 0;
    placing.isMirrored = (isTurnedOver + isBackward + isUpsideDown) % 2 != 0;
    placing.rotation =
        isTurnedOver ? rotationUnder(record.rotation, matrix) : record.rotation + turnOf(matrix);
    placing.height = record.height * std::fabs(DxBlockScaleX);
}

int checkExtents(const Placing& placing) {
    const DX_TEXT_TYPE& record = *placing.record;
    DxCheckXYZ(placing.first.x, placing.first.y, placing.first.z);
    if (!record.isMtext && (record.horAlign || record.verAlign))
        DxCheckXYZ(placing.second.x, placing.second.y, placing.second.z);
    return 0;
}

bool isFit(const DX_TEXT_TYPE& record) {
    return !record.isMtext && record.horAlign == fit;
}
/// The line of these runs from the first point to the second.
bool hasLineBetweenPoints(const DX_TEXT_TYPE& record) {
    return isFit(record) || (!record.isMtext && record.horAlign == aligned);
}

void measure(Placing& placing) {
    const DX_TEXT_TYPE& record = *placing.record;
    DxTextMeasure what = DxTextMeasureOf(record, *placing.charset);
    what.isFixed = DxGetTextOptions().isFixFont;
    // A face is sized by height and factor; its length only matters between two points.
    if (!what.isFontFile && !what.isFixed && !isFit(record)) return;
    what.height = placing.height;
    if (record.isMtext) what.factor = placing.charset->widthFactor;
    DxTextGetDxfFontLen(what, &placing.measure);
    if (!isFit(record)) return;
    const double length = std::hypot(placing.second.x - placing.first.x, placing.second.y - placing.first.y);
    if (length > 0 && placing.measure.length > 0) placing.stretch = length / placing.measure.length;
    placing.measure.length *= placing.stretch;
}

/// Direction of the text's line, radians, as its points or its rotation and generation have it.
double lineDirection(const Placing& placing) {
    const DX_TEXT_TYPE& record = *placing.record;
    if (hasLineBetweenPoints(record)) {
        const double dx = placing.second.x - placing.first.x, dy = placing.second.y - placing.first.y;
        if (dx != 0 || dy != 0) return std::atan2(dy, dx);
    }
    const double angle = std::fmod(placing.rotation, 360.0) * toRadians;
    return record.generation & DX_TEXT_BACKWARD ? angle + halfTurn : angle;
}

/// Direction of the host's text. Characters can't be mirrored: where the plane is turned over, or the text
/// runs backward or stands on its head, it is turned so that it covers the same place and can be read.
double directionOf(const Placing& placing) {
    const double angle = lineDirection(placing);
    return placing.isMirrored ? std::remainder(angle + halfTurn, 2 * halfTurn) : angle;
}

OV_TEXT_EXT backgroundOf(const DX_TEXT_TYPE& record) {
    constexpr int colour = 1, colourOfSheet = 2, frame = 16;
    OV_TEXT_EXT ext;
    if (record.backFlag & frame) ext.backType = 1;
    if (record.backFlag & colourOfSheet)
        ext.backOn = 1;
    else if (DxFillMode != 0 && record.backFlag & colour) {
        DX_ENTITY_BASE_TYPE base;
        DxCopyEntityBase(&base, &record.base);
        base.color = record.backColor;
        base.trueColor = record.backTrueColor;
        base.transparency = record.backTransparency;
        ext.backOn = DxFillPenToCAD(&base, &ext.fillPen) ? 1 : 0;
    }
    return ext;
}

/// Character width, spacing and line distance of the host's text. The length is divided among the characters
/// in one place, by the host's font; to divide it by their number here as well would make texts too narrow.
void setSize(const Placing& placing, OV_TEXT_PARM& parm) {
    const DX_TEXT_TYPE& record = *placing.record;
    const bool isFace = DxCiTextIsTtf(static_cast<unsigned short>(placing.charset->font)) != 0;
    const double factor = record.isMtext ? placing.charset->widthFactor : record.widthFactor;
    const double length =
        isFace ? placing.height * (factor == 0 ? 1.0 : factor) * placing.stretch : placing.measure.length;
    const DxTextCadParams cad = DxTextCalcCadParams(placing.height, length, placing.charset->font,
                                                    placing.converted, placing.measure.space, placing.dx);
    parm.height = cad.height;
    parm.width = std::fabs(cad.width);
    parm.spacing = cad.spacing;
    parm.lineDistance = record.lineDistance > 0 ? record.lineDistance : placing.measure.lineDistance;
}

RPT3 setOrigin(const Placing& placing, OV_TEXT_PARM& parm) {
    const DX_TEXT_TYPE& record = *placing.record;
    RPT3 point = placing.first;
    if (record.isMtext) {
        const int a = std::clamp(record.attachment, 1, 9);
        parm.origin = a < 4 ? a + 6 : a > 6 ? a - 6 : a;
        if (placing.isMirrored) parm.origin += 2 * (1 - (parm.origin - 1) % 3);
        parm.justification = record.justification;
        return point;
    }
    DxTextConvOrigin({record.horAlign, record.verAlign, record.justification, placing.height,
                      DxLengthFromSheet(parm.width), parm.spacing, parm.lineDistance, parm.angle,
                      placing.isMirrored},
                     &parm.origin, &parm.justification, &point, placing.second);
    return point;
}

void setFont(const Placing& placing, OV_TEXT_PARM& parm) {
    parm.font = placing.charset->font;
    if (parm.font == 0) parm.face = placing.charset->face.view();
    std::copy_n(placing.bits, DX_BIT_COUNT, parm.bits);
}

int tellTooSmall() {
    if (!DxTextTooSmallTold) DxProtoMsg(DxMsg(5751), 1);
    DxTextTooSmallTold = 1;
    return 0;
}

bool isUsable(const OV_TEXT_PARM& parm, const RPT3& point) {
    const double values[] = {parm.height, parm.width,   parm.angle,
                             parm.slant,  parm.spacing, parm.lineDistance};
    return DxIsFinite(point) &&
           std::all_of(std::begin(values), std::end(values), [](double v) { return std::isfinite(v); });
}

/// Hands the text to the host.
int make(Placing& placing, int pen, DX_TEXT_KIND kind) {
    const DX_TEXT_TYPE& record = *placing.record;
    OV_TEXT_PARM parm;
    parm.pen = pen;
    parm.angle = directionOf(placing);
    parm.slant = record.oblique == 360.0 ? 0.0 : record.oblique * toRadians;
    setSize(placing, parm);
    setFont(placing, parm);
    const RPT3 point = setOrigin(placing, parm);
    if (!isUsable(parm, point)) return 0;
    if (!(parm.height > smallestHeight)) return tellTooSmall();
    const OV_TEXT_EXT ext = backgroundOf(record);
    if (const int error = DxNewElement(1)) return error;
    if (const int error = Dxovtextparams(parm, ext)) return error;
    const double box = record.boxWidth > record.height ? record.boxWidth * std::fabs(DxBlockScaleY) : 0;
    int row = 0;
    if (const int error = DxCiTextAdd(DxActPat, &row, point, std::move(placing.converted), kind, box))
        return error;
    DxEntityDrawn = 1;
    if (DxJoinTexts) DxTextListAdd(DxActPat, row);
    return 0;
}

} // namespace

void DxParseFormatFlags(std::string_view text, int bits[DX_BIT_COUNT]) {
    std::fill_n(bits, DX_BIT_COUNT, 0);
    if (!text.starts_with("%%")) return;
    const auto isWhole = [&](char letter) {
        const std::string_view codes[] = {letter == 'u' ? "%%u" : "%%o", letter == 'u' ? "%%U" : "%%O"};
        if (text.size() <= 3 || (!text.starts_with(codes[0]) && !text.starts_with(codes[1]))) return false;
        const std::size_t next = std::min(text.find(codes[0], 3), text.find(codes[1], 3));
        return next == std::string_view::npos || next + 3 == text.size();
    };
    bits[DX_BIT_UNDERLINE] = isWhole('u') ? 1 : 0;
    bits[DX_BIT_OVERLINE] = isWhole('o') ? 1 : 0;
}

/// Draws a text whose pen and charset are known.
static int drawIn(const DX_TEXT_TYPE* text, const Mat44 m, DX_TEXT_KIND kind, bool keepsEmpty, int pen,
                  const DxCharset& charset) {
    Placing placing(*text, charset);
    const bool isMeasured = DxCheckPass && (keepsEmpty || DxShowsAtStart(text->text, charset));
    if (!isMeasured) { // then the characters matter
        convert(placing);
        if (!keepsEmpty && DxIsBlankText(placing.converted)) return 0;
    }
    toWorld(placing, m);
    if (!DxIsFinite(placing.first) || !DxIsFinite(placing.second)) return 0;
    if (DxCheckPass) return checkExtents(placing);
    measure(placing);
    return make(placing, pen, kind);
}

int DxDrawText(const DX_TEXT_TYPE* text, const Mat44 m, int type, int keepEmpty) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&text->base, &pen, &lineType)) return 0;
    return drawIn(text, m, static_cast<DX_TEXT_KIND>(type), keepEmpty != 0, pen,
                  DxTextGetCharset(text->style.view(), DxTextDefaultFont()));
}

int DxDrawTextEntity(const DX_TEXT_TYPE* text, const Mat44 m) {
    return DxDrawText(text, m, DX_TEXT_OF_ENTITY, 0);
}

/// Draws the pieces of an MTEXT, which are alike in layer and line type. Blank ones hold the place of a line
/// among texts to join.
static int drawPieces(DxMtextBlock& block, const Mat44 m) {
    const bool usesDefault = !DxTextDefaultFont().empty();
    DX_TEXT_TYPE piece = block.firstPiece();
    int pen = 0, lineType = 0, penColor = 0;
    for (std::size_t i = 0; i < block.count(); ++i) {
        block.take(i, &piece);
        if (i == 0 || piece.base.color != penColor) {
            if (!DxPenLtToCAD(&piece.base, &pen, &lineType)) return 0;
            penColor = piece.base.color;
        }
        const DxCharset& charset =
            usesDefault ? DxTextGetCharset(piece.style.view(), DxTextDefaultFont()) : block.charset(i);
        if (const int error = drawIn(&piece, m, DX_TEXT_OF_ENTITY, DxJoinTexts != 0, pen, charset))
            return error;
    }
    return 0;
}

int DxDrawMtext(const DX_TEXT_TYPE* text, const Mat44 m) {
    Mat44 storage;
    DX_TEXT_TYPE copy = *text;
    DxMtextBlock block(copy, DxMirrors(DxObjectMatrix(text->extrusion, m, storage)));
    DxMtextLayOut(&copy, &block);
    copy.text.clear(); // the pieces have it
    if (DxJoinTexts) DxTextListInit(static_cast<int>(block.count()));
    if (const int error = drawPieces(block, m)) return error;
    return DxJoinTexts && !DxCheckPass ? DxTextListJoin() : 0;
}

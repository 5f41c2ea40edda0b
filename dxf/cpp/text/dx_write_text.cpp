// From a host text to DXF texts: reference points, width factor, and the kind of entity.
#include "dx_write_text.h"

#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../export/dx_attributes_export.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_attrib.h"
#include "../export/export_state.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "ci_text.h"
#include "ds.h"
#include "dx_codes.h"
#include "dx_mtext.h"
#include "dx_text_codes.h"
#include "dx_text_fonts.h"
#include "dx_text_host.h"
#include "dx_text_import.h"
#include "dx_text_placement.h"
#include "text_state.h"

#include <algorithm>

namespace {

/// An import that meets a stroke font for the first time takes its depth of letters for all texts.
void noteDescent(std::string_view font) {
    const auto known = DxFontTableIndex.find(std::string(font));
    if (DxWrittenDescent == 0 && known != DxFontTableIndex.end())
        DxWrittenDescent = DxFontTables[static_cast<std::size_t>(known->second)]->heightValue * 0.01;
}

/// A text in the frame and the unit of the drawing: how it looks, what its lines are and what they measure.
class TextWriter {
public:
    explicit TextWriter(const DX_WRITE_TEXT& text)
        : text_(text), parm_(text.parm), backOn_(text.ext.backOn != 0) {}

    int write() {
        if (!settleColours()) return 0;
        settleShape();
        settleLines();
        if (const int error = DxWriteMatrix(text_.pat, matrix_)) return error;
        RPT p{text_.x, text_.y};
        if (isBlock_) p = topLine(p);
        // The lines follow each other downwards; the point of the first stands at the top one.
        for (const std::string& line : lines_) {
            if (!line.empty() || text_.kind != DX_WRITE_PLAIN)
                if (const int error = writeLine(p, line)) return error;
            p = DxTextMoved(shape_, p, 0, -shape_.step);
        }
        return 0;
    }

private:
    bool settleColours() {
        DX_NAME none;
        DxPenLtToDXF(parm_.pen, 1, &colour_, &none, 1);
        if (text_.ext.fillPen != 0) DxFillToDXF(text_.ext.fillPen, &fillColour_); // 0: that of the sheet
        takeState();
        return DxShouldWriteColor(colour_, parm_.pen);
    }

    /// The state of the pattern may say how its texts look.
    void takeState() {
        CI_TEXT_STATE state;
        if (DxCiGetStateText(DxPatNames[DX_PAT_OBSTAT], &state) != 0) return;
        if (state.backOn != -1) backOn_ = state.backOn != 0;
        for (int bit = 0; bit < DX_BIT_COUNT && state.bits != -1; ++bit)
            parm_.bits[bit] = state.bits >> bit & 1;
        if (state.swapsColours && fillColour_ != -1) std::swap(colour_, fillColour_);
    }

    void settleShape() {
        const double unit = 1 / (DxScale * DxDrawUnit);
        shape_.height = parm_.height * unit;
        shape_.width = (parm_.width > 0 ? parm_.width : parm_.height) * unit;
        shape_.angle = parm_.angle - DsCoordSysActiveAngle();
        shape_.origin = std::clamp(parm_.origin, 0, 9);
        shape_.step = parm_.lineDistance * shape_.height;
        shape_.padX = (parm_.spacing - 1) * shape_.width * 0.5;
        shape_.padY = (parm_.lineDistance - 1) * shape_.height * 0.5;
        shape_.isFace = parm_.font == 0 && !parm_.face.IsEmpty();
        shape_.isMtext =
            shape_.isFace && text_.kind == DX_WRITE_PLAIN && DxMiscCheckVersion(DX_LEVEL_HANDLES);
        shape_.justification = parm_.justification;
        shape_.pointsMode = DxWriteTxtOrg;
    }

    /// The lines as the host shows them. An MTEXT breaks its line itself, to the width of its box.
    void settleLines() {
        lines_ = text_.lines;
        if (text_.kind != DX_WRITE_PLAIN) lines_.resize(1);
        if (text_.kind == DX_WRITE_PLAIN && text_.lineLength > 0) breakLines();
        isBlock_ = lines_.size() > 1 || room_ > 0;
    }

    void breakLines() {
        const bool isBroken = text_.shownLines.size() > lines_.size();
        const bool needsBox = isBroken || shape_.justification != 0; // a TEXT has none
        constexpr double usual = 5.0 / 3, least = 0.25, most = 4.0;  // what the format's factor may be
        const double factor = isBroken ? parm_.lineDistance / usual : 1.0;
        if (lines_.size() == 1 && factor >= least && factor <= most && DxMiscCheckVersion(DX_LEVEL_HANDLES)) {
            shape_.isMtext = shape_.isFace || needsBox;
            box_ = text_.lineLength;
            lineSpacing_ = factor;
            return;
        }
        if (!needsBox && lines_.size() == 1) return;
        lines_ = text_.shownLines;
        room_ = text_.lineLength;
        if (shape_.justification == 0) shape_.justification = shape_.column();
    }

    RPT topLine(const RPT& p) {
        blockWidth_ = text_.parm.justification != 0 ? room_ : 0;
        for (const std::string& line : lines_) blockWidth_ = std::max(blockWidth_, hostLength(line));
        return DxTextTopLine(shape_, p, static_cast<int>(lines_.size()), blockWidth_);
    }

    // ---- lengths ---------------------------------------------------------------------------------------

    /// Length without the space behind the last character.
    double fontLength(const std::string& line) const {
        return DxTextCalcTextRahmenLen(line, parm_.font, shape_.width, parm_.spacing);
    }

    double faceLength(const std::string& line) const {
        OV_TEXT_PARM parm = parm_;
        double length = 0;
        double across = 0;
        if (ovtextparamsttf(6, &parm) != 0 || DxCiTextSize(line, &length, &across) != 0) return 0;
        return length;
    }

    /// Length as the host counts it, with the space behind the last character.
    double hostLength(const std::string& line) const {
        return shape_.isFace ? faceLength(line) : fontLength(line) + (parm_.spacing - 1) * shape_.width;
    }

    /// A little longer than it is, so that an MTEXT isn't broken where the face is replaced by another.
    double dxfFaceLength(const std::string& line) const {
        constexpr double reserve = 1.05;
        const std::string face = parm_.face.str();
        DxTextMeasure what;
        what.text = line;
        what.font = face;
        what.isFontFile = false;
        what.bits = parm_.bits;
        what.height = shape_.height;
        DxTextLength measured;
        DxTextGetDxfFontLen(what, &measured);
        return std::max(measured.length, hostLength(line)) * reserve;
    }

    DX_LINE_LENGTHS lengthsOf(const std::string& line) const {
        return {hostLength(line), shape_.isFace ? dxfFaceLength(line) : fontLength(line)};
    }

    double widthFactor(const std::string& line, const DX_STYLE_TYPE* style,
                       const DX_LINE_LENGTHS& lengths) const {
        const double padded = (shape_.padX + shape_.width) / shape_.height;
        if (shape_.isFace && DxMiscCheckVersion(DX_LEVEL_HANDLES))
            return shape_.isMtext ? shape_.width / shape_.height : padded;
        if (!style) return padded;
        double widths = 0;
        double spaces = 0;
        DxTextGetDxfFontSpace(line, style->fontFile.view(), &widths, &spaces);
        if (text_.kind != DX_WRITE_INVISIBLE_ATTRIBUTE) noteDescent(style->fontFile.view());
        // A stroke font that stands in for a face of the target keeps the text's length.
        const double wanted = shape_.isFace ? lengths.host - 2 * shape_.padX : lengths.dxf;
        constexpr double smallest = 0.01;
        return widths + spaces > smallest ? wanted / ((widths + spaces) * shape_.height) : 1.0;
    }

    // ---- lines -----------------------------------------------------------------------------------------

    /// A line on its way: where it stands, and in which style.
    struct Line {
        std::string text;
        const DX_STYLE_TYPE* style;
        double factor;
        DX_LINE_LENGTHS lengths;
        DX_LINE_PLACE place;
    };

    int writeLine(const RPT& start, std::string text) {
        DxTextCheckIllegalChars(text);
        Line line;
        line.lengths = lengthsOf(text);
        line.style = DxTextGetDXFStyle(parm_.font, parm_.face, parm_.bits);
        line.factor = widthFactor(text, line.style, line.lengths);
        const RPT p = isBlock_ ? DxTextJustified(shape_, start, blockWidth_, line.lengths.host) : start;
        line.place = DxPlaceLine(shape_, p, line.lengths, DxReachesBelow(text) ? DxWrittenDescent : 0);
        if (const DX_STYLE_TYPE* converted = DxConvTextToDXF(text, parm_.font, parm_.face, parm_.bits))
            line.style = converted;
        DxTextCheckPolierText(text);
        line.text = std::move(text);
        const int error = text_.kind == DX_WRITE_PLAIN ? writePlain(line) : writeAttribute(line);
        if (error) return error;
        for (const RPT& point : {line.place.first, line.place.second}) DxStoreMaxXY(point.x, point.y);
        return 0;
    }

    /// What a TEXT or MTEXT and an attribute have in common.
    template <class Record>
    void fillCommon(Record& out, const Line& line) const {
        out.base.layer = DxActLayer;
        out.base.color = colour_;
        if (line.style) out.style = line.style->name;
        out.height = shape_.height;
        out.rotation = shape_.angle * DX_DEGREES;
        out.oblique = parm_.slant * DX_DEGREES;
        out.widthFactor = line.factor;
    }

    /// A line along the whole of a TEXT is a code at its start.
    std::string withLines(std::string line) const {
        constexpr std::pair<int, const char*> codes[] = {
            {DX_BIT_STRIKE, "%%k"}, {DX_BIT_OVERLINE, "%%o"}, {DX_BIT_UNDERLINE, "%%u"}};
        for (const auto& [bit, code] : codes)
            if (parm_.bits[bit] && line.find(code) == std::string::npos) line.insert(0, code);
        return line;
    }

    void fillBackground(DX_TEXT_TYPE& out) const {
        if (backOn_ && text_.ext.backType != 2 && text_.ext.backType != 3) {
            out.backFlag = fillColour_ == -1 ? 3 : 1;
            out.backColor = fillColour_;
        }
        const bool holdsBackground = shape_.isMtext && DxMiscCheckVersion(DX_LEVEL_SHEETS);
        if (out.backFlag && !holdsBackground) ++DxUnwrittenCounts[DX_UNWRITTEN_BACKGROUND];
    }

    void fillMtext(DX_TEXT_TYPE& out) const {
        out.attachment = DxTextAttachment(shape_);
        out.point = out.second;
        if (shape_.isFace) out.charSpacing = DxCharSpacingToDXF(parm_.spacing);
        out.lineSpacing = lineSpacing_;
        if (box_ > 0) out.justification = shape_.justification;
        DxMtextEscapeCharacters(out.text, parm_.bits);
    }

    int writePlain(const Line& line) const {
        DX_TEXT_TYPE out;
        fillCommon(out, line);
        out.isMtext = shape_.isMtext ? 1 : 0;
        out.text = shape_.isMtext ? line.text : withLines(line.text);
        out.point = {line.place.first.x, line.place.first.y, 0};
        out.second = {line.place.second.x, line.place.second.y, 0};
        out.horAlign = line.place.hor;
        out.verAlign = line.place.ver;
        out.boxWidth = box_ > 0 ? box_ : line.lengths.dxf;
        fillBackground(out);
        if (shape_.isFace && !shape_.isMtext) ++DxUnwrittenCounts[DX_UNWRITTEN_FACE];
        if (shape_.isMtext) fillMtext(out);
        return DxWriteTextOrMtext(out, matrix_, shape_.isFace ? DX_FACE_SHIFT : 0);
    }

    /// Without a block no ATTRIB follows with the value: the definition holds it, as a constant.
    int attributeFlags() const {
        constexpr int invisible = 1, constant = 2;
        if (text_.kind == DX_WRITE_ATTRIBUTE) return 0;
        return DxPatternToBlock ? invisible : invisible | constant;
    }

    int writeAttribute(const Line& line) const {
        DX_ATTRIB_TYPE out{};
        fillCommon(out, line);
        out.extrusion[2] = 1;
        out.horizontalJustify = line.place.hor;
        out.verticalJustify = line.place.ver;
        out.value = line.text;
        // An import draws a face in a style a little to the left of its points.
        const bool hasShift = shape_.isFace && DxMiscCheckVersion(DX_LEVEL_HANDLES);
        const double right = hasShift ? DX_FACE_SHIFT * shape_.height : 0;
        out.insertion = {line.place.first.x + right, line.place.first.y, 0};
        out.alignment = {line.place.second.x + right, line.place.second.y, 0};
        out.flags = attributeFlags();
        out.tag.assign(text_.tag);
        const int error = DxAttribWrite("ATTDEF", out, matrix_);
        return error ? error : DxAttribAdd(&out);
    }

    const DX_WRITE_TEXT& text_;
    OV_TEXT_PARM parm_;
    DX_TEXT_SHAPE shape_;
    Mat32 matrix_{};
    int colour_ = 7, fillColour_ = -1;
    bool backOn_;
    std::vector<std::string> lines_; ///< as they are written, an entity each
    bool isBlock_ = false;           ///< lines are placed in a block, from its top
    double blockWidth_ = 0;
    double room_ = 0;        ///< line length that the lines were broken to, 0: they weren't
    double box_ = 0;         ///< width of the MTEXT that breaks its line itself, 0: its line's
    double lineSpacing_ = 1; ///< of that MTEXT
};

} // namespace

int DxWriteText(const DX_WRITE_TEXT& text) {
    return TextWriter(text).write();
}

int DxWriteBalloon(int pat, int row, const OV_TEXT_EXT& ext) {
    if (ext.backType == 0) return 0;
    if (ext.backOn && ext.backType != 1) ++DxUnwrittenCounts[DX_UNWRITTEN_BACKGROUND]; // a fill is a hatch
    int active = 0;
    Dxovpat(5, &active);
    int frame = 0;
    int error = UoGetTextBalloonPat(pat, row, &frame);
    if (error) return error == DX_ERR_NO_MORE ? 0 : error;
    error = DxWritePatEl(frame, DX_KIND_TEXT, pat);
    if (active) Dxovpat(23, &active);
    Dxovpat(17, &frame);
    return error;
}

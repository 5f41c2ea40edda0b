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
#include "text_state.h"

#include <algorithm>
#include <cmath>

namespace {

/// An import that meets a stroke font for the first time takes its depth of letters for all texts.
void noteDescent(std::string_view font) {
    const auto known = DxFontTableIndex.find(std::string(font));
    if (DxWrittenDescent == 0 && known != DxFontTableIndex.end())
        DxWrittenDescent = DxFontTables[static_cast<std::size_t>(known->second)]->heightValue * 0.01;
}

/// A text in the frame and the unit of the drawing.
class TextWriter {
public:
    explicit TextWriter(const DX_WRITE_TEXT& text)
        : text_(text), parm_(text.parm), backOn_(text.ext.backOn != 0) {}

    int write() {
        if (!settleColours()) return 0;
        settleSizes();
        settleLines();
        if (const int error = DxWriteMatrix(text_.pat, matrix_)) return error;
        RPT p{text_.x, text_.y};
        if (isBlock_) moveToTop(p);
        // The lines follow each other downwards; the point of the first stands at the top one.
        for (const std::string& line : lines_) {
            if (!line.empty() || text_.kind != DX_WRITE_PLAIN)
                if (const int error = writeLine(p, line)) return error;
            p = moved(p, 0, -step_);
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

    void settleSizes() {
        const double unit = 1 / (DxScale * DxDrawUnit);
        height_ = parm_.height * unit;
        width_ = (parm_.width > 0 ? parm_.width : parm_.height) * unit;
        angle_ = parm_.angle - DsCoordSysActiveAngle();
        along_ = {std::cos(angle_), std::sin(angle_)};
        origin_ = std::clamp(parm_.origin, 0, 9);
        step_ = parm_.lineDistance * height_;
        padX_ = (parm_.spacing - 1) * width_ * 0.5;
        padY_ = (parm_.lineDistance - 1) * height_ * 0.5;
        isFace_ = parm_.font == 0 && !parm_.face.IsEmpty();
        isMtext_ = isFace_ && text_.kind == DX_WRITE_PLAIN && DxMiscCheckVersion(DX_LEVEL_HANDLES);
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
        const bool needsBox = isBroken || parm_.justification != 0; // a TEXT has none
        constexpr double usual = 5.0 / 3, least = 0.25, most = 4.0; // what the format's factor may be
        const double factor = isBroken ? parm_.lineDistance / usual : 1.0;
        if (lines_.size() == 1 && factor >= least && factor <= most && DxMiscCheckVersion(DX_LEVEL_HANDLES)) {
            isMtext_ = isFace_ || needsBox;
            box_ = text_.lineLength;
            lineSpacing_ = factor;
            return;
        }
        if (!needsBox && lines_.size() == 1) return;
        lines_ = text_.shownLines;
        room_ = text_.lineLength;
        if (parm_.justification == 0) parm_.justification = column();
    }

    int column() const { return origin_ == 0 ? 0 : (origin_ - 1) % 3; }
    int row() const { return origin_ == 0 ? 0 : (origin_ - 1) / 3; }

    /// The point, `right` along the text and `up` across it.
    RPT moved(const RPT& p, double right, double up) const {
        return {p.x + right * along_.x - up * along_.y, p.y + right * along_.y + up * along_.x};
    }

    /// Length without the space behind the last character.
    double fontLength(const std::string& line) const {
        return DxTextCalcTextRahmenLen(line, parm_.font, width_, parm_.spacing);
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
        return isFace_ ? faceLength(line) : fontLength(line) + (parm_.spacing - 1) * width_;
    }

    /// Several lines: the point of the block's top left corner.
    void moveToTop(RPT& p) {
        blockWidth_ = text_.parm.justification != 0 ? room_ : 0;
        for (const std::string& line : lines_) blockWidth_ = std::max(blockWidth_, hostLength(line));
        const double blockHeight = static_cast<double>(lines_.size()) * step_;
        p = moved(p, -column() * 0.5 * blockWidth_, (1 - row() * 0.5) * blockHeight);
        p = moved(p, 0, -step_);
        if (origin_ != 0) origin_ = 1;
    }

    /// Width factor, and the length that the text has in the DXF font.
    double widthFactor(const std::string& line, const DX_STYLE_TYPE* style, double* length) const {
        *length = isFace_ ? dxfFaceLength(line) : fontLength(line);
        if (isFace_ && DxMiscCheckVersion(DX_LEVEL_HANDLES))
            return isMtext_ ? width_ / height_ : (padX_ + width_) / height_;
        if (!style) return (padX_ + width_) / height_;
        double widths = 0;
        double spaces = 0;
        DxTextGetDxfFontSpace(line, style->fontFile.view(), &widths, &spaces);
        if (text_.kind != DX_WRITE_INVISIBLE_ATTRIBUTE) noteDescent(style->fontFile.view());
        // A stroke font that stands in for a face of the target keeps the text's length.
        const double wanted = isFace_ ? hostLength(line) - 2 * padX_ : *length;
        constexpr double smallest = 0.01;
        return widths + spaces > smallest ? wanted / ((widths + spaces) * height_) : 1.0;
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
        what.height = height_;
        DxTextLength measured;
        DxTextGetDxfFontLen(what, &measured);
        return std::max(measured.length, hostLength(line)) * reserve;
    }

    struct Anchor {
        RPT first, second;
        int hor, ver;
    };

    /// Reference points and alignment of a line whose host origin is the writer's.
    Anchor anchorOf(const RPT& p, double length, double dxfLength) const {
        Anchor a;
        a.hor = column();
        a.ver = row() == 0 ? 0 : row() + 1;
        a.first = moved(p, -column() * 0.5 * length, -row() * 0.5 * step_);
        const double up = row() * 0.5 * height_;
        if (origin_ == 0) {
            a.first = moved(p, 0.5 * dxfLength, 0);
            a.second = a.first;
        } else if (isMtext_ || (isFace_ && column() > 0)) {
            a.second = moved(p, 0, row() * 0.5 * (height_ - step_));
        } else {
            a.second = moved(a.first, column() * 0.5 * dxfLength, up);
        }
        if (!isMtext_ && (DxWriteTxtOrg == 1 || DxWriteTxtOrg == 2)) { // an MTEXT has one point alone
            a.ver = 0;
            a.hor = DxWriteTxtOrg == 1 ? 5 : 3;
            a.second = moved(a.first, dxfLength, 0);
        }
        return a;
    }

    /// From the host's cell to the character in it. Characters that stand closer than side by side are moved
    /// forward as well.
    void moveToCharacters(Anchor& a, const std::string& line) const {
        a.first = moved(a.first, std::abs(padX_), padY_);
        const bool isAtCell = isMtext_ || (isFace_ && a.hor == column()); // not at the characters' length
        // The block of an MTEXT that hangs on its middle or its bottom begins below the line.
        const bool isRaised = isMtext_ && line.find_first_of("gjpqy") != std::string::npos;
        const double below = isRaised ? (1 - row() * 0.5) * DxWrittenDescent * height_ : 0;
        a.second = moved(a.second, isAtCell ? (1 - column()) * padX_ : std::abs(padX_), padY_ - below);
    }

    int writeLine(const RPT& start, std::string line) {
        DxTextCheckIllegalChars(line);
        const double length = hostLength(line);
        const DX_STYLE_TYPE* style = DxTextGetDXFStyle(parm_.font, parm_.face, parm_.bits);
        double dxfLength = 0;
        const double factor = widthFactor(line, style, &dxfLength);
        RPT p = start;
        if (isBlock_ && parm_.justification >= 1 && parm_.justification <= 2)
            p = moved(p, parm_.justification * 0.5 * (blockWidth_ - length), 0);
        Anchor anchor = anchorOf(p, length, dxfLength);
        moveToCharacters(anchor, line);
        if (const DX_STYLE_TYPE* converted = DxConvTextToDXF(line, parm_.font, parm_.face, parm_.bits))
            style = converted;
        DxTextCheckPolierText(line);
        const int error = text_.kind == DX_WRITE_PLAIN ? writePlain(anchor, line, style, factor, dxfLength)
                                                       : writeAttribute(anchor, line, style, factor);
        if (error) return error;
        DxStoreMaxXY(anchor.first.x, anchor.first.y);
        DxStoreMaxXY(anchor.second.x, anchor.second.y);
        return 0;
    }

    /// Attachment of an MTEXT at the second point: from the row of the origin upside down.
    int attachment() const { return origin_ == 0 ? 7 : 3 * (2 - row()) + column() + 1; }

    /// A line along the whole of a TEXT is a code at its start.
    std::string withLines(std::string line) const {
        constexpr std::pair<int, const char*> codes[] = {
            {DX_BIT_STRIKE, "%%k"}, {DX_BIT_OVERLINE, "%%o"}, {DX_BIT_UNDERLINE, "%%u"}};
        for (const auto& [bit, code] : codes)
            if (parm_.bits[bit] && line.find(code) == std::string::npos) line.insert(0, code);
        return line;
    }

    int writePlain(const Anchor& anchor, const std::string& line, const DX_STYLE_TYPE* style, double factor,
                   double dxfLength) const {
        DX_TEXT_TYPE out;
        out.base.layer = DxActLayer;
        out.base.color = colour_;
        out.isMtext = isMtext_ ? 1 : 0;
        out.text = isMtext_ ? line : withLines(line);
        if (style) out.style = style->name;
        out.point = {anchor.first.x, anchor.first.y, 0};
        out.second = {anchor.second.x, anchor.second.y, 0};
        out.height = height_;
        out.rotation = angle_ * DX_DEGREES;
        out.oblique = parm_.slant * DX_DEGREES;
        out.widthFactor = factor;
        out.horAlign = anchor.hor;
        out.verAlign = anchor.ver;
        out.boxWidth = box_ > 0 ? box_ : dxfLength;
        if (backOn_ && text_.ext.backType != 2 && text_.ext.backType != 3) {
            out.backFlag = fillColour_ == -1 ? 3 : 1;
            out.backColor = fillColour_;
        }
        const bool holdsBackground = isMtext_ && DxMiscCheckVersion(DX_LEVEL_SHEETS);
        if (out.backFlag && !holdsBackground) ++DxUnwrittenCounts[DX_UNWRITTEN_BACKGROUND];
        if (isFace_ && !isMtext_) ++DxUnwrittenCounts[DX_UNWRITTEN_FACE];
        if (isMtext_) {
            out.attachment = attachment();
            out.point = out.second;
            if (isFace_) out.charSpacing = DxCharSpacingToDXF(parm_.spacing);
            out.lineSpacing = lineSpacing_;
            if (box_ > 0) out.justification = parm_.justification;
            DxMtextEscapeCharacters(out.text, parm_.bits);
        }
        return DxWriteTextOrMtext(out, matrix_, isFace_ ? DX_FACE_SHIFT : 0);
    }

    /// Without a block no ATTRIB follows with the value: the definition holds it, as a constant.
    int attributeFlags() const {
        constexpr int invisible = 1, constant = 2;
        if (text_.kind == DX_WRITE_ATTRIBUTE) return 0;
        return DxPatternToBlock ? invisible : invisible | constant;
    }

    int writeAttribute(const Anchor& anchor, const std::string& value, const DX_STYLE_TYPE* style,
                       double factor) const {
        DX_ATTRIB_TYPE out{};
        out.base.layer = DxActLayer;
        out.base.color = colour_;
        out.extrusion[2] = 1;
        out.horizontalJustify = anchor.hor;
        out.verticalJustify = anchor.ver;
        out.value = value;
        if (style) out.style = style->name;
        // A face in a style stands a little to the left of its points when it is drawn.
        const double right = isFace_ && DxMiscCheckVersion(DX_LEVEL_HANDLES) ? DX_FACE_SHIFT * height_ : 0;
        out.insertion = {anchor.first.x + right, anchor.first.y, 0};
        out.alignment = {anchor.second.x + right, anchor.second.y, 0};
        out.height = height_;
        out.rotation = angle_ * DX_DEGREES;
        out.oblique = parm_.slant * DX_DEGREES;
        out.widthFactor = factor;
        out.flags = attributeFlags();
        out.tag.assign(text_.tag);
        const int error = DxAttribWrite("ATTDEF", out, matrix_);
        return error ? error : DxAttribAdd(&out);
    }

    const DX_WRITE_TEXT& text_;
    OV_TEXT_PARM parm_;
    Mat32 matrix_{};
    int colour_ = 7, fillColour_ = -1;
    int origin_ = 1;
    bool backOn_;
    bool isFace_ = false, isMtext_ = false;
    bool isBlock_ = false;                      ///< lines are placed in a block, from its top
    std::vector<std::string> lines_;            ///< as they are written, an entity each
    double height_ = 0, width_ = 0, angle_ = 0; ///< drawing's unit, radians
    double step_ = 0;                           ///< from line to line
    double padX_ = 0, padY_ = 0;                ///< from a cell's corner to its character
    double blockWidth_ = 0;
    double room_ = 0;        ///< line length that the lines were broken to, 0: they weren't
    double box_ = 0;         ///< width of the MTEXT that breaks its line itself, 0: its line's
    double lineSpacing_ = 1; ///< of that MTEXT
    RPT along_{1, 0};
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

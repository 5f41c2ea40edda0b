// From a host text to DXF texts: reference points, width factor, and the kind of entity.
#include "dx_write_text.h"

#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../export/dx_attributes_export.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_attrib.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "ci_text.h"
#include "ds.h"
#include "dx_mtext.h"
#include "dx_text_codes.h"
#include "dx_text_fonts.h"
#include "dx_text_host.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double degrees = 57.29577951308232;

/// A text in the frame and the unit of the drawing.
class TextWriter {
public:
    explicit TextWriter(const DX_WRITE_TEXT& text) : text_(text), parm_(text.parm) {}

    int write() {
        if (!settleColours()) return 0;
        settleSizes();
        if (const int error = DxWriteMatrix(text_.pat, matrix_)) return error;
        RPT p{text_.x, text_.y};
        if (text_.kind == DX_WRITE_PLAIN && text_.lines.size() > 1) moveToTop(p);
        // The lines follow each other downwards; the point of the first stands at the top one.
        for (const std::string& line : text_.lines) {
            if (!line.empty())
                if (const int error = writeLine(p, line)) return error;
            p = moved(p, 0, -step_);
            if (text_.kind != DX_WRITE_PLAIN) break;
        }
        return 0;
    }

private:
    bool settleColours() {
        DX_NAME none;
        DxPenLtToDXF(parm_.pen, 1, &colour_, &none, 1);
        DxFillToDXF(text_.ext.fillPen, &fillColour_);
        return DxShouldWriteColor(colour_, parm_.pen);
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
    }

    /// The point, `right` along the text and `up` across it.
    RPT moved(const RPT& p, double right, double up) const {
        return {p.x + right * along_.x - up * along_.y, p.y + right * along_.y + up * along_.x};
    }

    double fontLength(const std::string& line) const {
        double hundredths = 0;
        int proportional = 0;
        DxTextGetCadFontLen(line, parm_.font, &hundredths, &proportional);
        const auto characters = static_cast<double>(DxCharCount(line));
        return ((parm_.spacing - 1) * characters + hundredths * 0.01) * width_;
    }

    double faceLength(const std::string& line) const {
        OV_TEXT_PARM parm = parm_;
        double length = 0;
        double across = 0;
        if (ovtextparamsttf(6, &parm) != 0 || ovtextsize(line, &length, &across) != 0) return 0;
        return length;
    }

    double hostLength(const std::string& line) const { return isFace_ ? faceLength(line) : fontLength(line); }

    /// Several lines: the point of the block's top left corner.
    void moveToTop(RPT& p) {
        double longest = 0;
        for (const std::string& line : text_.lines) longest = std::max(longest, hostLength(line));
        blockWidth_ = longest;
        const double blockHeight = static_cast<double>(text_.lines.size()) * step_;
        const int column = origin_ == 0 ? 0 : (origin_ - 1) % 3;
        const int row = origin_ == 0 ? 0 : (origin_ - 1) / 3;
        p = moved(p, -column * 0.5 * longest, (1 - row * 0.5) * blockHeight);
        p = moved(p, 0, -step_);
        if (origin_ != 0) origin_ = 1;
    }

    /// Width factor, and the length that the text has in the DXF font.
    double widthFactor(const std::string& line, const DX_STYLE_TYPE* style, double* length) const {
        double factor = (padX_ + width_) / height_;
        if (isFace_) {
            DxTextMeasure what;
            what.text = line;
            const std::string face = parm_.face.str();
            what.font = face;
            what.isFontFile = false;
            what.bits = parm_.bits;
            what.height = height_;
            DxTextLength measured;
            DxTextGetDxfFontLen(what, &measured);
            *length = measured.length * 1.05;
            return factor;
        }
        *length = fontLength(line) - (parm_.spacing - 1) * width_;
        double sum = 0;
        double space = 0;
        if (style && DxTextGetDxfFontSpace(line, style->fontFile.view(), &sum, &space) == 0)
            factor = sum + space > 0.01 ? *length / ((sum + space) * height_) : 1.0;
        return factor;
    }

    struct Anchor {
        RPT first, second;
        int hor, ver;
    };

    /// Reference points and alignment of a line whose host origin is the writer's.
    Anchor anchorOf(const RPT& p, double length, double dxfLength) const {
        const int column = origin_ == 0 ? 0 : (origin_ - 1) % 3;
        const int row = origin_ == 0 ? 0 : (origin_ - 1) / 3;
        Anchor a;
        a.hor = column;
        a.ver = row == 0 ? 0 : row + 1;
        const double down = row * 0.5 * step_;
        a.first = moved(p, -column * 0.5 * length, -down);
        const double up = row * 0.5 * height_;
        if (origin_ == 0) {
            a.first = moved(p, 0.5 * dxfLength, 0);
            a.second = a.first;
        } else if (isFace_ && column > 0) {
            a.second = moved(p, 0, row * 0.5 * (height_ - step_));
        } else {
            a.second = moved(a.first, column * 0.5 * dxfLength, up);
        }
        const bool isMtext = isFace_ && DxMiscCheckVersion(6); // it stands at its second point alone
        if (!isMtext && (DxWriteTxtOrg == 1 || DxWriteTxtOrg == 2)) {
            a.ver = 0;
            a.hor = DxWriteTxtOrg == 1 ? 5 : 3;
            a.second = moved(a.first, dxfLength, 0);
        }
        return a;
    }

    int writeLine(const RPT& start, std::string line) {
        DxTextCheckIllegalChars(line);
        const double length = hostLength(line);
        const DX_STYLE_TYPE* style = DxTextGetDXFStyle(parm_.font, parm_.face, parm_.bits);
        double dxfLength = 0;
        const double factor = widthFactor(line, style, &dxfLength);
        RPT p = start;
        if (text_.lines.size() > 1 && parm_.justification >= 1 && parm_.justification <= 2)
            p = moved(p, parm_.justification * 0.5 * (blockWidth_ - length), 0);
        Anchor anchor = anchorOf(p, length, dxfLength);
        // Characters that stand closer than side by side are moved forward as well.
        anchor.first = moved(anchor.first, std::abs(padX_), padY_);
        anchor.second = moved(anchor.second, std::abs(padX_), padY_);
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
    int attachment() const {
        if (origin_ == 0) return 7;
        const int row = (origin_ - 1) / 3;
        return 3 * (2 - row) + (origin_ - 1) % 3 + 1;
    }

    int writePlain(const Anchor& anchor, const std::string& line, const DX_STYLE_TYPE* style, double factor,
                   double dxfLength) const {
        DX_TEXT_TYPE out;
        out.base.layer = DxActLayer;
        out.base.color = colour_;
        out.isMtext = isFace_ && DxMiscCheckVersion(6) ? 1 : 0;
        out.text = line;
        if (style) out.style = style->name;
        out.point = {anchor.first.x, anchor.first.y, 0};
        out.second = {anchor.second.x, anchor.second.y, 0};
        out.height = height_;
        out.rotation = angle_ * degrees;
        out.oblique = parm_.slant * degrees;
        out.widthFactor = factor;
        out.horAlign = anchor.hor;
        out.verAlign = anchor.ver;
        out.boxWidth = dxfLength;
        if (text_.ext.backOn && text_.ext.backType != 2 && text_.ext.backType != 3) {
            out.backFlag = fillColour_ == -1 ? 3 : 1;
            out.backColor = fillColour_;
        }
        if (out.isMtext) {
            out.attachment = attachment();
            out.point = out.second;
            DxMtextEscapeCharacters(out.text, parm_.bits);
        }
        return DxWriteTextOrMtext(out, matrix_);
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
        out.insertion = {anchor.first.x, anchor.first.y, 0};
        out.alignment = {anchor.second.x, anchor.second.y, 0};
        out.height = height_;
        out.rotation = angle_ * degrees;
        out.oblique = parm_.slant * degrees;
        out.widthFactor = factor;
        out.flags = text_.kind == DX_WRITE_ATTRIBUTE ? 0 : 1;
        out.tag.assign(text_.tag);
        const int error = DxAttribWrite("ATTDEF", out, matrix_);
        return error ? error : DxAttribAdd(&out);
    }

    const DX_WRITE_TEXT& text_;
    OV_TEXT_PARM parm_;
    Mat32 matrix_{};
    int colour_ = 7, fillColour_ = -1;
    int origin_ = 1;
    bool isFace_ = false;
    double height_ = 0, width_ = 0, angle_ = 0; ///< drawing's unit, radians
    double step_ = 0;                           ///< from line to line
    double padX_ = 0, padY_ = 0;                ///< from a cell's corner to its character
    double blockWidth_ = 0;
    RPT along_{1, 0};
};

} // namespace

int DxWriteText(const DX_WRITE_TEXT& text) {
    return TextWriter(text).write();
}

int DxWriteBalloon(int pat, int row, const OV_TEXT_EXT& ext) {
    if (ext.backType == 0) return 0;
    int active = 0;
    Dxovpat(5, &active);
    int frame = 0;
    int error = UoGetTextBalloonPat(pat, row, &frame);
    if (error) return error == 1005 ? 0 : error;
    error = DxWritePatEl(frame, DX_KIND_TEXT, pat);
    if (active) Dxovpat(23, &active);
    Dxovpat(17, &frame);
    return error;
}

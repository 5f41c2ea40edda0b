// Reading TEXT and MTEXT.
#include "../import/dx_entity_base.h"
#include "../import/dx_transform.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_text_codes.h"
#include "dx_text_import.h"
#include "mt.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace {

using R = DX_TEXT_TYPE;
constexpr auto fields = dxFields<R>({
    {7, &R::style, DX_UPPER},
    {10, &R::point},
    {11, &R::second},
    {40, &R::height},
    {44, &R::lineSpacing},
    {45, &R::backScale},
    {63, &R::backColor},
    {71, &R::attachment},
    {90, &R::backFlag},
    {210, &R::extrusion},
    {421, &R::backTrueColor},
    {441, &R::backTransparency},
});

constexpr int valueLimit = static_cast<int>(DX_TEXT_LIMIT) + 1;

/// Takes what the table of fields can't: the text in pieces and groups that mean different things.
class TextReader {
public:
    explicit TextReader(DX_TEXT_TYPE& text) : text_(text) {}

    int read() {
        const bool showPercent = DxShowsPercent();
        DxPair pair;
        for (bool takes = true;;) {
            if (const int error = DxReadPair(pair, valueLimit, showPercent)) return error;
            if (pair.code == 0) break;
            if (pair.code == 101) takes = false; // an embedded object has groups of its own
            if (takes && !fields.store(text_, pair.code, pair.text)) take(pair);
        }
        DxUnGetLine();
        finish();
        return 0;
    }

private:
    void take(const DxPair& pair) {
        switch (pair.code) {
        case 1:
        case 3: return takeText(pair);
        case 41: (text_.isMtext ? text_.boxWidth : text_.widthFactor) = DxfReadConvDouble(pair.text); break;
        case 50:
            text_.rotation = DxfReadConvDouble(pair.text);
            hasRotation_ = true;
            break;
        case 51: text_.oblique = DxfReadConvDouble(pair.text); break;
        case 72: takeAlignment(pair, 5, text_.horAlign); break;
        case 73: takeAlignment(pair, 3, text_.verAlign); break;
        default: DxReadEntityBase(&text_.base, pair.code, pair.text);
        }
    }

    /// Pieces that aren't whole characters are joined as bytes, since one may be divided between two of them:
    /// always in a page of double bytes, and in UTF-8 where an end shows it.
    void takeText(const DxPair& pair) {
        const bool isWhole = pair.text == pair.bytes && DxIsUtf8(pair.bytes);
        if (!isWhole) {
            bytes_ += pair.bytes.substr(0, 4 * DX_TEXT_LIMIT);
        } else if (bytes_.empty() || !DxIsAscii(pair.bytes)) {
            takeBytes();
            text_.text += pair.text;
        } else {
            bytes_ += pair.bytes;
        }
    }
    void takeBytes() {
        if (!bytes_.empty()) text_.text += DxReadDecoded(bytes_);
        bytes_.clear();
    }

    /// MTEXT uses the two groups for flow and line spacing, within the same bounds.
    void takeAlignment(const DxPair& pair, int most, int& field) {
        const int value = DxAtoi(pair.text);
        if (value >= 0 && value <= most)
            field = value;
        else
            DxProtoMsg(DxMsg(5748, pair.code, value), 1);
    }

    void finish() {
        takeBytes();
        if (!text_.isMtext) text_.generation = text_.attachment;
        DxCutChars(text_.text, text_.isMtext ? DX_MTEXT_LIMIT : DX_TEXT_LIMIT);
        if (text_.isMtext && !hasRotation_) text_.rotation = angleOfAxis();
    }

    /// Degrees of the x axis, which is given in world coordinates, in the plane of the text.
    double angleOfAxis() const {
        constexpr double degrees = 57.29577951308232;
        RPT3 axis = text_.second;
        Mat44 toWorld, toObject;
        const bool isTilted = text_.extrusion[0] != 0 || text_.extrusion[1] != 0 || text_.extrusion[2] <= 0;
        if (isTilted) {
            DxArbaxis(text_.extrusion[0], text_.extrusion[1], text_.extrusion[2], toWorld);
            if (Mt44Invert(toWorld, toObject) == 0) Mt44MultRpt3Vec(text_.second, toObject, &axis);
        }
        return std::atan2(axis.y, axis.x) * degrees;
    }

    DX_TEXT_TYPE& text_;
    std::string bytes_; ///< of the file's code page, still to be converted
    bool hasRotation_ = false;
};

} // namespace

void DxInitText(DX_TEXT_TYPE* text, int isMtext) {
    std::destroy_at(text);
    ::new (text) DX_TEXT_TYPE; // without zeros for the room of its names
    DxInitEntityBase(&text->base);
    text->style.assign("STANDARD");
    text->isMtext = isMtext;
    text->widthFactor = isMtext ? 0.0 : 1.0;
}

int DxfReadTextOrMtext(int isMtext, DX_TEXT_TYPE* text) {
    DxInitText(text, isMtext);
    return TextReader(*text).read();
}

int DxReadText(DX_TEXT_TYPE* text) {
    return DxfReadTextOrMtext(0, text);
}

int DxReadMtext(DX_TEXT_TYPE* text) {
    return DxfReadTextOrMtext(1, text);
}

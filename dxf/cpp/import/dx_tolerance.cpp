// TOLERANCE: rows of cells in frames, which the host doesn't have. They become lines and texts.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../dimension/dx_dim_overrides.h"
#include "../host/dx_host.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_documents.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "../text/dx_text_fonts.h"
#include "../text/dx_text_import.h"
#include "dx_annotation_import.h"
#include "dx_dimstyle.h"
#include "dx_entity_base.h"
#include "dx_linework_import.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using R = DX_TOLERANCE_TYPE;
constexpr auto fields = dxFields<R>({
    {3, &R::styleName, DX_UPPER},
    {10, &R::insertion},
    {11, &R::direction},
    {210, &R::extrusion},
});

constexpr std::string_view lineFeed = "^J", divider = "%%v";
constexpr std::string_view symbolStarts[] = {"{\\Fgdt;", "{\\fgdt;"};
constexpr const char* symbolStyle = "$@DXF@$AMGDT"; ///< no name of a file's own style

void init(R& rec) {
    rec = R{};
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.extrusion);
    rec.direction = {1, 0, 0};
}

RPT3 along(const RPT3& point, const RPT3& direction, double length) {
    return {point.x + direction.x * length, point.y + direction.y * length, point.z + direction.z * length};
}

/// The text style of a dimension style; the first one when its handle is of none, null without any.
const DX_STYLE_TYPE* textStyleOf(const DX_DIM_STYLE& style) {
    const auto& styles = DxDocuments.currentTables().styles;
    const auto handle = static_cast<std::uint32_t>(style.integers[DIMTXSTY]);
    const auto* found = std::find_if(styles.begin(), styles.end(),
                                     [&](const DX_STYLE_TYPE& known) { return known.handle == handle; });
    if (found != styles.end()) return found;
    return styles.begin() == styles.end() ? nullptr : styles.begin();
}

double heightOf(const DX_DIM_STYLE& style, const DX_STYLE_TYPE* textStyle) {
    constexpr double smallest = 0.0001;
    if (style.reals[DIMTXT] > smallest) return style.reals[DIMTXT] * style.reals[DIMSCALE];
    return textStyle ? textStyle->height : 0;
}

int addSymbolStyle(double height) {
    DX_STYLE_TYPE style{};
    style.name.assign(symbolStyle);
    style.fontFile.assign("AMGDT.TTF");
    style.fontFamily.assign("AMGDT");
    style.height = height;
    style.widthFactor = 1.0;
    int index = 0;
    return DxTableAddStyle(&style, &index);
}

/// A length of `text` that begins a symbol, 0 when none does.
std::size_t symbolStart(std::string_view text) {
    for (const std::string_view start : symbolStarts)
        if (text.starts_with(start)) return start.size();
    return 0;
}

/// Where plain text ends: at the next line feed, divider or symbol.
std::size_t plainLength(std::string_view text) {
    std::size_t end = std::min({text.size(), text.find(lineFeed), text.find(divider)});
    for (const std::string_view start : symbolStarts) end = std::min(end, text.find(start));
    return end;
}

/// Draws the rows of one tolerance, its pen going from cell to cell.
class Rows {
public:
    Rows(const R& rec, const DX_DIM_STYLE& style, const DX_NAME& textStyle, double height, const Mat44 m)
        : rec_(rec), m_(m), textStyle_(textStyle),
          h_(height), down_{rec.direction.y, -rec.direction.x, rec.direction.z}, pen_(rec.insertion),
          rowStart_(rec.insertion) {
        setText(style.integers[DIMCLRT]);
        DxCopyEntityBase(&line_.base, &rec.base);
        setColour(line_.base, style.integers[DIMCLRD]);
        std::copy_n(rec.extrusion, 3, line_.extrusion);
        line_.thickness = 0;
    }

    /// The result of the last frame: a part that fails doesn't keep the others from being drawn.
    int draw() {
        std::string_view rest = rec_.text;
        for (;;) {
            if (rest.empty()) return frame();
            rest.remove_prefix(step(rest));
        }
    }

private:
    static void setColour(DX_ENTITY_BASE_TYPE& base, int colour) {
        if (DxMoreKinds)
            DxTakeStyleColour(&base, colour);
        else
            base.color = colour;
    }

    void setText(int colour) {
        DxInitText(&text_, 0);
        DxCopyEntityBase(&text_.base, &rec_.base);
        setColour(text_.base, colour);
        std::copy_n(rec_.extrusion, 3, text_.extrusion);
        constexpr int middle = 2;
        text_.verAlign = middle;
        text_.height = h_;
        text_.rotation = std::atan2(rec_.direction.y, rec_.direction.x) * 180 / std::numbers::pi;
    }

    /// Draws what stands at the start of `rest`. Its length.
    std::size_t step(std::string_view rest) {
        if (rest.starts_with(lineFeed)) {
            frame();
            return lineFeed.size();
        }
        if (rest.starts_with(divider)) {
            stroke(along(pen_, down_, -h_), along(pen_, down_, h_));
            isFirst_ = true;
            return divider.size();
        }
        if (rest.front() == '\\') return formatCode(rest);
        if (const std::size_t start = symbolStart(rest)) return symbol(rest, start);
        const std::size_t length = plainLength(rest);
        cell(rest.substr(0, length), textStyle_);
        return length;
    }

    /// Codes for formats say nothing here.
    static std::size_t formatCode(std::string_view rest) {
        const std::size_t end = std::max<std::size_t>(plainLength(rest), 1), semicolon = rest.find(';');
        return semicolon < end ? semicolon + 1 : end;
    }

    std::size_t symbol(std::string_view rest, std::size_t start) {
        std::size_t end = start;
        if (end < rest.size()) DxNextChar(rest, end);
        DX_NAME style;
        style.assign(symbolStyle);
        cell(rest.substr(start, end - start), style);
        return std::min(end + 1, rest.size()); // with its closing brace
    }

    void cell(std::string_view content, const DX_NAME& style) {
        const double gap = 0.25 * h_;
        if (isFirst_) pen_ = along(pen_, rec_.direction, gap);
        isFirst_ = false;
        text_.text = content;
        text_.style = style;
        text_.point = text_.second = pen_;
        DxDrawText(&text_, m_, DX_TEXT_OF_ENTITY, 0);
        DxTextLength length;
        DxTextGetDxfLen(text_, &length);
        pen_ = along(pen_, rec_.direction, length.length + gap);
    }

    int stroke(const RPT3& from, const RPT3& to) {
        line_.start = from;
        line_.end = to;
        return DxDrawLine(&line_, m_);
    }

    /// The frame of the row, and on to the next one.
    int frame() {
        const RPT3 above = along(rowStart_, down_, -h_), below = along(rowStart_, down_, h_);
        const RPT3 endAbove = along(pen_, down_, -h_), endBelow = along(pen_, down_, h_);
        stroke(above, below);
        stroke(above, endAbove);
        stroke(endBelow, endAbove);
        const int error = stroke(endBelow, below);
        ++row_;
        pen_ = rowStart_ = along(rec_.insertion, down_, row_ * 2 * h_);
        isFirst_ = true;
        return error;
    }

    const R& rec_;
    const double (*m_)[4];
    DX_NAME textStyle_;
    double h_;      ///< height of the texts, half of that of a row
    RPT3 down_;     ///< direction from row to row
    RPT3 pen_;      ///< behind what was drawn last
    RPT3 rowStart_; ///< left middle of the row
    int row_ = 0;
    bool isFirst_ = true; ///< nothing stands in the cell yet
    DX_TEXT_TYPE text_;
    DX_LINE_TYPE line_;
};

} // namespace

int DxReadTolerance(R* rec) {
    init(*rec);
    DxDimOverrides overrides(rec->styleName, rec->styleOverride);
    const auto hook = [&](const DxPair& pair) {
        if (overrides.take(pair)) return;
        if (pair.code == 1 && rec->text.size() < 4 * DX_TEXT_LIMIT)
            rec->text += pair.text;
        else if (pair.code != 1)
            DxReadEntityBase(&rec->base, pair.code, pair.text);
    };
    if (const int error = DxReadFields(*rec, fields, hook, static_cast<int>(DX_TEXT_LIMIT) + 1)) return error;
    DxCutChars(rec->text, DX_TEXT_LIMIT);
    return 0;
}

int DxDrawTolerance(const R* rec, const Mat44 m) {
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    if (!DxCheckPass) {
        if (const int error = DxSetPenLt(look.pen, look.lineType)) return error;
    }
    const DX_DIM_STYLE* style = DxStyleOf(rec->styleName, rec->styleOverride);
    if (!style) return 0;
    const DX_STYLE_TYPE* textStyle = textStyleOf(*style);
    const double height = heightOf(*style, textStyle);
    DX_NAME styleName{};
    if (textStyle) styleName = textStyle->name;
    addSymbolStyle(height);
    return Rows(*rec, *style, styleName, height, m).draw();
}

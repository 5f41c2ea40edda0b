// Lengths of texts on either side.
#include "../config/config_state.h"
#include "../host/dx_frame.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "ci_text.h"
#include "dx_text_codes.h"
#include "dx_text_fonts.h"
#include "dx_text_host.h"
#include "ov_text.h"
#include "uo.h"

#include <algorithm>
#include <cmath>

namespace {

/// A code that a DXF font lacks, told once for each font.
void tellMissing(DxFontTable& table, int code) {
    if (table.toldCodes.insert(code).second) DxProtoMsg(DxMsg(5739, code, table.name.c_str()), 1);
}
/// The same of a host font, for the protocol only.
void tellMissing(DxCadFontTable& table, int code) {
    if (table.toldCodes.insert(code).second) DxProtoMsg(DxMsg(5740, code, table.number), 0);
}

/// Width and space of a table code in hundredths of the height; the averages for one that the font lacks.
struct Cell {
    double width, space;
};
Cell cellOf(DxFontTable& table, int code) {
    if (code > 0 && code < 256) {
        const DxFontTable::Cell cell = table.cells[static_cast<std::size_t>(code)];
        if (cell.width >= 0) return {double(cell.width), double(cell.space)};
    }
    tellMissing(table, code);
    return {table.averageWidth, table.averageSpace};
}

/// The rough rule: characters of six tenths of the height, a quarter of that between them.
DxTextLength roughLength(const DxTextMeasure& what, int count) {
    DxTextLength result;
    result.space = 0.25;
    if (count > 0) result.length = 0.6 * what.height * ((count - 1) * 0.25 + count);
    return result;
}

/// What the characters of a text take in a font, in hundredths of the height.
struct Sums {
    double widths = 0, spaces = 0;
    double last = 0; ///< space behind the last character
    int count = 0;
};

/// Adds the plain characters from `pos` on that the font has. Where it stops.
std::size_t addPlain(std::string_view text, std::size_t pos, const DxFontTable& table, Sums& sums) {
    const std::size_t start = pos;
    int widths = 0, spaces = 0; // at most some thousand characters of at most 10000 each
    for (; pos < text.size(); ++pos) {
        const DxFontTable::Cell cell = table.plain[static_cast<unsigned char>(text[pos])];
        if (cell.width < 0) break;
        widths += cell.width;
        spaces += cell.space;
    }
    if (pos == start) return pos;
    sums.widths += widths;
    sums.spaces += spaces;
    sums.last = table.plain[static_cast<unsigned char>(text[pos - 1])].space;
    sums.count += static_cast<int>(pos - start);
    return pos;
}

Sums sumsOf(std::string_view text, DxFontTable& table) {
    Sums sums;
    for (std::size_t pos = addPlain(text, 0, table, sums); pos < text.size();
         pos = addPlain(text, pos, table, sums)) {
        const DxTextUnit unit = DxNextTextUnit(text, pos);
        pos += unit.length;
        if (!unit.character) continue;
        const Cell cell = cellOf(table, unit.code);
        sums.widths += cell.width;
        sums.spaces += cell.space;
        sums.last = cell.space;
        ++sums.count;
    }
    return sums;
}

DxTextLength tableLength(const DxTextMeasure& what, double factor, DxFontTable& table) {
    DxTextLength result;
    const Sums sums = sumsOf(what.text, table);
    const double spaces = sums.spaces - sums.last; // none behind the last character
    result.length = (sums.widths + spaces) * what.height * factor * 0.01;
    result.space = spaces * factor * 0.01;
    if (sums.count > 1) result.space /= sums.count - 1;
    if (sums.count == 1) result.space = factor * table.averageSpace * 0.01;
    result.lineDistance = table.averageSpace * 0.02 + 1.0;
    return result;
}

/// The table of the measure's font file, null when it has none. The charset remembers it.
DxFontTable* fontTableOf(const DxTextMeasure& what) {
    if (what.charset && what.charset->fontTable) return what.charset->fontTable;
    const int index = DxTextGetFontIndex(what.font);
    DxFontTable* table = index < 0 ? nullptr : DxFontTables[static_cast<std::size_t>(index)].get();
    if (what.charset) what.charset->fontTable = table;
    return table;
}

/// A face and its marks as a key.
std::string faceKey(const DxTextMeasure& what) {
    std::string key(what.font);
    key += what.bits && what.bits[DX_BIT_BOLD] ? "\1b" : "\1";
    key += what.bits && what.bits[DX_BIT_ITALIC] ? "i" : "";
    return key;
}

/// Width of a character, measured by the host at a size that leaves no rounding. The height counts as
/// millimetres on the sheet there, and the size comes back in the drawing's unit. Below 0: the host failed.
double measureChar(const DxTextMeasure& what, char32_t c) {
    constexpr double size = 100.0;
    OV_TEXT_PARM parm;
    ovtextparamsttf(5, &parm);
    parm.font = 0;
    parm.height = parm.width = size;
    parm.spacing = 1.0;
    parm.face = what.font;
    for (int i = 0; i < DX_BIT_COUNT; ++i) parm.bits[i] = what.bits ? what.bits[i] : 0;
    double width = 0, height = 0;
    std::string text;
    DxAppendChar(text, c);
    if (ovtextparamsttf(6, &parm) || DxCiTextSize(text, &width, &height)) return -1;
    return DxLengthToSheet(width) / size;
}

DxFaceTable& faceTableOf(const DxTextMeasure& what) {
    if (what.charset && what.charset->faceTable) return *what.charset->faceTable;
    const auto entry = DxFaceTables.try_emplace(faceKey(what)).first;
    if (what.charset) what.charset->faceTable = &entry->second;
    return entry->second;
}

/// A character's width in the table's unit; 0, which isn't kept, when the host can't tell.
std::int64_t charWidth(DxFaceTable& table, const DxTextMeasure& what, char32_t c) {
    constexpr double widest = 1000; // times the height, far beyond any character
    const bool standsForItself = c < 128 && DxIsPlain(static_cast<char>(c));
    std::int64_t& width =
        standsForItself ? table.plain[c] : table.others.try_emplace(c, DxFaceTable::unknown).first->second;
    if (width != DxFaceTable::unknown) return width;
    const double measured = measureChar(what, c);
    if (measured < 0) return 0;
    return width = std::llround(std::min(measured, widest) / DxFaceTable::unit);
}

double faceLength(const DxTextMeasure& what, double factor) {
    DxFaceTable& table = faceTableOf(what);
    std::int64_t widths = 0;
    for (std::size_t pos = 0; pos < what.text.size();) {
        const std::int64_t width = table.plain[static_cast<unsigned char>(what.text[pos])];
        if (width >= 0) { // most are plain and known
            widths += width;
            ++pos;
            continue;
        }
        const DxTextUnit unit = DxNextTextUnit(what.text, pos);
        pos += unit.length;
        if (unit.character) widths += charWidth(table, what, unit.character);
    }
    return static_cast<double>(widths) * DxFaceTable::unit * what.height * factor;
}

/// Width and space of a text in a font without a table.
constexpr Cell usualCell{67, 33};

} // namespace

int DxTextGetCadFontLen(std::string_view text, int font, double* length, int* proportional) {
    const int index = DxTextGetCadFontIndex(font);
    if (index < 0) {
        *length = DxTextHostCount(text) * 100.0;
        *proportional = 0;
        return 1;
    }
    DxCadFontTable& table = *DxCadFontTables[static_cast<std::size_t>(index)];
    double sum = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const char32_t c = DxNextChar(text, pos);
        if (c < 32 && DxIsSwitch(static_cast<char>(c))) continue;
        const int code = c < 128 ? static_cast<int>(c) : DxHostCode(c);
        const std::uint16_t width =
            code > 0 ? table.width[static_cast<std::size_t>(code)] : DxCadFontTable::undefined;
        if (width != DxCadFontTable::undefined) {
            sum += width;
            continue;
        }
        tellMissing(table, static_cast<int>(c));
        sum += table.averageWidth;
    }
    *length = sum;
    *proportional = table.isProportional ? 1 : 0;
    return 0;
}

int DxTextGetDxfFontSpace(std::string_view text, std::string_view font, double* width, double* space) {
    const int index = DxTextGetFontIndex(font);
    DxFontTable* table = index < 0 ? nullptr : DxFontTables[static_cast<std::size_t>(index)].get();
    double last = 0;
    *width = *space = 0;
    for (std::size_t pos = 0; pos < text.size();) {
        const bool isPercentCode = DxTextIsPercentCode(text, pos, font);
        const char32_t character = DxNextChar(text, pos);
        if (character < 32 && DxIsSwitch(static_cast<char>(character))) continue;
        const int code = isPercentCode ? DxNextTextUnit("%%%", 0).code : DxTextTableCode(character, font);
        const Cell cell = table ? cellOf(*table, code) : usualCell;
        *width += cell.width * 0.01;
        *space += cell.space * 0.01;
        last = cell.space * 0.01;
    }
    *space -= last;
    return table ? 0 : 1;
}

DxTextMeasure DxTextMeasureIn(const DxCharset& charset) {
    DxTextMeasure what;
    what.isFontFile = charset.font != 0;
    what.font = what.isFontFile ? charset.fontFile.view() : charset.face.view();
    what.bits = charset.bits;
    what.charset = &charset;
    return what;
}

DxTextMeasure DxTextMeasureOf(const DX_TEXT_TYPE& text, const DxCharset& charset) {
    DxTextMeasure what = DxTextMeasureIn(charset);
    what.text = text.text;
    what.height = text.height;
    what.factor = text.widthFactor;
    return what;
}

int DxTextGetDxfFontLen(const DxTextMeasure& what, DxTextLength* result) {
    *result = {};
    const double factor = what.factor == 0 ? 1.0 : what.factor;
    if (!what.isFixed && !what.isFontFile) {
        if (what.height > 0 && std::isfinite(what.height * factor)) result->length = faceLength(what, factor);
        return 1;
    }
    DxFontTable* table = what.isFixed ? nullptr : fontTableOf(what);
    *result = table ? tableLength(what, factor, *table) : roughLength(what, DxTextStrlen(what.text));
    return table ? 0 : 1;
}

int DxTextGetDxfLen(const DX_TEXT_TYPE& text, DxTextLength* result) {
    return DxTextGetDxfFontLen(DxTextMeasureOf(text, DxTextGetCharset(text.style.view(), {})), result);
}

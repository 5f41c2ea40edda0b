// Fonts of both sides: what a style means in the host, character tables, lengths of texts.
#pragma once

#include "dx_tables.h"
#include "dx_text.h"
#include "text_state.h"
#include "ut_string.h"

#include <string>
#include <string_view>

// ---- styles ------------------------------------------------------------------------------------------

/// What a style of the current document means in the host. `defaultFont` is the DXF font where there is no
/// such style, "txt" when it is empty. The reference holds until styles or configuration change.
const DxCharset& DxTextGetCharset(std::string_view style, std::string_view defaultFont);
/// The index of the current document's styles, up to date.
DxStyleIndex& DxTextStyleIndex();
/// The session's options of texts.
const DxTextOptions& DxGetTextOptions();
/// The name of $DxfDfltFont, empty when it isn't set.
inline const std::string& DxTextDefaultFont() {
    return DxGetTextOptions().defaultFont;
}
/// Export: the style for a host font, made if there is none. Null when the table has no room.
const DX_STYLE_TYPE* DxTextGetDXFStyle(int font, const UtCString& face, const int bits[DX_BIT_COUNT]);

// ---- characters --------------------------------------------------------------------------------------

/// Import: characters and codes of the DXF side become those of the host. Escapes beyond U+00FF stay.
void DxConvTextToCAD(std::string& text, const DxCharset& charset);
/// True when the text begins with a character that stays what it is and shows: it can't become blank.
bool DxShowsAtStart(std::string_view text, const DxCharset& charset);
/// Export: the other way round. The style for the font, or null.
const DX_STYLE_TYPE* DxConvTextToDXF(std::string& text, int font, const UtCString& face,
                                     const int bits[DX_BIT_COUNT]);

/// The ".chr" code of a character of the host side in a DXF font.
int DxTextTableCode(char32_t character, std::string_view font);
/// True when a percent sign of a host-side text leaves as "%%%" in that font.
bool DxTextIsPercentCode(std::string_view text, std::size_t pos, std::string_view font);

// ---- character tables --------------------------------------------------------------------------------

/// Loads the ".chr" table of a DXF font. 0, or 1008 with message 5738 when there is none.
int DxTextLoadCharConv(std::string_view font);
/// Index of a DXF font's table, loaded if need be; -1 when there is none.
int DxTextGetFontIndex(std::string_view font);
/// True when the font has a table; nobody is told when it hasn't.
bool DxTextHasFont(std::string_view font);
/// Loads the "std.%d" table of a host font. 0 or 1008.
int DxTextLoadCadConv(int font);
/// Index of a host font's table, of the last one loaded when it has none; -1 when there is none at all.
int DxTextGetCadFontIndex(int font);

// ---- lengths -----------------------------------------------------------------------------------------

/// Length of a text in a host font, in hundredths of the character width. 0, or 1 without a table.
int DxTextGetCadFontLen(std::string_view text, int font, double* length, int* proportional);
/// Sums of a host-side text in a DXF font: widths, and the spaces behind all but the last character, relative
/// to the height. 0, or 1 without a table.
int DxTextGetDxfFontSpace(std::string_view text, std::string_view font, double* width, double* space);

/// Length of a DXF text: what is measured and how.
struct DxTextMeasure {
    std::string_view text;     ///< with its codes and escapes
    std::string_view font;     ///< DXF font, or face
    bool isFontFile = true;    ///< what `font` is
    bool isFixed = false;      ///< by the rough rule, without tables
    const int* bits = nullptr; ///< of a face
    const DxCharset* charset =
        nullptr; ///< where the font comes from, if it does: it remembers the font's table
    double height = 0;
    double factor = 1.0; ///< width factor, 0 counts as 1
};
struct DxTextLength {
    double length = 0; ///< in the unit of the height
    double space = 0;  ///< behind a character, relative to the height
    double lineDistance = 1.88;
};
/// 0, or 1 when a font file has no table or a face was measured.
int DxTextGetDxfFontLen(const DxTextMeasure& what, DxTextLength* result);
/// The same for a record, in its style and with its width factor.
int DxTextGetDxfLen(const DX_TEXT_TYPE& text, DxTextLength* result);
/// Measure in a font: all but text, height and width factor.
DxTextMeasure DxTextMeasureIn(const DxCharset& charset);
/// Measure of a record: font, marks and width factor by its style.
DxTextMeasure DxTextMeasureOf(const DX_TEXT_TYPE& text, const DxCharset& charset);

// MTEXT: taken apart into runs of one format, each with a place of its own.
#pragma once

#include "dx_text.h"

#include <string>
#include <string_view>
#include <vector>

/// Lays out an MTEXT: each piece is a TEXT in object coordinates, aligned as the MTEXT is attached. `text` is
/// changed: its string is flattened and "\P" appended. `isMirrored` says that the plane is turned over on its
/// way to the drawing: the block is then laid out so that it covers its place and can be read. 0.
int DxMtextToTexts(DX_TEXT_TYPE* text, std::vector<DX_TEXT_TYPE>* pieces, bool isMirrored = false);

/// What format codes change.
struct DxMtextFormat {
    int color;        ///< \C
    int trueColor;    ///< \c, -1: none since the last \C
    std::string font; ///< \F, \f
    bool isFace;      ///< the font came as a face
    double height;    ///< \H
    double oblique;   ///< \Q
    double tracking;  ///< \T
    double width;     ///< \W
};
/// Removes groups: behind each, codes restore what it has changed of `start`. In place; at most
/// DX_MTEXT_LIMIT characters stay.
void DxMtextFlatten(std::string& text, const DxMtextFormat& start);

/// Distance from line to line relative to a height, for text of that height in an MTEXT.
double DxMtextLineDist(double height, const DX_TEXT_TYPE& text);
/// Makes a plain text safe for the value of an MTEXT, with codes for its lines: "%%u", "%%o" and "%%k", which
/// an MTEXT doesn't know, become the codes that begin and end a line. In place; the result is cut at
/// DX_TEXT_LIMIT characters.
void DxMtextEscapeCharacters(std::string& text, const int bits[DX_BIT_COUNT]);
/// Reads the number at the start of `text` that ends at ";" or ",". Its length, 0 when neither comes.
std::size_t DxMtextReadNumber(std::string_view text, double* value);

/// The value of a format code up to its ";", with an "x" before it taken off.
struct DxMtextNumber {
    double value = 0;
    bool isRelative = false; ///< ended with "x": a multiple of the present value
    std::size_t length = 0;  ///< without the ";", 0: there is none
    double over(double present) const { return isRelative ? value * present : value; }
};
DxMtextNumber DxMtextReadValue(std::string_view text);
/// The name behind a font code up to its ";"; empty when there is none, or none within 160 bytes.
std::string_view DxMtextFontName(std::string_view text);
/// True for a font file's name.
bool DxMtextIsShapeFont(std::string_view name);

// Texts of the active pattern: the current text parameters, measuring, adding and reading.
//
// Every function gives 0 on success and an error number otherwise, unless it says so. Heights and widths of
// characters are millimetres on the sheet; points and measured sizes are in the drawing's unit.
//
// How a text stands. A character has a cell `width` wide (times its width in the font) and `height` high, of
// which `spacing` and `lineDistance` make a larger cell: between characters stand (spacing - 1) * width,
// lines follow each other at lineDistance * height, and each character stands in the middle of its larger
// cell. So the block of n lines is n * lineDistance * height high, and
//
//     7------8------9     its baseline lies (lineDistance - 1) * height / 2 above the lower edge of a line's
//     |             |     cell. The origin says which point of the block lies at the text's point; the block
//     4      5      6     is turned about that point.
//     |             |
//     1------2------3
//
// Lines are arranged by the justification. A text with a line length is broken at blanks to that width; with
// justification 0 its lines then follow the column of the origin.
#pragma once

#include "rpt.h"
#include "ut_string.h"

#include <vector>

/// Indexes of the style bits of a text.
enum OV_TEXT_BIT : int {
    OV_TEXT_STRIKE = 0,
    OV_TEXT_UNDERLINE = 1,
    OV_TEXT_ITALIC = 2,
    OV_TEXT_BOLD = 3,
    OV_TEXT_OVERLINE = 4,
};

/// Characters of the host that switch a line through the text on and off: zero width, valid within a line.
enum OV_TEXT_SWITCH : char {
    OV_SWITCH_UNDERLINE = 14,
    OV_SWITCH_OVERLINE = 15,
    OV_SWITCH_STRIKE = 16,
};

/// The parameters of texts.
struct OV_TEXT_PARM {
    int pen = 1;
    double height = 2.5;        ///< capital letters, millimetres on the sheet; above 0
    double width = 1.5;         ///< of a character of width 100, millimetres on the sheet; 0 counts as height
    int font = 1;               ///< host font number, 0: TrueType face
    double angle = 0;           ///< radians, counter-clockwise
    double slant = 0;           ///< radians, to the right
    int origin = 1;             ///< 1 … 9, see above; 0 counts as 1
    int justification = 0;      ///< 0 left, 1 centre, 2 right
    double lineDistance = 1.88; ///< relative to the height
    double spacing = 1.5;       ///< 1.0: characters stand side by side
    UtCString face;             ///< TrueType face, with font 0
    int bits[8] = {};           ///< see OV_TEXT_BIT
};

/// What stands behind a text.
struct OV_TEXT_EXT {
    int fillPen = 0;  ///< pen of the background, 0: that of the sheet
    int backOn = 0;   ///< background wanted
    int backType = 0; ///< frame: 0 none, 1 rectangle, 2 filled rectangle, 3 filled rounded rectangle
};

/// A text as ovtext reads it.
struct OV_TEXT {
    RPT3 point{0, 0, 0};          ///< where the origin lies
    std::vector<UtCString> lines; ///< as they were given, not broken to the line length
    OV_TEXT_PARM parm;
    OV_TEXT_EXT ext;
    double lineLength = 0; ///< in the drawing's unit, 0: lines aren't broken
    /// The lines as the host shows them: those that are longer than the line length in pieces, without the
    /// blanks at the breaks. A piece begins with the switches that are on there.
    std::vector<UtCString> shownLines;
};

/// The current text parameters: 5 reads, 6 sets. 3011 for a height that isn't above 0, a width or a
/// line distance below 0, or values that aren't finite; the current ones then stay.
int ovtextparamsttf(int op, OV_TEXT_PARM* parm);

/// The background of texts to come: 5 reads, 6 sets.
int ovtextparamext(int op, OV_TEXT_EXT* ext);

/// The simple text parameters: 5 reads, 6 sets. `*height` in millimetres on the sheet.
int ovtextparams(int* code, int* font, double* height, double* spacing);

/// Width and height of a block of lines (divided by line feeds) with the current parameters, in the drawing's
/// unit. The empty text measures 0.
int ovtextsize(const UtCString& text, double* width, double* height);

/// Adds a text to the active pattern, at a point in the drawing's frame, with the current parameters.
int ovaddtext(const UtCString& text, double x, double y);

/// Texts of pattern `patNo`. 24 steps `*row`: with step 1 to the first text, with 2 to the next one; 1005 at
/// the end. It passes over texts of dimensions, whose rows ovdim gives. 20 (step 0x8014) reads the text in
/// `*row` and makes its parameters the current ones.
int ovtext(int op, int step, int patNo, int* row, OV_TEXT* text);

/// Length in bytes of the text in `row`: its lines with a line feed between them.
int ovtextstringlen(int patNo, int row, int* length);

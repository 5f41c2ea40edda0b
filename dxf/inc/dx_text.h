// The record of a text between its read and its draw stage.
#pragma once

#include "dx_entity_base.h"
#include "rpt.h"

#include <string>

/// One TEXT or MTEXT, or one run of an MTEXT that has been taken apart.
struct DX_TEXT_TYPE {
    DX_ENTITY_BASE_TYPE base;
    double extrusion[3] = {0, 0, 1}; ///< 210 220 230
    int horAlign = 0;                ///< 72: 0 left 1 centre 2 right 3 aligned 4 middle 5 fit
    int verAlign = 0;                ///< 73: 0 baseline 1 bottom 2 middle 3 top
    int justification = 0;           ///< among lines, of an MTEXT's run: 0 left 1 centre 2 right
    std::string text;                ///< 1, 3; UTF-8 with its "%%" codes and "\U+XXXX" escapes as in the file
    DX_NAME style;                   ///< 7, upper-cased
    RPT3 point{0, 0, 0};             ///< 10 20 30; object coordinates (MTEXT: world coordinates)
    double height = 0;               ///< 40, of capital letters
    double rotation = 0;             ///< 50, degrees
    double oblique = 0;              ///< 51, degrees
    RPT3 second{1, 0, 0};            ///< 11 21 31; alignment point, MTEXT: direction of the x axis
    double widthFactor = 1.0;        ///< 41 of TEXT; 0 for an MTEXT
    int generation = 0;              ///< 71 of TEXT, see DX_TEXT_GENERATION
    int attachment = 0;              ///< 71 of MTEXT, 1 … 9 from the top left
    int isMtext = 0;                 ///< 1: not taken apart yet
    double lineSpacing = 1.0;        ///< 44
    double charSpacing = -1.0;       ///< "\T" of an MTEXT's run, -1: none
    double boxWidth = 0;             ///< 41 of MTEXT, 0: lines aren't broken
    double lineDistance = 0;   ///< between the lines of an MTEXT's run that its box breaks, 0: by the font
    int backFlag = 0;          ///< 90; 1 colour, 3 colour of the sheet, 16 frame
    double backScale = 1.0;    ///< 45
    int backColor = 0;         ///< 63
    int backTrueColor = -1;    ///< 421
    int backTransparency = -1; ///< 441
};

/// How the characters of a TEXT stand, a bit each.
enum DX_TEXT_GENERATION : int { DX_TEXT_BACKWARD = 2, DX_TEXT_UPSIDE_DOWN = 4 };

/// Most characters of an MTEXT.
inline constexpr std::size_t DX_MTEXT_LIMIT = 29999;
/// Most bytes of a text in the file's code page, and characters of a text on its way to the host.
inline constexpr std::size_t DX_TEXT_LIMIT = 2047;
/// Most visible characters of one run of an MTEXT.
inline constexpr int DX_PIECE_LIMIT = 160;

/// Indexes of style marks, eight ints; the others are 0.
enum DX_TEXT_BITS : int {
    DX_BIT_STRIKE = 0,
    DX_BIT_UNDERLINE = 1,
    DX_BIT_ITALIC = 2,
    DX_BIT_BOLD = 3,
    DX_BIT_OVERLINE = 4,
    DX_BIT_COUNT = 8,
};

// Where the lines of a host text stand in a file: from the host's origin to the points and alignments of the
// entities. Pure arithmetic in the drawing's unit; what a line measures is handed in.
#pragma once

#include "rpt.h"

/// What the lines of a text have in common.
struct DX_TEXT_SHAPE {
    double height = 0, width = 0; ///< of characters
    double angle = 0;             ///< radians
    double step = 0;              ///< from line to line
    double padX = 0, padY = 0;    ///< from a cell's corner to its character
    int origin = 1;               ///< 0 … 9, the point of the text that stands at its place
    int justification = 0;        ///< 0 left, 1 centred, 2 right, of lines in a block
    bool isFace = false;          ///< a TrueType face, which the target measures by itself
    bool isMtext = false;         ///< has one point alone
    int pointsMode = 0;           ///< WRITE_TXT_ORG: 1 fits between two points, 2 runs from one to the other

    int column() const { return origin == 0 ? 0 : (origin - 1) % 3; } ///< 0 left, 1 middle, 2 right
    int row() const { return origin == 0 ? 0 : (origin - 1) / 3; }    ///< 0 bottom, 1 middle, 2 top
};

/// What a line measures.
struct DX_LINE_LENGTHS {
    double host = 0; ///< with the space behind its last character
    double dxf = 0;  ///< in the font of the file
};

/// Points and alignment of a line: groups 10 and 11, 72 and 73.
struct DX_LINE_PLACE {
    RPT first{0, 0}, second{0, 0};
    int hor = 0, ver = 0;
};

/// The point, `right` along the text and `up` across it.
RPT DxTextMoved(const DX_TEXT_SHAPE& shape, const RPT& point, double right, double up);

/// The place of the top line of a block of `lines` lines. The shape's origin becomes that of each line.
RPT DxTextTopLine(DX_TEXT_SHAPE& shape, const RPT& point, int lines, double blockWidth);

/// A line at `point`, moved within its block by the justification.
RPT DxTextJustified(const DX_TEXT_SHAPE& shape, const RPT& point, double blockWidth, double length);

/// Places a line. `depth`: how far its letters reach below it, relative to the height, where an import counts
/// that to the block of an MTEXT.
DX_LINE_PLACE DxPlaceLine(const DX_TEXT_SHAPE& shape, const RPT& point, const DX_LINE_LENGTHS& lengths,
                          double depth);

/// Group 71 of an MTEXT whose point is the second one: from the row of the origin upside down.
int DxTextAttachment(const DX_TEXT_SHAPE& shape);

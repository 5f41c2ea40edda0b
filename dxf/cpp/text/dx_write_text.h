// Texts of a pattern on their way out.
#pragma once

#include "dx_text.h"
#include "ov_text.h"
#include "rpt.h"
#include "ut_string.h"

#include <string>
#include <vector>

/// What a host text stands for.
enum DX_WRITE_TEXT_KIND : int {
    DX_WRITE_PLAIN = 0,
    DX_WRITE_ATTRIBUTE = 1,
    DX_WRITE_INVISIBLE_ATTRIBUTE = 2
};

/// A host text to be written. Lengths of characters are millimetres on the sheet, as the host has them.
struct DX_WRITE_TEXT {
    int kind = DX_WRITE_PLAIN;
    std::vector<std::string> lines; ///< UTF-8; of an attribute the value
    std::string tag;                ///< of an attribute
    int pat = 0;                    ///< pattern of the text
    double x = 0, y = 0;            ///< reference point, drawing's unit
    OV_TEXT_PARM parm;
    OV_TEXT_EXT ext;
    double lineLength = 0;               ///< lines are broken to it, drawing's unit; 0: they aren't
    std::vector<std::string> shownLines; ///< what they are broken into
};

/// Reads the text in `row` of a pattern; a `pen` above 0 takes the place of its own. A text without a height
/// has no lines. 0 or the host's error.
int DxReadPatText(int pat, int row, int pen, DX_WRITE_TEXT& out);
/// All texts of the pattern but those of dimensions, and the attributes that no text stands for.
int DxWritePatText(int pat);
/// One entity a line: TEXT, MTEXT or ATTDEF. A colour that isn't to be written drops the text. 0 or the
/// writer's error.
int DxWriteText(const DX_WRITE_TEXT& text);
/// The groups of a TEXT or, with isMtext, an MTEXT, under a matrix. An MTEXT is moved to the right by what an
/// import takes off again: by its character spacing and by `leftShift`, relative to its height.
int DxWriteTextOrMtext(const DX_TEXT_TYPE& text, const Mat32 matrix, double leftShift);
/// The frame of a text as element chains.
int DxWriteBalloon(int pat, int row, const OV_TEXT_EXT& ext);

// Texts as objects of the drawing store.
#pragma once

#include "ds.h"
#include "ov_text.h"
#include "rpt.h"
#include "ut_string.h"

/// Texts by cursor. Points and lengths are in the unit of the context, in the frame of the drawing. Every
/// method gives 0 on success; 1005 for a cursor that isn't on a text.
class CiText {
public:
    explicit CiText(int contextId) : contextId_(contextId) {}

    /// Makes a text in the cursor's pattern with the current text parameters and aims the cursor at it.
    /// Line feeds divide lines.
    int Add(DsCsr& cursor, const RPT3& point, const UtCString& text);
    /// Point and text (lines divided by line feeds) where the flags ask for them.
    int Get(const DsCsr& cursor, int withPoint, int withText, RPT3* point, UtCString* text);
    int Chg(const DsCsr& cursor, const RPT3& point, const UtCString& text);
    /// Breaks the text's lines to a length; 0 breaks none.
    int ChgLineLen(const DsCsr& cursor, double length);
    /// 0 a text, 3 one that belongs to a dimension.
    int SetDimType(const DsCsr& cursor, int type);
    int GetDimType(const DsCsr& cursor, int* type);
    int Del(const DsCsr& cursor);
    /// Aims the cursor at the first text of its pattern; 1005 when there is none.
    int First(DsCsr& cursor);
    static int Count(const DsCsr& pattern, long* count); ///< Number of texts in the cursor's pattern.

    /// Width and height with the current parameters.
    int Size(const UtCString& text, double* width, double* height);
    /// The current parameters.
    int ActParams(OV_TEXT_PARM* parm);

    /// Makes one text of several lines from texts that look alike: same parameters, lines at even distance.
    /// It stands in the target's pattern where the single ones stood, which are removed. `mode` 4: by
    /// position. 2360 when they don't fit together; all texts then stay as they are.
    int JoinTexts(const DsCsr cursors[], int count, int mode, DsCsr& target);

private:
    int contextId_;
};

/// True for a font number that stands for a TrueType face.
bool DsTextIsTtf(unsigned short font);

/// True for a control character that the host's texts know.
bool OsUserIsSpecialChar(unsigned char byte);

/// Makes a scratch pattern with the outline of the frame of a text; 1005 for a text without a frame.
int UoGetTextBalloonPat(int patNo, int row, int* framePat);

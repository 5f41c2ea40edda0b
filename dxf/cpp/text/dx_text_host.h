// Texts of the host, and the joining of an MTEXT's pieces.
#pragma once

#include "rpt.h"
#include "ut_string.h"

/// Makes a text at `point`, which is ahead of the shift, in pattern `pat` with the host's current parameters,
/// its escapes resolved; `row` receives where it stands. A `lineLength` above 0 breaks its lines to that
/// width; `type` 3 makes it part of a dimension. 0 or the host's error.
int DxCiTextAdd(int pat, int* row, const RPT3& point, const UtCString& text, int type, double lineLength);
/// `point` may be null.
int DxCiTextGet(int pat, int row, RPT3* point, UtCString* text);
int DxCiTextChg(int pat, int row, const RPT3& point, const UtCString& text);
/// Size with the host's current parameters, in the unit of the import; escapes are resolved, and for a face
/// blanks don't end the text.
int DxCiTextSize(const UtCString& text, double* width, double* height);
int DxCiTextIsTtf(unsigned short font); ///< 1 for the number that stands for a TrueType face.

/// Empties the list of texts to join and makes room for `size` of them.
void DxTextListInit(int size);
/// Notes a text while there is room.
void DxTextListAdd(int pat, int row);
/// Joins the texts of the list to one in the active pattern, if the host finds that they fit together.
int DxTextListJoin();

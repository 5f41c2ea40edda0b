// TEXT and MTEXT: readers and draw stages, and the arithmetic between the two ways of placing a text.
#pragma once

#include "../import/dx_entity_walk.h"
#include "dx_text.h"
#include "dx_text_fonts.h"

#include <vector>

// ---- reading -----------------------------------------------------------------------------------------

/// Reads one TEXT (isMtext 0) or MTEXT (1) up to the next group 0, which is handed back. 0 or the reader's
/// error.
int DxfReadTextOrMtext(int isMtext, DX_TEXT_TYPE* text);
int DxReadText(DX_TEXT_TYPE* text);
int DxReadMtext(DX_TEXT_TYPE* text);
/// Start values of a record; `isMtext` as above.
void DxInitText(DX_TEXT_TYPE* text, int isMtext);

// ---- drawing -----------------------------------------------------------------------------------------

/// Kinds of DxDrawText's texts.
enum DX_TEXT_KIND : int { DX_TEXT_OF_ENTITY = 2, DX_TEXT_OF_DIMENSION = 3 };

/// Makes the host's text for a record under the matrix of the insert level, or widens the extents in a check
/// pass. `keepEmpty` keeps a text without visible characters. 0, also for a text that isn't to be drawn, or
/// the host's error.
int DxDrawText(const DX_TEXT_TYPE* text, const Mat44 m, int type, int keepEmpty);
int DxDrawTextEntity(const DX_TEXT_TYPE* text, const Mat44 m);
/// Takes an MTEXT apart and draws its pieces.
int DxDrawMtext(const DX_TEXT_TYPE* text, const Mat44 m);

/// Underline and overline of a whole text: "%%u" at its start with no other, or one at its very end.
void DxParseFormatFlags(std::string_view text, int bits[DX_BIT_COUNT]);

// ---- arithmetic --------------------------------------------------------------------------------------

/// How far a face is moved to the left, relative to its height: the host leaves a little room in front of it.
inline constexpr double DX_FACE_SHIFT = 0.025;

/// What an MTEXT's character spacing means for the host: `dx` receives it, and the two points, which are
/// those of the record, move. Spacings outside 0.75 to 4 change nothing.
void DxCharSpacingToCAD(const DX_TEXT_TYPE& text, double* dx, RPT3* first, RPT3* second);
/// The spacing alone: `dx` receives it for a character spacing from 0.75 to 4 and stays otherwise.
void DxCharSpacingFactor(double charSpacing, double* dx);
/// The way back: the character spacing of an MTEXT for a spacing of the host, -1 for none: characters side by
/// side, or a spacing that the format doesn't have.
double DxCharSpacingToDXF(double dx);
/// Whether a line has letters that reach below it.
bool DxReachesBelow(std::string_view text);
/// How far that spacing moves a text to the left, relative to its height.
double DxCharSpacingShift(double charSpacing);

/// Width of a text by its alignment, from its points. 0, or -1 with message 5741 for an alignment that isn't
/// one.
int DxTextCalcBreite(const DX_TEXT_TYPE& text, int count, const RPT3& p1, const RPT3& p2, double height,
                     double angle, double* width);

/// Height, character width and spacing of the host for a DXF text.
struct DxTextCadParams {
    double height;  ///< millimetres on the sheet
    double width;   ///< millimetres on the sheet
    double spacing; ///< 1: side by side
};
/// From height and length of a DXF text (units of the drawing). `converted` is its host side; `space` that of
/// its font; `dx` a spacing that overrides it, 0 for none.
DxTextCadParams DxTextCalcCadParams(double height, double length, int font, std::string_view converted,
                                    double space, double dx);
/// The way back: width factor of a DXF text in a font for a host text. `height` and `width` in units of the
/// drawing. 1.0 for a font of no width.
double DxTextCalcDxfParams(std::string_view converted, int font, std::string_view dxfFont, double height,
                           double width, double spacing);
/// Length of a host text, in the unit of `width`.
double DxTextCalcTextRahmenLen(std::string_view converted, int font, double width, double spacing);
/// The same for a width in millimetres on the sheet, in units of the drawing.
double DxTextCalcTextLen(std::string_view converted, int font, double width, double spacing);

/// Where the host puts a TEXT: what is given.
struct DxTextAlignment {
    int hor, ver;                                ///< groups 72 and 73
    int just;                                    ///< justification; above 2: by hor and ver
    double height, width, spacing, lineDistance; ///< units of the drawing
    double angle;                                ///< radians
    bool isMirrored = false;                     ///< the text's line runs against its points
};
/// Origin, justification and reference point of the host. `point` is group 10 on entry, `second` group 11.
/// 0.
int DxTextConvOrigin(const DxTextAlignment& alignment, int* origin, int* justification, RPT3* point,
                     const RPT3& second);

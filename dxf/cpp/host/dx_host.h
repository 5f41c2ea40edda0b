// Chief header of the thin layer over the host: shift, element counting, element queue, pattern table.
#pragma once

#include "ci.h"
#include "dx_types.h"
#include "host_state.h"
#include "ov_text.h"
#include "uo_elem.h"

#include <vector>

// ---- patterns --------------------------------------------------------------------------------------
/// The host's pattern control (ovpat), passing over invisible patterns of a 2D export when it steps.
int Dxovpat(int code, int* patNo);
int DxNewPat(int unused);            ///< A new pattern and table entry, made active. 0 or the host's error.
int DxHidePat();                     ///< The active pattern isn't shown. 0 or the host's error.
int DxNewPatCopyAllAttr(int unused); ///< The same, with the attributes of the pattern that was active.
/// Announces n new elements; a full pattern goes over to a new one of the same attributes, which the layers
/// of the old one follow. 0 or the host's error.
int DxNewElement(int n);
/// Makes an entry active again that was so as host pattern `number`, or the one that goes on where it has
/// been full since. -1 and 0 for none. 0 or the host's error.
int DxReturnToPat(int index, int number);
int DxLatestPat(int index);        ///< The entry that goes on where a full one ended, else the entry itself.
int DxCiPatIsVisible2d(int patNo); ///< 1 for an existing pattern that is visible in 2D.
int DxCiPatDelElems(int patNo);    ///< Empties a pattern.
/// Gives a pattern a new work plane: origin, a point on x, a point in the plane.
int DxCiPatChgWork(int patNo, const RPT3& a, const RPT3& b, const RPT3& c);
int DxCiCheckPatsWork(); ///< 1 in 2D; in 3D whether all patterns have the work plane of the first.
/// Pens of the pattern's colour attribute, -1 where it has none. 1005 when there is no such pattern.
int DxCiGetAttrColorPens(int patNo, int* pen, int* fill);
/// Sets an attribute: `checked` under its own name, else in the module's class, as "dxf::" and the name.
int DxCiSetAttrSingle(int patNo, const UtCString& name, const UtCString& value, bool checked);
/// The host's 2D placement of a pattern, or its inverse.
int DxGetPatMatrix(int patNo, Mat32 m, bool inverted);

// ---- drawing: points and lengths of the active space, ahead of the shift ----------------------------
// All drawing calls of the host stand in this folder; each hands over what waits in the element queue first,
// so that the order stays. dx_frame.h has the frames.
int Dxovdraw(int op, double x, double y, unsigned char info = 0); ///< op 1 draws, 2 moves to (x, y).
/// From the current point to (x, y) about (cx, cy): op 3 clockwise, 4 counter-clockwise, 22 a full circle.
int Dxovarc(int op, double x, double y, double cx, double cy, unsigned char info = 0);
/// One element of the outline of a filled figure, straight to a contour pattern: op as above; mode 1 begins
/// the figure, 2 ends it and makes its fill in the active pattern.
int Dxovfillelem(int op, double x, double y, double cx, double cy, int mode);

/// A spline through `count` points with tangents (radians) at its ends. `isDrawn` says whether the host made
/// it; the result is that of the queue.
int Dxovspline(int count, const double* x, const double* y, double startAngle, double endAngle,
               bool* isDrawn);
/// What Dxovelem does: the first element of `elem->patNo`, the one behind `*elem`, or a new one at the end.
enum DX_ELEM_STEP { DX_ELEM_FIRST = 38, DX_ELEM_NEXT = 24, DX_ELEM_APPEND = 29 };
/// Elements of a contour as records, in the host's frame (dx_frame.h). 1005 at the end.
int Dxovelem(DX_ELEM_STEP step, UO_ELEM* elem);
int Dxovcopy(int fromPat, int toPat); ///< All that a pattern holds, behind what stands in another.
/// Makes a hatch in pattern `toPat` from the contours in `contourPat`, as the fill settings say.
int Dxovhatch(int toPat, int contourPat);
int Dxovtextparams(OV_TEXT_PARM parm, OV_TEXT_EXT ext); ///< Sizes in millimetres on the sheet.
int Dxovaddtext(const UtCString& text, double x, double y);
/// Makes a text in the cursor's pattern with the current parameters and aims the cursor at it.
int Dxovtext(DsCsr& cursor, const RPT3& point, const UtCString& text);

/// Tolerance of the 3D calls; `replaced`, which may be null, receives the one before.
int Dxov3dgenepsi(double tolerance, double* replaced);
int Dxov3dJoinFaces(int patNo); ///< Joins the faces of a pattern to one set.
/// A curve in space through the points, in a pattern of its own with the attributes of the active one. Fewer
/// than two points are none. 0 or the host's error.
int DxCiDraw3DCurveByPoints(const std::vector<RPT3>& points);

// ---- element queue ---------------------------------------------------------------------------------
/// Appends an element for the active pattern; points after the shift. Elements that wait for another pattern
/// are handed over first, and the new one continues where the last of them ended. 0 or the host's error.
int DxCiElemAddElem(int op, double x1, double y1, double x2, double y2, unsigned char info);
int DxCiElemWaiting(); ///< Number of elements that wait.
int DxCiElemDrawPat(); ///< Hands the waiting elements over to their pattern. The queue is empty in any case.
void DxCiElemSetPenLt(int pen, int lineType);
void DxCiElemReset(); ///< Drops what waits and frees the queue.
int DxCiChgLastElemInfo(int patNo,
                        unsigned char info); ///< Info byte of the pattern's last element. Always 0.
/// Type of an element and whether it belongs to a polyline-like figure; both 0 when there is none.
int DxCiGetElemInfo(int patNo, int elRow, int* type, int* isGroup);

// ---- session helpers -------------------------------------------------------------------------------
int DxCiInit(); ///< Fresh context in the session's unit, empty queue.
int DxCiViewUpdate();
int DxCiZoom2Box();
int DxCiExportView(int id); ///< 1 enters, 0 leaves the view made for an export.
/// The settings that a pattern state stands for, -1 where it leaves one alone; 4711 for an empty or unknown
/// state.
int DxCiGetStatePenLt(const UtCString& obstat, int* pen, int* lineType);
int DxCiGetStateHatch(const UtCString& obstat, int* pen);
int DxCiGetStateText(const UtCString& obstat, CI_TEXT_STATE* text);
int DxCiGetState3D(const UtCString& obstat, int* pen);
/// Transparency of an entity in percent; 3011, with 0 percent, when it has none.
int DxCiTransparencyToCAD(const DX_ENTITY_BASE_TYPE& base, int* percent);
int DxCiTransparencyToDXF(int percent, int* value); ///< 0 stays 0, the value for "none". Always 0.
/// Makes hatches patterns of their own for an export (`start` 1) and brings the drawing back (0), where the
/// host's settings ask for it.
int DxCiSplitAndSortPats(int start);

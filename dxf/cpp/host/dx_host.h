// Chief header of the thin layer over the host: shift, element counting, element queue, pattern table.
#pragma once

#include "dx_types.h"
#include "host_state.h"

// ---- patterns --------------------------------------------------------------------------------------
int Dxovpat(int code, int* patNo); ///< ovpat, skipping invisible patterns of a 2D export.
int DxNewPat(int unused);          ///< A new pattern and table entry, made active.
int DxNewPatCopyAllAttr(int unused);
/// Announces n new elements; a full pattern goes over to a new one of the same attributes.
int DxNewElement(int n);
int DxCiPatIsVisible2d(int patNo);
int DxCiPatDelElems(int patNo);
int DxCiPatChgWork(int patNo, const RPT3& a, const RPT3& b, const RPT3& c);
int DxCiCheckPatsWork();
int DxCiGetAttrColorPens(int patNo, int* pen, int* fill);
int DxCiSetAttrSingle(int patNo, const UtCString& name, const UtCString& value, bool checked);
int DxGetPatMatrix(int patNo, Mat32 m, bool inverted);

// ---- drawing: points in the drawing's frame ahead of the shift --------------------------------------
int Dxovdraw(int op, double x, double y, unsigned char info = 0);
int Dxovarc(int op, double x, double y, double cx, double cy, unsigned char info = 0);
int Dxovfillelem(int op, double x, double y, double cx, double cy, int mode);

// ---- element queue ---------------------------------------------------------------------------------
int DxCiElemAddElem(int op, double x1, double y1, double x2, double y2, unsigned char info);
int DxCiElemDrawPat(); ///< Flushes the queue into its pattern.
void DxCiElemSetPenLt(int pen, int lineType);
int DxCiChgLastElemInfo(int patNo, unsigned char info);
int DxCiGetElemInfo(int patNo, int elRow, int* type, int* isGroup);

// ---- session helpers -------------------------------------------------------------------------------
int DxCiInit(); ///< Fresh context in the session's unit, empty queue owner.
int DxCiViewUpdate();
int DxCiZoom2Box();
int DxCiExportView(int id);
int DxCiGetStatePenLt(const UtCString& obstat, int* pen, int* lineType);
int DxCiGetStateHatch(const UtCString& obstat, int* pen);
int DxCiGetStateText(const UtCString& obstat, int* pen);
int DxCiGetState3D(const UtCString& obstat, int* pen);
int DxCiTransparencyToCAD(const DX_ENTITY_BASE_TYPE& base, int* percent);
int DxCiTransparencyToDXF(int percent, int* value);
int DxCiSplitAndSortPats(int start);

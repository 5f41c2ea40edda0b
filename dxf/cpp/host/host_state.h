// State of the layer over the host, valid for one import or export.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"
#include "ut_string.h"

#include <map>
#include <string>

/// A pattern that the import made.
struct DX_PAT_ENTRY {
    int number;      ///< host pattern number
    int elements;    ///< elements counted by DxNewElement
    int faces3d;     ///< 3D faces
    int isHidden;    ///< 1: nothing of it is seen
    int continuedBy; ///< entry that goes on where this one was full; 0: none (the first continues no other)
};

extern int DxCiContextId;                ///< the long-lived context, 0 when there is none
extern DxTable<DX_PAT_ENTRY> DxPatTable; ///< patterns of the import, in order of making
extern int DxActPatIndex;                ///< active entry, -1 before the first
extern int DxActPat;                     ///< host number of the active pattern
extern int DxPolyFillActive;             ///< a polyline's outline goes to a fill contour: no counting
extern int DxHatchActive;                ///< a hatch draws its contours: no counting
extern double DxLastOutX, DxLastOutY;    ///< last target given to the host, after the shift
extern long DxElemsOut;                  ///< elements and splines handed over or waiting, of the session
extern int DxElemQueuePat;               ///< pattern the queue belongs to, -1 when none
extern int DxElemPen, DxElemLineType;    ///< stamped on new queue entries
extern int DxFillPat;                    ///< contour pattern of the running SOLID fill
extern int DxExportVisibleOnly;          ///< export restricted to visible patterns

/// Attributes that the module makes up belong to a class of its own, by these names.
inline constexpr char DxAttrClass[] = "dxf";
inline constexpr char DxAttrPrefix[] = "dxf::";
/// A pattern that holds the attributes of one INSERT names its block in this attribute.
/// The name of the pattern that keeps the header of a file; it is never shown, and no content.
inline constexpr char DX_HEADER_PATTERN[] = "DXF-HEADER";
inline constexpr char DX_INSERT_ATTRIBUTE[] = "insert";

/// The drawing as it was before its hatches became patterns of their own for an export; empty: untouched.
extern UtCString DxSplitWorkFile, DxSplitLockFile, DxSplitFileName;

/// Names of the host views that this import made, by the names that it meant them to have.
extern std::map<std::string, UtCString> DxViewNames;

/// Start values of all of the above, and an empty element queue. Ends the long-lived context.
void DxResetHostState();

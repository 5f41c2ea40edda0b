// Values of one session, shared by all subsystems: what the reader, the drivers and the passes over a file
// know. DxResetSessionState gives them their start values; each comment says who else sets them, or what
// from.
#pragma once

#include "ut_string.h"

#include <cstdint>

extern int DxIsExport;             ///< 0 import, 1 export
extern int DxModus;                ///< 2 or 3: work in 2D or 3D; set by DxfSelect, configuration, &DxfModus
extern UtCString DxFileName;       ///< the DXF file read or written
extern UtCString DxSourceFileName; ///< the DWG or binary DXF behind it
extern int DxFileVersion;          ///< number from $ACADVER, as 1032 for "AC1032"; 1009 without one
extern int DxCodePage;             ///< code page of the file's strings; 1252 without one
extern double DxFileScale;         ///< from a comment "SCALE a:b"; 0 when there is none
extern UtCString DxFileFormat;     ///< from a comment "FORMAT word"; empty when there is none
extern int DxWriteVersion;         ///< format of the export, 1 newest to 8
extern int DxCheckPass;            ///< 1 while a pass only measures
extern int DxReadSpace;            ///< 0 model space, 1 paper space, 2 both
extern int DxActSpace;             ///< 0 model space, 1 paper space, 2 and up further layouts
extern std::uint32_t DxNextHandle; ///< last handle given out
extern int DxSavedPen, DxSavedLt;  ///< kept by DxInoutSaveParams; pen -1: nothing is kept
extern int DxPen, DxLt;            ///< the host's pen and line type at the start of the session
extern int DxUnit, DxPaperUnit;    ///< host unit codes of model and paper space
extern int DxSavedUnit;            ///< the host's unit ahead of the session, 0 when not known
extern double DxScale;             ///< the drawing's scale
extern double DxDrawUnit;          ///< millimetres in one unit of the drawing
extern double DxShiftX, DxShiftY;  ///< drawing shift, subtracted from all points handed to the host
extern int DxRegionCount;          ///< REGION entities dropped in 2D

/// Start values of all of the above but DxModus, which DxfSelect sets, and what DxInoutSaveParams keeps.
void DxResetSessionState(int isExport);

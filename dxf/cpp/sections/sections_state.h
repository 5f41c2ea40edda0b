// What the HEADER section of the main file says, and the materials of all files, for the session.
#pragma once

#include "dx_objects.h"
#include "dx_section_places.h"
#include "rpt.h"

#include <map>
#include <vector>

extern int DxAttMode;                           ///< $ATTMODE: 0 no attribute texts, 1 visible ones, 2 all
extern int DxFileInsUnits;                      ///< $INSUNITS
extern RPT3 DxHdrInsBase, DxHdrPaperInsBase;    ///< $INSBASE, $PINSBASE
extern RPT3 DxHdrExtMin, DxHdrExtMax;           ///< $EXTMIN, $EXTMAX, or "not known" (dx_extents.h)
extern RPT3 DxHdrPaperExtMin, DxHdrPaperExtMax; ///< $PEXTMIN, $PEXTMAX, the same
extern RPT3 DxHdrUcsOrg, DxHdrUcsXDir, DxHdrUcsYDir;                ///< $UCSORG, $UCSXDIR, $UCSYDIR
extern RPT3 DxHdrPaperUcsOrg, DxHdrPaperUcsXDir, DxHdrPaperUcsYDir; ///< $PUCSORG, $PUCSXDIR, $PUCSYDIR

extern int DxHeaderPat; ///< pattern that holds the kept header variables, -1 if none

extern std::vector<DX_SECTION_PLACE> DxSectionPlaces; ///< in the order of the file; empty where that is usual

/// Materials by handle; the first of a handle stays.
extern std::map<std::uint32_t, DX_MATERIAL_TYPE> DxMaterials;

/// Start values of all of the above: nothing known of the file.
void DxResetSectionsState();

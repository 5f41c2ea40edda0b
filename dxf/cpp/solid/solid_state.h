// Solids that wait for the end of a pass, and the host's materials for them.
#pragma once

#include "ci_3d.h"
#include "dx_3dsolid.h"

#include <cstdint>
#include <map>
#include <vector>

/// What the host made of a material.
struct DX_VIS_MATERIAL {
    int pen = 0; ///< closest to its diffuse colour
    unsigned long number = 0;
    MatDbKey key;
};

extern std::vector<DX_3DSOLID_TYPE> DxSolidQueue;     ///< of the pass that runs, in the order of the file
extern std::vector<DX_ACDSRECORD_TYPE> DxAcdsRecords; ///< of the section behind the entities, both ways
extern std::map<unsigned long, DX_VIS_MATERIAL> DxVisMaterials; ///< by handle; beside DxMaterials

extern int DxFlatSolids;  ///< FLAT_SOLIDS: solids are taken in 2D too, where pictures show their plan
extern int DxWriteSolids; ///< WRITE_SOLIDS: the host's solids go out, as 3DSOLID
extern int DxWriteClouds; ///< WRITE_CLOUDS: the points of the host's clouds go out, as POINT

/// No solids, no materials, none written.
void DxResetSolidState();

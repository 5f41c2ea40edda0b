// Records of the entities in space: 3DFACE and MESH.
#pragma once

#include "dx_entity_base.h"

#include <vector>

struct DX_3DFACE_TYPE {
    DX_ENTITY_BASE_TYPE base;
    int edgeFlags;   ///< 70; 1, 2, 4, 8: the edge that leaves corner 1, 2, 3, 4 is invisible
    RPT3 corners[4]; ///< 10 … 13, world coordinates
};

/// The cage of a subdivision surface, level 0.
struct DX_SUB_DMESH_TYPE {
    DX_ENTITY_BASE_TYPE base;
    int version;                ///< 71
    std::vector<RPT3> vertices; ///< 10 20 30, world coordinates
    std::vector<int> faceList;  ///< 90: count of corners, then that many indexes of vertices, and so on
    std::vector<int> edgeList;  ///< 90, without use
    std::size_t announcedFaces; ///< 93: entries that the face list should have
};

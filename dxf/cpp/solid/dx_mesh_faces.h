// The faces of meshes: one walk for each kind, for faces in space and for flat edges.
#pragma once

#include "../host/dx_face_list.h"
#include "dx_3d.h"
#include "dx_polyline.h"

#include <vector>

/// All faces of a polygon mesh, points through `m`. Faces that aren't finite are left out; a mesh that has
/// fewer vertices than it announces is cut to its full rows, which is told. 0 or an allocation error.
int DxCollectPolygonMesh(const DX_POLYLINE_TYPE& mesh, const Mat44 m, DxFaceList& faces);
/// Widens the extents by all points of its faces.
void DxMeasurePolygonMesh(const DX_POLYLINE_TYPE& mesh, const Mat44 m);
/// Whether all corners of a face are finite behind `m`; others aren't drawn.
bool DxIsFiniteFace(const DX_3DFACE_TYPE& face, const Mat44 m);
/// Tells of faces that are left out because a coordinate of theirs is no number or endless.
void DxTellEndlessFaces(int count);
/// Face `vertex` of a polyface mesh. False for a vertex that is no face, or one whose first corner isn't a
/// vertex of the mesh.
bool DxPolyfaceOf(const DX_POLYLINE_TYPE& mesh, const DX_VERTEX_TYPE& vertex, DX_3DFACE_TYPE* face);

/// Walks the face list of a MESH.
class DxSubDFaces {
public:
    explicit DxSubDFaces(const DX_SUB_DMESH_TYPE& mesh) : mesh_(mesh) {}
    /// The corners of the next face whose list is whole and names vertices of the mesh; others are passed
    /// over. False at the end.
    bool next(std::vector<RPT3>& corners);
    /// Behind the end: tells of faces that were passed over and of a list that is cut, in the draw pass.
    void tellLosses() const;

private:
    const DX_SUB_DMESH_TYPE& mesh_;
    std::size_t at_ = 0;
    int passedOver_ = 0;
    bool isCut_ = false;
};

/// Draws the edges of faces that are shown as flat elements, each once, in the present pen. 0 or the host's
/// error.
int DxDrawShownEdges(const DxFaceList& faces);

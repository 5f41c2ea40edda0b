// MESH: the cage of a subdivision surface. In space it is one object of facets.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../host/dx_host_facets.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../session/dx_documents.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_acis_import.h"
#include "dx_mesh_faces.h"
#include "dx_space_import.h"
#include "ve.h"

#include <algorithm>

namespace {

using R = DX_SUB_DMESH_TYPE;
constexpr auto fields = dxFields<R>({{71, &R::version}});

/// Groups of the lists: their announced sizes and what fills them.
class MeshLists {
public:
    explicit MeshLists(R& rec) : rec_(rec) {}

    bool operator()(const DxPair& pair) {
        switch (pair.code) {
        case 92: return announce(pair, vertices_, rec_.vertices);
        case 93:
            announce(pair, faces_, rec_.faceList);
            rec_.announcedFaces = faces_;
            return true;
        case 94: return announce(pair, edges_, rec_.edgeList);
        case 10: return put(&RPT3::x, pair);
        case 20: return put(&RPT3::y, pair);
        case 30:
            put(&RPT3::z, pair);
            if (rec_.vertices.size() < vertices_) rec_.vertices.push_back(at_), at_ = {0, 0, 0};
            return true;
        case 90: return putNumber(DxAtoi(pair.text));
        default: return false;
        }
    }

private:
    /// Room for what is announced, as far as the file can hold it.
    template <class Item>
    bool announce(const DxPair& pair, std::size_t& size, std::vector<Item>& list) {
        constexpr std::size_t bytesAnItem = 5;
        const DxfDocument* const document = DxDocuments.current_;
        const std::size_t left = document ? (document->view.size - document->position) / bytesAnItem : 0;
        size = static_cast<std::size_t>(std::max(DxAtoi(pair.text), 0));
        list.reserve(std::min(size, left));
        return true;
    }
    bool put(double RPT3::*part, const DxPair& pair) {
        at_.*part = DxfReadConvDouble(pair.text);
        return true;
    }
    bool putNumber(int number) {
        if (rec_.faceList.size() < faces_)
            rec_.faceList.push_back(number);
        else if (rec_.edgeList.size() < edges_)
            rec_.edgeList.push_back(number);
        return true;
    }

    R& rec_;
    RPT3 at_{0, 0, 0};
    std::size_t vertices_ = 0, faces_ = 0, edges_ = 0; ///< announced
};

/// Each face as the outline of a 3DFACE, from its first four corners.
int drawOutlines(const R& rec, const Mat44 m) {
    DX_3DFACE_TYPE face;
    DxCopyEntityBase(&face.base, &rec.base);
    face.edgeFlags = 0;
    std::vector<RPT3> corners;
    DxSubDFaces faces(rec);
    while (faces.next(corners)) {
        if (corners.size() < 3) continue;
        for (std::size_t k = 0; k < 4; ++k) face.corners[k] = corners[std::min(k, corners.size() - 1)];
        if (const int error = DxDrawFace(&face, m)) return error;
    }
    faces.tellLosses();
    return 0;
}

/// Each edge once, also of faces with more corners than a 3DFACE has.
int drawEdges(const R& rec, const Mat44 m, int pen, int lineType) {
    DxFaceList list(pen, lineType);
    std::vector<RPT3> corners;
    std::vector<DxEdge> edges;
    DxSubDFaces faces(rec);
    while (faces.next(corners)) {
        for (RPT3& corner : corners) DxTrans3DRpt(&corner, m);
        if (corners.size() < 3 || !std::all_of(corners.begin(), corners.end(), DxIsFinite)) continue;
        corners.push_back(corners.front());
        edges.assign(corners.size(), DX_EDGE_SHOWN);
        edges[0] = DX_NO_EDGE;
        if (const int error = list.addFace(corners.data(), edges.data(), static_cast<int>(corners.size())))
            return error;
    }
    faces.tellLosses();
    if (!DxCheckPass) return DxDrawShownEdges(list);
    list.measure(DxCheckXYZ);
    return 0;
}

} // namespace

bool DxSubDFaces::next(std::vector<RPT3>& corners) {
    const std::vector<int>& list = mesh_.faceList;
    while (at_ < list.size()) {
        const int count = list[at_++];
        isCut_ = count < 0 || static_cast<std::size_t>(count) > list.size() - at_;
        if (isCut_) return false;
        corners.clear();
        for (int k = 0; k < count; ++k) {
            const int index = list[at_++];
            if (index >= 0 && static_cast<std::size_t>(index) < mesh_.vertices.size())
                corners.push_back(mesh_.vertices[static_cast<std::size_t>(index)]);
        }
        if (corners.size() == static_cast<std::size_t>(count)) return true;
        ++passedOver_;
    }
    return false;
}

void DxSubDFaces::tellLosses() const {
    if (DxCheckPass) return;
    if (isCut_ || mesh_.faceList.size() < mesh_.announcedFaces)
        DxProtoMsg("The face list of a MESH ends too early.", 0);
    if (passedOver_ > 0)
        DxProtoMsg(UtFormatMsg("%d faces of a MESH name vertices that it doesn't have.",
                               "%d faces of a MESH name vertices that it doesn't have.", passedOver_),
                   0);
}

int DxReadSubDMesh(DX_SUB_DMESH_TYPE* rec) {
    *rec = DX_SUB_DMESH_TYPE{};
    DxInitEntityBase(&rec->base);
    return DxReadEntity(*rec, fields, MeshLists(*rec));
}

int DxDrawSubDMesh(const DX_SUB_DMESH_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    // A pen that the host refuses costs the mesh alone.
    if (!DxCheckPass && DxStartDrawing(pen, lineType)) return 0;
    if (!DxCheckPass && DxModus == 3) {
        if (DxMeshEdges && DxDrawsPlan())
            if (const int error = drawEdges(*rec, m, pen, lineType)) return error;
        return DxDraw3dSubDMesh(rec, m);
    }
    return DxMeshEdges ? drawEdges(*rec, m, pen, lineType) : drawOutlines(*rec, m);
}

int DxDraw3dSubDMesh(const DX_SUB_DMESH_TYPE* rec, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    if (DxSetPenLt(pen, lineType)) return 0;
    DxFacets facets(rec->faceList.size());
    int endless = 0;
    std::vector<RPT3> corners;
    DxSubDFaces faces(*rec);
    while (faces.next(corners)) {
        if (corners.size() < 3) continue;
        // The normal is that of the block's own coordinates, whatever the matrix.
        VE_PLANE plane{{0, 0, 1}, 0};
        Ve3dEbAus3p(0, corners[0], corners[1], corners[2], &plane);
        for (RPT3& corner : corners) DxTrans3DRpt(&corner, m);
        if (std::all_of(corners.begin(), corners.end(), DxIsFinite))
            facets.add(corners, plane.normal);
        else
            ++endless;
    }
    faces.tellLosses();
    DxTellEndlessFaces(endless);
    if (facets.empty()) return 0;
    MatDbKey material;
    unsigned long number = 0;
    DxCiGetVisMatInfo(rec->base.materialHandle, pen, material, number);
    return facets.draw(pen, material);
}

// Meshes in a flat picture: the edges of their faces that are shown, each once.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../session/session_state.h"
#include "dx_mesh_faces.h"
#include "dx_space_import.h"

#include <algorithm>
#include <tuple>

namespace {

struct Edge {
    RPT3 from, to; ///< in the order of their places
    int order;     ///< in which edges are drawn
    bool isTurned; ///< it is drawn from `to` to `from`
};

/// Its place in the picture: edges above each other are one.
auto placeOf(const RPT3& p) {
    return std::tie(p.x, p.y);
}
auto placeOf(const Edge& edge) {
    return std::tuple_cat(placeOf(edge.from), placeOf(edge.to));
}

/// The edges that are shown, in the order of the walk, each at its first place.
std::vector<Edge> shownEdges(const DxFaceList& faces) {
    std::vector<Edge> edges;
    for (std::size_t i = 1; i < faces.pointCount(); ++i) {
        if (!faces.isShown(i)) continue;
        RPT3 from = faces.point(i - 1), to = faces.point(i);
        if (placeOf(from) == placeOf(to)) continue;
        const bool isTurned = placeOf(to) < placeOf(from);
        if (isTurned) std::swap(from, to);
        edges.push_back({from, to, static_cast<int>(i), isTurned});
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) {
        return std::tuple_cat(placeOf(a), std::tie(a.order)) < std::tuple_cat(placeOf(b), std::tie(b.order));
    });
    const auto same = [](const Edge& a, const Edge& b) { return placeOf(a) == placeOf(b); };
    edges.erase(std::unique(edges.begin(), edges.end(), same), edges.end());
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.order < b.order; });
    return edges;
}

/// Adds a face of a polyface mesh, corners that repeat the one before left out.
int addPolyface(DxFaceList& faces, const DX_3DFACE_TYPE& face, const Mat44 m) {
    RPT3 points[5];
    DxEdge edges[5] = {};
    int count = 0;
    DxEdge edge = DX_NO_EDGE; // to the corner that comes
    for (int k = 0; k < 4; ++k) {
        RPT3 corner = face.corners[k];
        DxTrans3DRpt(&corner, m);
        if (!DxIsFinite(corner)) return 0;
        points[count] = corner;
        edges[count++] = edge;
        edge = face.edgeFlags & (1 << k) ? DX_EDGE_HIDDEN : DX_EDGE_SHOWN;
    }
    points[count] = points[0];
    edges[count++] = edge;
    return faces.addFace(points, edges, count);
}

int drawEdges(const DxFaceList& faces, int pen, int lineType) {
    if (DxCheckPass) {
        faces.measure(DxCheckXYZ);
        return 0;
    }
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    return DxDrawShownEdges(faces);
}

int collect(const DX_POLYLINE_TYPE& polyline, const Mat44 m, bool isPolygonMesh, DxFaceList& faces) {
    if (isPolygonMesh) return DxCollectPolygonMesh(polyline, m, faces);
    DX_3DFACE_TYPE face;
    for (const DX_VERTEX_TYPE& vertex : polyline.vertices)
        if (DxPolyfaceOf(polyline, vertex, &face))
            if (const int error = addPolyface(faces, face, m)) return error;
    return 0;
}

} // namespace

int DxDrawShownEdges(const DxFaceList& faces) {
    RPT3 at{};
    bool isOpen = false;
    for (const Edge& edge : shownEdges(faces)) {
        const RPT3 &from = edge.isTurned ? edge.to : edge.from, &to = edge.isTurned ? edge.from : edge.to;
        if (!isOpen || placeOf(at) != placeOf(from))
            if (const int error = Dxovdraw(2, from.x, from.y)) return error;
        if (const int error = Dxovdraw(1, to.x, to.y)) return error;
        at = DxLastPoint = to;
        isOpen = true;
    }
    return 0;
}

int DxDrawFlatMesh(const DX_POLYLINE_TYPE& polyline, const Mat44 m, bool* isMesh) {
    constexpr int polygonMesh = 16, polyfaceMesh = 64;
    const bool isPolygonMesh =
        polyline.flags & polygonMesh && polyline.meshCountM >= 1 && polyline.meshCountN >= 2;
    *isMesh = (DxMeshEdges || !DxDrawsPlan()) &&
              (isPolygonMesh || (polyline.flags & polyfaceMesh && polyline.vertexCount));
    int pen = 1, lineType = 1;
    if (!*isMesh || !DxPenLtToCAD(&polyline.base, &pen, &lineType)) return 0;
    if (isPolygonMesh && DxCheckPass) {
        DxMeasurePolygonMesh(polyline, m);
        return 0;
    }
    if (!DxCheckPass && !DxDrawsPlan()) return 0;
    DxFaceList faces(pen, lineType);
    if (const int error = collect(polyline, m, isPolygonMesh, faces)) return error;
    return drawEdges(faces, pen, lineType);
}

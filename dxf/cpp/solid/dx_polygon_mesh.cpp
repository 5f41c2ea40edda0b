// Polygon meshes: M rows of N points, each cell two triangles.
//
//   D = V(i + 1, j) ---- C = V(i + 1, j + 1)      the diagonal A-C isn't shown
//   |                    |
//   A = V(i, j) -------- B = V(i, j + 1)
#include "../config/dx_pens.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_extents.h"
#include "../import/dx_transform.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_mesh_faces.h"
#include "dx_space_import.h"
#include "space_state.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

bool coincide(const RPT3& a, const RPT3& b) {
    constexpr double tolerance = 0.000001;
    return std::fabs(a.x - b.x) < tolerance && std::fabs(a.y - b.y) < tolerance &&
           std::fabs(a.z - b.z) < tolerance;
}

// What takes the faces of a walk. A sink that doesn't place gets them in the mesh's own coordinates.

/// Counts them, so that each array is made once and large enough.
struct FaceCounter {
    static constexpr bool places = false;
    std::size_t points = 0, faces = 0;
    void take(const RPT3* /*points*/, const DxEdge* /*edges*/, std::size_t count) {
        points += count;
        ++faces;
    }
    void leaveOut() {}
};

struct FaceFiller {
    static constexpr bool places = true;
    DxFaceList& list;
    int leftOut = 0;
    void take(const RPT3* face, const DxEdge* edges, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) list.add(face[i], edges[i]);
        list.endFace();
    }
    void leaveOut() { ++leftOut; }
};

struct FaceMeasure {
    static constexpr bool places = true;
    void take(const RPT3* face, const DxEdge* /*edges*/, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) DxCheckXYZ(face[i].x, face[i].y, face[i].z);
    }
    void leaveOut() {}
};

/// Rows and columns of a mesh that its vertices fill.
struct MeshSize {
    long long rows, columns;
    bool isCut; ///< rows are missing: it can't close over them
};

MeshSize sizeOf(const DX_POLYLINE_TYPE& mesh) {
    const long long announced = mesh.meshCountM, columns = mesh.meshCountN;
    const long long rows = std::min(announced, static_cast<long long>(mesh.vertices.size()) / columns);
    return {rows, columns, rows < announced};
}

template <class Sink>
class MeshWalk {
public:
    MeshWalk(const DX_POLYLINE_TYPE& mesh, const MeshSize& size, const Mat44 m, Sink& sink)
        : mesh_(mesh), size_(size), m_(m), sink_(sink) {}

    void run() {
        const long long rows = size_.rows, columns = size_.columns;
        if (rows == 0) return;
        for (long long j = 0; j + 1 < columns; ++j)
            for (long long i = 0; i + 1 < rows; ++i)
                cell(at(i, j), at(i, j + 1), at(i + 1, j + 1), at(i + 1, j));
        if (mesh_.closedInN) closeRows();
        if (mesh_.closed && !size_.isCut) closeColumns();
        if (mesh_.closed && !size_.isCut && mesh_.closedInN && !DxMeshCaps)
            cell(at(rows - 1, columns - 1), at(rows - 1, 0), at(0, 0), at(0, columns - 1));
    }

private:
    const RPT3& at(long long row, long long column) const {
        return mesh_.vertices[static_cast<std::size_t>(row * size_.columns + column)].location;
    }

    void closeRows() {
        const long long last = size_.columns - 1, top = size_.rows - 1;
        for (long long i = 0; i < top; ++i) cell(at(i, last), at(i, 0), at(i + 1, 0), at(i + 1, last));
        if (!DxMeshCaps) return;
        const bool hasFirst = !coincide(at(0, 0), at(0, last));
        const bool hasLast = !coincide(at(top, 0), at(top, last));
        if (hasFirst)
            cap(
                size_.columns, [&](long long k) { return at(0, last - k); }, DX_EDGE_SHOWN);
        if (hasLast)
            cap(
                size_.columns, [&](long long k) { return at(top, k); },
                hasFirst ? DX_EDGE_SHOWN : DX_EDGE_PENLESS);
    }

    void closeColumns() {
        const long long last = size_.columns - 1, top = size_.rows - 1;
        for (long long j = 0; j < last; ++j) cell(at(top, j), at(top, j + 1), at(0, j + 1), at(0, j));
        if (!DxMeshCaps) return;
        if (!coincide(at(0, last), at(top, last)))
            cap(
                size_.rows, [&](long long k) { return at(top - k, last); }, DX_EDGE_SHOWN);
        if (!coincide(at(0, 0), at(top, 0)))
            cap(
                size_.rows, [&](long long k) { return at(k, 0); }, DX_EDGE_SHOWN);
    }

    /// A face over a whole row or column; `edge` for all edges but the one that closes it.
    template <class Point>
    void cap(long long count, Point point, DxEdge edge) {
        begin();
        for (long long k = 0; k < count; ++k) add(point(k), k == 0 ? DX_NO_EDGE : edge);
        add(point(0), DX_EDGE_SHOWN);
        end();
    }

    void cell(const RPT3& a, const RPT3& b, const RPT3& c, const RPT3& d) {
        const bool ab = coincide(a, b), cd = coincide(c, d), ad = coincide(a, d), bc = coincide(b, c);
        const int distinct = 4 - ab - cd - ad - bc - coincide(a, c) - coincide(b, d);
        if (distinct < 3) return;
        if (distinct == 4) {
            triangle(a, b, c, DX_EDGE_SHOWN, DX_EDGE_PENLESS);
            triangle(a, c, d, DX_EDGE_PENLESS, DX_EDGE_SHOWN);
        } else if (ab) {
            triangle(a, c, d);
        } else if (cd) {
            triangle(c, a, b);
        } else if (ad) {
            triangle(a, c, b);
        } else if (bc) {
            triangle(c, d, a);
        } else {
            triangle(a, c, d);
        }
    }

    void triangle(const RPT3& a, const RPT3& b, const RPT3& c, DxEdge first = DX_EDGE_SHOWN,
                  DxEdge last = DX_EDGE_SHOWN) {
        begin();
        add(a, DX_NO_EDGE);
        add(b, first);
        add(c, DX_EDGE_SHOWN);
        add(a, last);
        end();
    }

    void begin() {
        points_.clear();
        edges_.clear();
    }
    void add(RPT3 point, DxEdge edge) {
        if (Sink::places) DxTrans3DRpt(&point, m_);
        points_.push_back(point);
        edges_.push_back(edge);
    }
    void end() {
        if (!Sink::places || std::all_of(points_.begin(), points_.end(), DxIsFinite))
            sink_.take(points_.data(), edges_.data(), points_.size());
        else
            sink_.leaveOut();
    }

    const DX_POLYLINE_TYPE& mesh_;
    const MeshSize& size_;
    const double (*m_)[4];
    Sink& sink_;
    std::vector<RPT3> points_; ///< of the present face
    std::vector<DxEdge> edges_;
};

} // namespace

int DxCollectPolygonMesh(const DX_POLYLINE_TYPE& mesh, const Mat44 m, DxFaceList& faces) {
    const MeshSize size = sizeOf(mesh);
    if (size.isCut && !DxCheckPass)
        DxProtoMsg(UtFormatMsg("A mesh of %d by %d points has only %d vertices.",
                               "A mesh of %d by %d points has only %d vertices.", mesh.meshCountM,
                               mesh.meshCountN, static_cast<int>(mesh.vertices.size())),
                   0);
    FaceCounter counter;
    MeshWalk<FaceCounter>(mesh, size, m, counter).run();
    if (const int error = faces.reserve(counter.points, counter.faces)) return error;
    FaceFiller filler{faces};
    MeshWalk<FaceFiller>(mesh, size, m, filler).run();
    DxTellEndlessFaces(filler.leftOut);
    return 0;
}

void DxMeasurePolygonMesh(const DX_POLYLINE_TYPE& mesh, const Mat44 m) {
    FaceMeasure measure;
    MeshWalk<FaceMeasure>(mesh, sizeOf(mesh), m, measure).run();
}

void DxTellEndlessFaces(int count) {
    if (count == 0 || DxCheckPass) return;
    DxProtoMsg(UtFormatMsg("%d faces of a mesh have coordinates that are no finite numbers.",
                           "%d faces of a mesh have coordinates that are no finite numbers.", count),
               0);
}

int DxDrawPolyMat(const DX_POLYLINE_TYPE* polyline, const Mat44 m) {
    int pen = 1, lineType = 1;
    const bool hasPen = DxPenLtToCAD(&polyline->base, &pen, &lineType);
    if (DxCheckPass) {
        DxMeasurePolygonMesh(*polyline, m);
        return 0;
    }
    if (hasPen) {
        if (const int error = DxStartDrawing(pen, lineType)) return error;
    } else {
        pen = lineType = 1; // it is drawn all the same
    }
    DxFaceList faces(pen, lineType);
    if (const int error = DxCollectPolygonMesh(*polyline, m, faces)) return error;
    return faces.draw();
}

// Faces in space by pattern number: made, joined, read.
#include "ov_3d.h"

#include "ds.h"

#include "drawing/host_state.h"
#include "drawing/space_frame.h"
#include "geometry/face_triangles.h"
#include "services/failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

using namespace host;

// ---- making ----------------------------------------------------------------------------------------

namespace {

/// The arrays of a face list as the caller gives them.
struct GivenFaces {
    std::span<const int> ends;
    const double *x, *y, *z;
    const int *ops, *pens, *lineTypes, *invisible, *facePens;

    std::size_t pointCount() const { return ends.empty() ? 0 : static_cast<std::size_t>(ends.back()); }
    bool isSound() const {
        int last = 0;
        for (const int end : ends) {
            if (end <= last) return false;
            last = end;
        }
        const auto finite = [this](const double* values) {
            return std::all_of(values, values + pointCount(), [](double v) { return std::isfinite(v); });
        };
        return finite(x) && finite(y) && finite(z);
    }
    char markOf(std::size_t point) const {
        return static_cast<char>((ops[point] ? EDGE : 0) | (invisible[point] ? HIDDEN : 0));
    }
};

} // namespace

/// The list that goes on taking faces; a pattern needs more than one only where a list is full.
static FaceList& listFor(Pattern& pattern, std::size_t points) {
    constexpr std::size_t mostPoints = std::size_t(1) << 30;
    if (pattern.faceLists.empty() || pattern.faceLists.back().points.size() + points > mostPoints)
        pattern.faceLists.emplace_back();
    return pattern.faceLists.back();
}

static void addFaces(FaceList& list, const GivenFaces& given) {
    if (given.pointCount() > list.points.size()) {
        list.points.reserve(list.points.size() + given.pointCount());
        list.marks.reserve(list.marks.size() + given.pointCount());
        list.ends.reserve(list.ends.size() + given.ends.size());
    }
    const double length = spaceLength();
    std::size_t i = 0;
    for (std::size_t face = 0; face < given.ends.size(); ++face) {
        for (; i < static_cast<std::size_t>(given.ends[face]); ++i)
            list.addPoint({given.x[i] / length, given.y[i] / length, given.z[i] / length}, given.markOf(i),
                          given.pens[i], given.lineTypes[i]);
        list.endFace(given.facePens[face]);
    }
}

int ov3dgenflaeche(int* /*typeCode*/, int* pattern, int* /*one*/, int* faceCount, int* faceEnds, double* x,
                   double* y, double* z, double* /*none1*/, double* /*none2*/, double* /*none3*/, int* ops,
                   int* pens, int* lineTypes, int* invisible, int* facePens) {
    if (callFails()) return errorNoMemory;
    Pattern* target = openDrawing().find(*pattern);
    if (!target) return errorNoSuchObject;
    if (*faceCount <= 0) return errorNotApplicable;
    const GivenFaces given{
        {faceEnds, static_cast<std::size_t>(*faceCount)}, x, y, z, ops, pens, lineTypes, invisible, facePens};
    if (!given.isSound()) return errorNotApplicable;
    addFaces(listFor(*target, given.pointCount()), given);
    openDrawing().elementCount += static_cast<std::size_t>(*faceCount);
    return 0;
}

int ov3dgenflaeche(int* code, int* patNo) {
    if (callFails()) return errorNoMemory;
    Pattern* pattern = openDrawing().find(*patNo);
    if (!pattern) return errorNoSuchObject;
    if (*code != 205) return errorNotApplicable;
    if (!pattern->hasFaces()) return errorNoSuchObject;
    pattern->facesJoined = true;
    return 0;
}

int Uo3dInitSonder(int /*kind*/, double /*height*/, int pattern, int /*flags*/, int* result) {
    if (callFails()) return errorNoMemory;
    if (!openDrawing().find(pattern)) return errorNoSuchObject;
    *result = pattern;
    return 0;
}

int DsResetFlag(_ObObject* object, int /*flag*/) {
    if (callFails()) return errorNoMemory;
    return object ? 0 : errorNoSuchObject; // nothing here is shown while it is made
}

// ---- reading ---------------------------------------------------------------------------------------

namespace {

/// Fills the arrays of a reading.
class FaceWriter {
public:
    explicit FaceWriter(FaceArrays& out) : out_(out), length_(spaceLength()) {}

    void list(const FaceList& list) {
        EdgeLooks reader(list);
        std::vector<EdgeLook> looks;
        forEachFace(list, [&](const FaceView& face) {
            looks.clear();
            for (int i = 0; i < face.count; ++i) looks.push_back(reader.at(face.first + i));
            constexpr int quadrilateral = 5;
            if (face.isArea() && face.count > quadrilateral)
                triangles(face, looks);
            else
                whole(face, looks);
        });
    }
    void curve(const Curve& curve) {
        for (std::size_t i = 0; i < curve.points.size(); ++i)
            point(curve.points[i], i > 0, curve.pen, 1, false);
        end(0);
    }

private:
    void whole(const FaceView& face, const std::vector<EdgeLook>& looks) {
        for (int i = 0; i < face.count; ++i) {
            const EdgeLook& look = looks[static_cast<std::size_t>(i)];
            const bool isEdge = i > 0 && (face.marks[i] & EDGE);
            point(face.points[i], isEdge, look.pen, look.lineType, face.marks[i] & HIDDEN);
        }
        end(face.isArea() ? face.pen : 0);
    }
    /// A face of many corners, in triangles; edges that it hasn't itself aren't shown.
    void triangles(const FaceView& face, const std::vector<EdgeLook>& looks) {
        const int corners = face.count - 1;
        std::vector<std::array<int, 3>> cut;
        triangulate(face.points, corners, cut);
        for (const std::array<int, 3>& t : cut) {
            point(face.points[t[0]], false, looks[0].pen, looks[0].lineType, false);
            for (int k = 0; k < 3; ++k) {
                const int from = t[static_cast<std::size_t>(k)],
                          to = t[static_cast<std::size_t>((k + 1) % 3)];
                const bool isOwn = to == (from + 1) % corners;
                const EdgeLook& look = looks[static_cast<std::size_t>(from + 1)];
                point(face.points[to], true, look.pen, look.lineType,
                      !isOwn || (face.marks[from + 1] & HIDDEN));
            }
            end(face.pen);
        }
    }
    void point(const RPT3& p, bool isEdge, int pen, int lineType, bool isHidden) {
        out_.x.push_back(p.x * length_);
        out_.y.push_back(p.y * length_);
        out_.z.push_back(p.z * length_);
        out_.edgeKind.push_back(isEdge ? 1 : 0);
        out_.edgePen.push_back(pen);
        out_.edgeLt.push_back(lineType);
        out_.hidden.push_back(isHidden ? 1 : 0);
    }
    void end(int facePen) {
        out_.ends.push_back(static_cast<int>(out_.x.size()));
        out_.facePen.push_back(facePen);
    }

    FaceArrays& out_;
    double length_;
};

} // namespace

int ov3dleseflaechen(int* mode, int* pattern, int* /*one*/, int* polygonCount, int** ends, double** x,
                     double** y, double** z, double** none1, double** none2, double** none3, int** edgeKind,
                     int** edgePen, int** edgeLt, int** hidden, int** facePen) {
    if (callFails()) return errorNoMemory;
    const Pattern* source = openDrawing().find(*pattern);
    if (!source || (!source->hasFaces() && source->curves.empty())) return errorNoSuchObject;
    if (*mode != 20) return errorNotApplicable;
    FaceArrays& out = drawingState().faceArrays;
    out = FaceArrays{};
    FaceWriter writer(out);
    forEachFaceList(*source, [&](const FaceList& list) { writer.list(list); });
    for (const Curve& curve : source->curves) writer.curve(curve);
    *polygonCount = static_cast<int>(out.ends.size());
    *ends = out.ends.data();
    *x = out.x.data(), *y = out.y.data(), *z = out.z.data();
    *none1 = *none2 = *none3 = nullptr;
    *edgeKind = out.edgeKind.data(), *edgePen = out.edgePen.data(), *edgeLt = out.edgeLt.data();
    *hidden = out.hidden.data(), *facePen = out.facePen.data();
    return 0;
}

// ---- settings --------------------------------------------------------------------------------------

int ov3dfunc(int* /*code*/) {
    if (callFails()) return errorNoMemory;
    ++drawingState().notifications3d;
    return 0;
}

int ov3dgenepsi(int* code, double* tolerance) {
    if (callFails()) return errorNoMemory;
    double& present = drawingState().tolerance3d;
    if (*code == 5)
        *tolerance = present > 0 ? present : drawingTolerance(openDrawing());
    else if (*code == 6 && *tolerance >= 0)
        present = *tolerance;
    else
        return errorNotApplicable;
    return 0;
}

int ov3dgenepsi(double* tolerance) {
    if (callFails()) return errorNoMemory;
    if (!(*tolerance >= 0)) return errorNotApplicable;
    std::swap(drawingState().tolerance3d, *tolerance);
    return 0;
}

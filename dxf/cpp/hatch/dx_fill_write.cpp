// Fills for targets with and without HATCH.
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../host/dx_host.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_fill_contours.h"
#include "dx_fill_slabs.h"
#include "dx_triangulate.h"
#include "dx_write_hatch.h"
#include "hatch.h"
#include "ut.h"

#include <cmath>

namespace {

using Elems = std::vector<UO_ELEM>;

int sizeOf(const Elems& elems) {
    return static_cast<int>(elems.size());
}
bool isCircle(const Elems& elems) {
    return DxElemSIsCircle(elems.data(), sizeOf(elems)) != 0;
}
double radiusOf(const UO_ELEM& e) {
    return std::hypot(e.end.x - e.centre.x, e.end.y - e.centre.y);
}

int writeRing(const RPT& centre, double middle, double width, int pen, const Mat32 mat) {
    return DxWriteDonut({centre.x + middle, centre.y}, {centre.x - middle, centre.y}, pen, width, mat);
}

bool isRing(const DX_HATCH_CONT& cont) {
    if (cont.holes.size() != 1 || !isCircle(cont.elems) || !isCircle(cont.holes[0])) return false;
    const RPT& a = cont.elems[0].centre;
    const RPT& b = cont.holes[0][0].centre;
    const double t = UtConv(50);
    return std::fabs(a.x - b.x) <= t && std::fabs(a.y - b.y) <= t;
}

int writeSolid(const RPT& a, const RPT& b, const RPT& c, const RPT& d, int pen, const Mat32 mat) {
    const RPT corners[4] = {a, b, c, d};
    return DxWriteSolid(corners, pen, -1, mat);
}

/// SOLID fills its outline only where no corner points inwards and no sides cross.
bool isConvex(const Elems& elems) {
    int left = 0, right = 0;
    for (std::size_t i = 0; i < elems.size(); ++i) {
        const UO_ELEM& a = elems[i];
        const UO_ELEM& b = elems[(i + 1) % elems.size()];
        const double turn =
            (a.end.x - a.start.x) * (b.end.y - b.start.y) - (a.end.y - a.start.y) * (b.end.x - b.start.x);
        left += turn > 0;
        right += turn < 0;
    }
    return left == 0 || right == 0;
}

/// Vertices of the contours, one behind the other, from index 1 on.
struct Vertices {
    std::vector<int> sizes;
    std::vector<RPT> points{{0, 0}};

    void add(const Elems& elems) {
        if (elems.empty()) return;
        sizes.push_back(sizeOf(elems));
        for (const UO_ELEM& e : elems) points.push_back(e.start);
    }
    int triangleCount() const {
        return static_cast<int>(points.size()) - 1 + 2 * static_cast<int>(sizes.size()) - 4;
    }
};

/// Holes that touch each other share corners; the area between them is cut by height.
int writeSlabs(const DX_HATCH_CONT& cont, int pen, const Mat32 mat) {
    std::vector<const Elems*> contours{&cont.elems};
    for (const Elems& hole : cont.holes) contours.push_back(&hole);
    const std::vector<DX_FILL_PART> parts = DxFillSlabs(contours);
    if (parts.empty()) DxProtoMsg(DxMsg(5744), 1);
    for (const DX_FILL_PART& part : parts) {
        const RPT* c = part.corners;
        if (const int error = writeSolid(c[0], c[1], c[3], c[2], pen, mat)) return error;
    }
    return 0;
}

int writeTriangles(DX_HATCH_CONT& cont, int pen, const Mat32 mat) {
    if (DxFillHatchCheck(&cont) != 0) return 0;
    Vertices vertices;
    vertices.add(cont.elems);
    for (const Elems& hole : cont.holes) vertices.add(hole);
    const int count = vertices.triangleCount();
    if (count <= 0) return 0;
    std::vector<int> triangles(3 * static_cast<std::size_t>(count));
    if (DxFillTriangulate(static_cast<int>(vertices.sizes.size()), vertices.sizes.data(),
                          vertices.points.data(), triangles.data()) != 0)
        return writeSlabs(cont, pen, mat);
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const auto at = [&](std::size_t k) {
            return vertices.points[static_cast<std::size_t>(triangles[i + k])];
        };
        if (triangles[i] == triangles[i + 1] || triangles[i] == triangles[i + 2]) continue;
        if (const int error = writeSolid(at(0), at(1), at(2), at(2), pen, mat)) return error;
    }
    return 0;
}

int writeFill(DX_HATCH_CONT& cont, int pen, const Mat32 mat) {
    const Elems& e = cont.elems;
    if (cont.holes.empty() && isCircle(e)) {
        const double r = radiusOf(e[0]);
        return writeRing(e[0].centre, r / 2, r, pen, mat);
    }
    if (isRing(cont)) {
        const double r1 = radiusOf(e[0]), r2 = radiusOf(cont.holes[0][0]);
        return writeRing(e[0].centre, (r1 + r2) / 2, r1 - r2, pen, mat);
    }
    if (cont.holes.empty() && DxElemSIsTriangle(e.data(), sizeOf(e)))
        return writeSolid(e[0].start, e[1].start, e[2].start, e[2].start, pen, mat);
    if (cont.holes.empty() && DxElemSIsQuadrangle(e.data(), sizeOf(e)) && isConvex(e))
        return writeSolid(e[0].start, e[1].start, e[3].start, e[2].start, pen, mat);
    return writeTriangles(cont, pen, mat);
}

} // namespace

int DxFillHatchWrite(std::vector<DX_HATCH_CONT>& conts, int pen, const Mat32 mat) {
    DsCsr hatch;
    DX_HATCH_GRAD gradient{};
    unsigned short percent = 0;
    int failed = OvGetHatchCursor(&hatch);
    if (!failed) failed = DxCiGetGradHatchParams(hatch, &gradient);
    if (!failed) failed = DxCiGetHatchTransparency(hatch, &percent);
    int transparency = 0;
    DxCiTransparencyToDXF(percent, &transparency);
    if (DxMiscCheckVersion(DX_LEVEL_HANDLES))
        return DxWriteHatchs(conts, {}, nullptr, failed ? nullptr : &gradient, pen, transparency, mat);
    if (failed) {
        ++DxUnwrittenCounts[DX_UNWRITTEN_HATCH];
        return 0;
    }
    for (DX_HATCH_CONT& cont : conts)
        if (const int error = writeFill(cont, pen, mat)) return error;
    return DxWriteError();
}

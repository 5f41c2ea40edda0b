#include "solid/solid_faces.h"

#include "solid/face_rings.h"
#include "solid/ring_cells.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace host {

RPT3 placed(const Solid& solid, const RPT3& p) {
    const auto& [x, y, z, origin] = solid.place;
    return sum(origin, sum(scale(x, p.x), sum(scale(y, p.y), scale(z, p.z))));
}

namespace {

bool isSame(const RPT3& a, const RPT3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

class Faces {
public:
    Faces(const Solid& solid, std::size_t limit)
        : solid_(solid), model_(splitSat(solid.data)), topology_(model_), left_(limit) {}

    FaceList make() {
        for (const SatRecord& record : model_.records)
            if (record.kind == "face") add(record);
        return std::move(list_);
    }

private:
    void add(const SatRecord& face) {
        const SatRecord* const record = topology_.target(face, "surface");
        if (!record) return;
        const SatSurface surface = satSurface(model_, *record);
        if (!surface.isKnown()) return;
        Rings rings = faceRings(topology_, face, surface, left_);
        const SatPlacement placement = topology_.placementOf(face);
        for (const auto& cell : ringTriangles(std::move(rings), surface.u().step, surface.v().step, left_)) {
            std::array<RPT3, 3> corners;
            for (std::size_t i = 0; i < 3; ++i)
                corners[i] = placed(solid_, placement.map(surface.at(cell[i])));
            addTriangle(corners);
        }
    }

    void addTriangle(const std::array<RPT3, 3>& t) {
        const bool isFlat = isSame(t[0], t[1]) || isSame(t[1], t[2]) || isSame(t[2], t[0]); // at a pole
        const auto isFinite = [](const RPT3& p) { return std::isfinite(p.x + p.y + p.z); };
        if (isFlat || left_ == 0 || !std::all_of(t.begin(), t.end(), isFinite)) return;
        --left_;
        for (std::size_t i = 0; i < 4; ++i)
            list_.addPoint(t[i % 3], EDGE | HIDDEN, solid_.pen, solid_.lineType);
        list_.endFace(solid_.pen);
    }

    const Solid& solid_;
    const SatModel model_;
    const SatTopology topology_;
    std::size_t left_;
    FaceList list_;
};

} // namespace

FaceList solidFaces(const Solid& solid, std::size_t limit) {
    return Faces(solid, limit).make();
}

} // namespace host

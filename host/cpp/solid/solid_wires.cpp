#include "solid/solid_wires.h"

#include "solid/sat_curve.h"
#include "solid/sat_tokens.h"
#include "solid/sat_topology.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace host {
namespace {

constexpr double turn = 2 * std::numbers::pi;
using Wire = std::vector<RPT3>;

class Wires {
public:
    Wires(const SatModel& model, std::size_t limit) : model_(model), topology_(model), left_(limit) {}

    std::vector<Wire> make() {
        for (const SatRecord& record : model_.records) {
            if (record.kind == "edge") addEdge(record);
            if (record.kind == "face") addFace(record);
        }
        return std::move(wires_);
    }

private:
    void addEdge(const SatRecord& edge) {
        add(topology_.edgePoints(edge, left_), topology_.placementOf(edge));
    }

    void add(Wire wire, const SatPlacement& placement) {
        for (RPT3& p : wire) p = placement.map(p);
        const auto isFinite = [](const RPT3& p) { return std::isfinite(p.x + p.y + p.z); };
        if (wire.size() < 2 || wire.size() > left_ || !std::all_of(wire.begin(), wire.end(), isFinite))
            return;
        left_ -= wire.size();
        wires_.push_back(std::move(wire));
    }

    // ---- faces -------------------------------------------------------------------------------------
    void addFace(const SatRecord& face) {
        const SatRecord* const surface = topology_.target(face, "surface");
        if (!surface) return;
        const SatRecord* const loop = topology_.target(face, "loop");
        if (surface->leaf == "sphere" && !hasEdges(loop)) addSphere(*surface, topology_.placementOf(face));
        if (surface->leaf == "torus" && !hasEdges(loop)) addTorus(*surface, topology_.placementOf(face));
        if (surface->leaf == "cone" && loop) addRulings(*loop, topology_.placementOf(face));
    }
    /// False too for a loop around a single point.
    bool hasEdges(const SatRecord* loop) const {
        const SatRecord* const coedge = loop ? topology_.target(*loop, "coedge") : nullptr;
        const SatRecord* const edge = coedge ? topology_.target(*coedge, "edge") : nullptr;
        return edge && topology_.target(*edge, "curve");
    }

    void addCircle(const RPT3& centre, const RPT3& a, const RPT3& b, const SatPlacement& placement) {
        add(SatCurve::ellipse(centre, a, b).points(0, turn, left_), placement);
    }
    void addSphere(const SatRecord& surface, const SatPlacement& placement) {
        std::vector<double> n;
        if (!firstNumbers(model_, surface, n) || n.size() < 4) return;
        const RPT3 c{n[0], n[1], n[2]};
        const double r = n[3];
        addCircle(c, {r, 0, 0}, {0, r, 0}, placement);
        addCircle(c, {r, 0, 0}, {0, 0, r}, placement);
        addCircle(c, {0, r, 0}, {0, 0, r}, placement);
    }
    void addTorus(const SatRecord& surface, const SatPlacement& placement) {
        std::vector<double> n;
        if (!firstNumbers(model_, surface, n) || n.size() < 8) return;
        const RPT3 c{n[0], n[1], n[2]}, axis = unit({n[3], n[4], n[5]}), x = across(axis), y = cross(axis, x);
        const double major = std::abs(n[6]), minor = std::abs(n[7]);
        for (const double side : {1.0, -1.0}) {
            addCircle(c, scale(x, major + side * minor), scale(y, major + side * minor), placement);
            addCircle(sum(c, scale(axis, side * minor)), scale(x, major), scale(y, major), placement);
            for (const RPT3& out : {scale(x, side), scale(y, side)})
                addCircle(sum(c, scale(out, major)), scale(out, minor), scale(axis, minor), placement);
        }
    }

    /// Straight lines between the two full ellipses that bound a cylinder or a cone.
    void addRulings(const SatRecord& loop, const SatPlacement& placement) {
        const SatRecord* const second = topology_.target(loop, "loop");
        SatCurve a, b;
        if (!second || second == &loop || topology_.target(*second, "loop") || !ringOf(loop, a) ||
            !ringOf(*second, b))
            return;
        constexpr int lines = 4;
        for (int i = 0; i < lines; ++i) {
            const RPT3 from = a.at(turn * i / lines);
            add({from, b.at(b.nearest(sum(from, difference(b.centre(), a.centre()))))}, placement);
        }
    }
    /// The ellipse of a loop that is one closed edge.
    bool ringOf(const SatRecord& loop, SatCurve& curve) const {
        const SatRecord* const coedge = topology_.target(loop, "coedge");
        const SatRecord* const edge = coedge ? topology_.target(*coedge, "edge") : nullptr;
        if (!edge || topology_.target(*edge, "vertex") != topology_.target(*edge, "vertex", 1)) return false;
        const SatRecord* const shape = topology_.target(*edge, "curve");
        if (!shape || shape->leaf != "ellipse") return false;
        curve = satCurve(model_, *shape);
        return curve.isKnown();
    }

    const SatModel& model_;
    const SatTopology topology_;
    std::size_t left_;
    std::vector<Wire> wires_;
};

} // namespace

std::vector<std::vector<RPT3>> solidWires(std::string_view data, std::size_t limit) {
    const SatModel model = splitSat(data);
    return Wires(model, limit).make();
}

} // namespace host

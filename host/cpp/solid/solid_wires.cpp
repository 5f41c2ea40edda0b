#include "solid/solid_wires.h"

#include "solid/sat_curve.h"
#include "solid/sat_tokens.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace host {
namespace {

constexpr double turn = 2 * std::numbers::pi;
using Wire = std::vector<RPT3>;

/// Where a body stands: rows of a matrix, and the shift.
struct Placement {
    std::array<double, 12> m{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

    RPT3 map(const RPT3& p) const {
        return {p.x * m[0] + p.y * m[3] + p.z * m[6] + m[9], p.x * m[1] + p.y * m[4] + p.z * m[7] + m[10],
                p.x * m[2] + p.y * m[5] + p.z * m[8] + m[11]};
    }
};

class Wires {
public:
    Wires(const SatModel& model, std::size_t limit) : model_(model), left_(limit) {}

    std::vector<Wire> make() {
        for (const SatRecord& record : model_.records) {
            if (record.kind == "edge") addEdge(record);
            if (record.kind == "face") addFace(record);
        }
        return std::move(wires_);
    }

private:
    // ---- the model by the kinds of records that pointers lead to, whatever the version puts between them
    /// The `n`-th pointer of a record that leads to a kind; null for none.
    const SatRecord* target(const SatRecord& record, std::string_view kind, int n = 0) const {
        for (std::size_t at = record.first; at < record.first + record.count; ++at) {
            const SatRecord* const found = model_.at(model_.tokens[at]);
            if (found && found->kind == kind && n-- == 0) return found;
        }
        return nullptr;
    }
    /// What stands right behind the pointer to a kind; null for none.
    const SatToken* behind(const SatRecord& record, std::string_view kind, int n = 0) const {
        for (std::size_t at = record.first; at + 1 < record.first + record.count; ++at) {
            const SatRecord* const found = model_.at(model_.tokens[at]);
            if (found && found->kind == kind && n-- == 0) return &model_.tokens[at + 1];
        }
        return nullptr;
    }

    Placement placementOf(const SatRecord& part) const {
        constexpr std::array<std::string_view, 7> owners{"coedge", "loop", "wire", "face",
                                                         "shell",  "lump", "body"};
        const SatRecord* record = &part;
        for (const std::string_view owner : owners)
            if (const SatRecord* const above = target(*record, owner); above && record->kind != owner)
                record = above;
        return record->kind == "body" ? transformOf(*record) : Placement();
    }
    Placement transformOf(const SatRecord& body) const {
        Placement placement;
        const SatRecord* const transform = target(body, "transform");
        std::array<double, 13> numbers;
        if (!transform || !lastNumbers(model_, *transform, numbers)) return placement;
        for (std::size_t i = 0; i < 12; ++i) placement.m[i] = i < 9 ? numbers[i] * numbers[12] : numbers[i];
        return placement;
    }

    // ---- edges -------------------------------------------------------------------------------------
    bool pointOf(const SatRecord* vertex, RPT3& point) const {
        const SatRecord* const place = vertex ? target(*vertex, "point") : nullptr;
        std::array<double, 3> numbers;
        if (!place || !lastNumbers(model_, *place, numbers)) return false;
        point = {numbers[0], numbers[1], numbers[2]};
        return true;
    }

    void addEdge(const SatRecord& edge) {
        const SatRecord* const curve = target(edge, "curve");
        const SatRecord* const start = target(edge, "vertex");
        const SatRecord* end = target(edge, "vertex", 1);
        RPT3 from, to;
        if (!end) end = start;
        if (!pointOf(start, from) || !pointOf(end, to) || !curve) return;
        const SatCurve shape = satCurve(model_, *curve);
        if (!shape.isKnown()) return;
        const SatToken* const sense = behind(edge, "curve");
        const bool isReversed =
            sense && (sense->text == "reversed" || (sense->kind == SatKind::Logical && sense->number != 0));
        const SatToken *const t0 = behind(edge, "vertex"), *const t1 = behind(edge, "vertex", 1);
        const bool hasRange = t0 && t1 && t0->kind == SatKind::Number && t1->kind == SatKind::Number;
        const double side = isReversed ? -1 : 1;
        const auto range = hasRange ? std::array{side * t0->number, side * t1->number}
                                    : shape.between(from, to, start == end, isReversed);
        add(shape.points(range[0], range[1], left_), placementOf(edge));
    }

    void add(Wire wire, const Placement& placement) {
        for (RPT3& p : wire) p = placement.map(p);
        const auto isFinite = [](const RPT3& p) { return std::isfinite(p.x + p.y + p.z); };
        if (wire.size() < 2 || wire.size() > left_ || !std::all_of(wire.begin(), wire.end(), isFinite))
            return;
        left_ -= wire.size();
        wires_.push_back(std::move(wire));
    }

    // ---- faces -------------------------------------------------------------------------------------
    void addFace(const SatRecord& face) {
        const SatRecord* const surface = target(face, "surface");
        if (!surface) return;
        const SatRecord* const loop = target(face, "loop");
        if (surface->leaf == "sphere" && !hasEdges(loop)) addSphere(*surface, placementOf(face));
        if (surface->leaf == "torus" && !hasEdges(loop)) addTorus(*surface, placementOf(face));
        if (surface->leaf == "cone" && loop) addRulings(*loop, placementOf(face));
    }
    /// False too for a loop around a single point.
    bool hasEdges(const SatRecord* loop) const {
        const SatRecord* const coedge = loop ? target(*loop, "coedge") : nullptr;
        const SatRecord* const edge = coedge ? target(*coedge, "edge") : nullptr;
        return edge && target(*edge, "curve");
    }

    void addCircle(const RPT3& centre, const RPT3& a, const RPT3& b, const Placement& placement) {
        add(SatCurve::ellipse(centre, a, b).points(0, turn, left_), placement);
    }
    void addSphere(const SatRecord& surface, const Placement& placement) {
        std::vector<double> n;
        if (!firstNumbers(model_, surface, n) || n.size() < 4) return;
        const RPT3 c{n[0], n[1], n[2]};
        const double r = n[3];
        addCircle(c, {r, 0, 0}, {0, r, 0}, placement);
        addCircle(c, {r, 0, 0}, {0, 0, r}, placement);
        addCircle(c, {0, r, 0}, {0, 0, r}, placement);
    }
    void addTorus(const SatRecord& surface, const Placement& placement) {
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
    void addRulings(const SatRecord& loop, const Placement& placement) {
        const SatRecord* const second = target(loop, "loop");
        SatCurve a, b;
        if (!second || second == &loop || target(*second, "loop") || !ringOf(loop, a) || !ringOf(*second, b))
            return;
        constexpr int lines = 4;
        for (int i = 0; i < lines; ++i) {
            const RPT3 from = a.at(turn * i / lines);
            add({from, b.at(b.nearest(sum(from, difference(b.centre(), a.centre()))))}, placement);
        }
    }
    /// The ellipse of a loop that is one closed edge.
    bool ringOf(const SatRecord& loop, SatCurve& curve) const {
        const SatRecord* const coedge = target(loop, "coedge");
        const SatRecord* const edge = coedge ? target(*coedge, "edge") : nullptr;
        if (!edge || target(*edge, "vertex") != target(*edge, "vertex", 1)) return false;
        const SatRecord* const shape = target(*edge, "curve");
        if (!shape || shape->leaf != "ellipse") return false;
        curve = satCurve(model_, *shape);
        return curve.isKnown();
    }

    const SatModel& model_;
    std::size_t left_;
    std::vector<Wire> wires_;
};

} // namespace

std::vector<std::vector<RPT3>> solidWires(std::string_view data, std::size_t limit) {
    const SatModel model = splitSat(data);
    return Wires(model, limit).make();
}

} // namespace host

#include "solid/sat_topology.h"

#include <cmath>

namespace host {

bool isReversed(const SatToken* sense) {
    if (!sense) return false;
    const bool isNumber = sense->kind == SatKind::Logical || sense->kind == SatKind::Number;
    return isNumber ? sense->number != 0 : sense->text.starts_with("reverse");
}

const SatRecord* SatTopology::target(const SatRecord& record, std::string_view kind, int n) const {
    for (std::size_t at = record.first; at < record.first + record.count; ++at) {
        const SatRecord* const found = model_.at(model_.tokens[at]);
        if (found && found->kind == kind && n-- == 0) return found;
    }
    return nullptr;
}

const SatToken* SatTopology::behind(const SatRecord& record, std::string_view kind, int n) const {
    for (std::size_t at = record.first; at + 1 < record.first + record.count; ++at) {
        const SatRecord* const found = model_.at(model_.tokens[at]);
        if (found && found->kind == kind && n-- == 0) return &model_.tokens[at + 1];
    }
    return nullptr;
}

SatPlacement SatTopology::placementOf(const SatRecord& part) const {
    constexpr std::array<std::string_view, 7> owners{"coedge", "loop", "wire", "face",
                                                     "shell",  "lump", "body"};
    const SatRecord* record = &part;
    for (const std::string_view owner : owners)
        if (const SatRecord* const above = target(*record, owner); above && record->kind != owner)
            record = above;
    return record->kind == "body" ? transformOf(*record) : SatPlacement();
}

SatPlacement SatTopology::transformOf(const SatRecord& body) const {
    SatPlacement placement;
    const SatRecord* const transform = target(body, "transform");
    constexpr std::size_t count = 13;
    std::vector<double> numbers;
    if (!transform || !firstNumbers(model_, *transform, numbers) || numbers.size() < count) return placement;
    // From 700 on its id stands ahead; the oldest versions have three more numbers behind.
    const std::size_t first = numbers.size() == count + 1;
    const double size = numbers[first + count - 1];
    for (std::size_t i = 0; i < 12; ++i) placement.m[i] = numbers[first + i] * (i < 9 ? size : 1);
    return placement;
}

bool SatTopology::pointOf(const SatRecord* vertex, RPT3& point) const {
    const SatRecord* const place = vertex ? target(*vertex, "point") : nullptr;
    std::array<double, 3> numbers;
    if (!place || !firstNumbers(model_, *place, numbers)) return false;
    point = {numbers[0], numbers[1], numbers[2]};
    return true;
}

std::vector<RPT3> SatTopology::edgePoints(const SatRecord& edge, std::size_t limit) const {
    const SatRecord* const curve = target(edge, "curve");
    const SatRecord* const start = target(edge, "vertex");
    const SatRecord* end = target(edge, "vertex", 1);
    RPT3 from, to;
    if (!end) end = start;
    if (!pointOf(start, from) || !pointOf(end, to) || !curve) return {};
    const SatCurve shape = satCurve(model_, *curve);
    if (!shape.isKnown()) return {};
    const bool runsBack = isReversed(behind(edge, "curve"));
    const SatToken *const t0 = behind(edge, "vertex"), *const t1 = behind(edge, "vertex", 1);
    const bool hasRange = t0 && t1 && t0->kind == SatKind::Number && t1->kind == SatKind::Number;
    const double side = runsBack ? -1 : 1;
    const auto range = hasRange ? std::array{side * t0->number, side * t1->number}
                                : shape.between(from, to, start == end, runsBack);
    return shape.points(range[0], range[1], limit);
}

} // namespace host

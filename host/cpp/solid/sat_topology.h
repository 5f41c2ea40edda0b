// How the records of a solid model hang together, whatever its version puts between their pointers.
#pragma once

#include "solid/sat_curve.h"
#include "solid/sat_tokens.h"

#include <array>
#include <string_view>
#include <vector>

namespace host {

/// Where a body stands: rows of a matrix, and the shift.
struct SatPlacement {
    std::array<double, 12> m{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

    RPT3 map(const RPT3& p) const {
        return {p.x * m[0] + p.y * m[3] + p.z * m[6] + m[9], p.x * m[1] + p.y * m[4] + p.z * m[7] + m[10],
                p.x * m[2] + p.y * m[5] + p.z * m[8] + m[11]};
    }
};

class SatTopology {
public:
    explicit SatTopology(const SatModel& model) : model_(model) {}
    const SatModel& model() const { return model_; }

    /// The `n`-th pointer of a record that leads to a kind; null for none.
    const SatRecord* target(const SatRecord& record, std::string_view kind, int n = 0) const;
    /// What stands right behind the pointer to a kind; null for none.
    const SatToken* behind(const SatRecord& record, std::string_view kind, int n = 0) const;
    /// The placement of the body that a part belongs to.
    SatPlacement placementOf(const SatRecord& part) const;
    /// Points along an edge, from its start on; none when its curve isn't understood, or for more than
    /// `limit`.
    std::vector<RPT3> edgePoints(const SatRecord& edge, std::size_t limit) const;

private:
    SatPlacement transformOf(const SatRecord& body) const;
    bool pointOf(const SatRecord* vertex, RPT3& point) const;
    const SatModel& model_;
};

/// Whether a word or logical is the second of its pair: "reversed", "reverse_v".
bool isReversed(const SatToken* sense);

} // namespace host

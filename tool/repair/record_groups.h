#pragma once
// The walk over the groups of a record, each with what the format says of it.

#include "record.h"

#include "text.h"

namespace repair {

struct GroupAt {
    size_t index;                 ///< of the pair
    const validate::Group* group; ///< null when the format says nothing of it
    size_t part;                  ///< of the kind's parts that the pair stands in
};

/// Calls `use(GroupAt)` for the pairs of the record that belong to its kind: not for the head, application
/// groups, embedded objects and extended data. `use` must not change the number of pairs.
template <typename Use>
void forEachGroup(const Record& record, const Use& use) {
    using validate::KindRules;
    const KindRules* rules = validate::findVariant(record.kind(), record.integer(70));
    const size_t end = record.extendedStart(), start = record.bodyStart();
    bool flat = true;
    for (size_t i = start; i < end && flat; ++i) flat = record.pairs[i].code != 100;
    constexpr size_t outside = 254;
    size_t part = flat ? KindRules::kFlat : outside;
    for (size_t i = start; i < end; ++i) {
        const Pair& pair = record.pairs[i];
        if (pair.code == 101) return;
        if (pair.code == 102 && record.kind() != "XRECORD") {
            size_t close = i + 1;
            while (close < end && record.pairs[close].code != 102 && record.pairs[close].code != 100) ++close;
            if (close < end && record.pairs[close].code == 102) i = close;
            continue;
        }
        if (pair.code == 100 && rules && !flat) {
            const auto parts = rules->parts();
            const size_t first = part < parts.size() ? part + 1 : 0;
            part = outside;
            for (size_t n = 0; n < parts.size() && part == outside; ++n)
                if (validate::inList(parts[(first + n) % parts.size()].marker, pair.value))
                    part = (first + n) % parts.size();
            continue;
        }
        const size_t row = rules && part != outside ? rules->rowOf(part, pair.code) : KindRules::kNoRow;
        const bool known = row != KindRules::kNoRow;
        use(GroupAt{i, known ? &rules->groups()[row] : nullptr, part});
    }
}

} // namespace repair

// Lists of a model that would never end for who walks them.
#include "acis_file.h"

namespace ACIS {
namespace {

struct Chain {
    Id id;
    std::size_t next; ///< place of the pointer to the next of the kind
};

/// attrib, id and pattern (or next, previous, owner) stand ahead of a record's own fields.
constexpr std::size_t FIRST_FIELD = 3;
constexpr Chain chains[] = {
    {Id::Lump, FIRST_FIELD}, {Id::Shell, FIRST_FIELD},        {Id::SubShell, FIRST_FIELD + 1},
    {Id::Face, FIRST_FIELD}, {Id::Loop, FIRST_FIELD},         {Id::Wire, FIRST_FIELD},
    {Id::Attrib, 2},         {Id::SubShell, FIRST_FIELD + 2},
};

class ChainCheck {
public:
    explicit ChainCheck(const File& file) : file_(file), walks_(file.records.size(), 0) {}

    /// The first record of a ring, or -1.
    std::int64_t ring(const Chain& chain) {
        walks_.assign(walks_.size(), 0);
        for (std::size_t i = 0; i < file_.records.size(); ++i) {
            if (!file_.records[i].isA(chain.id) || walks_[i]) continue;
            const std::int64_t found = follow(chain, i, static_cast<std::uint32_t>(i + 1));
            if (found >= 0) return found;
        }
        return -1;
    }

    /// The first coedge of a loop that the loop's chain doesn't come back to, or -1.
    std::int64_t openLoop() {
        walks_.assign(walks_.size(), 0);
        for (std::size_t i = 0; i < file_.records.size(); ++i) {
            const bool isLoop = file_.records[i].isA(Id::Loop);
            if (!isLoop && !file_.records[i].isA(Id::Wire)) continue;
            const std::int64_t first = target(i, FIRST_FIELD + 1);
            if (!comesBack(first, static_cast<std::uint32_t>(i + 1))) return first;
        }
        return -1;
    }

private:
    std::int64_t target(std::size_t number, std::size_t at) const {
        const ENTITY& entity = file_.records[number];
        if (at >= entity.count) return -1;
        const Value& value = file_.values[entity.first + at];
        if (value.kind != Kind::Pointer || value.integer < 0) return -1;
        return value.integer < static_cast<std::int64_t>(file_.records.size()) ? value.integer : -1;
    }

    std::int64_t follow(const Chain& chain, std::size_t from, std::uint32_t walk) {
        auto at = static_cast<std::int64_t>(from);
        while (at >= 0 && file_.records[at].isA(chain.id)) {
            if (walks_[at] == walk) return at;
            if (walks_[at]) return -1;
            walks_[at] = walk;
            at = target(static_cast<std::size_t>(at), chain.next);
        }
        return -1;
    }

    bool comesBack(std::int64_t first, std::uint32_t walk) {
        std::int64_t at = first;
        while (at >= 0 && walks_[at] != walk) {
            walks_[at] = walk;
            if (!file_.records[at].isA(Id::Coedge) && !file_.records[at].isA(Id::Tcoedge)) return true;
            at = target(static_cast<std::size_t>(at), FIRST_FIELD);
        }
        return at < 0 || at == first;
    }

    const File& file_;
    std::vector<std::uint32_t> walks_; ///< the walk that a record was last met in
};

} // namespace

bool checkChains(const File& file, std::string& problem) {
    ChainCheck check(file);
    for (const Chain& chain : chains) {
        const std::int64_t found = check.ring(chain);
        if (found < 0) continue;
        problem = "record " + std::to_string(found) + ": a list that runs in a ring";
        return false;
    }
    const std::int64_t open = check.openLoop();
    if (open >= 0) problem = "record " + std::to_string(open) + ": coedges that never come back";
    return open < 0;
}

} // namespace ACIS

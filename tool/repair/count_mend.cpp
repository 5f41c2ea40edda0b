// Counts of what follows.

#include "mends.h"
#include "record_groups.h"
#include "text.h"

#include <algorithm>

namespace repair {

namespace {

void setCount(Document& document, Record& record, size_t index, size_t count, Section section, Log& log,
              std::string_view what) {
    Pair& pair = record.pairs[index];
    const auto said = validate::readInteger(pair.value);
    if (said && *said == static_cast<int64_t>(count)) return;
    log.add(Rule::WrongCount, record, section, "group ", pair.code, " becomes ", count, ", the number of ",
            what);
    pair.value = document.keep(std::to_string(count));
}

/// Counts of other groups in the same part of the record.
void mendGroupCounts(Document& document, Record& record, Section section, Log& log) {
    struct Counted {
        size_t index, part;
        int of;
    };
    std::vector<Counted> counts;
    std::vector<std::pair<size_t, int>> codes; // part and code
    forEachGroup(record, [&](const GroupAt& at) {
        if (!at.group) return;
        codes.emplace_back(at.part, at.group->code);
        if (at.group->counts != 0) counts.push_back({at.index, at.part, at.group->counts});
    });
    for (const Counted& counted : counts)
        setCount(
            document, record, counted.index,
            static_cast<size_t>(std::count(codes.begin(), codes.end(), std::pair(counted.part, counted.of))),
            section, log, words::say("groups {}", counted.of));
}

/// The size of the preview picture among the groups that entities share.
void mendPreview(Document& document, Record& record, Section section, Log& log) {
    size_t markers = 0;
    const size_t end = record.extendedStart();
    for (size_t i = record.bodyStart(); i < end && markers < 2; ++i) {
        markers += record.pairs[i].code == 100;
        const int code = record.pairs[i].code;
        if (markers != 1 || (code != 92 && code != 160)) continue;
        size_t bytes = 0;
        for (size_t k = i + 1; k < end && record.pairs[k].code == 310; ++k)
            bytes += validate::trimmed(record.pairs[k].value).size() / 2;
        setCount(document, record, i, bytes, section, log, words::tr("bytes"));
        return;
    }
}

void mendTableCounts(Document& document, Log& log) {
    for (Table& table : document.tables) {
        Pair* count = table.head.find(70);
        const int64_t records = static_cast<int64_t>(table.records.size());
        // Not everybody counts the two built-in line types and the blocks of the model and the paper.
        const bool hasBuiltIn =
            document.atLeast(Version::R13) && (table.name() == "LTYPE" || table.name() == "BLOCK_RECORD");
        if (!count || validate::readInteger(count->value).value_or(-1) >= records - (hasBuiltIn ? 2 : 0))
            continue;
        if (count->line != 0)
            log.add(Rule::TableCount, table.head, Section::Tables, "the count of ", table.name(), " becomes ",
                    records);
        count->value = document.keep(std::to_string(records));
    }
}

} // namespace

void mendCounts(Document& document, Log& log) {
    mendTableCounts(document, log);
    document.forEachRecord([&](Record& record, Section section) {
        if (section == Section::Tables && record.kind() == "TABLE") return;
        const bool isHatch =
            record.kind() == "HATCH"; // its counts divide what follows: only their order tells
        if (!isHatch) mendGroupCounts(document, record, section, log);
        if (section == Section::Entities || section == Section::Blocks)
            mendPreview(document, record, section, log);
    });
}

} // namespace repair

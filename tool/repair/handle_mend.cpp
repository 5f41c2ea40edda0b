// Own handles: each record has one, no two the same.

#include "mends.h"
#include "new_records.h"
#include "text.h"

#include <optional>
#include <unordered_set>

namespace repair {

namespace {

/// The rule that the handle breaks, and how to say so; nothing when it is sound.
struct Fault {
    Rule rule;
    const char* what;
};

std::optional<Fault> faultOf(const Document& document, Record& record, std::unordered_set<uint64_t>& seen) {
    const Pair* pair = record.handlePair();
    if (!pair) {
        if (!document.atLeast(Version::R13)) return std::nullopt;
        return Fault{Rule::MissingHandle, "the missing handle"};
    }
    const auto handle = validate::readHandle(pair->value);
    if (!handle) return Fault{Rule::BadHandle, "the bad handle"};
    if (*handle == 0) return Fault{Rule::ZeroHandle, "the handle 0"};
    if (!seen.insert(*handle).second) return Fault{Rule::RepeatedHandle, "the handle that another has"};
    return std::nullopt;
}

} // namespace

void mendHandles(Document& document, Log& log) {
    std::unordered_set<uint64_t> seen;
    document.forEachRecord([&](Record& record, Section section) {
        const auto fault = faultOf(document, record, seen);
        if (!fault) return;
        const uint64_t handle = document.newHandle();
        log.add(fault->rule, record, section, fault->what, " becomes ", validate::handleText(handle));
        if (Pair* pair = record.handlePair())
            pair->value = document.handlePair(5, handle).value;
        else
            record.insert(1, document.handlePair(handleCode(record.kind()), handle));
        seen.insert(handle);
    });
}

} // namespace repair

// Pointers that lead nowhere: they are left out or become 0, which leads nowhere by right.

#include "mends.h"
#include "record_groups.h"
#include "text.h"

#include <unordered_map>

namespace repair {

namespace {

using validate::readHandle;
using validate::valueType;
using validate::ValueType;

bool isHandle(const Pair& pair) {
    return pair.code >= 0 && pair.code <= validate::kLastCode && valueType(pair.code) == ValueType::Handle;
}

class PointerMend {
public:
    PointerMend(Document& document, Log& log) : document_(document), log_(log) {}

    void run() {
        document_.forEachRecord(
            [&](const Record& record, Section) { kinds_.emplace(record.handle(), record.kind()); });
        kinds_.erase(0);
        document_.forEachRecord([&](Record& record, Section section) {
            followReplaced(record);
            mendAppGroups(record, section);
            mendGroups(record, section);
            mendExtended(record, section);
        });
        mendHeader();
    }

private:
    bool isLost(const Pair& pair) const {
        const auto handle = readHandle(pair.value);
        return handle && *handle != 0 && kinds_.count(*handle) == 0;
    }

    void followReplaced(Record& record) {
        if (document_.replaced.empty()) return;
        for (Pair& pair : record.pairs) {
            if (pair.code < 320 || !isHandle(pair)) continue;
            const auto found = document_.replaced.find(readHandle(pair.value).value_or(0));
            if (found != document_.replaced.end())
                pair.value = document_.handlePair(pair.code, found->second).value;
        }
    }

    /// Reactors, extension dictionaries and the like, all between two groups 102.
    void mendAppGroups(Record& record, Section section) {
        if (record.kind() == "XRECORD") return;
        for (size_t i = 1; i < record.extendedStart(); ++i) {
            if (record.pairs[i].code != 102 || !record.pairs[i].value.starts_with("{")) continue;
            size_t close = i + 1;
            while (close < record.extendedStart() && record.pairs[close].code != 102 &&
                   record.pairs[close].code != 100)
                ++close;
            if (close == record.extendedStart() || record.pairs[close].code != 102) return;
            for (size_t k = i + 1; k < close;) {
                const Pair& pair = record.pairs[k];
                if (pair.code < 330 || !isHandle(pair) || !isLost(pair)) {
                    ++k;
                    continue;
                }
                log_.add(pair.code >= 340 ? Rule::LostHard : Rule::LostSoft, record, section, "the pointer ",
                         pair.code, " to ", pair.value, " is left out of ", record.pairs[i].value.substr(1));
                record.erase(k);
                --close;
            }
            if (close == i + 1)
                record.erase(i--, 2);
            else
                i = close;
        }
    }

    /// The first object of the kind that a group wants, for pointers that can't do without.
    uint64_t standIn(std::string_view wanted) {
        if (wanted == "STYLE")
            if (const Record* style = document_.tableRecord("STYLE", "STANDARD")) return style->handle();
        if (wanted != "MLINESTYLE") return 0;
        for (const Record& object : document_.objects)
            if (object.kind() == wanted) return object.handle();
        return 0;
    }

    void mendGroups(Record& record, Section section) {
        if (record.kind() == "TABLE" || record.kind() == "DICTIONARY" || record.kind() == "LAYOUT") {
            if (record.kind() == "TABLE") mendHead(record);
            if (record.kind() == "DICTIONARY") return;
        }
        std::vector<size_t> leftOut;
        forEachGroup(record, [&](const GroupAt& at) {
            Pair& pair = record.pairs[at.index];
            if (pair.code < 320 || !isHandle(pair) || (pair.code < 330 && !at.group)) return;
            const std::string_view wanted = at.group ? at.group->target : std::string_view{};
            const auto known = kinds_.find(readHandle(pair.value).value_or(0));
            const bool lost = isLost(pair);
            const bool wrong = !lost && known != kinds_.end() && !wanted.empty() &&
                               !validate::inList(wanted, known->second) &&
                               !known->second.starts_with("ACAD_PROXY");
            if (!lost && !wrong) return;
            const bool needed = at.group && at.group->need != validate::Need::Optional;
            const uint64_t other = needed ? standIn(wanted) : 0;
            if (needed && other == 0) return; // nothing can stand in
            const bool drops =
                record.kind() == "GROUP" || (at.group && !needed && pair.code >= 340 && !at.group->repeats);
            const Rule rule = wrong ? Rule::WrongTarget : pair.code >= 340 ? Rule::LostHard : Rule::LostSoft;
            log_.add(rule, record, section, "the pointer ", pair.code, " to ", pair.value,
                     drops ? " is left out" : " becomes ",
                     drops ? std::string() : validate::handleText(other));
            if (drops)
                leftOut.push_back(at.index);
            else
                pair.value = document_.handlePair(pair.code, other).value;
        });
        for (size_t i = leftOut.size(); i-- > 0;) record.erase(leftOut[i]);
    }

    /// Dimension styles that the head of their table lists.
    void mendHead(Record& head) {
        for (size_t i = 1; i < head.extendedStart();) {
            const auto known = kinds_.find(readHandle(head.pairs[i].value).value_or(0));
            if (head.pairs[i].code != 340 || (known != kinds_.end() && known->second == "DIMSTYLE")) {
                ++i;
                continue;
            }
            log_.add(Rule::LostHard, head, Section::Tables, "the pointer 340 to ", head.pairs[i].value,
                     " is left out");
            head.erase(i);
            if (Pair* count = head.find(71))
                count->value = document_.keep(std::to_string(head.integer(71) - 1));
        }
    }

    void mendExtended(Record& record, Section section) {
        for (size_t i = record.extendedStart(); i < record.pairs.size(); ++i) {
            Pair& pair = record.pairs[i];
            if (pair.code != 1005 || !isLost(pair)) continue;
            log_.add(Rule::LostSoft, record, section, "the pointer 1005 to ", pair.value, " becomes 0");
            pair.value = "0";
        }
    }

    void mendHeader() {
        std::erase_if(document_.header, [&](const Variable& variable) {
            if (variable.values.empty()) return false;
            const Pair& value = variable.values.front();
            if (value.code < 340 || !isHandle(value) || !isLost(value)) return false;
            log_.addAt(Rule::VariableHandle, variable.name.line, Section::Header,
                       validate::trimmed(variable.name.value), ", which points at nothing, is left out");
            return true;
        });
    }

    Document& document_;
    Log& log_;
    std::unordered_map<uint64_t, std::string_view> kinds_{};
};

} // namespace

void mendPointers(Document& document, Log& log) {
    if (document.atLeast(Version::R13)) PointerMend(document, log).run();
}

} // namespace repair

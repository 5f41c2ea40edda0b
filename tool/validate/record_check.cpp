#include "record_check.h"

#include "extended_data.h"
#include "text.h"
#include "value_checks.h"

#include <algorithm>
#include <cmath>

namespace validate {

namespace {

constexpr size_t kNoPart = 254; ///< behind a marker that isn't the kind's

constexpr int kWeights[] = {-3, -2, -1, 0,  5,  9,  13,  15,  18,  20,  25,  30,  35, 40,
                            50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

bool isActive(Version version, Version since, Version until) {
    return version >= since && version <= until;
}

int ownHandleCode(const Record& record) {
    return record.name == "DIMSTYLE" ? 105 : 5;
}

bool isRowActive(const Session& session, const Record& record, size_t row) {
    const Group& group = record.rules->groups()[row];
    const Part& part = record.rules->parts()[record.rules->partOf(row)];
    return isActive(session.version, group.since, group.until) &&
           isActive(session.version, part.since, part.until);
}

// --- markers

bool isMarkerActive(const Session& session, const Part& part) {
    return isActive(session.version, part.since, part.until);
}

std::vector<const Tag*> markersOf(const Record& record) {
    std::vector<const Tag*> markers;
    for (size_t i = record.body; i < record.extended; ++i) {
        const Tag& tag = record.tags[i];
        if (tag.code == 101) break; // an embedded object
        if (tag.code != 100) continue;
        markers.push_back(&tag);
        if (record.name == "XRECORD") break; // what follows are data of anyone
    }
    return markers;
}

size_t countMarker(std::span<const Tag* const> markers, std::string_view wanted) {
    return static_cast<size_t>(std::count_if(markers.begin(), markers.end(),
                                             [&](const Tag* tag) { return inList(wanted, tag->value); }));
}

void reportMissingMarker(Session& session, const Part& part) {
    const bool shared = part.marker == "AcDbEntity";
    const Level level = part.need == Need::Required ? Level::Error : Level::Note;
    session.out.addAs(level, shared ? Rule::NoEntityMarker : Rule::NoOwnMarker, session.place, "the marker ",
                      part.marker, " is missing");
}

/// Each marker of the kind there as often as it should be, none else.
void checkMarkerCounts(Session& session, std::span<const Part* const> wanted,
                       std::span<const Tag* const> markers) {
    for (size_t i = 0; i < wanted.size(); ++i) {
        const std::string_view marker = wanted[i]->marker;
        const auto sameMarker = [&](const Part* part) { return part->marker == marker; };
        const auto before =
            std::count_if(wanted.begin(), wanted.begin() + static_cast<std::ptrdiff_t>(i), sameMarker);
        const size_t found = countMarker(markers, marker);
        if (found <= static_cast<size_t>(before) && wanted[i]->need != Need::Optional)
            reportMissingMarker(session, *wanted[i]);
        const auto all = static_cast<size_t>(std::count_if(wanted.begin(), wanted.end(), sameMarker));
        if (before == 0 && found > all)
            session.out.add(Rule::RepeatedMarker, session.place, "the marker ", marker, " stands ", found,
                            " times");
    }
    for (const Tag* tag : markers) {
        const bool known = std::any_of(wanted.begin(), wanted.end(),
                                       [&](const Part* part) { return inList(part->marker, tag->value); });
        if (!known)
            session.out.add(Rule::StrangeMarker, session.at(*tag), "the marker ", inQuotes(tag->value),
                            " does not belong to this kind");
    }
}

void checkMarkerOrder(Session& session, std::span<const Part* const> wanted,
                      std::span<const Tag* const> markers) {
    size_t next = 0;
    std::vector<std::string_view> seen;
    for (const Tag* tag : markers) {
        const auto fits = [&](const Part* part) { return inList(part->marker, tag->value); };
        if (std::none_of(wanted.begin(), wanted.end(), fits)) continue;
        const auto place =
            std::find_if(wanted.begin() + static_cast<std::ptrdiff_t>(next), wanted.end(), fits);
        if (place != wanted.end()) {
            next = static_cast<size_t>(place - wanted.begin()) + 1;
        } else if (std::find(seen.begin(), seen.end(), tag->value) == seen.end()) {
            session.out.add(Rule::MarkerOrder, session.at(*tag), "the marker ", inQuotes(tag->value),
                            " is in the wrong order");
            return;
        }
        seen.push_back(tag->value);
    }
}

/// True when the markers are exactly those of the kind: the usual case, decided without any allocation.
bool hasExactMarkers(const Session& session, const Record& record, const KindRules& rules) {
    const auto parts = rules.parts();
    size_t part = 0;
    const auto skipInactive = [&] {
        while (part < parts.size() && !isMarkerActive(session, parts[part])) ++part;
    };
    for (size_t i = record.body; i < record.extended && record.tags[i].code != 101; ++i) {
        if (record.tags[i].code != 100) continue;
        skipInactive();
        if (part == parts.size() || !inList(parts[part].marker, record.tags[i].value)) return false;
        ++part;
    }
    skipInactive();
    return part == parts.size();
}

/// Some programs leave out the flags (70) that say which variant a vertex or a dimension is: then the markers
/// say it.
bool isOtherVariant(Session& session, Record& record) {
    for (const KindRules& rules : variantsOf(record.name)) {
        if (&rules == record.rules || !hasExactMarkers(session, record, rules)) continue;
        session.out.add(Rule::StrangeMarker, session.place, "the markers are not those of the flags (70)");
        record.rules = &rules;
        return true;
    }
    return false;
}

void checkMarkers(Session& session, Record& record) {
    if (!session.atLeast(Version::R13)) {
        const auto markers = markersOf(record);
        if (!markers.empty())
            session.out.add(Rule::EarlyMarker, session.at(*markers.front()),
                            "subclass markers came with R13, the file is older");
        return;
    }
    if (hasExactMarkers(session, record, *record.rules) || isOtherVariant(session, record)) return;
    std::vector<const Part*> wanted;
    for (const Part& part : record.rules->parts())
        if (isMarkerActive(session, part)) wanted.push_back(&part);
    const auto markers = markersOf(record);
    checkMarkerCounts(session, wanted, markers);
    checkMarkerOrder(session, wanted, markers);
}

// --- groups

/// Assigns the groups of one record to the rows of its kind and checks each.
class GroupWalk {
public:
    GroupWalk(Session& session, const Record& record, std::vector<RowUse>& rows)
        : session_(session), record_(record), rules_(*record.rules), rows_(rows) {}

    void run() {
        rows_.assign(rules_.groups().size(), {});
        part_ = record_.flat ? KindRules::kFlat : kNoPart;
        for (size_t i = record_.body; i < record_.extended; ++i) {
            const Tag& tag = record_.tags[i];
            if (tag.code == 101) break; // an embedded object
            if (tag.code == 100)
                enterPart(tag);
            else if (tag.code == 102 && !isXrecord())
                i = checkAppGroup(session_, record_, i);
            else
                i = takeGroup(i);
        }
        checkNeeds();
        checkCounts();
        if (rules_.kind().home != Home::TableRecord && rules_.kind().home != Home::Object) checkPreview();
    }

private:
    bool isXrecord() const { return record_.name == "XRECORD"; }

    void enterPart(const Tag& tag) {
        if (record_.flat || (isXrecord() && part_ != kNoPart)) return;
        const size_t first = part_ < rules_.parts().size() ? part_ + 1 : 0;
        const size_t count = rules_.parts().size();
        part_ = kNoPart;
        for (size_t n = 0; n < count && part_ == kNoPart; ++n)
            if (inList(rules_.parts()[(first + n) % count].marker, tag.value)) part_ = (first + n) % count;
        if (part_ != kNoPart) visited_ |= 1U << part_;
    }

    size_t takeGroup(size_t i) {
        const Tag& tag = record_.tags[i];
        if (part_ == kNoPart) {
            followHandle(tag);
            return i;
        }
        const size_t row = rules_.rowOf(part_, tag.code);
        if (row == KindRules::kNoRow) {
            strangeGroup(tag);
            return i;
        }
        const Group& group = rules_.groups()[row];
        RowUse& use = rows_[row];
        if (use.count++ == 0)
            use.first = static_cast<uint32_t>(i);
        else if (use.count == 2 && !group.repeats && !(record_.flat && isOpen()))
            session_.out.add(Rule::RepeatedGroup, session_.at(tag), "group ", tag.code,
                             " stands several times");
        if (!isRowActive(session_, record_, row)) laterGroup(tag, group);
        if (tag.code >= 320 && valueType(tag.code) == ValueType::Handle)
            addPointer(session_, record_, tag, strengthOf(tag.code), group.target);
        if (group.names != Names::None) useGroupName(tag, group.names);
        if (group.dimensions > 1) return takePoint(i, group);
        if (group.test != Test::None) testValue(tag, group);
        return i;
    }

    void followHandle(const Tag& tag) {
        if (valueType(tag.code) != ValueType::Handle || tag.code < 330) return;
        // What other programs keep in an extension record is theirs.
        const Strength strength = strengthOf(tag.code);
        addPointer(session_, record_, tag,
                   isXrecord() ? (strength == Strength::Hard ? Strength::Soft : Strength::Reactor)
                               : strength);
    }

    void strangeGroup(const Tag& tag) {
        if (tag.code == ownHandleCode(record_) && record_.hasHandle && record_.flat) return;
        followHandle(tag);
        if (isOpen()) return;
        if (isStrayCoordinate(tag)) return;
        if (tag.code != 100 && valueType(tag.code) != ValueType::Undefined)
            session_.out.add(Rule::UnknownGroup, session_.at(tag), "group ", tag.code, " is not known here");
    }

    /// Whether groups that no row lists are fine here.
    bool isOpen() const {
        const auto parts = rules_.parts();
        if (part_ != KindRules::kFlat) return parts[part_].open;
        return std::any_of(parts.begin(), parts.end(), [](const Part& part) { return part.open; });
    }

    /// A second or third coordinate away from its first.
    bool isStrayCoordinate(const Tag& tag) {
        for (int step : {10, 20}) {
            if (tag.code < step) continue;
            const size_t row = rules_.rowOf(part_, tag.code - step);
            if (row == KindRules::kNoRow || rules_.groups()[row].dimensions * 10 <= step) continue;
            // The oldest files write all first coordinates, then all second ones.
            if (session_.version != Version::Old)
                session_.out.add(Rule::BadPoint, session_.at(tag), "group ", tag.code, " without the ",
                                 tag.code - step, " it belongs to");
            return true;
        }
        return false;
    }

    void laterGroup(const Tag& tag, const Group& group) {
        if (session_.version < group.since)
            session_.out.add(Rule::LaterGroup, session_.at(tag), "group ", tag.code, " came with ",
                             versionName(group.since));
        else
            session_.out.add(Rule::LaterGroup, session_.at(tag), "group ", tag.code, " ended with ",
                             versionName(group.until));
    }

    /// Names that each program knows by itself are not looked up.
    void useGroupName(const Tag& tag, Names table) {
        const bool builtIn =
            table == Names::LineType && (sameName(tag.value, "BYLAYER") || sameName(tag.value, "BYBLOCK"));
        if (!builtIn) useName(session_, session_.at(tag), table, tag.value);
    }

    size_t takePoint(size_t i, const Group& group) {
        const auto has = [&](size_t n) {
            return i + n < record_.extended &&
                   record_.tags[i + n].code == group.code + static_cast<int>(n) * 10;
        };
        const Tag& tag = record_.tags[i];
        if (session_.version == Version::Old) return i;
        if (!has(1)) {
            session_.out.add(Rule::BadPoint, session_.at(tag), "group ", tag.code, " is not followed by ",
                             tag.code + 10);
            return i;
        }
        if (!has(2)) {
            // Up to R12 the third coordinate could be left out; many programs still do it, and readers take
            // 0.
            if (group.dimensions == 3)
                session_.out.addAs(Level::Note, Rule::BadPoint, session_.at(tag), "the point ", tag.code,
                                   " has no third coordinate");
            return i + 1;
        }
        if (group.dimensions == 2 && rules_.rowOf(part_, group.code + 20) != KindRules::kNoRow) return i + 1;
        if (group.dimensions == 2)
            session_.out.addAs(Level::Note, Rule::BadPoint, session_.at(tag), "the point ", tag.code,
                               " has a third coordinate");
        if (group.test == Test::Direction && isZero(i) && isZero(i + 1) && isZero(i + 2))
            session_.out.add(Rule::ZeroVector, session_.at(tag), "the direction ", tag.code,
                             " has no length");
        return i + 2;
    }

    bool isZero(size_t i) const { return readReal(record_.tags[i].value) == 0; }

    void testValue(const Tag& tag, const Group& group) {
        const double value = readReal(tag.value);
        switch (group.test) {
        case Test::Range: {
            const double slack = std::abs(group.high) * 1e-9;
            if (value < group.low || value > group.high + slack) badValue(tag, group);
            break;
        }
        case Test::Positive:
            if (!(value > 0)) badValue(tag, group);
            break;
        case Test::NotZero:
            if (value == 0) badValue(tag, group);
            break;
        case Test::Colour:
            if (value < 0 || value > 257)
                session_.out.add(Rule::BadColour, session_.at(tag), "there is no colour ",
                                 trimmed(tag.value));
            break;
        case Test::Weight:
            if (std::find(std::begin(kWeights), std::end(kWeights), value) == std::end(kWeights))
                session_.out.add(Rule::BadLineWeight, session_.at(tag), "there is no line weight ",
                                 trimmed(tag.value));
            break;
        case Test::None:
        case Test::Direction: break;
        }
    }

    void badValue(const Tag& tag, const Group& group) {
        const ValueType type = valueType(tag.code);
        // A text that is no number has its finding already.
        if (type == ValueType::Real ? !isPlainReal(tag.value) : !readInteger(tag.value)) return;
        const char* why = group.test == Test::Positive  ? " is not above 0"
                          : group.test == Test::NotZero ? " may not be 0"
                                                        : " is out of range";
        session_.out.addAs(group.level, Rule::ValueRange, session_.at(tag), "group ", tag.code, ": ",
                           trimmed(tag.value), why);
    }

    void checkNeeds() {
        for (size_t row = 0; row < rows_.size(); ++row) {
            const Group& group = rules_.groups()[row];
            if (group.need == Need::Optional || rows_[row].count || !isRowActive(session_, record_, row))
                continue;
            if (record_.flat) {
                if (rows_[rules_.rowOf(KindRules::kFlat, group.code)].count) continue;
            } else if (!(visited_ >> rules_.partOf(row) & 1)) {
                continue; // the missing marker is told already
            }
            if (group.need == Need::Usual)
                session_.out.add(Rule::UsualGroup, session_.place, "group ", group.code,
                                 " is always written");
            else
                session_.out.addAs(group.need == Need::Required ? Level::Error : Level::Warning,
                                   Rule::MissingGroup, session_.place, "group ", group.code, " is missing");
        }
    }

    void checkCounts() {
        for (size_t row = 0; row < rows_.size(); ++row) {
            const Group& group = rules_.groups()[row];
            if (group.counts == 0 || rows_[row].count == 0) continue;
            const Tag& tag = record_.tags[rows_[row].first];
            const size_t items =
                rows_[rules_.rowOf(record_.flat ? KindRules::kFlat : rules_.partOf(row), group.counts)].count;
            const auto count = readInteger(tag.value);
            if (count && *count != static_cast<int64_t>(items))
                session_.out.add(Rule::WrongCount, session_.at(tag), "group ", tag.code, " says ", *count,
                                 ", there are ", items, " groups ", group.counts);
        }
    }

    /// The size of the preview picture that an entity carries among its shared groups.
    void checkPreview() {
        for (int code : {92, 160}) {
            const size_t row = rules_.rowOf(0, code);
            if (rows_[row].count == 0) continue;
            size_t bytes = 0, i = rows_[row].first + 1;
            for (; i < record_.extended && record_.tags[i].code == 310; ++i)
                bytes += trimmed(record_.tags[i].value).size() / 2;
            const Tag& tag = record_.tags[rows_[row].first];
            const auto said = readInteger(tag.value);
            if (said && *said != static_cast<int64_t>(bytes))
                session_.out.add(Rule::WrongCount, session_.at(tag), "group ", tag.code, " says ", *said,
                                 " bytes, there are ", bytes);
        }
    }

    Session& session_;
    const Record& record_;
    const KindRules& rules_;
    std::vector<RowUse>& rows_;
    unsigned visited_ = 0; ///< bit n: the marker of part n was met
    size_t part_ = kNoPart;
};

// --- head

class HeadReader {
public:
    HeadReader(Session& session, Record& record) : session_(session), record_(record) {}

    void run() {
        findExtendedData();
        size_t i = 1;
        for (; i < record_.extended; ++i) {
            const Tag& tag = record_.tags[i];
            if (tag.code == ownHandleCode(record_) && !record_.hasHandle)
                takeHandle(tag);
            else if (tag.code == 330 && !record_.hasOwner && session_.atLeast(Version::R13))
                takeOwner(tag);
            else if (const size_t end = tag.code == 102 ? appGroupEnd(i) : 0)
                i = end;
            else
                break;
        }
        record_.body = i;
        if (!record_.hasHandle) findLateHandle();
        record_.flat = true;
        for (size_t k = record_.body; k < record_.extended && session_.atLeast(Version::R13); ++k)
            if (record_.tags[k].code == 100) {
                record_.flat = false;
                break;
            }
    }

private:
    void findExtendedData() {
        record_.extended = record_.tags.size();
        if (record_.name == "XRECORD") return; // may hold such groups as data
        // The first of the trailing groups; they are few, so the search goes backwards.
        while (record_.extended > 1 && record_.tags[record_.extended - 1].code >= 1000) --record_.extended;
        if (record_.extended == record_.tags.size()) findEarlyExtendedData();
    }

    /// Ordinary groups at the end: extended data in front of them are in the wrong place.
    void findEarlyExtendedData() {
        for (size_t i = 1; i < record_.tags.size(); ++i)
            if (record_.tags[i].code == 1001) {
                record_.extended = i;
                return;
            }
    }

    void takeHandle(const Tag& tag) {
        record_.hasHandle = true;
        record_.handle = readHandle(tag.value).value_or(0);
        if (record_.handle == 0 && readHandle(tag.value))
            session_.out.add(Rule::ZeroHandle, {tag.line, 0, record_.name, session_.section},
                             "the handle is 0");
    }

    void takeOwner(const Tag& tag) {
        record_.hasOwner = true;
        record_.owner = readHandle(tag.value).value_or(0);
    }

    /// Index of the 102 that closes the group opened at `i`, 0 when none does.
    size_t appGroupEnd(size_t i) const {
        for (size_t end = i + 1; end < record_.extended; ++end) {
            if (record_.tags[end].code == 100) return 0;
            if (record_.tags[end].code == 102) return end;
        }
        return 0;
    }

    /// Up to R12 the handle may stand anywhere, later anywhere in front of the first marker.
    void findLateHandle() {
        for (size_t i = record_.body; i < record_.extended; ++i) {
            const Tag& tag = record_.tags[i];
            if (tag.code == 100 && session_.atLeast(Version::R13)) return;
            if (tag.code == ownHandleCode(record_)) return takeHandle(tag);
        }
    }

    Session& session_;
    Record& record_;
};

/// Groups in front of the first marker that are neither handle nor owner nor application group.
void checkHead(Session& session, const Record& record) {
    for (size_t i = 1; i < record.body; ++i)
        if (record.tags[i].code == 102) i = checkAppGroup(session, record, i);
    if (record.flat) return;
    const Tag& tag = record.tags[record.body];
    if (tag.code != 100)
        session.out.add(Rule::EarlyGroup, session.at(tag), "group ", tag.code,
                        " stands in front of the first subclass marker");
}

void checkOldRecord(Session& session, const Record& record) {
    for (size_t i = 1; i < record.extended; ++i)
        if (record.tags[i].code == 330 || record.tags[i].code == 102) {
            session.out.add(Rule::EarlyMarker, session.at(record.tags[i]), "group ", record.tags[i].code,
                            " came with R13, the file is older");
            return;
        }
}

void checkUnknownKind(Session& session, const Record& record) {
    const bool xrecord = record.name == "XRECORD";
    for (size_t i = record.body; i < record.extended; ++i) {
        const Tag& tag = record.tags[i];
        if (tag.code == 102 && !xrecord && tag.value.substr(0, 1) == "{")
            i = checkAppGroup(session, record, i);
        else if (valueType(tag.code) == ValueType::Handle && tag.code >= 330)
            addPointer(session, record, tag, strengthOf(tag.code));
        else if (tag.code == 8 && session.section != Section::Objects)
            useName(session, session.at(tag), Names::Layer, tag.value);
    }
}

} // namespace

void readRecord(Session& session, Record& record, std::vector<RowUse>& rows) {
    HeadReader(session, record).run();
    record.object = static_cast<uint32_t>(session.model.objects.size());
    Object object;
    object.handle = record.handle;
    object.owner = record.owner;
    object.line = record.tags.front().line;
    object.kind = session.model.kindIndex(record.name);
    object.section = session.section;
    object.hasOwner = record.hasOwner;
    session.model.objects.push_back(object);
    session.place = {object.line, record.handle, record.name, session.section};
    if (session.atLeast(Version::R13) && !record.hasHandle)
        session.out.add(Rule::MissingHandle, session.place, "the handle (", ownHandleCode(record),
                        ") is missing");
    rows.clear();
    record.rules = findKind(record.name);
    if (record.rules && record.rules->kind().mask != 0) {
        int64_t flags = 0;
        for (size_t i = record.body; i < record.extended; ++i)
            if (record.tags[i].code == 70) {
                flags = readInteger(record.tags[i].value).value_or(0);
                break;
            }
        record.rules = findVariant(record.name, flags);
    }
}

void checkRecord(Session& session, Record& record, std::vector<RowUse>& rows) {
    checkValues(session, record.tags.subspan(1));
    checkHead(session, record);
    if (!session.atLeast(Version::R13)) checkOldRecord(session, record);
    if (record.rules) {
        checkMarkers(session, record);
        GroupWalk(session, record, rows).run();
        record.rows = rows;
        if (record.rules->kind().check) record.rules->kind().check(session, record);
    } else {
        checkUnknownKind(session, record);
    }
    checkExtendedData(session, record);
}

} // namespace validate

// Tables: their heads, the records that each file needs, names that stand twice.

#include "mends.h"
#include "new_records.h"
#include "text.h"

#include <algorithm>
#include <unordered_set>

namespace repair {

using validate::upperCase;

namespace {

constexpr std::string_view kTables[] = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                        "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

void addMissingTables(Document& document, Log& log) {
    if (!document.atLeast(Version::R13)) return;
    if (!document.hasTables) log.addAt(Rule::MissingSection, 0, Section::None, "the section TABLES is added");
    document.hasTables = true;
    size_t place = 0;
    for (std::string_view name : kTables) {
        if (place < document.tables.size() && document.tables[place].name() == name) {
            ++place;
            continue;
        }
        log.addAt(Rule::MissingTable, 0, Section::Tables, "the table ", name, " is added");
        document.tables.insert(document.tables.begin() + static_cast<std::ptrdiff_t>(place),
                               newTable(document, name));
        ++place;
    }
}

/// Whether a group may stand in the head of a table: strict readers refuse any other.
bool belongsToHead(const Document& document, const Table& table, const Pair& pair) {
    const bool markers = document.atLeast(Version::R13), dimStyle = table.name() == "DIMSTYLE";
    const bool dimHead = dimStyle && document.atLeast(Version::R2000);
    switch (pair.code) {
    case 0:
    case 2:
    case 70:
    case 999: return true;
    case 5:
    case 330: return markers;
    case 105: return markers && dimStyle;
    case 100:
        return (markers && pair.value == "AcDbSymbolTable") || (dimHead && pair.value == "AcDbDimStyleTable");
    case 71:
    case 340: return dimHead;
    default: return false;
    }
}

/// Takes out what doesn't belong; application groups and extended data stay as they are.
void cleanHead(Document& document, Table& table, Log& log) {
    Record& head = table.head;
    for (size_t i = 1; i < head.extendedStart();) {
        if (head.pairs[i].code == 102 && document.atLeast(Version::R13)) {
            do ++i;
            while (i < head.pairs.size() && head.pairs[i].code != 102);
            ++i;
        } else if (belongsToHead(document, table, head.pairs[i])) {
            ++i;
        } else {
            log.add(Rule::TableHead, head, Section::Tables, "group ", head.pairs[i].code, " of the head of ",
                    table.name(), " is left out");
            head.erase(i);
        }
    }
}

size_t findMarker(const Record& head, std::string_view marker) {
    size_t i = 1;
    while (i < head.pairs.size() && !(head.pairs[i].code == 100 && head.pairs[i].value == marker)) ++i;
    return i;
}

void completeHead(Document& document, Table& table, Log& log) {
    Record& head = table.head;
    if (!head.find(70)) {
        log.add(Rule::MissingGroup, head, Section::Tables, "the head of ", table.name(),
                " gets its flags (70)");
        head.insert(head.extendedStart(), {70, "0"});
    }
    if (!document.atLeast(Version::R13)) return;
    if (findMarker(head, "AcDbSymbolTable") == head.pairs.size()) {
        log.add(Rule::NoOwnMarker, head, Section::Tables, "the head of ", table.name(),
                " gets its marker AcDbSymbolTable");
        // In front of the flags, behind the name that some programs write first.
        size_t at = 1;
        while (head.pairs[at].code != 70) ++at;
        head.insert(at, {100, "AcDbSymbolTable"});
    }
}

/// The head of DIMSTYLE counts the handles that it lists.
void mendDimStyleHead(Document& document, Table& table, Log& log) {
    if (table.name() != "DIMSTYLE" || !document.atLeast(Version::R2000)) return;
    Record& head = table.head;
    const auto handles = std::count_if(head.pairs.begin(), head.pairs.end(),
                                       [](const Pair& pair) { return pair.code == 340; });
    const bool marked = findMarker(head, "AcDbDimStyleTable") < head.pairs.size();
    if (marked && head.integer(71, -1) == handles) return;
    log.add(Rule::DimStyleHead, head, Section::Tables,
            "the head of DIMSTYLE gets its marker and the number of its handles");
    std::erase_if(head.pairs, [](const Pair& pair) { return pair.code == 71; });
    size_t at = findMarker(head, "AcDbDimStyleTable");
    if (!marked) {
        at = 1;
        while (head.pairs[at].code != 70) ++at;
        head.insert(++at, {100, "AcDbDimStyleTable"});
    }
    head.insert(at + 1, document.pair(71, std::to_string(handles)));
}

// --- records

struct Needed {
    std::string_view table, name, oldName; ///< up to R14 in capitals
};
constexpr Needed kNeeded[] = {
    {"LTYPE", "ByBlock", "BYBLOCK"},       {"LTYPE", "ByLayer", "BYLAYER"},
    {"LTYPE", "Continuous", "CONTINUOUS"}, {"LAYER", "0", "0"},
    {"STYLE", "Standard", "STANDARD"},     {"APPID", "ACAD", "ACAD"},
    {"VPORT", "*Active", "*ACTIVE"},
};

void addNeeded(Document& document, Log& log) {
    if (!document.atLeast(Version::R13)) return;
    const auto add = [&](std::string_view tableName, std::string_view name) {
        Table& table = *document.table(tableName);
        log.addAt(Rule::MissingRecord, 0, Section::Tables, "the record ", name, " of ", tableName,
                  " is added");
        table.records.push_back(newTableRecord(document, table, name));
    };
    for (const Needed& row : kNeeded)
        if (!document.tableRecord(row.table, row.name))
            add(row.table, document.atLeast(Version::R2000) ? row.name : row.oldName);
    if (document.table("DIMSTYLE")->records.empty())
        add("DIMSTYLE", document.atLeast(Version::R2000) ? "Standard" : "STANDARD");
}

/// Records that stand in another table than theirs.
void sortRecords(Document& document, Log& log) {
    std::vector<Record> strays;
    for (Table& table : document.tables)
        std::erase_if(table.records, [&](Record& record) {
            if (record.kind() == table.name()) return false;
            strays.push_back(std::move(record));
            return true;
        });
    for (Record& record : strays) {
        Table* home = document.table(record.kind());
        log.add(Rule::OutOfPlace, record, Section::Tables, inQuotes(record.kind()),
                home ? " is put into its table" : " is left out: no table has it");
        if (home) home->records.push_back(std::move(record));
    }
}

/// The first record of a name stays; what points at another one then points at the first.
void dropRepeated(Document& document, Log& log) {
    for (Table& table : document.tables) {
        if (table.name() == "VPORT" || table.name() == "BLOCK_RECORD") continue; // tiled views share a name
        std::unordered_map<std::string, uint64_t> seen;
        std::erase_if(table.records, [&](const Record& record) {
            const std::string name = upperCase(record.text(2));
            if (name.empty()) return false;
            const auto [first, isNew] = seen.emplace(name, record.handle());
            if (isNew) return false;
            log.add(Rule::RepeatedName, record, Section::Tables, "the second ", inQuotes(name),
                    " is left out");
            if (record.handle() != 0 && record.handle() != first->second)
                document.replaced.emplace(record.handle(), first->second);
            return true;
        });
    }
}

void mendLayerColours(Document& document, Log& log) {
    Table* layers = document.table("LAYER");
    if (!layers) return;
    for (Record& layer : layers->records) {
        Pair* colour = layer.find(62);
        const auto number = colour ? validate::readInteger(colour->value) : 7;
        if (!number || (*number != 0 && *number >= -256 && *number <= 256)) continue;
        log.add(Rule::BadColour, layer, Section::Tables, "layer colour ", *number, " becomes 7");
        colour->value = "7";
    }
}

} // namespace

void mendTables(Document& document, Log& log) {
    addMissingTables(document, log);
    sortRecords(document, log);
    for (Table& table : document.tables) {
        cleanHead(document, table, log);
        completeHead(document, table, log);
        mendDimStyleHead(document, table, log);
    }
    addNeeded(document, log);
    dropRepeated(document, log);
    mendLayerColours(document, log);
}

} // namespace repair

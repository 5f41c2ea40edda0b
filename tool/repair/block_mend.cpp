// Blocks and their records, the ends of polylines and of inserts with attributes.

#include "mends.h"
#include "new_records.h"
#include "text.h"

#include <unordered_set>

namespace repair {

using validate::upperCase;

namespace {

// --- SEQEND

bool isMember(std::string_view kind) {
    return kind == "VERTEX" || kind == "ATTRIB" || kind == "SEQEND";
}

/// Whether members follow the entity, up to a SEQEND.
bool hasMembers(const Record& record) {
    const std::string_view kind = record.kind();
    return kind == "POLYLINE" || ((kind == "INSERT" || kind == "ACAD_TABLE") && record.integer(66) == 1);
}

Record newSeqEnd(Document& document, const Record& parent) {
    Record end{{{0, "SEQEND"}}};
    setIds(document, end, document.atLeast(Version::R13) ? document.newHandle() : 0, parent.handle());
    if (document.atLeast(Version::R13)) end.pairs.push_back({100, "AcDbEntity"});
    const Pair* layer = parent.find(8);
    end.pairs.push_back({8, layer ? layer->value : "0"});
    return end;
}

void closeMembers(Document& document, std::vector<Record>& records, Section section, Log& log) {
    std::vector<Record> result;
    bool changed = false;
    size_t parent = 0; // index in `result` plus 1 of the open entity
    const auto close = [&] {
        if (parent == 0) return;
        const Record& open = result[parent - 1];
        log.add(Rule::MissingSeqEnd, open, section, "SEQEND of ", open.kind(), " is added");
        result.push_back(newSeqEnd(document, open));
        parent = 0;
        changed = true;
    };
    for (const Record& record : records) {
        if (!isMember(record.kind())) {
            close();
            result.push_back(record);
            if (hasMembers(record)) parent = result.size();
        } else if (record.kind() != "SEQEND") {
            result.push_back(record);
        } else if (parent != 0) {
            result.push_back(record);
            parent = 0;
        } else {
            log.add(Rule::OutOfPlace, record, section, "SEQEND without its entity is left out");
            changed = true;
        }
    }
    close();
    if (changed) records = std::move(result);
}

/// Cheap look before closeMembers() copies a long list.
bool needsClosing(const std::vector<Record>& records) {
    bool open = false;
    for (const Record& record : records) {
        if (isMember(record.kind())) {
            if (record.kind() != "SEQEND") continue;
            if (!open) return true;
            open = false;
        } else {
            if (open) return true;
            open = hasMembers(record);
        }
    }
    return open;
}

void closeAll(Document& document, Log& log) {
    for (Block& block : document.blocks)
        if (needsClosing(block.entities)) closeMembers(document, block.entities, Section::Blocks, log);
    if (needsClosing(document.entities)) closeMembers(document, document.entities, Section::Entities, log);
}

// --- blocks and their records

/// An ENDBLK that was added when its version wasn't known yet has a layer only.
void completeEnds(Document& document) {
    for (Block& block : document.blocks) {
        Record& end = block.end;
        if (end.line() != 0 || end.pairs.size() != 2) continue;
        end.insert(1, {100, "AcDbEntity"});
        end.pairs.push_back({100, "AcDbBlockEnd"});
    }
}

bool isPaper(std::string_view name) {
    return upperCase(name).rfind("*PAPER_SPACE", 0) == 0;
}

void addSpaces(Document& document, Log& log) {
    if (!document.hasBlocks) log.addAt(Rule::MissingSection, 0, Section::None, "the section BLOCKS is added");
    document.hasBlocks = true;
    for (std::string_view name : {"*Model_Space", "*Paper_Space"}) {
        if (document.block(name) || document.tableRecord("BLOCK_RECORD", name)) continue; // paired below
        log.addAt(Rule::MissingRecord, 0, Section::Tables, "the block ", name, " is added");
        Table& table = *document.table("BLOCK_RECORD");
        table.records.push_back(newTableRecord(document, table, name));
        document.blocks.push_back(newBlock(document, name, table.records.back().handle()));
    }
}

void pairRecords(Document& document, Log& log) {
    Table& table = *document.table("BLOCK_RECORD");
    std::unordered_set<std::string> blocks, records;
    for (const Record& record : table.records) records.insert(upperCase(record.text(2)));
    for (const Block& block : document.blocks) {
        const std::string name = upperCase(block.name());
        blocks.insert(name);
        if (name.empty() || !records.insert(name).second) continue;
        log.add(Rule::BlockNoRecord, block.begin, Section::Blocks, "the BLOCK_RECORD of ",
                inQuotes(block.name()), " is added");
        table.records.push_back(newTableRecord(document, table, block.name()));
    }
    for (const Record& record : table.records) {
        const std::string_view name = record.text(2);
        if (name.empty() || !blocks.insert(upperCase(name)).second) continue;
        log.add(Rule::RecordNoBlock, record, Section::Tables, "the BLOCK ", inQuotes(name),
                " is added, empty");
        document.blocks.push_back(newBlock(document, name, record.handle()));
    }
}

void mendSecondNames(Document& document, Log& log) {
    for (Block& block : document.blocks) {
        Pair* second = block.begin.find(3);
        const Pair* name = block.begin.find(2);
        if (!second || !name || validate::sameName(second->value, name->value)) continue;
        log.add(Rule::BlockNames, block.begin, Section::Blocks, "the second name ", inQuotes(second->value),
                " becomes ", inQuotes(name->value));
        second->value = name->value;
    }
}

void addBasePoints(Document& document, Log& log) {
    for (Block& block : document.blocks) {
        if (block.begin.find(10)) continue;
        log.add(Rule::MissingGroup, block.begin, Section::Blocks, "the block ", inQuotes(block.name()),
                " gets its base point");
        Pair* flags = block.begin.find(70);
        size_t at =
            flags ? static_cast<size_t>(flags - block.begin.pairs.data()) + 1 : block.begin.extendedStart();
        for (const int code : {10, 20, 30}) block.begin.insert(at++, {code, "0.0"});
    }
}

/// The entities of the model and of the active paper stand in ENTITIES.
void emptySpaceBlocks(Document& document, Log& log) {
    for (Block& block : document.blocks) {
        const std::string name = upperCase(block.name());
        if ((name != "*MODEL_SPACE" && name != "*PAPER_SPACE") || block.entities.empty()) continue;
        log.add(Rule::LayoutEntities, block.begin, Section::Blocks, block.entities.size(), " entities of ",
                inQuotes(block.name()), " are put into ENTITIES");
        for (Record& entity : block.entities) {
            if (isPaper(name) && !entity.find(67)) {
                size_t at = entity.bodyStart();
                if (at < entity.pairs.size() && entity.pairs[at].code == 100) ++at;
                entity.insert(at, {67, "1"});
            }
            document.entities.push_back(std::move(entity));
        }
        block.entities.clear();
    }
}

} // namespace

void mendBlocks(Document& document, Log& log) {
    if (!document.hasEntities)
        log.addAt(Rule::MissingSection, 0, Section::None, "the section ENTITIES is added");
    document.hasEntities = true;
    closeAll(document, log);
    mendSecondNames(document, log);
    addBasePoints(document, log);
    if (!document.atLeast(Version::R13)) return;
    completeEnds(document);
    addSpaces(document, log);
    pairRecords(document, log);
    emptySpaceBlocks(document, log);
}

} // namespace repair

#include "parse.h"

#include "tags.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

namespace repair {

using validate::trimmed;

namespace {

struct VersionName {
    std::string_view text;
    Version version;
};
constexpr VersionName kVersions[] = {
    {"AC1009", Version::R12},   {"AC1012", Version::R13},   {"AC1014", Version::R14},
    {"AC1015", Version::R2000}, {"AC1018", Version::R2004}, {"AC1021", Version::R2007},
    {"AC1024", Version::R2010}, {"AC1027", Version::R2013}, {"AC1032", Version::R2018},
};

constexpr std::array<std::string_view, 9> kTables = {"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                                     "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

/// Section by section, as they stand in the file.
class Parser {
public:
    Parser(Document& document, Log& log)
        : document_(document), log_(log), reader_(document.text(), log.findings()) {}

    bool run() {
        while (!ended_ && readRecord()) take();
        closeSection();
        if (!ended_ && sections_ > 0)
            log_.addAt(Rule::MissingEof, reader_.line(), Section::None, "EOF is added");
        if (ended_ && (hasNext_ || reader_.hasMore()))
            log_.addAt(Rule::JunkBehindEof, reader_.line(), Section::None,
                       "what stood behind EOF is left out");
        return sections_ > 0;
    }

private:
    bool readRecord() {
        record_.pairs.clear();
        if (hasNext_) record_.pairs.push_back(next_);
        hasNext_ = false;
        validate::Tag tag;
        while (reader_.next(tag)) {
            const Pair pair{tag.code, tag.code == 0 ? trimmed(tag.value) : tag.value, tag.line};
            if (tag.code == 0 && !record_.pairs.empty()) {
                next_ = pair;
                hasNext_ = true;
                return true;
            }
            if (tag.code != 0 && record_.pairs.empty())
                beforeAll(pair);
            else
                record_.pairs.push_back(pair);
            if (record_.pairs.size() == 1 && record_.kind() == "EOF") return true;
        }
        return !record_.pairs.empty();
    }

    void beforeAll(const Pair& pair) {
        if (pair.code == 999)
            document_.front.push_back(pair);
        else
            log_.addAt(Rule::OutsideSections, pair.line, Section::None, "group ", pair.code,
                       " in front of the first section is left out");
    }

    void take() {
        if (record_.kind() == "SECTION") {
            if (isOpen_) tellUnfinished();
            closeSection();
            openSection();
        } else if (record_.kind() == "ENDSEC") {
            if (!isOpen_)
                log_.add(Rule::OutOfPlace, record_, Section::None, "ENDSEC without SECTION is left out");
            closeSection();
        } else if (record_.kind() == "EOF") {
            if (isOpen_) tellUnfinished();
            ended_ = true;
        } else if (!isOpen_) {
            log_.add(Rule::OutsideSections, record_, Section::None,
                     "the record outside of all sections is left out");
        } else {
            inside_.push_back(record_);
        }
    }

    void tellUnfinished() {
        log_.addAt(Rule::UnfinishedSection, line_, Section::None, "ENDSEC of ", name_, " is added");
    }

    void openSection() {
        ++sections_;
        isOpen_ = true;
        line_ = record_.line();
        const bool named = record_.pairs.size() > 1 && record_.pairs[1].code == 2;
        name_ = named ? trimmed(record_.pairs[1].value) : std::string_view{};
        head_.assign(record_.pairs.begin() + (named ? 2 : 1), record_.pairs.end());
        if (!named)
            log_.addAt(Rule::SectionName, line_, Section::None, "a section without a name is left out");
    }

    void closeSection() {
        if (!isOpen_) return;
        isOpen_ = false;
        if (name_ == "HEADER")
            takeHeader();
        else if (name_ == "CLASSES")
            merge(document_.hasClasses, document_.classes);
        else if (name_ == "TABLES")
            takeTables();
        else if (name_ == "BLOCKS")
            takeBlocks();
        else if (name_ == "ENTITIES")
            merge(document_.hasEntities, document_.entities);
        else if (name_ == "OBJECTS")
            merge(document_.hasObjects, document_.objects);
        else if (!name_.empty())
            document_.others.push_back({name_, head_, inside_});
        inside_.clear();
    }

    /// Takes note of a section; the parts of one that stands twice are put together.
    void meet(bool& seen, int place) {
        if (seen)
            log_.addAt(Rule::RepeatedSection, line_, Section::None, "the two sections ", name_,
                       " are put together");
        seen = true;
        if (place < last_)
            log_.addAt(Rule::SectionOrder, line_, Section::None, "the section ", name_,
                       " is put into its place");
        last_ = std::max(last_, place);
    }

    static int placeOf(std::string_view name) {
        constexpr std::string_view order[] = {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};
        return static_cast<int>(std::find(std::begin(order), std::end(order), name) - std::begin(order));
    }

    void leaveOutHead() {
        for (const Pair& pair : head_)
            if (pair.code != 999)
                log_.addAt(Rule::OutsideSections, pair.line, Section::None, "group ", pair.code,
                           " in front of the first record of ", name_, " is left out");
    }

    void merge(bool& seen, std::vector<Record>& records) {
        meet(seen, placeOf(name_));
        leaveOutHead();
        records.insert(records.end(), inside_.begin(), inside_.end());
    }

    void takeHeader() {
        meet(document_.hasHeader, 0);
        for (const Pair& pair : head_) {
            if (pair.code == 9)
                document_.header.push_back({pair});
            else if (!document_.header.empty())
                document_.header.back().values.push_back(pair);
        }
        for (const Record& record : inside_)
            log_.add(Rule::OutOfPlace, record, Section::Header, "what is no header variable is left out");
    }

    // --- tables

    void takeTables() {
        meet(document_.hasTables, placeOf("TABLES"));
        leaveOutHead();
        Table* table = nullptr;
        for (const Record& record : inside_) {
            if (record.kind() == "TABLE") {
                if (table) tellOpenTable(*table);
                table = &openTable(record);
            } else if (record.kind() == "ENDTAB") {
                if (!table)
                    log_.add(Rule::OutOfPlace, record, Section::Tables, "ENDTAB without TABLE is left out");
                table = nullptr;
            } else if (!table) {
                log_.add(Rule::OutOfPlace, record, Section::Tables,
                         "the record outside of all tables is left out");
            } else {
                table->records.push_back(record);
            }
        }
        if (table) tellOpenTable(*table);
    }

    void tellOpenTable(const Table& table) {
        log_.add(Rule::MissingEndTable, table.head, Section::Tables, "ENDTAB of ", table.name(), " is added");
    }

    Table& openTable(const Record& head) {
        Table* same = document_.table(head.text(2));
        if (same && !same->name().empty()) {
            log_.add(Rule::RepeatedTable, head, Section::Tables, "the two tables ", same->name(),
                     " are put together");
            return *same;
        }
        return document_.tables.emplace_back(Table{head});
    }

    // --- blocks

    void takeBlocks() {
        meet(document_.hasBlocks, placeOf("BLOCKS"));
        leaveOutHead();
        bool open = false;
        for (const Record& record : inside_) {
            if (record.kind() == "BLOCK") {
                if (open) closeBlock();
                document_.blocks.push_back({record, {}, {}});
                open = true;
            } else if (record.kind() == "ENDBLK") {
                if (open)
                    document_.blocks.back().end = record;
                else
                    log_.add(Rule::OutOfPlace, record, Section::Blocks, "ENDBLK without BLOCK is left out");
                open = false;
            } else if (open) {
                document_.blocks.back().entities.push_back(record);
            } else {
                log_.add(Rule::OutOfPlace, record, Section::Blocks,
                         "the entity outside of all blocks is put into ENTITIES");
                document_.entities.push_back(record);
            }
        }
        if (open) closeBlock();
    }

    void closeBlock() {
        Block& block = document_.blocks.back();
        log_.add(Rule::MissingEndBlock, block.begin, Section::Blocks, "ENDBLK of ", inQuotes(block.name()),
                 " is added");
        block.end.pairs = {{0, "ENDBLK", 0}, document_.pair(8, "0")};
        if (const Pair* layer = block.begin.find(8)) block.end.pairs[1].value = layer->value;
    }

    Document& document_;
    Log& log_;
    validate::TagReader reader_;
    Record record_{};
    Pair next_{};
    bool hasNext_ = false, ended_ = false, isOpen_ = false;
    int sections_ = 0, last_ = -1;
    uint32_t line_ = 0; ///< of the open section
    std::string_view name_{};
    std::vector<Pair> head_{};
    std::vector<Record> inside_{};
};

/// Whether entities have subclass markers, as they do since R13.
bool hasMarkers(const Document& document) {
    const auto marked = [](const Record& record) { return record.find(100) != nullptr; };
    return std::any_of(document.entities.begin(), document.entities.end(), marked);
}

/// A file that names no version counts as R12, unless its entities show that it is younger.
Version versionOf(Document& document) {
    const Variable* variable = document.variable("$ACADVER");
    const bool isNamed = variable && !variable->values.empty();
    if (!isNamed) return hasMarkers(document) ? Version::R2000 : Version::R12;
    const std::string_view text = trimmed(variable->values[0].value);
    for (const VersionName& known : kVersions)
        if (known.text == text) return known.version;
    constexpr std::string_view old[] = {"AC100", "AC1.", "AC2.", "MC"};
    const auto isOld = [&](std::string_view start) { return text.starts_with(start); };
    return std::any_of(std::begin(old), std::end(old), isOld) ? Version::Old : validate::kLast;
}

/// Sections of other versions are refused by strict readers of this one.
void dropStrangeSections(Document& document, Log& log) {
    const auto known = [&](std::string_view name) {
        return document.atLeast(Version::R13) &&
               (name == "THUMBNAILIMAGE" || (name == "ACDSDATA" && document.atLeast(Version::R2013)));
    };
    std::set<std::string> met;
    std::erase_if(document.others, [&](const RawSection& section) {
        const bool again = !met.insert(std::string(section.name)).second;
        if (again)
            log.addAt(Rule::RepeatedSection, 0, Section::None, "the second section ", section.name,
                      " is left out");
        if (again || known(section.name)) return again;
        log.addAt(Rule::UnknownSection, 0, Section::None, "the section ", inQuotes(section.name), ", which ",
                  versionName(document.version), " does not know, is left out");
        return true;
    });
    if (document.atLeast(Version::R13)) return;
    for (const auto& [seen, name] :
         {std::pair(&document.hasClasses, "CLASSES"), {&document.hasObjects, "OBJECTS"}})
        if (*seen) {
            log.addAt(Rule::UnknownSection, 0, Section::None, "the section ", name, ", which ",
                      versionName(document.version), " does not know, is left out");
            *seen = false;
        }
}

/// Tables of other versions, and none without a name.
void dropStrangeTables(Document& document, Log& log) {
    std::erase_if(document.tables, [&](const Table& table) {
        const auto known = std::find(kTables.begin(), kTables.end(), table.name());
        const bool fits =
            known != kTables.end() && (*known != "BLOCK_RECORD" || document.atLeast(Version::R13));
        if (!fits)
            log.add(table.name().empty() ? Rule::SectionName : Rule::UnknownTable, table.head,
                    Section::Tables, "the table ", inQuotes(table.name()), " is left out");
        return !fits;
    });
    const auto place = [](const Table& table) {
        return std::find(kTables.begin(), kTables.end(), table.name());
    };
    const auto before = [&](const Table& a, const Table& b) { return place(a) < place(b); };
    if (std::is_sorted(document.tables.begin(), document.tables.end(), before)) return;
    log.addAt(Rule::TableOrder, 0, Section::Tables, "the tables are put into their usual order");
    std::stable_sort(document.tables.begin(), document.tables.end(), before);
}

} // namespace

bool parse(Document& document, Log& log) {
    if (!Parser(document, log).run()) return false;
    document.version = versionOf(document);
    dropStrangeSections(document, log);
    dropStrangeTables(document, log);
    return true;
}

} // namespace repair

#pragma once
// A DXF file as its pairs, put into the order that the format has: header, classes, tables, blocks, entities,
// objects. What it can't hold in that order is told and left out.

#include "findings.h"
#include "record.h"
#include "tags.h"
#include "version.h"

#include <deque>
#include <iosfwd>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace repair {

struct Variable {
    Pair name;
    std::vector<Pair> values{};
};

struct Table {
    Record head;
    std::vector<Record> records{};
    std::string_view name() const { return head.text(2); }
};

struct Block {
    Record begin;
    std::vector<Record> entities{};
    Record end;
    std::string_view name() const { return begin.text(2); }
};

/// A section whose inside is left as it is: a thumbnail, solids.
struct RawSection {
    std::string_view name{};
    std::vector<Pair> head{};
    std::vector<Record> records{};
};

class Document {
public:
    /// `text` must outlive the document.
    explicit Document(std::string_view text) : text_(text) {}

    std::string_view text() const { return text_; }
    std::vector<Pair> front{}; ///< comments in front of the first section
    std::vector<Variable> header{};
    std::vector<Record> classes{};
    std::vector<Table> tables{};
    std::vector<Block> blocks{};
    std::vector<Record> entities{};
    std::vector<Record> objects{};
    std::vector<RawSection> others{};
    validate::Version version = validate::Version::R12;
    /// Records left out for one that stands for them: their handles, and its.
    std::unordered_map<uint64_t, uint64_t> replaced{};
    bool hasHeader = false, hasClasses = false, hasTables = false, hasBlocks = false, hasEntities = false,
         hasObjects = false;

    bool atLeast(validate::Version wanted) const { return version >= wanted; }

    /// A text that lives as long as the document.
    std::string_view keep(std::string text) { return kept_.emplace_back(std::move(text)); }
    Pair pair(int code, std::string value) { return {code, keep(std::move(value)), 0}; }
    Pair handlePair(int code, uint64_t handle);

    /// A handle that nothing in the file has or points at.
    uint64_t newHandle();
    /// Takes note of all handles in the file, so that newHandle() avoids them.
    void noteHandles();
    uint64_t highestHandle() const { return highest_; }

    Variable* variable(std::string_view name);
    Table* table(std::string_view name);
    Block* block(std::string_view name);
    /// Record of a table by its name, without regard to case; null without one.
    Record* tableRecord(std::string_view table, std::string_view name);
    /// Calls `use(Record&, Section)` for all records that may have a handle, tables' heads too.
    template <typename Use>
    void forEachRecord(const Use& use);

private:
    std::string_view text_;
    std::deque<std::string> kept_{};
    std::unordered_set<uint64_t> taken_{};
    uint64_t highest_ = 0, next_ = 0;
};

template <typename Use>
void Document::forEachRecord(const Use& use) {
    using validate::Section;
    for (Table& table : tables) {
        use(table.head, Section::Tables);
        for (Record& record : table.records) use(record, Section::Tables);
    }
    for (Block& block : blocks) {
        use(block.begin, Section::Blocks);
        for (Record& record : block.entities) use(record, Section::Blocks);
        use(block.end, Section::Blocks);
    }
    for (Record& record : entities) use(record, Section::Entities);
    for (Record& record : objects) use(record, Section::Objects);
}

} // namespace repair

// Owners: records belong to their table, entities to the record of their block, members to their entity,
// objects to the dictionary that lists them.

#include "mends.h"
#include "new_records.h"
#include "text.h"

#include <unordered_map>
#include <unordered_set>

namespace repair {

namespace {

using validate::readHandle;

class OwnerMend {
public:
    OwnerMend(Document& document, Log& log) : document_(document), log_(log) {}

    void run() {
        document_.forEachRecord(
            [&](Record& record, Section) { kinds_.emplace(record.handle(), record.kind()); });
        mendTables();
        for (const Record& record : document_.table("BLOCK_RECORD")->records) {
            const std::string name = validate::upperCase(record.text(2));
            blockRecords_.emplace(name, record.handle());
            if (name == "*MODEL_SPACE" || name.rfind("*PAPER_SPACE", 0) == 0)
                spaces_.emplace(record.handle(), name);
        }
        for (Block& block : document_.blocks) mendBlock(block);
        mendEntities();
        mendObjects();
        breakRings();
    }

private:
    bool exists(uint64_t handle) const { return handle != 0 && kinds_.count(handle) != 0; }

    /// Why the owner that is there won't do.
    Rule ruleFor(const Record& record) const {
        const Pair* pair = const_cast<Record&>(record).ownerPair();
        if (!pair) return Rule::MissingOwner;
        return exists(record.owner()) ? Rule::WrongOwner : Rule::LostOwner;
    }

    void set(Record& record, Section section, uint64_t owner) {
        if (!document_.atLeast(Version::R2000) && !record.ownerPair()) return; // optional there
        log_.add(ruleFor(record), record, section, "the owner becomes ", validate::handleText(owner));
        setIds(document_, record, record.handle(), owner);
    }

    void mendTables() {
        for (Table& table : document_.tables) {
            if (Pair* owner = table.head.ownerPair(); owner && readHandle(owner->value) != uint64_t{0}) {
                log_.add(Rule::WrongOwner, table.head, Section::Tables, "the owner becomes 0");
                owner->value = "0";
            }
            for (Record& record : table.records)
                if (record.owner() != table.head.handle()) set(record, Section::Tables, table.head.handle());
        }
    }

    /// Members belong to their entity; some programs let them belong to its owner, which readers accept.
    void mendMember(Record& record, const Record& parent, uint64_t space, Section section) {
        const uint64_t owner = record.owner();
        if (owner != parent.handle() && owner != space) set(record, section, parent.handle());
    }

    static bool isMember(const Record& record) {
        return record.kind() == "VERTEX" || record.kind() == "ATTRIB" || record.kind() == "SEQEND";
    }

    void mendBlock(Block& block) {
        const auto found = blockRecords_.find(validate::upperCase(block.name()));
        if (found == blockRecords_.end()) return;
        const uint64_t owner = found->second;
        const Record* parent = nullptr;
        for (Record* frame : {&block.begin, &block.end})
            if (frame->owner() != owner) set(*frame, Section::Blocks, owner);
        for (Record& entity : block.entities) {
            if (isMember(entity) && parent)
                mendMember(entity, *parent, owner, Section::Blocks);
            else if (entity.owner() != owner)
                set(entity, Section::Blocks, owner);
            if (!isMember(entity)) parent = &entity;
        }
    }

    // --- ENTITIES

    void mendEntities() {
        const Record* parent = nullptr;
        for (Record& entity : document_.entities) {
            if (isMember(entity) && parent) {
                mendMember(entity, *parent, parent->owner(), Section::Entities);
                continue;
            }
            parent = &entity;
            const bool paper = entity.integer(67) == 1;
            if (!entity.ownerPair() && !document_.atLeast(Version::R2000)) continue;
            const auto space = spaces_.find(entity.owner());
            if (space == spaces_.end())
                set(entity, Section::Entities, blockRecords_[paper ? "*PAPER_SPACE" : "*MODEL_SPACE"]);
            else if ((space->second != "*MODEL_SPACE") != paper)
                setSpace(entity, !paper);
        }
    }

    /// The owner decides; the flag follows.
    void setSpace(Record& entity, bool paper) {
        log_.add(Rule::SpaceFlag, entity, Section::Entities, "the paper space flag (67) becomes ",
                 paper ? 1 : 0);
        if (Pair* flag = entity.find(67)) {
            flag->value = paper ? "1" : "0";
            return;
        }
        size_t at = entity.bodyStart();
        if (at < entity.pairs.size() && entity.pairs[at].code == 100) ++at;
        entity.insert(at, {67, "1"});
    }

    // --- OBJECTS

    void mendObjects() {
        if (document_.objects.empty()) return;
        const uint64_t root = document_.objects.front().handle();
        std::unordered_map<uint64_t, uint64_t> listedBy = hosts();
        for (const Record& object : document_.objects) {
            if (object.kind() != "DICTIONARY" && object.kind() != "ACDBDICTIONARYWDFLT") continue;
            for (size_t i = object.bodyStart(); i + 1 < object.extendedStart(); ++i)
                if (object.pairs[i].code == 3 && object.pairs[i + 1].code >= 350 &&
                    object.pairs[i + 1].code <= 360)
                    listedBy[readHandle(object.pairs[i + 1].value).value_or(0)] = object.handle();
        }
        listedBy.erase(root);
        for (size_t i = 1; i < document_.objects.size(); ++i) {
            Record& object = document_.objects[i];
            const auto lister = listedBy.find(object.handle());
            const bool listed = lister != listedBy.end();
            if (listed && object.owner() != lister->second)
                setObject(object, lister->second);
            else if (!listed && !exists(object.owner()))
                setObject(object, root);
        }
    }

    void setObject(Record& object, uint64_t owner) {
        if (!document_.atLeast(Version::R2000) && !object.ownerPair()) return;
        const Rule rule = ruleFor(object);
        log_.add(rule == Rule::WrongOwner ? Rule::ForeignEntry : rule, object, Section::Objects,
                 "the owner becomes ", validate::handleText(owner));
        setIds(document_, object, object.handle(), owner);
    }

    /// What extension dictionaries belong to.
    std::unordered_map<uint64_t, uint64_t> hosts() {
        std::unordered_map<uint64_t, uint64_t> hosts;
        document_.forEachRecord([&](const Record& record, Section) {
            const size_t body = record.bodyStart();
            for (size_t i = 1; i + 1 < body; ++i)
                if (record.pairs[i].code == 102 && record.pairs[i].value == "{ACAD_XDICTIONARY" &&
                    record.pairs[i + 1].code == 360)
                    hosts.emplace(readHandle(record.pairs[i + 1].value).value_or(0), record.handle());
        });
        return hosts;
    }

    /// A chain of owners that meets itself: one of its objects goes to the root.
    void breakRings() {
        std::unordered_map<uint64_t, Record*> objects;
        for (Record& object : document_.objects) objects.emplace(object.handle(), &object);
        std::unordered_map<uint64_t, size_t> walk; // in which an object was met
        for (size_t i = 0; i < document_.objects.size(); ++i) {
            uint64_t at = document_.objects[i].handle();
            while (objects.count(at) && walk.emplace(at, i).second) at = objects[at]->owner();
            if (!objects.count(at) || walk[at] != i || i == 0) continue;
            Record& object = *objects[at];
            log_.add(Rule::OwnerRing, object, Section::Objects, "the owner becomes the root dictionary");
            setIds(document_, object, object.handle(), document_.objects.front().handle());
        }
    }

    Document& document_;
    Log& log_;
    std::unordered_map<uint64_t, std::string_view> kinds_{};
    std::unordered_map<std::string, uint64_t> blockRecords_{};
    std::unordered_map<uint64_t, std::string> spaces_{}; ///< block records of the model and the papers
};

} // namespace

void mendOwners(Document& document, Log& log) {
    if (document.atLeast(Version::R13)) OwnerMend(document, log).run();
}

} // namespace repair

#include "reference_checks.h"

#include "text.h"
#include "words.h"

#include <algorithm>

namespace validate {

namespace {

/// Errors where the rule is certain; before 2000, files of that time leave such references out or loose.
Level certainSince(const Session& session, Version version, Level otherwise = Level::Warning) {
    return session.atLeast(version) ? Level::Error : otherwise;
}

void checkOwnHandles(Session& session) {
    Model& model = session.model;
    for (const auto& [object, first] : model.repeatedHandles)
        session.out.addAs(certainSince(session, Version::R13), Rule::RepeatedHandle, model.placeOf(object),
                          "handle ", handleText(model.objects[object].handle), " is used in line ",
                          model.objects[first].line, " already");
    if (!session.hasHandleSeed) return;
    uint32_t highest = kNone;
    size_t count = 0;
    for (uint32_t i = 0; i < model.objects.size(); ++i) {
        if (model.objects[i].handle < session.handleSeed || model.objects[i].handle == 0) continue;
        ++count;
        if (highest == kNone || model.objects[i].handle > model.objects[highest].handle) highest = i;
    }
    if (count)
        session.out.addAs(certainSince(session, Version::R13), Rule::HandleSeed, model.placeOf(highest),
                          count, " handles up to ", handleText(model.objects[highest].handle),
                          " are not below $HANDSEED ", handleText(session.handleSeed));
}

class OwnerCheck {
public:
    explicit OwnerCheck(Session& session) : session_(session), model_(session.model) {
        for (const BlockRecord& record : model_.blockRecords)
            recordNames_.emplace(record.object, record.name);
    }

    void run() {
        for (uint32_t i = 0; i < model_.objects.size(); ++i)
            if (!model_.objects[i].ownerSettled) check(i);
        checkRings();
    }

private:
    void check(uint32_t index) {
        const Object& object = model_.objects[index];
        if (!object.hasOwner) {
            missing(index);
            return;
        }
        const uint32_t owner = model_.find(object.owner);
        if (object.owner == 0) {
            // Only tables and the root dictionary belong to nobody.
            if (index != rootDictionary())
                session_.out.addAs(Level::Warning, Rule::LostOwner, model_.placeOf(index), "the owner is 0");
        } else if (owner == kNone) {
            session_.out.addAs(certainSince(session_, Version::R2000), Rule::LostOwner, model_.placeOf(index),
                               "the owner ", handleText(object.owner), " does not exist");
        } else {
            checkKind(index, owner);
        }
    }

    /// Readers cope without the owner of an entity or record; without that of an object not all do.
    void missing(uint32_t index) {
        if (!session_.atLeast(Version::R2000)) return;
        const Object& object = model_.objects[index];
        if (object.section == Section::Objects && object.handle == 0) return; // told already
        session_.out.addAs(object.section == Section::Objects ? Level::Warning : Level::Note,
                           Rule::MissingOwner, model_.placeOf(index), "the owner (330) is missing");
    }

    uint32_t rootDictionary() {
        if (root_ == kNone)
            for (uint32_t i = 0; i < model_.objects.size() && root_ == kNone; ++i)
                if (model_.objects[i].section == Section::Objects && model_.objects[i].hasOwner &&
                    model_.objects[i].owner == 0)
                    root_ = i;
        return root_;
    }

    void wrong(uint32_t index, uint32_t owner, Level level, std::string_view wanted) {
        session_.out.addAs(level, Rule::WrongOwner, model_.placeOf(index), "the owner ",
                           handleText(model_.objects[owner].handle), " is ",
                           inQuotes(model_.kindOf(model_.objects[owner])), ", not ", words::tr(wanted));
    }

    void checkKind(uint32_t index, uint32_t owner) {
        const Object& object = model_.objects[index];
        const std::string_view kind = model_.kindOf(object), ownerKind = model_.kindOf(model_.objects[owner]);
        const KindRules* rules = findKind(kind);
        const Level level = certainSince(session_, Version::R2000);
        if (object.section == Section::Tables) {
            if (ownerKind != "TABLE")
                wrong(index, owner, level, "a table");
            else
                wrong(index, owner, Level::Warning, "its own table");
        } else if (object.section == Section::Blocks || object.section == Section::Entities) {
            const bool isMember = rules && rules->kind().home == Home::Member;
            if (ownerKind == "BLOCK_RECORD")
                checkSpace(index, owner, rules && rules->kind().home == Home::BlockMark);
            else if (isMember)
                wrong(index, owner, Level::Warning, "the entity it belongs to");
            else
                wrong(index, owner, level, "a BLOCK_RECORD");
        }
    }

    /// An entity in ENTITIES belongs to the model or a paper, one in BLOCKS to its block.
    void checkSpace(uint32_t index, uint32_t owner, bool isBlockMark) {
        const Object& object = model_.objects[index];
        if (isBlockMark) return; // compared with the names of blocks and block records elsewhere
        if (object.section == Section::Blocks) {
            wrong(index, owner, Level::Warning, "the record of its block");
            return;
        }
        const std::string name = upperCase(recordNames_[owner]);
        const bool model = name == "*MODEL_SPACE", paper = name.rfind("*PAPER_SPACE", 0) == 0;
        if (!model && !paper)
            wrong(index, owner, Level::Warning, "the record of the model or a paper");
        else if (paper != object.paper)
            session_.out.add(Rule::SpaceFlag, model_.placeOf(index), "the entity belongs to ", inQuotes(name),
                             paper ? " and lacks 67=1" : " and has 67=1");
    }

    /// Each chain of owners ends; one that meets itself is told once.
    void checkRings() {
        std::vector<uint32_t> path(model_.objects.size(), kNone); // the walk in which an object was met
        for (uint32_t start = 0; start < model_.objects.size(); ++start) {
            uint32_t at = start;
            while (at != kNone && path[at] == kNone) {
                path[at] = start;
                const Object& object = model_.objects[at];
                at = object.hasOwner && object.owner != 0 ? model_.find(object.owner) : kNone;
            }
            if (at != kNone && path[at] == start)
                session_.out.add(Rule::OwnerRing, model_.placeOf(at),
                                 "the owners from here lead back to here");
        }
    }

    Session& session_;
    Model& model_;
    uint32_t root_ = kNone;
    std::unordered_map<uint32_t, std::string_view> recordNames_; ///< of block records, by object
};

void checkPointers(Session& session) {
    const Model& model = session.model;
    for (const Pointer& pointer : model.pointers) {
        const uint32_t target = model.find(pointer.target);
        const bool hard = pointer.strength == Strength::Hard;
        const auto place = [&] { return model.placeOf(pointer.object).at(pointer.line); };
        if (target == kNone) {
            const Rule rule = hard ? Rule::LostHard : Rule::LostSoft;
            const Level level = pointer.strength == Strength::Reactor ? Level::Note : levelOf(rule);
            session.out.addAs(level, rule, place(), "group ", pointer.code, ": there is no ",
                              handleText(pointer.target));
            continue;
        }
        const std::string_view kind = model.kindOf(model.objects[target]);
        if (pointer.wanted.empty() || inList(pointer.wanted, kind) || kind.rfind("ACAD_PROXY", 0) == 0)
            continue;
        session.out.addAs(hard ? Level::Error : Level::Warning, Rule::WrongTarget, place(), "group ",
                          pointer.code, " leads to ", inQuotes(kind), " ", handleText(pointer.target),
                          ", not to ", pointer.wanted);
    }
}

} // namespace

void checkReferences(Session& session) {
    checkOwnHandles(session);
    if (!session.atLeast(Version::R13)) return; // handles are optional, tables have none
    OwnerCheck(session).run();
    checkPointers(session);
}

} // namespace validate

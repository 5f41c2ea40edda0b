// The BLOCKS and ENTITIES sections: blocks, members of polylines and inserts, owners.

#include "section_walks.h"
#include "text.h"
#include "value_checks.h"

#include <cstdlib>

namespace validate {

namespace {

bool isLayoutName(std::string_view name) {
    const std::string upper = upperCase(name);
    // The papers that are not active, *Paper_Space0 and so on, keep their entities in their blocks.
    return upper == "*MODEL_SPACE" || upper == "*PAPER_SPACE";
}

} // namespace

void EntityWalk::record(std::span<const Tag> tags) {
    Record record{.tags = tags, .name = tags.front().value};
    readRecord(session_, record, rows_);
    if (record.rules && record.rules->kind().home != Home::Entity &&
        record.rules->kind().home != Home::Member && record.rules->kind().home != Home::BlockMark)
        session_.out.add(Rule::OutOfPlace, session_.place, inQuotes(record.name), " is no entity");
    checkRecord(session_, record, rows_);
    if (record.rules && record.rules->kind().home == Home::Member) {
        member(record);
        return;
    }
    missingSeqEnd();
    if (record.name == "BLOCK")
        openBlock(record);
    else if (record.name == "ENDBLK")
        closeBlock(record);
    else
        entity(record);
}

void EntityWalk::finish() {
    missingSeqEnd();
    if (inBlock_) session_.out.add(Rule::MissingEndBlock, block_, "a block is not closed by ENDBLK");
    inBlock_ = false;
}

// --- members

void EntityWalk::openParent(const Record& record) {
    const bool insert = record.name == "INSERT" || record.name == "ACAD_TABLE";
    if (record.name != "POLYLINE" && !(insert && record.integer(66) == 1)) return;
    parent_ = {record.name, record.handle, session_.place};
    parent_.isOpen = true;
    if (insert) return;
    parent_.flags = record.integer(70);
    parent_.m = record.integer(71, -1);
    parent_.n = record.integer(72, -1);
}

void EntityWalk::missingSeqEnd() {
    if (!parent_.isOpen) return;
    session_.out.add(Rule::MissingSeqEnd, parent_.place, parent_.name, " is not closed by SEQEND");
    parent_.isOpen = false;
}

void EntityWalk::member(const Record& record) {
    const bool vertex = record.name == "VERTEX", attribute = record.name == "ATTRIB";
    if (!parent_.isOpen || (vertex && parent_.name != "POLYLINE") ||
        (attribute && parent_.name == "POLYLINE")) {
        session_.out.add(Rule::OutOfPlace, session_.place, record.name, " without the entity it belongs to");
        return;
    }
    checkOwner(record, true);
    if (vertex) countVertex(record);
    if (record.name == "SEQEND") closeParent();
}

void EntityWalk::countVertex(const Record& record) {
    const int64_t flags = record.integer(70);
    const bool face = (flags & 192) == 128;
    parent_.faces += face;
    parent_.locations += !face;
    // A smoothed mesh lists the points of the smooth surface (8) beside those that control it.
    parent_.controls += !face && !(flags & 8);
    if (!face || !(parent_.flags & 64)) return;
    for (int code = 71; code <= 74; ++code) {
        const int64_t index = record.integer(code);
        if (static_cast<uint64_t>(std::llabs(std::max(index, -INT64_MAX))) > parent_.locations)
            session_.out.add(Rule::FaceIndex, session_.place, "there is no vertex ", index, " of ",
                             parent_.locations);
    }
}

void EntityWalk::closeParent() {
    parent_.isOpen = false;
    if (parent_.name != "POLYLINE") return;
    const auto count = [&](int64_t said, size_t there, const char* what) {
        if (said >= 0 && said != static_cast<int64_t>(there))
            session_.out.addAs(Level::Warning, Rule::WrongCount, parent_.place, "the polyline says ", said,
                               ' ', what, ", there are ", there);
    };
    if (parent_.flags & 64) {
        count(parent_.m, parent_.locations, "vertices (71)");
        count(parent_.n, parent_.faces, "faces (72)");
    } else if (parent_.flags & 16 && parent_.m > 0 && parent_.n > 0 && parent_.m <= 32767 &&
               parent_.n <= 32767) {
        count(parent_.m * parent_.n, parent_.controls, "mesh points (71 times 72)");
    }
}

// --- blocks

void EntityWalk::openBlock(const Record& record) {
    if (session_.section != Section::Blocks) {
        session_.out.add(Rule::OutOfPlace, session_.place, "BLOCK outside of BLOCKS");
        return;
    }
    if (inBlock_) session_.out.add(Rule::MissingEndBlock, block_, "a block is not closed by ENDBLK");
    inBlock_ = true;
    block_ = session_.place;
    blockOwner_ = record.hasOwner ? record.owner : 0;
    const std::string_view name = record.string(2), second = record.string(3);
    checkDefinedName(session_, session_.place, Names::Block, name);
    defineName(session_, session_.place, Names::Block, name);
    blockName_ = session_.model.table(Names::Block).find(name);
    layoutBlock_ = session_.atLeast(Version::R13) && isLayoutName(name);
    layoutTold_ = false;
    session_.model.blocks.push_back({record.object, name});
    const bool isAnonymous = (second == "*D" || second == "*X") && name.starts_with(second);
    if (record.find(3) && !sameName(name, second) && !isAnonymous)
        session_.out.add(Rule::BlockNames, session_.place, "the block is called ", inQuotes(name), " and ",
                         inQuotes(second));
    if (record.integer(70) & 4 && record.string(1).empty())
        session_.out.add(Rule::ReferencePath, session_.place, "an external reference without a path");
}

void EntityWalk::closeBlock(const Record& record) {
    if (!inBlock_) {
        session_.out.add(Rule::OutOfPlace, session_.place, "ENDBLK without BLOCK");
        return;
    }
    checkOwner(record, false);
    inBlock_ = false;
}

// --- entities

void EntityWalk::entity(Record& record) {
    const bool inBlocks = session_.section == Section::Blocks;
    if (inBlocks && !inBlock_)
        session_.out.add(Rule::OutOfPlace, session_.place, inQuotes(record.name),
                         " stands outside of all blocks");
    if (inBlocks && inBlock_ && layoutBlock_ && !layoutTold_) {
        session_.out.add(Rule::LayoutEntities, session_.place,
                         "entities of the model or the active paper stand in ENTITIES");
        layoutTold_ = true;
    }
    openParent(record);
    checkOwner(record, false);
    const Tag* space = record.find(67);
    session_.model.objects[record.object].paper = space && readInteger(space->value) == 1;
    if (inBlock_ && record.name == "INSERT") noteInsert(record);
}

/// Entities of a block belong to its block record, members to their entity. What lies in ENTITIES is checked
/// when the block records are known.
void EntityWalk::checkOwner(const Record& record, bool isMember) {
    Object& object = session_.model.objects[record.object];
    if (!record.hasOwner) return;
    const uint64_t parent = isMember ? parent_.handle : blockOwner_;
    if (isMember || inBlock_) object.ownerSettled = parent != 0 && record.owner == parent;
    // Some programs let the members belong to the owner of their entity.
    if (isMember && inBlock_ && record.owner == blockOwner_ && blockOwner_ != 0) object.ownerSettled = true;
}

void EntityWalk::noteInsert(const Record& record) {
    const Tag* name = record.find(2);
    if (!name) return;
    Model& model = session_.model;
    const uint32_t inserted = model.table(Names::Block).find(name->value);
    NameEntry& entry = model.table(Names::Block).entries[inserted];
    if (entry.insertedBy == blockName_) return;
    entry.insertedBy = blockName_;
    model.inserts.emplace_back(blockName_, inserted);
}

void ObjectWalk::record(std::span<const Tag> tags) {
    Record record{.tags = tags, .name = tags.front().value};
    readRecord(session_, record, rows_);
    if (record.rules && record.rules->kind().home != Home::Object)
        session_.out.add(Rule::OutOfPlace, session_.place, inQuotes(record.name), " is no object");
    checkRecord(session_, record, rows_);
}

} // namespace validate

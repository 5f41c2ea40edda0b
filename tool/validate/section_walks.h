#pragma once
// The walks through the sections that have an order of their own: tables, blocks and entities, objects,
// classes.

#include "record_check.h"

namespace validate {

/// TABLES: heads, records, ENDTAB.
class TableWalk {
public:
    explicit TableWalk(Session& session) : session_(session) {}

    void record(std::span<const Tag> tags);
    /// At the end of the section.
    void finish();
    bool has(std::string_view table) const;

private:
    void open(std::span<const Tag> tags);
    void close(const Place& place);
    void checkHead(std::span<const Tag> tags, const Record& head);
    void checkHeadTag(const Tag& tag, const Record& head);
    void define(const Record& record);

    Session& session_;
    std::vector<RowUse> rows_;
    std::vector<std::string_view> seen_;
    bool isOpen_ = false;
    std::string_view table_{};
    Place place_{};
    int64_t said_ = -1; ///< records by group 70, -1 without one
    int64_t records_ = 0;
    uint64_t handle_ = 0;
    size_t orderSeen_ = 0;
};

/// BLOCKS and ENTITIES: the entities of one space after the other, with the members of polylines and inserts.
class EntityWalk {
public:
    explicit EntityWalk(Session& session) : session_(session) {}

    void record(std::span<const Tag> tags);
    void finish();

private:
    /// An entity whose members follow.
    struct Parent {
        std::string_view name{};
        uint64_t handle = 0;
        Place place{};
        int64_t flags = 0, m = 0, n = 0;
        size_t locations = 0, faces = 0, controls = 0; ///< vertices met so far
        bool isOpen = false;
    };

    void entity(Record& record);
    void member(const Record& record);
    void openParent(const Record& record);
    void closeParent();
    void missingSeqEnd();
    void countVertex(const Record& record);
    void openBlock(const Record& record);
    void closeBlock(const Record& record);
    void checkOwner(const Record& record, bool isMember);
    void noteInsert(const Record& record);

    Session& session_;
    std::vector<RowUse> rows_;
    Parent parent_;
    bool inBlock_ = false;
    Place block_{};
    uint64_t blockOwner_ = 0;
    uint32_t blockName_ = kNone;
    bool layoutBlock_ = false;
    bool layoutTold_ = false;
};

/// OBJECTS.
class ObjectWalk {
public:
    explicit ObjectWalk(Session& session) : session_(session) {}
    void record(std::span<const Tag> tags);

private:
    Session& session_;
    std::vector<RowUse> rows_;
};

/// One record of CLASSES.
void checkClass(Session& session, std::span<const Tag> tags);

/// The variables of HEADER: the groups behind the section's name.
void checkHeader(Session& session, std::span<const Tag> tags);

/// Header variables that name or point at something: once the file is read.
void checkHeaderReferences(Session& session, std::span<const Tag> tags);

} // namespace validate

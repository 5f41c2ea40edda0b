#pragma once
// What is known while a file is judged: its version, its findings, the record at hand, and the model: all
// that must be remembered to check references once the whole file is read.

#include "encoding.h"
#include "findings.h"
#include "kind.h"
#include "tags.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace validate {

constexpr uint32_t kNone = 0xFFFFFFFF;

/// Something that has, or should have, a handle.
struct Object {
    uint64_t handle = 0, owner = 0;
    uint32_t line = 0;
    uint16_t kind = 0; ///< index into Model::kinds
    Section section = Section::None;
    bool hasOwner = false;
    bool ownerSettled = false; ///< the owner was checked when the record was read
    bool paper = false;        ///< group 67 is 1
};

/// How much harm a pointer does that leads nowhere.
enum class Strength : uint8_t { Hard, Soft, Reactor };

struct Pointer {
    uint64_t target = 0;
    std::string_view wanted{}; ///< kinds divided by '|', empty: any
    uint32_t object = kNone;   ///< index of the one that points
    uint32_t line = 0;
    int16_t code = 0;
    Strength strength = Strength::Soft;
};

/// A name of a table, defined or used.
struct NameEntry {
    std::string shown;
    Place defined{}, used{}; ///< line 0: not
    size_t uses = 0;
    uint32_t insertedBy = kNone; ///< of a block: the block that was last seen inserting it
};

class NameTable {
public:
    /// Index of the entry of the name; made when it isn't there.
    uint32_t find(std::string_view name);
    /// Index of the entry of the name, or kNone.
    uint32_t lookUp(std::string_view name) const;
    bool isDefined(std::string_view name) const;

    std::vector<NameEntry> entries;

private:
    std::unordered_map<std::string, uint32_t> index_;
    std::string_view lastName_{};
    uint32_t last_ = kNone;
};

struct DictionaryEntry {
    std::string_view key;
    uint64_t target = 0;
    uint32_t line = 0;
};

struct Dictionary {
    uint32_t object = kNone;
    size_t first = 0, count = 0; ///< in Model::entries
};

struct Layout {
    uint32_t object = kNone;
    std::string_view name;
    uint64_t blockRecord = 0;
};

struct BlockRecord {
    uint32_t object = kNone;
    std::string_view name;
    uint64_t layout = 0;
    bool hasLayout = false;
};

struct Block {
    uint32_t object = kNone;
    std::string_view name;
};

/// A block named by something other than an INSERT.
struct BlockUse {
    std::string_view name;
    Place place{};
    Rule rule = Rule::DimensionBlock;
};

struct Image {
    uint32_t object = kNone;
    uint64_t reactor = 0;
};

/// Everything that references can lead to.
class Model {
public:
    std::vector<Object> objects;
    std::vector<Pointer> pointers;
    NameTable names[kNameTables];
    std::vector<std::string_view> kinds; ///< names of the kinds met

    std::vector<DictionaryEntry> entries;
    std::vector<Dictionary> dictionaries;
    std::vector<Layout> layouts;
    std::vector<BlockRecord> blockRecords;
    std::vector<Block> blocks;
    std::vector<std::pair<uint32_t, uint32_t>> inserts; ///< names of blocks: who inserts whom
    std::vector<BlockUse> blockUses;
    std::vector<Image> images;
    std::vector<uint32_t> imageDefinitions;
    std::vector<std::pair<uint32_t, uint64_t>> imageReactors; ///< object, its image
    std::vector<std::pair<std::string_view, bool>> classes;   ///< name, says it is an entity
    std::unordered_map<std::string_view, Place> classUsers;   ///< kinds that need a CLASS, where first met

    NameTable& table(Names which) { return names[static_cast<size_t>(which)]; }
    std::string_view kindOf(const Object& object) const { return kinds[object.kind]; }
    Place placeOf(uint32_t object) const;
    uint16_t kindIndex(std::string_view name);

    /// To be called once all objects are there; then find() and its users work.
    void indexHandles();
    /// Index of the object with the handle, kNone when there is none.
    uint32_t find(uint64_t handle) const;
    /// The dictionary with the handle, null when there is none.
    const Dictionary* dictionaryAt(uint64_t handle) const;
    /// Target of a key in a dictionary (case-insensitive); 0 when it isn't there.
    uint64_t entryOf(const Dictionary& dictionary, std::string_view key) const;

    /// Objects whose handle an earlier object has, with that object.
    std::vector<std::pair<uint32_t, uint32_t>> repeatedHandles;

private:
    std::unordered_map<std::string_view, uint16_t> kindIndex_;
    std::vector<uint32_t> dense_;                       ///< handle to object, when handles lie close together
    std::vector<std::pair<uint64_t, uint32_t>> sorted_; ///< else
    std::unordered_map<uint32_t, uint32_t> dictionaryOf_; ///< object to index in dictionaries
};

/// How often a row of the kind's groups was met, and the first tag.
struct RowUse {
    uint32_t count = 0, first = 0;
};

/// One record: from a group 0 to the next.
struct Record {
    std::span<const Tag> tags; ///< the first is the group 0
    std::string_view name;
    const KindRules* rules = nullptr; ///< null for an unknown kind
    uint32_t object = kNone;          ///< in the model
    uint64_t handle = 0, owner = 0;
    bool hasHandle = false, hasOwner = false;
    bool flat = true;               ///< has no subclass markers
    size_t body = 1;                ///< first tag behind handle, application groups and owner
    size_t extended = 0;            ///< first tag of the extended data; tags.size() without them
    std::span<const RowUse> rows{}; ///< by row of the rules

    /// First group of this code in any part, the last part first; null when there is none.
    const Tag* find(int code) const;
    /// First group of this code in one part of the rules; null when there is none.
    const Tag* findIn(size_t part, int code) const;
    int64_t integer(int code, int64_t otherwise = 0) const;
    double real(int code, double otherwise = 0) const;
    std::string_view string(int code) const;
};

class Session {
public:
    Session(std::string_view fileText, const Selection& selection) : text(fileText), out(selection) {}

    std::string_view text;
    Findings out;
    Model model;
    Version version = Version::R12;
    std::string_view versionText{}; ///< of $ACADVER, empty without one
    const CodePage* page = nullptr; ///< null: unknown
    Section section = Section::None;
    Place place{}; ///< of the record at hand
    uint64_t handleSeed = 0;
    bool hasHandleSeed = false;
    bool longNames = true; ///< $EXTNAMES

    bool atLeast(Version wanted) const { return version >= wanted; }
    /// Where the tag is.
    Place at(const Tag& tag) const { return place.at(tag.line); }
};

} // namespace validate

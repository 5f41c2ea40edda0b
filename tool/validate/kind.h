#pragma once
// What the format says of each kind of entity, object and table record, as data: the subclass markers in
// their order, the groups behind each marker, their versions, ranges and targets. A kind's rows stand in
// entity_kinds.cpp, annotation_kinds.cpp, body_kinds.cpp, table_kinds.cpp and object_kinds.cpp.

#include "validate.h"
#include "version.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace validate {

class Session;
struct Record;

/// How much a group or a part is missed when it isn't there.
enum class Need : uint8_t { Optional, Usual, Expected, Required };

enum class Test : uint8_t { None, Range, Positive, NotZero, Direction, Colour, Weight };

/// The tables and dictionaries that groups name records of.
enum class Names : uint8_t { None, Layer, LineType, TextStyle, DimStyle, Block, App, View, Ucs, Viewport };
constexpr size_t kNameTables = 10;

/// One group code of a part. Built by req(), expect(), usual() or opt() and the refinements below.
struct Group {
    int16_t code = 0;
    int16_t counts = 0; ///< the value is the number of groups of this code in the same part; 0: none
    Need need = Need::Optional;
    Version since = kFirst, until = kLast;
    uint8_t dimensions = 1; ///< 2, 3: the code+10 (and code+20) follow
    bool repeats = false;
    Test test = Test::None;
    Level level = Level::Error; ///< of a failed test
    Names names = Names::None;
    float low = 0, high = 0;
    std::string_view target{}; ///< kinds that the handle leads to, divided by '|'; empty: any

    template <typename T>
    constexpr Group with(T Group::*member, T value) const {
        Group copy = *this;
        copy.*member = value;
        return copy;
    }

    constexpr Group point2() const { return with(&Group::dimensions, uint8_t{2}); }
    constexpr Group point3() const { return with(&Group::dimensions, uint8_t{3}); }
    constexpr Group direction() const { return point3().with(&Group::test, Test::Direction); }
    constexpr Group many() const { return with(&Group::repeats, true); }
    constexpr Group from(Version version) const { return with(&Group::since, version); }
    constexpr Group upTo(Version version) const { return with(&Group::until, version); }
    constexpr Group only(Version version) const { return from(version).upTo(version); }
    constexpr Group positive() const { return with(&Group::test, Test::Positive); }
    constexpr Group notZero() const { return with(&Group::test, Test::NotZero); }
    constexpr Group colour() const { return with(&Group::test, Test::Colour); }
    constexpr Group weight() const { return with(&Group::test, Test::Weight); }
    constexpr Group mild() const { return with(&Group::level, Level::Warning); }
    constexpr Group of(Names table) const { return with(&Group::names, table); }
    constexpr Group to(std::string_view kinds) const { return with(&Group::target, kinds); }
    constexpr Group counting(int16_t other) const { return with(&Group::counts, other); }
    constexpr Group range(float lowest, float highest) const {
        return with(&Group::test, Test::Range).with(&Group::low, lowest).with(&Group::high, highest);
    }
};

constexpr Group opt(int16_t code) {
    Group group;
    group.code = code;
    return group;
}
constexpr Group withNeed(int16_t code, Need need) {
    Group group = opt(code);
    group.need = need;
    return group;
}
/// Left out: an error, a warning, a note.
constexpr Group req(int16_t code) {
    return withNeed(code, Need::Required);
}
constexpr Group expect(int16_t code) {
    return withNeed(code, Need::Expected);
}
constexpr Group usual(int16_t code) {
    return withNeed(code, Need::Usual);
}

/// The groups behind one subclass marker.
struct Part {
    std::string_view marker; ///< alternatives divided by '|'
    std::span<const Group> groups{};
    bool open = false; ///< other groups than those listed are fine
    Version since = kFirst, until = kLast;
    Need need = Need::Required;
};

enum class Home : uint8_t { Entity, Member, BlockMark, TableRecord, Object };

/// A check that goes beyond the rows; it sees the record with its groups already assigned to rows.
using Check = void (*)(Session&, const Record&);

/// Rows of one name that differ by bits of group 70 stand one behind the other; the first that fits is taken.
struct Kind {
    std::string_view name;
    Home home = Home::Entity;
    std::span<const Part> parts{};
    Version since = kFirst;
    Version classFrom = kLast, classUntil = kFirst; ///< versions in which it needs a CLASS; none by default
    int mask = 0, bits = 0;                         ///< fits when (group 70 & mask) == bits
    Check check = nullptr;
};

std::span<const Kind> entityKinds();
std::span<const Kind> annotationKinds();
std::span<const Kind> bodyKinds();
std::span<const Kind> tableKinds();
std::span<const Kind> objectKinds();

/// A kind made ready for looking up groups: the groups that all entities share stand in front of its own
/// parts.
class KindRules {
public:
    explicit KindRules(const Kind& kind);

    const Kind& kind() const { return *kind_; }
    std::span<const Part> parts() const { return parts_; }
    std::span<const Group> groups() const { return groups_; }
    /// Part of a row.
    size_t partOf(size_t row) const { return partOf_[row]; }
    /// First row of a part.
    size_t firstRow(size_t part) const { return firstRow_[part]; }

    static constexpr size_t kFlat = 255; ///< part number for records without markers
    static constexpr size_t kNoRow = 255;

    /// Row of a group code in a part, or in all parts (kFlat), as index into groups(); kNoRow when it has
    /// none.
    size_t rowOf(size_t part, int code) const {
        if (code >= kCodes) return kNoRow;
        return (part == kFlat ? flat_ : index_[part])[static_cast<size_t>(code)];
    }

private:
    static constexpr int kCodes = 482;
    using Index = std::array<uint8_t, kCodes>;

    const Kind* kind_;
    std::vector<Part> parts_;
    std::vector<Group> groups_;
    std::vector<uint8_t> partOf_, firstRow_;
    std::vector<Index> index_; ///< by part
    Index flat_{};
};

/// Rules of a name: its variants, one behind the other; empty for a name that has none.
std::span<const KindRules> variantsOf(std::string_view name);

/// Rules of a name, the first variant; null for a name that has none.
const KindRules* findKind(std::string_view name);

/// The variant of a name for a value of group 70; null for a name that has none.
const KindRules* findVariant(std::string_view name, int64_t flags);

/// Whether `name` is one of the words of a list divided by '|'.
bool inList(std::string_view list, std::string_view name);

} // namespace validate

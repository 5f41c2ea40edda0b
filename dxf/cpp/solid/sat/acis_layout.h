// What a record or sub-record holds, as data: a row a field, with the versions that have it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ACIS {

/// Versions up to 1100 are ACIS's own; those from 20000 on (ASM) went their own way behind 700, so that a
/// field is in them as in 700 unless its row says otherwise.
constexpr int TARGET_VERSION = 700;
constexpr bool isAsm(int version) {
    return version >= 20000;
}

enum class Type : std::uint8_t {
    Pointer,
    Integer,
    Long, ///< 64 bits
    Real,
    Position, ///< three reals
    Vector,   ///< three reals
    Logical,
    Enum,
    String,
    Interval, ///< two bounds, each open or a real
    Reals,    ///< a count and so many reals
    Spline2,  ///< B-spline curve of parameters
    Spline3,  ///< B-spline curve in space
    SplineSurface,
    Curve,   ///< a curve by its word and fields
    Surface, ///< a surface by its word and fields
    Sub,     ///< a sub-record in braces
    Law,
    LawData,
    Group,    ///< the fields of `part`
    Repeat,   ///< a count and so many times the fields of `part`
    Choice,   ///< a code of `words` and the fields of the part with that number
    Settings, ///< pairs of keyword and number up to "end_fields"
    Pcurve,   ///< what stands behind the number of a parameter curve, by that number
    Box,      ///< bounding box of ACIS 800 and later: read, not kept
    Extra     ///< a number or logical of newer versions: read, not kept
};

/// Names of a logical's or an enumeration's values, by code.
struct Words {
    template <class... Names>
    constexpr Words(Names... names) : list{std::string_view(names)...}, count(sizeof...(names)) {} // NOLINT
    constexpr const std::string_view* begin() const { return list; }
    constexpr const std::string_view* end() const { return list + count; }
    constexpr std::size_t size() const { return count; }

    std::string_view list[6];
    std::size_t count;
};

enum class Fill : std::uint8_t { Constant, StartParameter, EndParameter, MajorLength };

struct Field {
    Type type;
    const char* name;
    std::uint16_t since = 0;      ///< first ACIS version
    std::uint16_t before = 65535; ///< first version, of either kind, that doesn't have it any more
    std::uint16_t asmSince = 0;   ///< first ASM version; 0: as in 700
    bool byToken = false;         ///< in the file when the next token can be its value
    bool withId = false;          ///< in files whose records have ids, whatever their version says
    bool isOptional = false;      ///< in the file when the (sub-)record goes on
    bool modern = false;          ///< only in sub-records of ASM's own layout, and not kept
    bool legacy = false;          ///< only in sub-records of the older layout
    bool links = false;           ///< to the next (or previous) attribute
    Fill fill = Fill::Constant;
    double dflt = 0;            ///< of a version that lacks the field
    std::string_view text = {}; ///< the same of a string
    const Words* words = nullptr;
    std::span<const Field> part = {};
    std::span<const std::span<const Field>> parts = {};

    constexpr bool holds(int version) const {
        if (isAsm(version) && asmSince) return version >= asmSince && version < before;
        if (asmSince && asmSince != since) return false;
        if (isAsm(version)) return since <= TARGET_VERSION && before > TARGET_VERSION;
        return version >= since && version < before;
    }

    constexpr Field from(int version) const {
        Field f = *this;
        f.since = static_cast<std::uint16_t>(version);
        return f;
    }
    constexpr Field until(int version) const {
        Field f = *this;
        f.before = static_cast<std::uint16_t>(version);
        return f;
    }
    /// Only in ASM, from `version` on.
    constexpr Field inAsm(int version) const {
        Field f = *this;
        f.asmSince = static_cast<std::uint16_t>(version);
        return f;
    }
    constexpr Field seen() const {
        Field f = *this;
        f.byToken = true;
        return f;
    }
    constexpr Field besideId() const {
        Field f = *this;
        f.withId = true;
        return f;
    }
    constexpr Field optional() const {
        Field f = *this;
        f.isOptional = true;
        return f;
    }
    constexpr Field onlyModern() const {
        Field f = *this;
        f.modern = true;
        return f;
    }
    constexpr Field onlyLegacy() const {
        Field f = *this;
        f.legacy = true;
        return f;
    }
    constexpr Field link() const {
        Field f = *this;
        f.links = true;
        return f;
    }
    constexpr Field orElse(double value) const {
        Field f = *this;
        f.dflt = value;
        return f;
    }
    constexpr Field orElse(std::string_view value) const {
        Field f = *this;
        f.text = value;
        return f;
    }
    constexpr Field filledBy(Fill way) const {
        Field f = *this;
        f.fill = way;
        return f;
    }
};

using Layout = std::span<const Field>;

constexpr Field ptr(const char* name) {
    return {.type = Type::Pointer, .name = name, .dflt = -1};
}
constexpr Field field(Type type, const char* name) {
    return {.type = type, .name = name};
}
constexpr Field integer(const char* name) {
    return field(Type::Integer, name);
}
constexpr Field real(const char* name) {
    return field(Type::Real, name);
}
constexpr Field position(const char* name) {
    return field(Type::Position, name);
}
constexpr Field vec(const char* name) {
    return field(Type::Vector, name);
}
constexpr Field interval(const char* name) {
    return field(Type::Interval, name);
}
constexpr Field string(const char* name) {
    return field(Type::String, name);
}
constexpr Field logical(const char* name, const Words& words) {
    Field f = field(Type::Logical, name);
    f.words = &words;
    return f;
}
constexpr Field code(const char* name, const Words& words) {
    Field f = field(Type::Enum, name);
    f.words = &words;
    return f;
}
constexpr Field group(const char* name, Layout part) {
    Field f = field(Type::Group, name);
    f.part = part;
    return f;
}
constexpr Field repeat(const char* name, Layout part) {
    Field f = field(Type::Repeat, name);
    f.part = part;
    return f;
}
constexpr Field extra(const char* name) {
    return field(Type::Extra, name).seen();
}

namespace words {
inline constexpr Words sense = {"forward", "reversed"};
inline constexpr Words sideways = {"forward_v", "reverse_v"};
inline constexpr Words sides = {"single", "double"};
inline constexpr Words inside = {"out", "in"};
inline constexpr Words plain = {"F", "T"};
inline constexpr Words rotate = {"no_rotate", "rotate"};
inline constexpr Words reflect = {"no_reflect", "reflect"};
inline constexpr Words shear = {"no_shear", "shear"};
inline constexpr Words holder = {"surf2", "surf1"};
inline constexpr Words numbers = {"0", "1"}; ///< a boolean that is a number in text files of all versions
inline constexpr Words closure = {"open", "closed", "periodic", "unknown"};
inline constexpr Words singularity = {"none", "low", "high", "both", "unknown"};
inline constexpr Words level = {"full", "summary", "none"};
inline constexpr Words rational = {"none", "u", "v", "both"};
inline constexpr Words split = {"lose", "keep", "copy", "custom"};
inline constexpr Words merge = {"lose", "keep_kept", "keep_lost", "keep_one", "keep_all", "custom"};
inline constexpr Words trans = {"lose", "ignore", "apply", "custom"};
} // namespace words

} // namespace ACIS

// The classes of records and of sub-records, each bound to its names and its layout.
#pragma once

#include "acis_layout.h"

#include <string_view>

namespace ACIS {

/// What a record is to a program that looks at the model.
enum class Id : std::uint8_t {
    UnknownEntity, ///< no part of the name is known: the record is kept token by token
    Body,
    Lump,
    Shell,
    SubShell,
    Face,
    Loop,
    Wire,
    Coedge,
    Tcoedge,
    Edge,
    Tedge,
    Vertex,
    Tvertex,
    Point,
    Transform,
    Plane,
    Cone,
    Sphere,
    Torus,
    Spline,
    Straight,
    Ellipse,
    Intcurve,
    Degenerate,
    PCurve,
    Attrib,
    Attrib_Unknown_AsmHeader,
    Annotation,
    Other
};

/// What a record begins with, ahead of the fields of its own class.
enum class Prefix : std::uint8_t { Entity, Geometry, Attribute, None };

struct Class {
    std::string_view name; ///< parts of the record's name from the most derived to the base, joined by "-"
    Id id;
    Prefix prefix;
    Layout fields;
    bool keepsRest = true;  ///< what follows the fields belongs to the record and is kept
    bool leaves700 = false; ///< a record that a file of 700 doesn't have
};

/// The class of a whole record name (in any case), or null.
const Class* findClass(std::string_view name);
/// The class of a record that nothing is known of, not even what it begins with.
const Class& rawClass();
/// The class of the record, or of the longest end of its name that has one; never null. `isWhole` tells
/// whether the whole name is known.
const Class& classOf(std::string_view name, bool& isWhole);
const Class& classOf(Id id); ///< The first of that kind.
std::span<const Class> allClasses();
Layout prefixOf(Prefix prefix);

enum class SubKind : std::uint8_t { Curve, Surface, Pcurve };

struct SubClass {
    std::string_view name;       ///< up to 700 and in early ASM files
    std::string_view modernName; ///< in ASM's own layout; empty: none
    SubKind kind;
    Layout fields;        ///< empty: kept token by token (`SubUnknown`)
    bool fits700 = true;  ///< a file of 700 can hold it
    bool hasShape = true; ///< carries a B-spline of its shape
};

const SubClass* findSubClass(std::string_view name);
const SubClass& exactCurve();
const SubClass& exactSurface();
const SubClass& exactPcurve();

/// Fields of a surface or curve behind its word ("plane", "straight" …), empty for a word without fields;
/// `known` is false for another word.
Layout geometryOf(std::string_view word, bool& known);

} // namespace ACIS

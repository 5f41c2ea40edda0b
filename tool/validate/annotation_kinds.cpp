// Texts, dimensions, leaders, tables and hatches: what each kind is made of.

#include "checks.h"
#include "kind.h"

namespace validate {

namespace {

using enum Version;
using enum Names;

constexpr Group kText[] = {opt(39),
                           req(10).point3(),
                           req(40).positive(),
                           req(1),
                           opt(50),
                           opt(41).positive(),
                           opt(51).range(-85, 85).mild(),
                           opt(7).of(TextStyle),
                           opt(71),
                           opt(72).range(0, 5),
                           opt(11).point3(),
                           opt(210).direction()};
constexpr Group kTextTail[] = {opt(73).range(0, 3)};
constexpr Part kTextParts[] = {{"AcDbText", kText}, {"AcDbText", kTextTail}};

constexpr Group kMText[] = {req(10).point3(),
                            req(40).positive(),
                            usual(41),
                            opt(46).from(R2007),
                            expect(71).range(1, 9).mild(),
                            usual(72).range(1, 5).mild(),
                            opt(3).many(),
                            req(1),
                            opt(7).of(TextStyle),
                            opt(210).direction(),
                            opt(11).direction(),
                            opt(42),
                            opt(43),
                            opt(50),
                            opt(73).from(R2000).range(1, 2).mild(),
                            opt(44).from(R2000).range(0.25F, 4).mild(),
                            opt(90).from(R2004),
                            opt(63).from(R2004).colour(),
                            opt(420).from(R2004),
                            opt(421).from(R2004),
                            opt(430).from(R2004),
                            opt(431).from(R2004),
                            opt(45).from(R2004),
                            opt(441).from(R2004)};
constexpr Part kMTextParts[] = {{"AcDbMText", kMText}};

constexpr Group kAttribText[] = {opt(39),
                                 req(10).point3(),
                                 req(40).positive(),
                                 usual(1),
                                 opt(50),
                                 opt(41).positive(),
                                 opt(51).range(-85, 85).mild(),
                                 opt(7).of(TextStyle),
                                 opt(71),
                                 opt(72).range(0, 5),
                                 opt(11).point3(),
                                 opt(210).direction()};
constexpr Group kAttrib[] = {opt(280).from(R2007).many(),
                             opt(3),
                             req(2),
                             usual(70),
                             opt(73),
                             opt(74).range(0, 3),
                             opt(71).from(R2010),
                             opt(72).from(R2010),
                             opt(11).from(R2010).point3()};
constexpr Part kAttribParts[] = {{"AcDbText", kAttribText}, {"AcDbAttribute", kAttrib}};
constexpr Part kAttdefParts[] = {{"AcDbText", kAttribText}, {"AcDbAttributeDefinition", kAttrib}};

constexpr Group kHatch[] = {req(10).many(), req(2),         req(70).range(0, 1), req(71).range(0, 1),
                            req(91),        req(75).many(), req(76).range(0, 2), req(98)};
constexpr Part kHatchParts[] = {{"AcDbHatch", kHatch, true}};
constexpr Part kMPolygonParts[] = {{"AcDbMPolygon", {}, true}};

constexpr Group kDimension[] = {
    opt(280).from(R2010), usual(2), req(10).point3(), usual(11).point3(), opt(12).point3(), usual(70), opt(1),
    opt(71).from(R2000).range(0, 9).mild(), opt(72).from(R2000), opt(41).from(R2000), opt(42).from(R2000),
    opt(73).from(R2000), opt(74).from(R2000), opt(75).from(R2000), opt(51), opt(53), opt(54),
    opt(210).direction(), opt(3).of(DimStyle),
    // The definition points of R12 and of kinds that have no part of their own for them.
    opt(13).upTo(R12).point3(), opt(14).upTo(R12).point3(), opt(15).upTo(R12).point3(),
    opt(16).upTo(R12).point3(), opt(40).upTo(R12), opt(50).upTo(R12), opt(52).upTo(R12)};
constexpr Group kAligned[] = {opt(12).point3(), req(13).point3(), req(14).point3(), opt(50), opt(52)};
constexpr Group kRotated[] = {opt(50), opt(52)};
constexpr Group kAngular2[] = {req(13).point3(), req(14).point3(), req(15).point3(), req(16).point3(),
                               opt(40)};
constexpr Group kAngular3[] = {req(13).point3(), req(14).point3(), req(15).point3(), opt(16).point3(),
                               opt(40)};
constexpr Group kRadial[] = {req(15).point3(), opt(40)};
constexpr Group kOrdinate[] = {req(13).point3(), req(14).point3()};
constexpr Group kArcLength[] = {req(13).point3(), req(14).point3(), req(15).point3(),
                                opt(70),          opt(40),          opt(41),
                                opt(71),          opt(16).point3(), opt(17).point3()};
constexpr Group kLargeRadial[] = {req(13).point3(), req(14).point3(), req(15).point3(), opt(40)};

constexpr Part kBase{"AcDbDimension", kDimension};
constexpr Part kRotatedParts[] = {
    kBase, {"AcDbAlignedDimension", kAligned}, {"AcDbRotatedDimension", kRotated}};
constexpr Part kAlignedParts[] = {kBase, {"AcDbAlignedDimension", kAligned}};
constexpr Part kAngular2Parts[] = {kBase, {"AcDb2LineAngularDimension", kAngular2}};
constexpr Part kDiameterParts[] = {kBase, {"AcDbDiametricDimension", kRadial}};
constexpr Part kRadiusParts[] = {kBase, {"AcDbRadialDimension", kRadial}};
constexpr Part kAngular3Parts[] = {kBase, {"AcDb3PointAngularDimension", kAngular3}};
constexpr Part kOrdinateParts[] = {kBase, {"AcDbOrdinateDimension", kOrdinate}};
constexpr Part kArcLengthParts[] = {kBase, {"AcDbArcDimension", kArcLength}};
constexpr Part kLargeRadialParts[] = {kBase, {"AcDbRadialDimensionLarge", kLargeRadial}};

constexpr Group kLeader[] = {req(3).of(DimStyle),
                             opt(71),
                             opt(72).range(0, 1),
                             opt(73).range(0, 3),
                             opt(74),
                             opt(75),
                             opt(40),
                             opt(41),
                             req(76).counting(10),
                             req(10).point3().many(),
                             opt(77).colour(),
                             opt(340).to("MTEXT|TOLERANCE|INSERT|TEXT"),
                             opt(210).direction(),
                             opt(211).direction(),
                             opt(212).point3(),
                             opt(213).point3()};
constexpr Part kLeaderParts[] = {{"AcDbLeader", kLeader}};

constexpr Group kTolerance[] = {req(3).of(DimStyle), req(10).point3(), req(1), opt(210).direction(),
                                opt(11).direction()};
constexpr Part kToleranceParts[] = {{"AcDbFcf", kTolerance}};

// Groups outside of the nested context data; those inside have meanings of their own.
constexpr Part kMLeaderParts[] = {{"AcDbMLeader", {}, true}};

constexpr Group kTableInsert[] = {usual(2), req(10).point3(), opt(66), opt(210).direction()};
constexpr Group kTable[] = {req(342).to("TABLESTYLE"), req(343).to("BLOCK_RECORD")};
constexpr Part kTableParts[] = {{"AcDbBlockReference", kTableInsert, true}, {"AcDbTable", kTable, true}};

constexpr Kind kKinds[] = {
    {.name = "TEXT", .parts = kTextParts, .check = checkText},
    {.name = "MTEXT", .parts = kMTextParts, .since = R13, .check = checkMText},
    {.name = "ATTRIB", .home = Home::Member, .parts = kAttribParts, .check = checkText},
    {.name = "ATTDEF", .parts = kAttdefParts, .check = checkText},
    {.name = "HATCH",
     .parts = kHatchParts,
     .since = R14,
     .classFrom = R14,
     .classUntil = R14,
     .check = checkHatch},
    {.name = "MPOLYGON", .parts = kMPolygonParts, .since = R14, .classFrom = R2000, .classUntil = kLast},
    {.name = "DIMENSION", .parts = kRotatedParts, .mask = 15, .bits = 0, .check = checkDimension},
    {.name = "DIMENSION", .parts = kAlignedParts, .mask = 15, .bits = 1, .check = checkDimension},
    {.name = "DIMENSION", .parts = kAngular2Parts, .mask = 15, .bits = 2, .check = checkDimension},
    {.name = "DIMENSION", .parts = kDiameterParts, .mask = 15, .bits = 3, .check = checkDimension},
    {.name = "DIMENSION", .parts = kRadiusParts, .mask = 15, .bits = 4, .check = checkDimension},
    {.name = "DIMENSION", .parts = kAngular3Parts, .mask = 15, .bits = 5, .check = checkDimension},
    {.name = "DIMENSION", .parts = kOrdinateParts, .mask = 15, .bits = 6, .check = checkDimension},
    {.name = "ARC_DIMENSION",
     .parts = kArcLengthParts,
     .since = R2000,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkDimension},
    {.name = "LARGE_RADIAL_DIMENSION",
     .parts = kLargeRadialParts,
     .since = R2000,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkDimension},
    {.name = "LEADER", .parts = kLeaderParts, .since = R13, .check = checkLeader},
    {.name = "TOLERANCE", .parts = kToleranceParts, .since = R13},
    {.name = "MULTILEADER",
     .parts = kMLeaderParts,
     .since = R2000,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkMultiLeader},
    {.name = "MLEADER",
     .parts = kMLeaderParts,
     .since = R2000,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkMultiLeader},
    {.name = "ACAD_TABLE",
     .parts = kTableParts,
     .since = R2000,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkTable},
};

} // namespace

std::span<const Kind> annotationKinds() {
    return kKinds;
}

} // namespace validate

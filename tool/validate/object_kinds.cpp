// The objects: what each is made of. Kinds whose data nest or repeat in turns are open; only what is certain
// is listed.

#include "checks.h"
#include "kind.h"

namespace validate {

namespace {

using enum Version;

// Entries are pairs; checkDictionary reads them.
constexpr Group kDictionary[] = {opt(280), opt(281).from(R13), opt(3).many(), opt(350).many(),
                                 opt(360).many()};
constexpr Group kDefault[] = {req(340)};
constexpr Part kDictionaryParts[] = {{"AcDbDictionary", kDictionary}};
constexpr Part kDefaultParts[] = {{"AcDbDictionary", kDictionary}, {"AcDbDictionaryWithDefault", kDefault}};

constexpr Group kVariable[] = {usual(280), req(1)};
constexpr Part kVariableParts[] = {{"DictionaryVariables", kVariable}};

constexpr Part kXrecordParts[] = {{"AcDbXrecord", {}, true}};

constexpr Group kPlot[] = {opt(1),
                           usual(2),
                           usual(4),
                           usual(6),
                           usual(40),
                           usual(41),
                           usual(42),
                           usual(43),
                           usual(44),
                           usual(45),
                           usual(46),
                           usual(47),
                           usual(48),
                           usual(49),
                           usual(140),
                           usual(141),
                           usual(142),
                           usual(143),
                           usual(70),
                           usual(72).range(0, 2),
                           usual(73).range(0, 3),
                           usual(74).range(0, 5),
                           usual(7),
                           usual(75),
                           usual(147),
                           opt(76).from(R2004),
                           opt(77).from(R2004),
                           opt(78).from(R2004),
                           usual(148),
                           usual(149),
                           opt(333)};
constexpr Group kLayout[] = {req(1),
                             usual(70),
                             usual(71),
                             usual(10).point2(),
                             usual(11).point2(),
                             usual(12).point3(),
                             usual(14).point3(),
                             usual(15).point3(),
                             usual(146),
                             usual(13).point3(),
                             usual(16).direction(),
                             usual(17).direction(),
                             usual(76),
                             req(330).to("BLOCK_RECORD"),
                             opt(331).to("VIEWPORT|VPORT"),
                             opt(333),
                             opt(345).to("UCS"),
                             opt(346).to("UCS")};
constexpr Part kPlotParts[] = {{"AcDbPlotSettings", kPlot}};
constexpr Part kLayoutParts[] = {{"AcDbPlotSettings", kPlot}, {"AcDbLayout", kLayout}};

constexpr Group kMlineStyle[] = {req(2),
                                 usual(70),
                                 usual(3),
                                 opt(62).colour().many(),
                                 opt(420).from(R2004).many(),
                                 usual(51),
                                 usual(52),
                                 req(71).counting(49),
                                 opt(49).many(),
                                 opt(6).many(),
                                 opt(430).from(R2004).many()};
constexpr Part kMlineStyleParts[] = {{"AcDbMlineStyle", kMlineStyle}};

constexpr Group kMaterial[] = {req(1)};
constexpr Part kMaterialParts[] = {{"AcDbMaterial", kMaterial, true}};
constexpr Group kScale[] = {usual(70), req(300), req(140).positive(), req(141).positive(), usual(290)};
constexpr Part kScaleParts[] = {{"AcDbScale", kScale}};
constexpr Part kTableStyleParts[] = {{"AcDbTableStyle", {}, true}};
constexpr Part kMLeaderStyleParts[] = {{"AcDbMLeaderStyle", {}, true}};
constexpr Group kVisualStyle[] = {req(2), req(70).many()};
constexpr Part kVisualStyleParts[] = {{"AcDbVisualStyle", kVisualStyle, true}};

constexpr Group kGroup[] = {usual(300), usual(70), usual(71), opt(340).many()};
constexpr Part kGroupParts[] = {{"AcDbGroup", kGroup}};

constexpr Group kImageDef[] = {usual(90), req(1), req(10).point2(), req(11).point2(), usual(280).range(0, 1),
                               usual(281)};
constexpr Part kImageDefParts[] = {{"AcDbRasterImageDef", kImageDef}};
constexpr Group kImageReactor[] = {usual(90), req(330).to("IMAGE|WIPEOUT")};
constexpr Part kImageReactorParts[] = {{"AcDbRasterImageDefReactor", kImageReactor}};
constexpr Group kRaster[] = {usual(90), usual(70), usual(71), usual(72)};
constexpr Part kRasterParts[] = {{"AcDbRasterVariables", kRaster}};
constexpr Group kWipeoutVariables[] = {usual(70)};
constexpr Part kWipeoutParts[] = {{"AcDbWipeoutVariables", kWipeoutVariables}};
constexpr Group kSort[] = {req(330).to("BLOCK_RECORD"), opt(331).many(), opt(5).many()};
constexpr Part kSortParts[] = {{"AcDbSortentsTable", kSort}};
constexpr Group kColour[] = {opt(62).colour(), opt(420), opt(430)};
constexpr Part kColourParts[] = {{"AcDbColor", kColour}};
constexpr Part kSunParts[] = {{"AcDbSun", {}, true}};
constexpr Group kIds[] = {opt(90), opt(330).many()};
constexpr Part kFieldListParts[] = {{"AcDbIdSet", kIds}, {"AcDbFieldList", {}, true}};
constexpr Part kSpatialParts[] = {{"AcDbFilter"}, {"AcDbSpatialFilter", {}, true}};
constexpr Group kDefinition[] = {req(1), usual(2)};
constexpr Part kUnderlayParts[] = {{"AcDbUnderlayDefinition", kDefinition, true}};
constexpr Part kProxyParts[] = {{"AcDbProxyObject", {}, true}};

constexpr Kind object(std::string_view name, std::span<const Part> parts, Check check = nullptr) {
    return {.name = name, .home = Home::Object, .parts = parts, .since = R13, .check = check};
}

/// A kind that needs a CLASS from a version on.
constexpr Kind classed(Version from, std::string_view name, std::span<const Part> parts,
                       Check check = nullptr) {
    Kind kind = object(name, parts, check);
    kind.classFrom = from;
    kind.classUntil = kLast;
    return kind;
}

constexpr Kind classedUpTo(Version last, Kind kind) {
    kind.classUntil = last;
    return kind;
}

constexpr Kind since(Version version, Kind kind) {
    kind.since = version;
    return kind;
}

constexpr Kind kKinds[] = {
    object("DICTIONARY", kDictionaryParts, checkDictionary),
    since(R2000, classed(R2000, "ACDBDICTIONARYWDFLT", kDefaultParts, checkDictionary)),
    since(R2000, classedUpTo(R2000, classed(R2000, "ACDBPLACEHOLDER", {}))),
    classed(R14, "DICTIONARYVAR", kVariableParts),
    classedUpTo(R14, classed(R14, "XRECORD", kXrecordParts)),
    since(R2000, classedUpTo(R2000, classed(R2000, "LAYOUT", kLayoutParts, checkLayout))),
    since(R2000, classedUpTo(R2000, classed(R2000, "PLOTSETTINGS", kPlotParts))),
    object("MLINESTYLE", kMlineStyleParts),
    classed(R2000, "MATERIAL", kMaterialParts),
    classed(R2000, "SCALE", kScaleParts),
    classed(R2000, "TABLESTYLE", kTableStyleParts),
    classed(R2000, "MLEADERSTYLE", kMLeaderStyleParts),
    classed(R2000, "VISUALSTYLE", kVisualStyleParts),
    object("GROUP", kGroupParts, checkGroupObject),
    classed(R14, "IMAGEDEF", kImageDefParts, checkImageDefinition),
    classed(R14, "IMAGEDEF_REACTOR", kImageReactorParts, checkImageReactor),
    classed(R14, "RASTERVARIABLES", kRasterParts),
    classed(R14, "WIPEOUTVARIABLES", kWipeoutParts),
    classed(R14, "SORTENTSTABLE", kSortParts),
    classed(R2004, "DBCOLOR", kColourParts),
    classed(R2000, "SUN", kSunParts),
    classed(R2000, "FIELDLIST", kFieldListParts),
    classed(R14, "SPATIAL_FILTER", kSpatialParts),
    classed(R2000, "PDFDEFINITION", kUnderlayParts),
    classed(R2000, "DWFDEFINITION", kUnderlayParts),
    classed(R2000, "DGNDEFINITION", kUnderlayParts),
    object("ACAD_PROXY_OBJECT", kProxyParts),
};

} // namespace

std::span<const Kind> objectKinds() {
    return kKinds;
}

} // namespace validate

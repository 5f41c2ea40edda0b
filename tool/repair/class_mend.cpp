// The CLASSES section: the shape of its records, the classes that entities and objects need.

#include "mends.h"
#include "text.h"

#include <algorithm>
#include <unordered_set>

namespace repair {

namespace {

struct Class {
    std::string_view name, cppName, application, flags;
};
constexpr Class kClasses[] = {
    {"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault", "ObjectDBX Classes", "0"},
    {"ACDBPLACEHOLDER", "AcDbPlaceHolder", "ObjectDBX Classes", "0"},
    {"LAYOUT", "AcDbLayout", "ObjectDBX Classes", "0"},
    {"PLOTSETTINGS", "AcDbPlotSettings", "ObjectDBX Classes", "0"},
    {"DICTIONARYVAR", "AcDbDictionaryVar", "ObjectDBX Classes", "0"},
    {"MATERIAL", "AcDbMaterial", "ObjectDBX Classes", "1153"},
    {"VISUALSTYLE", "AcDbVisualStyle", "ObjectDBX Classes", "4095"},
    {"SCALE", "AcDbScale", "ObjectDBX Classes", "1153"},
    {"TABLESTYLE", "AcDbTableStyle", "ObjectDBX Classes", "4095"},
    {"MLEADERSTYLE", "AcDbMLeaderStyle", "ACDB_MLEADERSTYLE_CLASS", "4095"},
    {"CELLSTYLEMAP", "AcDbCellStyleMap", "ObjectDBX Classes", "1152"},
    {"SUN", "AcDbSun", "SCENEOE", "1153"},
    {"RASTERVARIABLES", "AcDbRasterVariables", "ISM", "0"},
    {"IMAGEDEF", "AcDbRasterImageDef", "ISM", "0"},
    {"IMAGEDEF_REACTOR", "AcDbRasterImageDefReactor", "ISM", "1"},
    {"IMAGE", "AcDbRasterImage", "ISM", "2175"},
    {"WIPEOUT", "AcDbWipeout", "WipeOut", "2175"},
    {"WIPEOUTVARIABLES", "AcDbWipeoutVariables", "WipeOut", "0"},
    {"SORTENTSTABLE", "AcDbSortentsTable", "ObjectDBX Classes", "0"},
    {"IDBUFFER", "AcDbIdBuffer", "ObjectDBX Classes", "0"},
    {"LAYER_INDEX", "AcDbLayerIndex", "ObjectDBX Classes", "0"},
    {"SPATIAL_INDEX", "AcDbSpatialIndex", "ObjectDBX Classes", "0"},
    {"SPATIAL_FILTER", "AcDbSpatialFilter", "ObjectDBX Classes", "0"},
    {"DIMASSOC", "AcDbDimAssoc", "AcDbDimAssoc", "0"},
    {"FIELDLIST", "AcDbFieldList", "ObjectDBX Classes", "1152"},
    {"DBCOLOR", "AcDbColor", "ObjectDBX Classes", "0"},
    {"PDFDEFINITION", "AcDbPdfDefinition", "ObjectDBX Classes", "1153"},
    {"PDFUNDERLAY", "AcDbPdfReference", "ObjectDBX Classes", "4095"},
    {"MULTILEADER", "AcDbMLeader", "ACDB_MLEADER_CLASS", "1025"},
    {"ACAD_TABLE", "AcDbTable", "ObjectDBX Classes", "1025"},
    {"ARC_DIMENSION", "AcDbArcDimension", "ObjectDBX Classes", "1025"},
    {"LARGE_RADIAL_DIMENSION", "AcDbRadialDimensionLarge", "ObjectDBX Classes", "1025"},
    {"MESH", "AcDbSubDMesh", "ObjectDBX Classes", "0"},
    {"HELIX", "AcDbHelix", "ObjectDBX Classes", "4095"},
    {"LIGHT", "AcDbLight", "SCENEOE", "1025"},
    {"SURFACE", "AcDbSurface", "ObjectDBX Classes", "4095"},
    {"EXTRUDEDSURFACE", "AcDbExtrudedSurface", "ObjectDBX Classes", "4095"},
    {"REVOLVEDSURFACE", "AcDbRevolvedSurface", "ObjectDBX Classes", "4095"},
    {"LOFTEDSURFACE", "AcDbLoftedSurface", "ObjectDBX Classes", "4095"},
    {"SWEPTSURFACE", "AcDbSweptSurface", "ObjectDBX Classes", "4095"},
    {"PLANESURFACE", "AcDbPlaneSurface", "ObjectDBX Classes", "4095"},
    {"LWPOLYLINE", "AcDbPolyline", "AutoCAD", "0"},
    {"HATCH", "AcDbHatch", "ACAD_SEDONA", "0"},
    {"XRECORD", "AcDbXrecord", "AutoCAD", "0"},
};

bool isEntity(std::string_view name) {
    const validate::KindRules* rules = validate::findKind(name);
    return rules && rules->kind().home == validate::Home::Entity;
}

/// The groups of a CLASS stand in one order, the number of instances (91) since 2004 only.
void mendShape(Document& document, Record& record, Log& log) {
    std::vector<Pair> pairs{record.pairs.front()};
    bool changed = false;
    for (const auto& [code, value] : {std::pair(1, ""),
                                      {2, ""},
                                      {3, "ObjectDBX Classes"},
                                      {90, "0"},
                                      {91, "1"},
                                      {280, "0"},
                                      {281, "0"}}) {
        if (code == 91 && !document.atLeast(Version::R2004)) continue;
        const Pair* there = record.find(code);
        changed = changed || !there;
        pairs.push_back(there ? *there : Pair{code, value});
    }
    const auto same = [](const Pair& a, const Pair& b) { return a.code == b.code; };
    changed =
        changed || !std::equal(pairs.begin(), pairs.end(), record.pairs.begin(), record.pairs.end(), same);
    if (!changed) return;
    log.add(Rule::ClassShape, record, Section::Classes, "the class ", inQuotes(record.text(1)),
            " gets the groups of ", versionName(document.version));
    record.pairs = std::move(pairs);
}

void mendFlag(Record& record, Log& log) {
    Pair* flag = record.find(281);
    if (!flag || !validate::findKind(record.text(1)) ||
        isEntity(record.text(1)) == (record.integer(281) == 1))
        return;
    flag->value = isEntity(record.text(1)) ? "1" : "0";
    log.add(Rule::ClassFlag, record, Section::Classes, "the class ", inQuotes(record.text(1)), " says now ",
            isEntity(record.text(1)) ? "that it is an entity" : "that it is no entity");
}

bool needsClass(const Document& document, std::string_view name) {
    const validate::KindRules* rules = validate::findKind(name);
    if (!rules) return false;
    const validate::Kind& kind = rules->kind();
    return document.version < kind.since ||
           (document.version >= kind.classFrom && document.version <= kind.classUntil);
}

void addClasses(Document& document, Log& log) {
    std::unordered_set<std::string_view> there;
    for (const Record& record : document.classes) there.insert(record.text(1));
    document.forEachRecord([&](const Record& record, Section section) {
        if (section == Section::Tables || !needsClass(document, record.kind()) || there.count(record.kind()))
            return;
        const auto row = std::find_if(std::begin(kClasses), std::end(kClasses),
                                      [&](const Class& c) { return c.name == record.kind(); });
        if (row == std::end(kClasses)) return;
        there.insert(row->name);
        log.add(Rule::MissingClass, record, section, "the class ", row->name, " is added");
        Record added{
            {{0, "CLASS"}, {1, row->name}, {2, row->cppName}, {3, row->application}, {90, row->flags}}};
        if (document.atLeast(Version::R2004)) added.pairs.push_back({91, "1"});
        added.pairs.push_back({280, "0"});
        added.pairs.push_back({281, isEntity(row->name) ? "1" : "0"});
        document.classes.push_back(std::move(added));
        document.hasClasses = true;
    });
}

} // namespace

void mendClasses(Document& document, Log& log) {
    if (!document.atLeast(Version::R13)) return;
    if (!document.hasClasses)
        log.addAt(Rule::MissingSection, 0, Section::None, "the section CLASSES is added");
    document.hasClasses = true;
    std::erase_if(document.classes, [&](const Record& record) {
        if (record.kind() == "CLASS") return false;
        log.add(Rule::OutOfPlace, record, Section::Classes, "what is no class is left out");
        return true;
    });
    for (Record& record : document.classes) {
        mendShape(document, record, log);
        mendFlag(record, log);
    }
    addClasses(document, log);
}

} // namespace repair

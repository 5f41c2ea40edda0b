// Solids, surfaces, meshes, pictures and embedded data: what each kind is made of.

#include "checks.h"
#include "kind.h"

namespace validate {

namespace {

using enum Version;

// The modeller's data are lines of text up to 2010 and stand in ACDSDATA since.
constexpr Group kModeller[] = {req(70).upTo(R2010),  opt(70).from(R2013), opt(1).many(), opt(3).many(),
                               opt(290).from(R2013), opt(2).from(R2013),  opt(349)};
constexpr Group kSolid[] = {opt(350)};
constexpr Group kSurface[] = {usual(71), usual(72)};
constexpr Part kModellerParts[] = {{"AcDbModelerGeometry", kModeller, true}};
constexpr Part kSolidParts[] = {{"AcDbModelerGeometry", kModeller, true},
                                {"AcDb3dSolid", kSolid, true, R2007, kLast, Need::Usual}};
constexpr Part kSurfaceBase{"AcDbModelerGeometry", kModeller, true};
constexpr Part kSurfaceParts[] = {kSurfaceBase, {"AcDbSurface", kSurface, true}};
constexpr Part kPlaneParts[] = {kSurfaceBase,
                                {"AcDbSurface", kSurface, true},
                                {"AcDbPlaneSurface", {}, true, kFirst, kLast, Need::Optional}};
constexpr Part kExtrudedParts[] = {
    kSurfaceBase, {"AcDbSurface", kSurface, true}, {"AcDbExtrudedSurface", {}, true}};
constexpr Part kLoftedParts[] = {
    kSurfaceBase, {"AcDbSurface", kSurface, true}, {"AcDbLoftedSurface", {}, true}};
constexpr Part kRevolvedParts[] = {
    kSurfaceBase, {"AcDbSurface", kSurface, true}, {"AcDbRevolvedSurface", {}, true}};
constexpr Part kSweptParts[] = {
    kSurfaceBase, {"AcDbSurface", kSurface, true}, {"AcDbSweptSurface", {}, true}};
constexpr Part kNurbsParts[] = {kSurfaceBase,
                                {"AcDbSurface", kSurface, true},
                                {"AcDbNurbSurface", {}, true, kFirst, kLast, Need::Optional}};

constexpr Group kMesh[] = {req(71), usual(72), req(91).many(), req(92).many()};
constexpr Part kMeshParts[] = {{"AcDbSubDMesh", kMesh, true}};

constexpr Group kImage[] = {usual(90),
                            req(10).point3(),
                            req(11).direction(),
                            req(12).direction(),
                            req(13).point2(),
                            req(340).to("IMAGEDEF"),
                            usual(70),
                            usual(280).range(0, 1),
                            usual(281).range(0, 100).mild(),
                            usual(282).range(0, 100).mild(),
                            usual(283).range(0, 100).mild(),
                            opt(290).from(R2010),
                            usual(360).to("IMAGEDEF_REACTOR"),
                            usual(71).range(1, 2),
                            req(91).counting(14),
                            req(14).point2().many()};
constexpr Part kImageParts[] = {{"AcDbRasterImage", kImage}};
constexpr Part kWipeoutParts[] = {{"AcDbWipeout", kImage}};

constexpr Group kOleFrame[] = {usual(70), req(90), req(310).many(), usual(1)};
constexpr Group kOle2Frame[] = {usual(70), opt(3),  req(10).point3(), req(11).point3(), usual(71),
                                opt(72),   opt(73), req(90),          req(310).many(),  usual(1)};
constexpr Part kOleParts[] = {{"AcDbOleFrame", kOleFrame}};
constexpr Part kOle2Parts[] = {{"AcDbOle2Frame", kOle2Frame}};

constexpr Part kProxyParts[] = {{"AcDbProxyEntity", {}, true}};
constexpr Part kLightParts[] = {{"AcDbLight", {}, true}};

constexpr Group kPdf[] = {req(340).to("PDFDEFINITION"),
                          req(10).point3(),
                          opt(41).notZero().mild(),
                          opt(42).notZero().mild(),
                          opt(43).notZero().mild(),
                          opt(50),
                          opt(210).direction(),
                          usual(280),
                          usual(281).range(0, 100).mild(),
                          usual(282).range(0, 100).mild(),
                          opt(11).point2().many(),
                          opt(12).point2().many(),
                          opt(290),
                          opt(170),
                          opt(171)};
constexpr Group kUnderlay[] = {req(340).to("DWFDEFINITION|DGNDEFINITION"),
                               req(10).point3(),
                               opt(41).notZero().mild(),
                               opt(42).notZero().mild(),
                               opt(43).notZero().mild(),
                               opt(50),
                               opt(210).direction(),
                               usual(280),
                               usual(281),
                               usual(282),
                               opt(11).point2().many(),
                               opt(12).point2().many(),
                               opt(290),
                               opt(170),
                               opt(171)};
constexpr Part kPdfParts[] = {{"AcDbUnderlayReference", kPdf}};
constexpr Part kUnderlayParts[] = {{"AcDbUnderlayReference", kUnderlay}};

constexpr Group kSection[] = {opt(90),
                              opt(91),
                              opt(1),
                              req(10).direction(),
                              opt(40),
                              opt(41),
                              opt(70),
                              opt(62).colour(),
                              opt(63).colour(),
                              opt(411),
                              req(92).counting(11),
                              opt(11).point3().many(),
                              req(93).counting(12),
                              opt(12).point3().many(),
                              opt(360).to("SECTIONSETTINGS")};
constexpr Part kSectionParts[] = {{"AcDbSection", kSection}};

constexpr Kind classKind(std::string_view name, std::span<const Part> parts, Check check = nullptr) {
    return {
        .name = name, .parts = parts, .since = R13, .classFrom = R14, .classUntil = kLast, .check = check};
}

constexpr Kind kKinds[] = {
    {.name = "3DSOLID", .parts = kSolidParts, .since = R13},
    {.name = "REGION", .parts = kModellerParts, .since = R13},
    {.name = "BODY", .parts = kModellerParts, .since = R13},
    classKind("SURFACE", kSurfaceParts),
    classKind("PLANESURFACE", kPlaneParts),
    classKind("EXTRUDEDSURFACE", kExtrudedParts),
    classKind("LOFTEDSURFACE", kLoftedParts),
    classKind("REVOLVEDSURFACE", kRevolvedParts),
    classKind("SWEPTSURFACE", kSweptParts),
    classKind("NURBSURFACE", kNurbsParts),
    classKind("MESH", kMeshParts, checkMesh),
    {.name = "IMAGE",
     .parts = kImageParts,
     .since = R14,
     .classFrom = R14,
     .classUntil = kLast,
     .check = checkImage},
    classKind("WIPEOUT", kWipeoutParts, checkImage),
    {.name = "OLEFRAME", .parts = kOleParts, .since = R13, .check = checkByteCount},
    {.name = "OLE2FRAME", .parts = kOle2Parts, .since = R14, .check = checkByteCount},
    {.name = "ACAD_PROXY_ENTITY", .parts = kProxyParts, .since = R13},
    classKind("LIGHT", kLightParts),
    classKind("PDFUNDERLAY", kPdfParts),
    classKind("DWFUNDERLAY", kUnderlayParts),
    classKind("DGNUNDERLAY", kUnderlayParts),
    classKind("SECTIONOBJECT", kSectionParts),
};

} // namespace

std::span<const Kind> bodyKinds() {
    return kKinds;
}

} // namespace validate

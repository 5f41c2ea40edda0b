// Line work, blocks, viewports: what each kind is made of.

#include "checks.h"
#include "kind.h"

namespace validate {

namespace {

using enum Version;
using enum Names;

constexpr Group kLine[] = {opt(39), req(10).point3(), req(11).point3(), opt(210).direction()};
constexpr Part kLineParts[] = {{"AcDbLine", kLine}};

constexpr Group kPoint[] = {req(10).point3(), opt(39), opt(210).direction(), opt(50)};
constexpr Part kPointParts[] = {{"AcDbPoint", kPoint}};

constexpr Group kCircle[] = {opt(39), req(10).point3(), req(40).positive(), opt(210).direction()};
constexpr Part kCircleParts[] = {{"AcDbCircle", kCircle}};

constexpr Group kArc[] = {req(50), req(51), opt(210).direction()};
constexpr Part kArcParts[] = {{"AcDbCircle", kCircle}, {"AcDbArc", kArc}};

constexpr Group kEllipse[] = {
    req(10).point3(), req(11).direction(), usual(210).direction(), req(40).range(1e-6F, 1.0F), req(41),
    req(42)};
constexpr Part kEllipseParts[] = {{"AcDbEllipse", kEllipse}};

constexpr Group kTrace[] = {req(10).point3(),   req(11).point3(), req(12).point3(),
                            usual(13).point3(), opt(39),          opt(210).direction()};
constexpr Part kTraceParts[] = {{"AcDbTrace", kTrace}};

constexpr Group kFace[] = {req(10).point3(), req(11).point3(), req(12).point3(), usual(13).point3(),
                           opt(70).range(0, 15).mild()};
constexpr Part kFaceParts[] = {{"AcDbFace", kFace}};

constexpr Group kLwPolyline[] = {req(90).counting(10),
                                 usual(70),
                                 opt(43).range(0, 1e30F),
                                 opt(38),
                                 opt(39),
                                 req(10).point2().many(),
                                 opt(91).from(R2010).many(),
                                 opt(40).range(0, 1e30F).many(),
                                 opt(41).range(0, 1e30F).many(),
                                 opt(42).many(),
                                 opt(210).direction()};
constexpr Part kLwPolylineParts[] = {{"AcDbPolyline", kLwPolyline}};

constexpr Group kPolyline2d[] = {usual(66).range(1, 1).mild(),
                                 usual(10).point3(),
                                 opt(39),
                                 opt(70),
                                 opt(40),
                                 opt(41),
                                 opt(71),
                                 opt(72),
                                 opt(73),
                                 opt(74),
                                 opt(75).range(0, 8).mild(),
                                 opt(210).direction()};
constexpr Group kPolylineMesh[] = {usual(66).range(1, 1).mild(),
                                   usual(10).point3(),
                                   opt(39),
                                   req(70),
                                   req(71).range(2, 32767),
                                   req(72).range(2, 32767),
                                   opt(73),
                                   opt(74),
                                   opt(75).range(0, 8).mild(),
                                   opt(40),
                                   opt(41),
                                   opt(210).direction()};
constexpr Part kPolyline2dParts[] = {{"AcDb2dPolyline", kPolyline2d}};
constexpr Part kPolyline3dParts[] = {{"AcDb3dPolyline", kPolyline2d}};
constexpr Part kPolylineMeshParts[] = {{"AcDbPolygonMesh", kPolylineMesh}};
constexpr Part kPolyfaceParts[] = {{"AcDbPolyFaceMesh", kPolyline2d}};

constexpr Group kVertex[] = {
    req(10).point3(),   opt(40), opt(41), opt(42), opt(70), opt(50), opt(71), opt(72), opt(73), opt(74),
    opt(91).from(R2010)};
constexpr Group kVertexFace[] = {usual(10).point3(), req(70), req(71), opt(72), opt(73), opt(74)};
constexpr Part kVertex2dParts[] = {{"AcDbVertex"}, {"AcDb2dVertex", kVertex}};
constexpr Part kVertex3dParts[] = {{"AcDbVertex"}, {"AcDb3dPolylineVertex", kVertex}};
constexpr Part kVertexMeshParts[] = {{"AcDbVertex"}, {"AcDbPolygonMeshVertex", kVertex}};
constexpr Part kVertexPlaceParts[] = {{"AcDbVertex"}, {"AcDbPolyFaceMeshVertex", kVertex}};
constexpr Part kVertexFaceParts[] = {{"AcDbFaceRecord", kVertexFace}};

constexpr Group kSpline[] = {opt(210).direction(),
                             req(70),
                             req(71).range(1, 25),
                             req(72).counting(40),
                             req(73).counting(10),
                             usual(74).counting(11),
                             opt(42),
                             opt(43),
                             opt(44),
                             opt(12).direction(),
                             opt(13).direction(),
                             opt(40).many(),
                             opt(41).positive().many(),
                             opt(10).point3().many(),
                             opt(11).point3().many()};
constexpr Part kSplineParts[] = {{"AcDbSpline", kSpline}};

constexpr Group kHelix[] = {usual(90), usual(91), req(10).point3(), req(11).point3(), req(12).direction(),
                            req(40),   req(41),   req(42),          usual(290),       usual(280).range(0, 2)};
constexpr Part kHelixParts[] = {{"AcDbSpline", kSpline}, {"AcDbHelix", kHelix}};

constexpr Group kRay[] = {req(10).point3(), req(11).direction()};
constexpr Part kRayParts[] = {{"AcDbRay", kRay}};
constexpr Part kXlineParts[] = {{"AcDbXline", kRay}};

constexpr Group kMline[] = {req(2),
                            req(340).to("MLINESTYLE"),
                            req(40),
                            req(70).range(0, 2),
                            req(71),
                            req(72).counting(11),
                            req(73),
                            req(10).point3(),
                            usual(210).direction(),
                            opt(11).point3().many(),
                            opt(12).point3().many(),
                            opt(13).point3().many(),
                            opt(74).many(),
                            opt(41).many(),
                            opt(75).many(),
                            opt(42).many()};
constexpr Part kMlineParts[] = {{"AcDbMline", kMline}};

constexpr Group kInsert[] = {opt(66).range(0, 1).mild(),
                             req(2).of(Block),
                             req(10).point3(),
                             opt(41).notZero().mild(),
                             opt(42).notZero().mild(),
                             opt(43).notZero().mild(),
                             opt(50),
                             opt(70).range(0, 32767).mild(),
                             opt(71).range(0, 32767).mild(),
                             opt(44),
                             opt(45),
                             opt(210).direction()};
constexpr Part kInsertParts[] = {{"AcDbBlockReference|AcDbMInsertBlock", kInsert}};

constexpr Group kBlock[] = {req(2), usual(70), req(10).point3(), usual(3), usual(1), opt(4).from(R2000)};
constexpr Part kBlockParts[] = {{"AcDbBlockBegin", kBlock}};
constexpr Part kBlockEndParts[] = {{"AcDbBlockEnd"}};

constexpr Group kViewport[] = {
    req(10).point3(), req(40).range(0, 1e30F), req(41).range(0, 1e30F), usual(68), usual(69),
    // The view itself stands in extended data up to R14.
    opt(12).from(R2000).point2(), opt(13).from(R2000).point2(), opt(14).from(R2000).point2(),
    opt(15).from(R2000).point2(), opt(16).from(R2000).direction(), opt(17).from(R2000).point3(),
    opt(42).from(R2000), opt(43).from(R2000), opt(44).from(R2000), usual(45).from(R2000).positive().mild(),
    opt(50).from(R2000), opt(51).from(R2000), opt(72).from(R2000), opt(331).from(R2000).to("LAYER").many(),
    opt(341).from(R2000).to("LAYER").many(), opt(90).from(R2000),
    opt(340).from(R2000).to("LWPOLYLINE|POLYLINE|CIRCLE|ELLIPSE|SPLINE|REGION"), opt(1).from(R2000),
    opt(281).from(R2000).range(0, 6), opt(71).from(R2000), opt(74).from(R2000), opt(110).from(R2000).point3(),
    opt(111).from(R2000).direction(), opt(112).from(R2000).direction(), opt(345).from(R2000).to("UCS"),
    opt(346).from(R2000).to("UCS"), opt(79).from(R2000).range(0, 6), opt(146).from(R2000),
    opt(170).from(R2004), opt(61).from(R2007), opt(332).from(R2007), opt(333).from(R2007).to("VISUALSTYLE"),
    opt(348).from(R2007).to("VISUALSTYLE"), opt(292).from(R2007), opt(282).from(R2007), opt(141).from(R2007),
    opt(142).from(R2007), opt(63).from(R2007).colour(), opt(421).from(R2007), opt(431).from(R2007),
    opt(361).from(R2007).to("SUN"), opt(335).from(R2007), opt(343).from(R2007), opt(344).from(R2007),
    opt(91).from(R2007)};
constexpr Part kViewportParts[] = {{"AcDbViewport", kViewport}};

constexpr Group kShape[] = {opt(39), req(10).point3(), req(40), req(2),
                            opt(50), opt(41),          opt(51), opt(210).direction()};
constexpr Part kShapeParts[] = {{"AcDbShape", kShape}};

constexpr Kind kKinds[] = {
    {.name = "LINE", .parts = kLineParts},
    {.name = "3DLINE", .parts = kLineParts},
    {.name = "POINT", .parts = kPointParts},
    {.name = "CIRCLE", .parts = kCircleParts},
    {.name = "ARC", .parts = kArcParts},
    {.name = "ELLIPSE", .parts = kEllipseParts, .since = R13},
    {.name = "SOLID", .parts = kTraceParts},
    {.name = "TRACE", .parts = kTraceParts},
    {.name = "3DFACE", .parts = kFaceParts},
    {.name = "LWPOLYLINE",
     .parts = kLwPolylineParts,
     .since = R14,
     .classFrom = R14,
     .classUntil = R14,
     .check = checkLwPolyline},
    {.name = "POLYLINE", .parts = kPolyfaceParts, .mask = 64, .bits = 64},
    {.name = "POLYLINE", .parts = kPolylineMeshParts, .mask = 16, .bits = 16},
    {.name = "POLYLINE", .parts = kPolyline3dParts, .mask = 8, .bits = 8},
    {.name = "POLYLINE", .parts = kPolyline2dParts},
    {.name = "VERTEX", .home = Home::Member, .parts = kVertexPlaceParts, .mask = 192, .bits = 192},
    {.name = "VERTEX", .home = Home::Member, .parts = kVertexFaceParts, .mask = 192, .bits = 128},
    {.name = "VERTEX", .home = Home::Member, .parts = kVertexMeshParts, .mask = 192, .bits = 64},
    {.name = "VERTEX", .home = Home::Member, .parts = kVertex3dParts, .mask = 32, .bits = 32},
    {.name = "VERTEX", .home = Home::Member, .parts = kVertex2dParts},
    {.name = "SEQEND", .home = Home::Member},
    {.name = "SPLINE", .parts = kSplineParts, .since = R13, .check = checkSpline},
    {.name = "HELIX",
     .parts = kHelixParts,
     .since = R13,
     .classFrom = R2000,
     .classUntil = kLast,
     .check = checkSpline},
    {.name = "RAY", .parts = kRayParts, .since = R13, .check = checkXline},
    {.name = "XLINE", .parts = kXlineParts, .since = R13, .check = checkXline},
    {.name = "MLINE", .parts = kMlineParts, .since = R13, .check = checkMline},
    {.name = "INSERT", .parts = kInsertParts},
    {.name = "BLOCK", .home = Home::BlockMark, .parts = kBlockParts},
    {.name = "ENDBLK", .home = Home::BlockMark, .parts = kBlockEndParts},
    {.name = "VIEWPORT", .parts = kViewportParts},
    {.name = "SHAPE", .parts = kShapeParts},
    {.name = "LOAD"},
};

} // namespace

std::span<const Kind> entityKinds() {
    return kKinds;
}

} // namespace validate

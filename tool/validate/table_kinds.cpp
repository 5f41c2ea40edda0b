// The records of the nine tables: what each is made of.

#include "checks.h"
#include "kind.h"

namespace validate {

namespace {

using enum Version;
using enum Names;

constexpr Part kRecordPart{"AcDbSymbolTableRecord"};

constexpr Group kVport[] = {
    req(2), expect(70), usual(10).point2(), usual(11).point2(), usual(12).point2(), usual(13).point2(),
    usual(14).point2(), usual(15).point2(), usual(16).direction(), usual(17).point3(), usual(40), usual(41),
    usual(42), usual(43), usual(44), usual(50), usual(51), usual(71), usual(72), usual(73), usual(74),
    usual(75), usual(76), usual(77), usual(78), opt(65).from(R2000), opt(79).from(R2000),
    opt(281).from(R2000), opt(110).from(R2000).point3(), opt(111).from(R2000).direction(),
    opt(112).from(R2000).direction(), opt(345).from(R2000).to("UCS"), opt(346).from(R2000).to("UCS"),
    opt(146).from(R2000), opt(60).from(R2007), opt(61).from(R2007), opt(63).from(R2007).colour(),
    opt(421).from(R2007), opt(431).from(R2007), opt(141).from(R2007), opt(142).from(R2007),
    opt(282).from(R2007), opt(292).from(R2007), opt(348).from(R2007).to("VISUALSTYLE"), opt(332).from(R2007),
    opt(333).from(R2007), opt(361).from(R2007).to("SUN"),
    // Grid and snap of the oldest versions stand here too.
    opt(45).upTo(R14)};
constexpr Part kVportParts[] = {kRecordPart, {"AcDbViewportTableRecord", kVport}};

constexpr Group kLtype[] = {req(2),
                            expect(70),
                            usual(3),
                            usual(72).range(65, 65).mild(),
                            req(73).counting(49),
                            usual(40),
                            opt(49).many(),
                            opt(74).from(R13).many(),
                            opt(75).from(R13).many(),
                            opt(340).from(R13).to("STYLE").many(),
                            opt(46).from(R13).many(),
                            opt(50).from(R13).many(),
                            opt(44).from(R13).many(),
                            opt(45).from(R13).many(),
                            opt(9).from(R13).many()};
constexpr Part kLtypeParts[] = {kRecordPart, {"AcDbLinetypeTableRecord", kLtype}};

constexpr Group kLayer[] = {req(2),
                            expect(70),
                            expect(62),
                            expect(6).of(LineType),
                            opt(290).from(R2000),
                            opt(370).from(R2000).weight(),
                            req(390).from(R2000).to("ACDBPLACEHOLDER"),
                            opt(420).from(R2004),
                            opt(430).from(R2004),
                            opt(440).from(R2004),
                            opt(347).from(R2007).to("MATERIAL"),
                            opt(348).from(R2013).to("VISUALSTYLE")};
constexpr Part kLayerParts[] = {kRecordPart, {"AcDbLayerTableRecord", kLayer}};

constexpr Group kStyle[] = {
    req(2),   expect(70), usual(40).range(0, 1e30F), usual(41).positive(), usual(50), usual(71), usual(42),
    usual(3), usual(4)};
constexpr Part kStyleParts[] = {kRecordPart, {"AcDbTextStyleTableRecord", kStyle}};

constexpr Group kView[] = {req(2),
                           expect(70),
                           req(40).positive(),
                           usual(41).positive(),
                           req(10).point2(),
                           req(11).direction(),
                           usual(12).point3(),
                           usual(42),
                           usual(43),
                           usual(44),
                           usual(50),
                           usual(71),
                           opt(281).from(R2000),
                           opt(72).from(R2000),
                           opt(110).from(R2000).point3(),
                           opt(111).from(R2000).direction(),
                           opt(112).from(R2000).direction(),
                           opt(79).from(R2000),
                           opt(146).from(R2000),
                           opt(345).from(R2000).to("UCS"),
                           opt(346).from(R2000).to("UCS"),
                           opt(73).from(R2007),
                           opt(332).from(R2007),
                           opt(334).from(R2007),
                           opt(348).from(R2007).to("VISUALSTYLE"),
                           opt(361).from(R2007).to("SUN")};
constexpr Part kViewParts[] = {kRecordPart, {"AcDbViewTableRecord", kView}};

constexpr Group kUcs[] = {req(2),
                          expect(70),
                          req(10).point3(),
                          req(11).direction(),
                          req(12).direction(),
                          opt(79).from(R2000),
                          opt(146).from(R2000),
                          opt(346).from(R2000).to("UCS"),
                          opt(71).from(R2000).many(),
                          opt(13).from(R2000).point3().many()};
constexpr Part kUcsParts[] = {kRecordPart, {"AcDbUCSTableRecord", kUcs}};

constexpr Group kApp[] = {req(2), expect(70)};
constexpr Part kAppParts[] = {kRecordPart, {"AcDbRegAppTableRecord", kApp}};

constexpr Group kDimStyle[] = {
    req(2), expect(70).many(), opt(3), opt(4),
    // Names of arrow blocks up to R14; handles since.
    opt(5).upTo(R14), opt(6).upTo(R14), opt(7).upTo(R14), opt(40), opt(41), opt(42), opt(43), opt(44),
    opt(45), opt(46), opt(47), opt(48), opt(49).from(R2007), opt(50).from(R2007), opt(69).from(R2007),
    opt(71), opt(72), opt(73), opt(74), opt(75), opt(76), opt(77).range(0, 4).mild(), opt(78),
    opt(79).from(R2000), opt(90).from(R2007), opt(140), opt(141), opt(142), opt(143), opt(144), opt(145),
    opt(146), opt(147), opt(148).from(R2000), opt(170), opt(171), opt(172), opt(173), opt(174), opt(175),
    opt(176), opt(177), opt(178), opt(179).from(R2000), opt(270).from(R13), opt(271).from(R13),
    opt(272).from(R13), opt(273).from(R13), opt(274).from(R13), opt(275).from(R13), opt(276).from(R2000),
    opt(277).from(R2000), opt(278).from(R2000), opt(279).from(R2000), opt(280).from(R13), opt(281).from(R13),
    opt(282).from(R13), opt(283).from(R13), opt(284).from(R13), opt(285).from(R13), opt(286).from(R13),
    opt(287).from(R13), opt(288).from(R13), opt(289).from(R2000), opt(290).from(R2007), opt(294).from(R2010),
    usual(340).from(R13).to("STYLE"), opt(341).from(R2000).to("BLOCK_RECORD"),
    opt(342).from(R2000).to("BLOCK_RECORD"), opt(343).from(R2000).to("BLOCK_RECORD"),
    opt(344).from(R2000).to("BLOCK_RECORD"), opt(345).from(R2007).to("LTYPE"),
    opt(346).from(R2007).to("LTYPE"), opt(347).from(R2007).to("LTYPE"), opt(371).from(R2000).weight(),
    opt(372).from(R2000).weight()};
constexpr Part kDimStyleParts[] = {kRecordPart, {"AcDbDimStyleTableRecord", kDimStyle}};

constexpr Group kBlockRecord[] = {req(2),
                                  opt(340).from(R2000).to("LAYOUT"),
                                  opt(310).from(R2000).many(),
                                  opt(70).from(R2000),
                                  opt(280).from(R2000),
                                  opt(281).from(R2000)};
constexpr Part kBlockRecordParts[] = {kRecordPart, {"AcDbBlockTableRecord", kBlockRecord}};

constexpr Kind record(std::string_view name, std::span<const Part> parts, Check check = nullptr) {
    return {.name = name, .home = Home::TableRecord, .parts = parts, .check = check};
}

constexpr Kind kKinds[] = {
    record("VPORT", kVportParts),
    record("LTYPE", kLtypeParts, checkLineType),
    record("LAYER", kLayerParts, checkLayer),
    record("STYLE", kStyleParts),
    record("VIEW", kViewParts),
    record("UCS", kUcsParts),
    record("APPID", kAppParts),
    record("DIMSTYLE", kDimStyleParts),
    {.name = "BLOCK_RECORD",
     .home = Home::TableRecord,
     .parts = kBlockRecordParts,
     .since = R13,
     .check = checkBlockRecord},
};

} // namespace

std::span<const Kind> tableKinds() {
    return kKinds;
}

} // namespace validate

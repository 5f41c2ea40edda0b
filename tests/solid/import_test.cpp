// Solids of drawings: read, shown, kept, written again.
#include "../export/exported.h"
#include "../import/drawn.h"
#include "../space/export3d.h"
#include "models.h"
#include "sat_model.h"

#include "drawing/drawing.h"
#include "drawing/extents.h"
#include "dx_od.h"
#include "session/dx_session.h"
#include "solid/dx_acis_import.h"
#include "solid/sat/acis_file.h"
#include "solid/solid_wires.h"
#include "store/store.h"

#include <cmath>

namespace {

ImportOptions in3d() {
    ImportOptions options = unshifted();
    options.in3d = true;
    return options;
}

/// The groups of a solid's entity whose model is this text.
DxfGroups solidGroups(const std::string& model) {
    DxfGroups groups{{70, "1"}};
    for (std::size_t at = 0; at < model.size();) {
        const std::size_t end = model.find('\n', at);
        std::string line = model.substr(at, end - at);
        for (int code = 1; !line.empty(); code = 3) {
            groups.push_back({code, DxAcisEncodeString(line.substr(0, 255))});
            line.erase(0, 255);
        }
        at = end + 1;
    }
    return groups;
}

/// Lines of the dump that tell of solids.
std::string solidsOf(const std::string& elements) {
    std::istringstream lines(elements);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("solid ", 0) == 0 || line.rfind("  at ", 0) == 0) result += line + "\n";
    return result;
}
std::string solidsOf(const DxfText& text, const ImportOptions& options = in3d()) {
    return solidsOf(drawn(text, options));
}

std::string hexOf(const std::string& bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        text += digits[static_cast<unsigned char>(c) >> 4];
        text += digits[c & 15];
    }
    return text;
}

/// A section of binary models: (handle, model).
DxfGroups acdsData(const std::vector<std::pair<std::string, std::string>>& models) {
    DxfGroups groups{{70, "2"}, {71, "1"}, {0, "ACDSSCHEMA"}, {90, "0"}, {1, "x"}};
    for (const auto& [handle, model] : models) {
        groups = groups + DxfGroups{{0, "ACDSRECORD"}, {90, "1"},
                                    {2, "AcDbDs::ID"}, {280, "10"},
                                    {320, handle},     {2, "ASM_Data"},
                                    {280, "15"},       {94, std::to_string(model.size())}};
        const std::string hex = hexOf(model);
        for (std::size_t at = 0; at < hex.size(); at += 254) groups.push_back({310, hex.substr(at, 254)});
    }
    return groups;
}

const host::Solid& firstSolid() {
    static const host::Solid none;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        if (!pattern.solids.empty()) return pattern.solids[0];
    return none;
}

constexpr const char* inPlace = "  at 1 0 0 0 1 0 0 0 1 0 0 0\n";

TEST(SolidCipher, IsTakenBack) {
    const auto decoded = [](std::string text) {
        std::size_t length = text.size();
        DxAcisDecodeString(text.data(), &length);
        return text.substr(0, length);
    };
    EXPECT_EQ(decoded("J"), "U");
    EXPECT_EQ(decoded(""), "");
    EXPECT_EQ(decoded("^ \\ "), "AC ") << "the blank behind an A is the cipher's";
    EXPECT_EQ(decoded("^  ="), "A b") << "the second is the text's";
    EXPECT_EQ(decoded("\x7f"), " ");
    const std::string text = "ACIS A #\t{End-of-ACIS-data} ~AA  A";
    EXPECT_EQ(decoded(DxAcisEncodeString(text)), text);
}

TEST(SolidImport, OnlyIn3d) {
    for (const char* name : {"3DSOLID", "REGION", "SURFACE", "BODY"}) {
        const DxfText text = dxf().header("AC1015").entity(name, solidGroups(boxModel(400)));
        EXPECT_EQ(solidsOf(text), std::string("solid pen 1 lt 1 records 85 wires 12\n") + inPlace) << name;
        EXPECT_EQ(solidsOf(text, unshifted()), "") << name;
    }
    const ImportResult flat =
        importText(dxf().header("AC1015").entity("REGION", solidGroups(boxModel(400))).text());
    EXPECT_TRUE(flat.hasMessage("1 REGION"));
}

TEST(SolidImport, FlatDrawingsHaveThemWhenAskedTo) {
    ImportOptions options = unshifted();
    options.config = flags("FLAT_SOLIDS=1\n");
    for (const DxfText& text :
         {dxf().header("AC1015").entity("REGION", solidGroups(boxModel(400))),
          dxf()
              .header("AC1027")
              .entity("3DSOLID", {{5, "2A"}})
              .section("OBJECTS", {}, true)
              .section("ACDSDATA", acdsData({{"2A", binaryModel(boxModel(700))}}), true)}) {
        const ImportResult flat = importText(text.text(), options);
        EXPECT_EQ(solidsOf(elementsOf(flat.dump)),
                  std::string("solid pen 1 lt 1 records 85 wires 12\n") + inPlace);
        EXPECT_FALSE(flat.hasMessage("REGION"));
    }
}

TEST(SolidImport, EveryVersionAndForm) {
    for (const int version : {200, 400, 500, 600, 700})
        EXPECT_EQ(solidsOf(dxf().header("AC1015").entity("3DSOLID", solidGroups(boxModel(version)))),
                  std::string("solid pen 1 lt 1 records 85 wires 12\n") + inPlace)
            << version;
    const std::string newer = replaced(boxModel(700), "700 0 1 0", "20800 0 1 0");
    EXPECT_EQ(solidsOf(dxf().header("AC1018").entity("3DSOLID", solidGroups(newer))),
              std::string("solid pen 1 lt 1 records 85 wires 12\n") + inPlace)
        << "by way of the converter";
    EXPECT_EQ(firstSolid().data.substr(0, 15), "ACIS BinaryFile");
}

TEST(SolidImport, LongLinesGoOn) {
    std::string point = "vertex-name-attrib $-1 -1 $-1 $-1 $0";
    while (point.size() < 700) point += " " + std::to_string(point.size());
    const std::string model = replaced(sphereModel(700), "End-of", point + " #\nEnd-of");
    EXPECT_EQ(solidsOf(dxf().header("AC1015").entity("3DSOLID", solidGroups(model))),
              std::string("solid pen 1 lt 1 records 6 wires 3\n") + inPlace);
}

TEST(SolidImport, InsertsPlaceSolids) {
    const DxfText text = dxf()
                             .header("AC1015")
                             .block("B", DxfGroups{{0, "3DSOLID"}} + solidGroups(boxModel(700)))
                             .entity("INSERT", DxfGroups{{2, "B"}} + at(10, {10, 20, 30}) +
                                                   DxfGroups{{41, "2"}, {42, "2"}, {43, "2"}})
                             .entity("INSERT", DxfGroups{{2, "B"}, {50, "90"}} + at(10, {1, 0, 0}));
    EXPECT_EQ(solidsOf(text), "solid pen 1 lt 1 records 85 wires 12\n  at 2 0 0 0 2 0 0 0 2 10 20 30\n"
                              "solid pen 1 lt 1 records 85 wires 12\n  at 0 1 0 -1 0 0 0 0 1 1 0 0\n");
    const host::Extents box = host::openDrawing().extents();
    EXPECT_NEAR(box.minX, -2, 1e-9) << "lines stand where the solid does";
    EXPECT_NEAR(box.maxY, 26, 1e-9);
}

TEST(SolidImport, BinaryModelsStandBehindTheEntities) {
    const DxfText text =
        dxf()
            .header("AC1027")
            .layer("L", 3)
            .entity("3DSOLID", {{5, "2A"}, {8, "L"}, {290, "1"}})
            .entity("3DSOLID", {{5, "2B"}, {290, "1"}})
            .entity("3DSOLID", {{5, "2C"}})
            .section("OBJECTS", {}, true)
            .section("ACDSDATA",
                     acdsData({{"2B", binaryModel(sphereModel(700))}, {"2A", binaryModel(boxModel(700))}}),
                     true);
    EXPECT_EQ(solidsOf(text), std::string("solid pen 4 lt 1 records 85 wires 12\n") + inPlace +
                                  "solid pen 1 lt 1 records 5 wires 3\n" + inPlace)
        << "by their handles, those without a model left out";
    EXPECT_EQ(solidsOf(text, unshifted()), "");
    const DxfText odd =
        dxf()
            .header("AC1027")
            .entity("3DSOLID", {{5, "2A"}})
            .section("OBJECTS", {}, true)
            .section("ACDSDATA", DxfGroups{{0, "ACDSRECORD"}, {320, "2A"}, {310, "ABC"}}, true);
    EXPECT_EQ(importText(odd.text(), in3d()).stat, 4009);
}

TEST(SolidImport, ABrokenOneCostsItselfOnly) {
    const std::string broken = replaced(replaced(boxModel(700), "700 0", "21500 0"), "$4 $9", "$4 $900");
    const DxfText text = dxf()
                             .header("AC1015")
                             .entity("3DSOLID", solidGroups(broken))
                             .entity("3DSOLID", {{1, "nonsense"}})
                             .entity("3DSOLID", DxfGroups{})
                             .entity("3DSOLID", solidGroups(sphereModel(400)))
                             .entity("LINE", at(11, {1, 1}));
    const ImportResult result = importText(text.text(), in3d());
    EXPECT_EQ(result.stat, 0);
    EXPECT_TRUE(result.hasMessage("ACIS"));
    EXPECT_EQ(solidsOf(elementsOf(result.dump)),
              std::string("solid pen 1 lt 1 records 5 wires 3\n") + inPlace);
    EXPECT_NE(result.dump.find("draw 1 1"), std::string::npos);
}

TEST(SolidImport, MaterialsGiveThePen) {
    const DxfGroups materials{{0, "MATERIAL"}, {5, "1F"}, {1, "steel"}, {91, "255"}};
    const std::string model =
        replaced(sphereModel(400), "End-of", "material-adesk-attrib $-1 $-1 $-1 $0 31 0 #\nEnd-of");
    const DxfText text = dxf()
                             .header("AC1015")
                             .entity("3DSOLID", solidGroups(sphereModel(400)) + DxfGroups{{347, "1F"}})
                             .entity("3DSOLID", solidGroups(model))
                             .entity("3DSOLID", solidGroups(sphereModel(400)) + DxfGroups{{347, "2F"}})
                             .section("OBJECTS", materials, true);
    const ImportResult result = importText(text.text(), in3d());
    int blue = 0;
    const double rgb[3] = {0, 0, 1};
    ASSERT_EQ(Ci3d::GetClosestPen(rgb, blue), 0);
    const std::string pen = "solid pen " + std::to_string(blue) + " lt 1 material 1 ";
    EXPECT_EQ(solidsOf(elementsOf(result.dump)), pen + "records 5 wires 3\n" + inPlace + pen +
                                                     "records 6 wires 3\n" + inPlace +
                                                     "solid pen 1 lt 1 records 5 wires 3\n" + inPlace);
    EXPECT_EQ(result.protocol.find("VisMat 1F"), result.protocol.rfind("VisMat 1F")) << "looked for once";
    ASSERT_EQ(host::openDrawing().materials.size(), 1u);
    EXPECT_EQ(host::openDrawing().materials[0].diffuse[2], 1);
}

TEST(SolidImport, MayHavePatternsOfTheirOwn) {
    ImportOptions options = in3d();
    options.numbers["&Dxf3DSolidsAsSubObjects"] = 0;
    const DxfText text = dxf()
                             .header("AC1015")
                             .entity("LINE", at(11, {1, 1}))
                             .entity("3DSOLID", solidGroups(boxModel(400)))
                             .entity("3DSOLID", solidGroups(sphereModel(400)));
    importText(text.text(), options);
    std::vector<std::size_t> counts;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        if (pattern.number > 0 && !pattern.empty()) counts.push_back(pattern.solids.size());
    EXPECT_EQ(counts, (std::vector<std::size_t>{0, 1, 1}));
}

TEST(SolidStore, ADrawingFileKeepsThem) {
    importText(dxf().header("AC1015").entity("3DSOLID", solidGroups(boxModel(400))).text(), in3d());
    const host::Solid before = firstSolid();
    const TempDir folder;
    ASSERT_EQ(host::saveDrawing(host::openDrawing(), folder.file("a.tdw")), "");
    ASSERT_EQ(host::loadDrawing(host::openDrawing(), folder.file("a.tdw")), "");
    const host::Solid& after = firstSolid();
    EXPECT_EQ(after.data, before.data);
    EXPECT_EQ(after.wires.points.size(), before.wires.points.size());
    host::openDrawing().changeUnit(5); // metres
    EXPECT_NEAR(after.place[0].x, before.place[0].x / 1000, 1e-15) << "a model keeps its own lengths";
    EXPECT_NEAR(host::openDrawing().extents().maxX, 0.002, 1e-12);
}

// ---- lines -----------------------------------------------------------------------------------------

TEST(SolidWires, FollowCurves) {
    const std::string circle =
        ModelText(700)
            .add("body", "$1 $-1 $6")
            .add("lump", "$-1 $2 $0")
            .add("shell", "$-1 $-1 $-1 $-1 $1")
            .add("edge", "$4 -1.5707963267948966 $4 4.7123889803846897 $-1 $5 reversed @7 unknown")
            .add("vertex", "$3 $7")
            .add("ellipse-curve", "0 0 0 0 0 1 5 0 0 0.5 I I")
            .add("transform", "1 0 0 0 1 0 0 0 1 7 0 0 2 no_rotate no_reflect no_shear", false)
            .add("point", "0 2.5 0")
            .text();
    const auto wires = host::solidWires(circle, 1000);
    ASSERT_EQ(wires.size(), 1u);
    for (const RPT3& p : wires[0]) EXPECT_NEAR(std::hypot(p.x / 5, p.y / 2.5), 1, 1e-12);
    EXPECT_EQ(host::solidWires(circle, 10).size(), 0u) << "no more points than asked for";
    const std::string spline = replaced(circle, "ellipse-curve $-1 -1 $-1 0 0 0 0 0 1 5 0 0 0.5 I I",
                                        "intcurve-curve $-1 -1 $-1 forward { exactcur full nurbs 2 open 2 0 "
                                        "2 1 2 0 0 0 1 4 4 0 0.5 8 0 0 1 0 } I I");
    const auto curve =
        host::solidWires(replaced(spline, "$4 -1.5707963267948966 $4 4.7123889803846897", "$4 0 $4 1"), 1000);
    ASSERT_EQ(curve.size(), 1u);
    EXPECT_NEAR(curve[0].front().x, 0, 1e-12);
    for (const auto& [data, count] : std::vector<std::pair<std::string, std::size_t>>{
             {boxModel(400), 12},
             {boxModel(106), 12},
             {binaryModel(boxModel(700)), 12},
             {sphereModel(700), 3},
             {oneFaceModel(700, "torus", "0 0 0 0 0 1 10 2 1 0 0 forward_v I I I I"), 8},
             {boxModel(700).substr(0, 3000), 0},
             {"", 0}})
        EXPECT_EQ(host::solidWires(data, 1000).size(), count) << data.substr(0, 60);
}

TEST(SolidWires, OfCirclesAreNoFaces) {
    importText(dxf().header("AC1015").entity("3DSOLID", solidGroups(sphereModel(700))).text(), in3d());
    const host::FaceCounts counts = host::countFaces(firstSolid().wires);
    EXPECT_EQ(counts.faces, 0);
    EXPECT_EQ(counts.runs, 3);
}

// ---- out again -------------------------------------------------------------------------------------

using SolidExport = Export;

TEST_F(SolidExport, SolidsComeBack) {
    const DxfText text =
        dxf()
            .header("AC1015")
            .block("B", DxfGroups{{0, "3DSOLID"}} + solidGroups(boxModel(700)))
            .entity("3DSOLID", solidGroups(sphereModel(400)))
            .entity("INSERT", DxfGroups{{2, "B"}} + at(10, {10, 20, 30}))
            .entity("REGION", solidGroups(oneFaceModel(700, "plane", "0 0 0 0 0 1 1 0 0 forward_v I I I I",
                                                       "double out")));
    for (const char* format : {"ACAD14", "ACAD15", "ACAD18", "ACAD21", "ACAD24", "ACAD27", "ACAD32"}) {
        SCOPED_TRACE(format);
        importText(text.text(), in3d());
        const Exported file = export3d(exportConfig(format, "WRITE_SOLIDS=1\n"));
        EXPECT_EQ(file.errors(), "");
        EXPECT_EQ(file.count(0, "3DSOLID"), 2u);
        EXPECT_EQ(file.count(0, "REGION"), 1u);
        const bool isInSection = file.count(2, "ACDSDATA") == 1;
        EXPECT_EQ(isInSection, std::string(format) >= "ACAD27");
        EXPECT_EQ(file.count(0, "ACDSRECORD"), isInSection ? 3u : 0u);
        EXPECT_EQ(file.protocol.find("not written"), std::string::npos);
        EXPECT_EQ(solidsOf(elementsOf(importText(file.text, in3d()).dump)),
                  std::string("solid pen 1 lt 1 records 5 wires 3\n") + inPlace +
                      "solid pen 1 lt 1 records 86 wires 12\n" + inPlace +
                      "solid pen 1 lt 1 records 5 wires 0\n" + inPlace);
        EXPECT_NEAR(host::openDrawing().extents().maxX, 12, 1e-9);
        EXPECT_NEAR(host::openDrawing().extents().maxY, 23, 1e-9);
    }
}

TEST_F(SolidExport, FlatDrawingsKeepThem) {
    ImportOptions options = unshifted();
    options.config = flags("FLAT_SOLIDS=1\n");
    const DxfText text = dxf().header("AC1015").entity("3DSOLID", solidGroups(boxModel(400)));
    for (const bool isKept : {true, false}) {
        importText(text.text(), options);
        const Exported file = exportDrawing(exportConfig("ACAD24", isKept ? "WRITE_SOLIDS=1\n" : ""));
        EXPECT_EQ(file.errors(), "");
        EXPECT_EQ(file.count(0, "3DSOLID"), isKept ? 1u : 0u);
        EXPECT_EQ(file.protocol.find("1 3D face or solid was not written.") != std::string::npos, !isKept);
        EXPECT_EQ(file.protocol.find("1 solid was not written."), std::string::npos);
    }
}

TEST_F(SolidExport, OthersAreToldAsNotWritten) {
    for (const auto& [format, keyword] : std::vector<std::pair<const char*, const char*>>{
             {"ACAD24", ""}, {"ACAD32", ""}, {"ACAD12", "WRITE_SOLIDS=1\n"}}) {
        importText(dxf().header("AC1015").entity("3DSOLID", solidGroups(boxModel(400))).text(), in3d());
        const Exported file = export3d(exportConfig(format, keyword));
        EXPECT_EQ(file.count(0, "3DSOLID"), 0u) << format;
        EXPECT_EQ(file.count(2, "ACDSDATA"), 0u) << format;
        EXPECT_NE(file.protocol.find("1 solid was not written."), std::string::npos) << format;
    }
}

} // namespace

// Files that become files of another version.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

const char* const FORMATS[] = {"ACAD32", "ACAD27", "ACAD24", "ACAD21", "ACAD18",
                               "ACAD15", "ACAD14", "ACAD13", "EASY"};

/// Groups of a layer or line-type record of a DXF text, a line each: "code value".
std::string recordOf(const std::string& dxf, const std::string& kind, const std::string& name) {
    std::istringstream in(dxf);
    std::string code, value, record;
    bool inside = false, found = false;
    while (std::getline(in, code) && std::getline(in, value)) {
        while (!value.empty() && value.back() == '\r') value.pop_back();
        if (std::atoi(code.c_str()) == 0) {
            if (found) return record;
            inside = value == kind;
            record.clear();
        } else if (inside) {
            found = found || (std::atoi(code.c_str()) == 2 && value == name);
            record += std::to_string(std::atoi(code.c_str())) + " " + value + "\n";
        }
    }
    return found ? record : "";
}

double number(const json& info, const char* key) {
    return info["elements"][key].get<double>();
}

class Convert : public Tool {};

} // namespace

TEST_F(Convert, EveryVersionIsValidAndHoldsTheSameDrawing) {
    const json before = info(bracket);
    for (const char* format : FORMATS) {
        const Outcome outcome = run("convert " + bracket + " out.dxf --format " + format);
        ASSERT_EQ(outcome.status, 0) << format << outcome.err;
        EXPECT_THAT(outcome.err, Not(HasSubstr("written")));
        const Outcome judged = run("validate out.dxf");
        EXPECT_EQ(judged.status, 0) << format << judged.out;
        EXPECT_THAT(judged.out, HasSubstr(" 0 errors, 0 warnings, 0 notes")) << format;
        const json after = info("out.dxf");
        EXPECT_EQ(number(after, "draw"), number(before, "draw")) << format;
        EXPECT_GE(number(after, "arc"), number(before, "arc")) << format << ": splines leave as arcs";
        EXPECT_GE(after["hatches"], before["hatches"]) << format << ": fills leave in parts";
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(after["extents"][i].get<double>(), before["extents"][i].get<double>(), 1e-6)
                << format;
        const bool keepsUnit = std::string(format) != "ACAD13" && std::string(format) != "EASY";
        if (!keepsUnit) continue;
        EXPECT_EQ(after["unit"], before["unit"]) << format;
    }
}

TEST_F(Convert, LayersAndLineTypesStayWhatTheyWere) {
    ASSERT_EQ(run("convert " + bracket + " new.dxf --format ACAD24").status, 0);
    const std::string text = dir.read("new.dxf");
    std::string source;
    {
        std::ifstream in(bracket);
        std::ostringstream all;
        all << in.rdbuf();
        source = all.str();
    }
    const std::string centres = recordOf(text, "LAYER", "CENTRES");
    EXPECT_NE(centres, "");
    const std::string original = recordOf(source, "LAYER", "CENTRES");
    const auto colour = original.substr(original.find("62 "), 10);
    EXPECT_THAT(centres, HasSubstr("62 "));
    EXPECT_EQ(std::atoi(centres.substr(centres.find("62 ") + 3).c_str()), std::atoi(colour.c_str() + 3));
    const auto dashes = [&](const std::string& dxf) {
        std::vector<double> list;
        std::istringstream in(recordOf(dxf, "LTYPE", "CENTER"));
        for (std::string line; std::getline(in, line);)
            if (line.starts_with("49 ")) list.push_back(std::atof(line.c_str() + 3));
        return list;
    };
    EXPECT_FALSE(dashes(text).empty());
    EXPECT_THAT(dashes(text), testing::Pointwise(testing::DoubleNear(1e-9), dashes(source)));
    EXPECT_THAT(dump("new.dxf"), HasSubstr("layer \"CENTRES\""));
}

TEST_F(Convert, TextsAndNamesOfAnyScriptArriveInEveryVersion) {
    const std::string name = "W\u00E4nde \u4E2D";
    dir.write("a.dxf", dxf()
                           .header("AC1021")
                           .entity("LINE", {{8, name}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "0"}})
                           .entity("TEXT", {{8, name}, {10, "1"}, {20, "1"}, {40, "2"}, {1, "\u00DC \u4E2D"}})
                           .text());
    const std::string before = dump("a.dxf");
    ASSERT_THAT(before, AllOf(HasSubstr(name), HasSubstr("\u00DC \u4E2D")));
    for (const char* format : {"ACAD32", "ACAD21", "ACAD18", "ACAD15"}) {
        ASSERT_EQ(run(std::string("convert a.dxf b.dxf --format ") + format).status, 0);
        EXPECT_EQ(run("validate b.dxf").status, 0) << format << run("validate b.dxf").out;
        EXPECT_THAT(dump("b.dxf"), AllOf(HasSubstr(name), HasSubstr("\u00DC \u4E2D"))) << format;
    }
    ASSERT_EQ(run("convert a.dxf r12.dxf --format ACAD12").status, 0);
    EXPECT_EQ(run("validate r12.dxf").status, 0) << run("validate r12.dxf").out;
    EXPECT_THAT(dump("r12.dxf"), HasSubstr("layer \"WANDE__\""))
        << "short names have capitals without accents";
}

TEST_F(Convert, ExportOfADrawingFileGivesTheSameFile) {
    ASSERT_EQ(run("import " + bracket + " -o b.tdw").status, 0);
    const Outcome outcome = run("export b.tdw b.dxf --format ACAD27");
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(info("b.dxf")["version"], "AC1027");
    EXPECT_EQ(info("b.dxf")["elements"]["draw"], info(bracket)["elements"]["draw"]);
    EXPECT_EQ(run("validate b.dxf").status, 0);
}

TEST_F(Convert, FontsDescriptionsAndAttributesStay) {
    dir.write(
        "a.dxf",
        dxf()
            .header("AC1024")
            .record("STYLE", {{2, "LEGEND"}, {3, "Fonts/ARIAL.TTF"}})
            .record("LTYPE", {{2, "EDGE"}, {3, "- - an edge"}, {73, "2"}, {40, "3"}, {49, "2"}, {49, "-1"}})
            .layer("cold", 5, "EDGE", 1)
            .entity("LINE", {{8, "0"}, {6, "EDGE"}, {10, "0"}, {20, "0"}, {11, "5"}, {21, "0"}})
            .entity("TEXT", {{8, "0"}, {10, "1"}, {20, "1"}, {40, "2"}, {1, "gap"}, {7, "LEGEND"}})
            .text());
    const std::string before = dump("a.dxf");
    EXPECT_THAT(before, HasSubstr("face \"ARIAL\"")) << "a font file without a face";
    ASSERT_EQ(run("convert a.dxf b.dxf").status, 0);
    const std::string text = dir.read("b.dxf");
    EXPECT_THAT(recordOf(text, "LTYPE", "EDGE"), HasSubstr("3 - - an edge"));
    EXPECT_THAT(recordOf(text, "LAYER", "cold"), AllOf(HasSubstr("70      1"), HasSubstr("62      5")));
    EXPECT_THAT(dump("b.dxf"), HasSubstr("face \"ARIAL\""));
}

TEST_F(Convert, OneFileThatFailsCostsNoOther) {
    for (const char* name : {"x.dxf", "y.dxf", "z.dxf"}) fs::copy(bracket, dir.file(name));
    dir.write("bad.dxf", "garbage");
    ASSERT_EQ(run("import x.dxf -o w.tdw").status, 0);
    const Outcome outcome = run("convert x.dxf bad.dxf y.dxf no.dxf w.tdw -d out --jobs 2");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err,
                AllOf(HasSubstr("bad.dxf: the import ended with error"),
                      HasSubstr("no.dxf: No such file or directory"),
                      HasSubstr("3 of 5 done; failed: bad.dxf, no.dxf"), HasSubstr("w.tdw -> out/w.dxf")));
    for (const char* name : {"out/x.dxf", "out/y.dxf", "out/w.dxf"})
        EXPECT_TRUE(fs::exists(dir.file(name))) << name;
    EXPECT_FALSE(fs::exists(dir.file("out/bad.dxf")));
    const Outcome collision = run("convert x.dxf w.tdw out/x.dxf -d other");
    EXPECT_EQ(collision.status, 2);
    EXPECT_THAT(collision.err, HasSubstr("out/x.dxf would overwrite other/x.dxf"));
}

TEST_F(Convert, VariablesHoldForTheExportOfADrawingFile) {
    dir.write("a.dxf", dxf()
                           .header("AC1015")
                           .entity("LINE", {{8, "WALL"}, {62, "2"}, {10, "0"}, {20, "0"}, {11, "5"}})
                           .text());
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    const Outcome outcome = run("export a.tdw - --set '&DxfByLayer=1' -v --lang en");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("\nWALL-CUT\n")) << "on standard output";
    EXPECT_THAT(outcome.err, HasSubstr("Layer WALL-CUT is not defined in the template"));
}

TEST_F(Convert, StreamsHoldTheDrawingAndNothingElse) {
    const auto shell = [&](const std::string& script) {
        return WEXITSTATUS(std::system(
            ("cd " + dir.path() + " && export LC_ALL=C HD_WORK_DIR= TMPDIR=tmp T=" TORVA_TOOL "; " + script)
                .c_str()));
    };
    DxfText large = dxf();
    for (int i = 0; i < 5000; ++i) large.entity("LINE", {{8, "0"}, {10, std::to_string(i)}, {11, "0"}});
    dir.write("a.dxf", large.text());
    fs::create_directory(dir.file("tmp"));
    ASSERT_EQ(shell("$T convert a.dxf b.dxf -q && $T import a.dxf -o a.tdw -q && $T export a.tdw c.dxf -q"),
              0);
    for (const char* same :
         {"$T convert a.dxf - -v --set '&DxfVerbose=1' 2>e | cmp - b.dxf",
          "$T convert - - <a.dxf 2>e | cmp - b.dxf", "cat a.dxf | $T convert - o.dxf -q; cmp o.dxf b.dxf",
          "$T export - - <a.tdw 2>e | cmp - c.dxf", "$T convert a.dxf /dev/stdout 2>e | cmp - b.dxf",
          "$T convert a.dxf o.dxf 2>&-; cmp o.dxf b.dxf",
          "$T convert a.dxf o.dxf -v <&- >&- 2>&-; cmp o.dxf b.dxf",
          "printf 'AutoCAD Binary DXF\\r\\n\\032\\0\\0\\0EOF\\0' | $T convert - o.dxf 2>e; test $? = 1"})
        EXPECT_EQ(shell(same), 0) << same;
    for (const char* failing :
         {"convert a.dxf - >/dev/full", "convert a.dxf /dev/full", "export a.tdw - >&-",
          "convert a.dxf - >&-", "convert - o.dxf <&-", "convert - o.dxf </", "info a.dxf a.tdw >/dev/full",
          "dump a.dxf >/dev/full", "validate a.dxf >/dev/full", "--help >/dev/full"}) {
        EXPECT_EQ(shell(std::string("$T ") + failing + " 2>e"), 1) << failing;
        EXPECT_THAT(dir.read("e"), testing::AnyOf(HasSubstr("standard output"), HasSubstr("standard input"),
                                                  HasSubstr("/dev/full: can't be written")))
            << failing;
    }
    EXPECT_EQ(shell("($T convert a.dxf - 2>e; echo $? >s) | head -c 9 >o"), 0);
    EXPECT_EQ(dir.read("s"), "1\n") << "the reader has gone";
    EXPECT_THAT(dir.read("e"), Not(HasSubstr("standard output")));
    EXPECT_EQ(shell("$T dump a.dxf 2>e | head -c 9 >o"), 0);
    EXPECT_TRUE(fs::is_empty(dir.file("tmp"))) << "no temporary files are left";
}

TEST_F(Convert, FoldersAndWrongUsage) {
    fs::copy(bracket, dir.file("x.dxf"));
    fs::copy(bracket, dir.file("y.dxf"));
    ASSERT_EQ(run("convert x.dxf y.dxf -d out --jobs 2 --format ACAD12 -q").status, 0);
    EXPECT_TRUE(fs::exists(dir.file("out/x.dxf")));
    EXPECT_EQ(info("out/y.dxf")["version"], "AC1009");
    const std::string kept = dir.read("x.dxf");
    for (const char* wrong :
         {"convert x.dxf", "convert x.dxf x.dxf", "convert x.dxf -d .", "convert x.dxf o.dxf --format R99",
          "convert x.dxf o.svg", "convert x.dxf o.tdw", "export x.dxf x.dxf",
          "convert x.dxf o.dxf --plain --format ACAD24"})
        EXPECT_EQ(run(wrong).status, 2) << wrong;
    EXPECT_EQ(dir.read("x.dxf"), kept);
    EXPECT_EQ(run("convert x.dxf none/o.dxf").status, 1) << "no such folder";
    EXPECT_EQ(run("convert missing.dxf o.dxf").status, 1);
    const Outcome dwg = run("convert x.dxf o.dwg");
    EXPECT_EQ(dwg.status, 1) << "no converter is installed";
    EXPECT_THAT(dwg.err, HasSubstr("o.dwg is a DWG"));
    fs::remove(dir.file("o.dxf"));
    EXPECT_FALSE(fs::exists(dir.file("o.dxf")));
}

TEST_F(Convert, PicturesThatCannotBeShownAreToldWithTheReason) {
    DxfText text = dxf().header("AC1015");
    text.entity("IMAGE", {{8, "0"}, {13, "4"}, {23, "2"}, {340, "A1"}});
    text.section("OBJECTS", {{0, "IMAGEDEF"}, {5, "A1"}, {1, "p.png"}}, true);
    dir.write("a.dxf", text.text());
    dir.write("p.png", "no picture");
    const std::string reason = "won't show: it is no JPEG, TIFF, PNG or BMP picture";
    EXPECT_NE(run("render a.dxf a.svg").err.find(reason), std::string::npos);
    const Outcome outcome = run("convert --lang de a.dxf b.dxf");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.err.find("nicht gezeigt: es ist kein"), std::string::npos) << outcome.err;
}

TEST_F(Convert, BinaryFilesHoldTheSameDrawing) {
    for (const char* format : {"ACAD32", "ACAD15", "ACAD12"}) {
        ASSERT_EQ(run("convert " + bracket + " text.dxf -q --format " + format).status, 0);
        ASSERT_EQ(run("convert " + bracket + " binary.dxf -q --binary --format " + format).status, 0);
        EXPECT_EQ(dir.read("binary.dxf").substr(0, 20), "AutoCAD Binary DXF\r\n");
        EXPECT_EQ(dir.read("binary.dxf")[23] == 'S', std::string(format) == "ACAD12") << "codes of a byte";
        EXPECT_EQ(dump("binary.dxf"), dump("text.dxf"));
        EXPECT_EQ(run("validate binary.dxf").status, 0) << run("validate binary.dxf").out;
    }
    EXPECT_EQ(run("convert " + bracket + " - -q --binary").out.substr(0, 20), "AutoCAD Binary DXF\r\n");
}

TEST_F(Convert, OfADwgNeedsAConverterAndSaysSo) {
    dir.write("a.dwg", "AC1015 and more");
    fs::copy(bracket, dir.file("b.dxf"));
    for (const char* line : {"info a.dwg", "convert a.dwg o.dxf", "convert b.dxf o.dwg"}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, 1) << line;
        EXPECT_THAT(outcome.err, HasSubstr("Set TORVA_DWG_CONVERTER")) << line;
    }
    dir.write("convert.sh", "cp b.dxf \"$2\"");
    EXPECT_EQ(run("info a.dwg", "LC_ALL=C HD_WORK_DIR= TORVA_DWG_CONVERTER='sh convert.sh'").status, 0);
    const Outcome failed = run("info a.dwg", "LC_ALL=C HD_WORK_DIR= TORVA_DWG_CONVERTER=false");
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.err, HasSubstr("TORVA_DWG_CONVERTER names (false) didn't convert it"));
}

TEST_F(Convert, SheetsAreDrawnByTheirNames) {
    const auto point = [](int code, const char* x, const char* y) {
        return DxfGroups{{code, x}, {code + 10, y}};
    };
    DxfGroups frame = point(10, "50", "40"), line = point(10, "0", "0");
    for (const DxfGroups& more :
         {DxfGroups{{67, "1"}, {40, "80"}, {41, "60"}, {69, "2"}, {45, "120"}}, point(12, "50", "50")})
        frame.insert(frame.end(), more.begin(), more.end());
    for (const DxfGroup& group : point(11, "100", "100")) line.push_back(group);
    DxfText text = dxf().header("AC1015").entity("LINE", line).entity("VIEWPORT", frame);
    text.record("BLOCK_RECORD", {{5, "2"}, {2, "*Paper_Space"}, {340, "22"}})
        .section("OBJECTS",
                 {{0, "LAYOUT"},
                  {5, "22"},
                  {100, "AcDbPlotSettings"},
                  {44, "200"},
                  {45, "100"},
                  {100, "AcDbLayout"},
                  {1, "../A:1"},
                  {330, "2"}},
                 true);
    dir.write("a.dxf", text.text());
    EXPECT_EQ(info("a.dxf --space all --lang en")["view_names"],
              (json{"Default", "Plot01::Detail##DXF01", "../A:1"}));
    EXPECT_EQ(run("render a.dxf s.png --view '../A:1' --lang en").status, 0);
    const Outcome wrong = run("render a.dxf s.png --view B --lang en");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_THAT(wrong.err,
                HasSubstr("no view named B. Its views: \"Default\", \"Plot01::Detail##DXF01\", \"../A:1\""));
    EXPECT_EQ(run("render a.dxf --all-views -d pages --as svg -q").status, 0);
    for (const char* page : {"pages/a Default.svg", "pages/a .._A_1.svg"}) {
        EXPECT_TRUE(fs::exists(dir.file(page))) << page;
    }
    EXPECT_EQ(run("render a.dxf all.pdf --all-views").status, 0);
    EXPECT_EQ(run("import a.dxf -o a.tdw --space all -q").status, 0);
    EXPECT_EQ(run("render a.tdw t.png --view '../A:1'").status, 0);
    EXPECT_EQ(dir.read("t.png"), dir.read("s.png"));
}

// The command as a user meets it: what it prints, writes and returns.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

DxfGroups lineFrom(double x, double y, const DxfGroups& more = {}) {
    DxfGroups groups = more;
    for (const auto& [code, value] : {std::pair{10, x}, {20, y}, {11, x + 10}, {21, y}})
        groups.push_back({code, std::to_string(value)});
    return groups;
}

DxfGroups lineType(const std::string& name, const std::vector<std::string>& dashes) {
    DxfGroups groups{{0, "LTYPE"}, {2, name},  {70, "0"},
                     {3, ""},      {72, "65"}, {73, std::to_string(dashes.size())},
                     {40, "1"}};
    for (const std::string& dash : dashes) groups.push_back({49, dash});
    return groups;
}

} // namespace

TEST_F(Tool, UsageIsExplainedAndWrongUsageIsStatus2) {
    EXPECT_THAT(run("--help").out,
                AllOf(HasSubstr("Examples:"), HasSubstr("render plan.dxf plan.svg"), HasSubstr("validate")));
    EXPECT_EQ(run("import --help").status, 0);
    EXPECT_THAT(run("--version").out, StartsWith("torva-dxf "));
    for (const char* wrong :
         {"", "frobnicate", "render a.dxf", "info", "info --frob a.dxf", "import a.dxf",
          "import a.dxf b.dxf -o c.tdw", "import x/a.dxf y/a.dxf -d out", "import a.dxf -o b.tdw -d out",
          "info - -", "dump a.dxf --unit ell", "dump a.dxf --set DxfPaper=1",
          "dump a.dxf --set '&DxfPaper=x'", "dump a.dxf --space outer", "dump a.dxf --config none.dxd",
          "render a.dxf a.svg --size 0", "info a.dxf --jobs 0"}) {
        const Outcome outcome = run(wrong);
        EXPECT_EQ(outcome.status, 2) << wrong;
        EXPECT_NE(outcome.err, "") << wrong;
        EXPECT_EQ(outcome.out, "") << wrong;
    }
}

TEST_F(Tool, ExampleIsValidAndBecomesPictures) {
    EXPECT_EQ(run("validate --strict " + bracket).status, 0) << run("validate " + bracket).out;
    for (const char* picture : {"b.svg", "b.PNG", "b.pdf"}) {
        const Outcome outcome = run("render " + bracket + " " + picture);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        EXPECT_GT(fs::file_size(dir.file(picture)), 3000U);
    }
    EXPECT_THAT(dir.read("b.svg"), AllOf(HasSubstr("stroke:rgb(100%,0%,0%)"), HasSubstr("stroke-dasharray")));
    EXPECT_EQ(run("render " + bracket + " b.jpg").status, 1);
}

TEST_F(Tool, ExamplesAreThoseThatTheirScriptsWriteAndValid) {
    fs::copy(TORVA_SOURCE_DIR "/examples", dir.file("copy"), fs::copy_options::recursive);
    const std::string write =
        "cd " + dir.file("copy") + " && for m in make_*.py; do python3 $m || exit 1; done";
    ASSERT_EQ(std::system(write.c_str()), 0);
    for (const auto& entry : fs::directory_iterator(TORVA_SOURCE_DIR "/examples")) {
        if (entry.path().extension() != ".dxf") continue;
        const std::string file = entry.path().string();
        const std::string copy = dir.file("copy/" + entry.path().filename().string());
        EXPECT_EQ(std::system(("cmp " + file + " " + copy).c_str()), 0);
        EXPECT_EQ(run("validate --strict " + file).status, 0) << file;
        const json entities = info("--3d " + file)["entities"];
        for (const auto& [kind, counts] : entities.items())
            EXPECT_EQ(counts["skipped"], 0) << kind << " of " << file;
    }
}

TEST_F(Tool, DrawingFileGivesTheSameAsTheImport) {
    const Outcome import = run("import " + bracket + " -o b.tdw");
    ASSERT_EQ(import.status, 0) << import.err;
    EXPECT_THAT(import.err, HasSubstr("unit mm"));
    const std::string text = dump(bracket);
    EXPECT_THAT(text, AllOf(HasSubstr("layer \"CENTRES\""), HasSubstr("linetype 2 \"CENTER\"")));
    EXPECT_EQ(dump("b.tdw"), text);
    json before = info(bracket), after = info("b.tdw");
    for (const char* key :
         {"unit", "scale", "patterns", "elements", "texts", "hatches", "views", "attributes", "extents"})
        EXPECT_EQ(before[key], after[key]) << key;
    run("render " + bracket + " 1.png");
    run("render b.tdw 2.png");
    EXPECT_EQ(dir.read("1.png"), dir.read("2.png"));
    dir.write("damaged.tdw", dir.read("b.tdw").substr(0, 5000));
    dir.write("foreign.tdw", "no drawing");
    for (const char* bad : {"damaged.tdw", "foreign.tdw"}) {
        const Outcome outcome = run(std::string("dump ") + bad);
        EXPECT_EQ(outcome.status, 1) << bad;
        EXPECT_THAT(outcome.err, HasSubstr(std::string("Can't load ") + bad));
    }
}

TEST_F(Tool, InfoCountsWhatTheFileHolds) {
    dir.write("a.dxf", dxf()
                           .header("AC1027")
                           .layer("OFF", -3)
                           .entity("LINE", lineFrom(0, 0))
                           .entity("LINE", lineFrom(0, 5, {{8, "OFF"}}))
                           .entity("CIRCLE", {{10, "0"}, {20, "0"}, {40, "3"}})
                           .entity("WIDGET", {{10, "0"}})
                           .text());
    const json a = info("a.dxf");
    for (const char* key : {"file",     "stat",        "version",    "codepage", "unit",       "scale",
                            "patterns", "elements",    "texts",      "hatches",  "dimensions", "bitmaps",
                            "faces",    "pointclouds", "solids",     "views",    "attributes", "extents",
                            "entities", "messages",    "view_names", "images",   "seconds"})
        EXPECT_TRUE(a.contains(key)) << key;
    EXPECT_EQ(a["version"], "AC1027");
    EXPECT_EQ(a["entities"]["LINE"],
              (json{{"read", 2}, {"drawn", 1}, {"skipped", 1}, {"hidden", 1}, {"lost", 0}}));
    EXPECT_EQ(a["entities"]["WIDGET"]["read"], 1);
    EXPECT_EQ(a["elements"]["arc"], 1);
    EXPECT_EQ(a["extents"], (json{-3, -3, 10, 3}));
    const Outcome people = run("info a.dxf");
    EXPECT_THAT(people.out, AllOf(HasSubstr("AC1027"), HasSubstr("LINE: 2, of which 1 hidden"),
                                  HasSubstr("OFF: colour 3")));
    EXPECT_EQ(people.err, "");
}

TEST_F(Tool, InfoTellsHatchesByTheirKind) {
    const json before = info(bracket);
    EXPECT_EQ(before["hatch"]["fills"], before["hatches"]) << "wide lines";
    const auto hatch = [](const char* solid, const DxfGroups& behind) {
        DxfGroups groups{{2, "NET3"}, {70, solid}, {91, "1"}, {92, "2"}, {72, "0"}, {73, "1"}, {93, "3"}};
        for (const char* x : {"0", "9"}) groups.insert(groups.end(), {{10, x}, {20, "0"}});
        groups.insert(groups.end(), {{10, "0"}, {20, "9"}, {97, "0"}, {75, "0"}, {76, "1"}});
        groups.insert(groups.end(), behind.begin(), behind.end());
        return groups;
    };
    DxfGroups rows{{78, "3"}};
    for (const char* angle : {"0", "60", "120"})
        rows.insert(rows.end(), {{53, angle}, {43, "0"}, {44, "0"}, {45, "-3"}, {46, "2"}, {79, "0"}});
    DxfGroups one{{78, "1"}, {53, "0"}, {43, "0"}, {44, "0"}, {45, "0"}, {46, "2"}, {79, "0"}};
    dir.write("h.dxf", dxf()
                           .header("AC1027")
                           .entity("HATCH", hatch("0", rows))
                           .entity("HATCH", hatch("0", one))
                           .entity("HATCH", hatch("1", {}))
                           .entity("HATCH", hatch("1", {{450, "1"}, {453, "2"}, {470, "LINEAR"}}))
                           .text());
    const json wanted{{"families", 1}, {"fills", 1}, {"gradients", 1}, {"standard", 1}, {"kept", 2}};
    EXPECT_EQ(info("h.dxf")["hatch"], wanted);
    ASSERT_EQ(run("import h.dxf -o h.tdw").status, 0);
    EXPECT_EQ(info("h.tdw")["hatch"], wanted) << "the drawing file keeps them";
    EXPECT_EQ(info("--plain h.dxf")["hatch"]["kept"], 0);
}

TEST_F(Tool, NothingOfAFileIsLost) {
    DxfText text = dxf();
    text.header("AC1024", {{9, "$INSUNITS"},
                           {70, "1"},
                           {9, "$INSBASE"},
                           {10, "100"},
                           {20, "50"},
                           {30, "0"},
                           {9, "$LTSCALE"},
                           {40, "2"}});
    text.record("LTYPE", lineType("Wände|fein", {"1", "-1"}))
        .record("LTYPE", lineType("Grün.Linie", {"0.5", "-0.25", "0", "-0.25"}));
    text.layer("Wände", 30).layer("B", 200);
    for (int color = 1; color <= 255; ++color)
        text.entity("LINE", lineFrom(1000, color, {{8, "Wände"}, {62, std::to_string(color)}}));
    text.entity("LINE", lineFrom(2000, 0, {{8, "B"}, {6, "grün.linie"}}))
        .entity("LINE", lineFrom(2000, 1, {{8, "B"}, {6, "Unheard"}}));
    dir.write("a.dxf", text.text());
    const std::string drawing = dump("a.dxf");
    EXPECT_THAT(drawing, HasSubstr("drawing unit inch"));
    EXPECT_THAT(drawing, HasSubstr("move 1000 1\n")) << "coordinates stay";
    EXPECT_THAT(drawing, AllOf(HasSubstr("layer \"Wände\""), HasSubstr("layer \"B\"")));
    EXPECT_THAT(drawing, AllOf(HasSubstr("pen 1 rgb 255 0 0\n"), HasSubstr("pen 255 lt 1\n"),
                               HasSubstr("pen look 256 200 -1 -1 of layer\n"), HasSubstr("pen 256 lt 3\n")));
    EXPECT_THAT(drawing, HasSubstr("linetype 2 \"Wände|fein\"")) << "whatever is in a name";
    EXPECT_THAT(drawing, HasSubstr("linetype 3 \"Grün.Linie\""));
    EXPECT_THAT(drawing, HasSubstr("linetype 4 \"Unheard\"\n")) << "a name without a definition is kept";

    DxfText many = dxf();
    many.header("AC1009", {{9, "$INSUNITS"}, {70, "3"}});
    for (int i = 0; i < 70; ++i) many.record("LTYPE", lineType("L" + std::to_string(i), {"1", "-1"}));
    many.entity("LINE", lineFrom(0, 0, {{6, "L60"}})).entity("LINE", lineFrom(0, 1, {{6, "L69"}}));
    dir.write("b.dxf", many.text());
    const Outcome outcome = run("dump b.dxf");
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("drawing unit km"), HasSubstr("linetype 62 \"L60\""),
                                   HasSubstr("lt 62"), Not(HasSubstr("lt 63"))));
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("9 line types are drawn solid"), HasSubstr("miles")));
}

/// The lines of a text that have this part, without what stands ahead of it.
std::multiset<std::string> linesWith(const std::string& text, const std::string& part) {
    std::multiset<std::string> found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (const auto at = line.find(part); at != std::string::npos) found.insert(line.substr(at));
    return found;
}

TEST_F(Tool, AttributesStayWithTheirInsertsThroughARoundTrip) {
    DxfText text = dxf();
    text.header("AC1027", {{9, "$ATTMODE"}, {70, "1"}}).layer("A", 1);
    text.block("PART", {{0, "LINE"}, {10, "0"}, {20, "0"}, {11, "9"}, {21, "0"}});
    for (const char* value : {"one", "two", "two"})
        text.raw({{0, "INSERT"}, {8, "A"}, {66, "1"}, {2, "PART"}, {10, "5"}, {20, "5"}})
            .raw({{0, "ATTRIB"},
                  {8, "A"},
                  {10, "5"},
                  {20, "6"},
                  {40, "2"},
                  {1, value},
                  {2, "NAME"},
                  {70, "0"}})
            .raw({{0, "ATTRIB"}, {8, "A"}, {10, "5"}, {20, "9"}, {40, "2"}, {1, "7"}, {2, "NO"}, {70, "1"}})
            .raw({{0, "SEQEND"}, {8, "A"}});
    dir.write("a.dxf", text.text());
    ASSERT_EQ(run("convert a.dxf b.dxf --format ACAD32").status, 0);
    EXPECT_EQ(run("validate b.dxf").status, 0) << run("validate b.dxf").out;
    EXPECT_EQ(linesWith(dir.read("b.dxf"), "ATTRIB").size(), 6u);
    const std::string before = dump("a.dxf"), after = dump("b.dxf");
    for (const char* part : {"\"dxf::NAME\"", "\"dxf::NO\"", "text "})
        EXPECT_EQ(linesWith(after, part), linesWith(before, part)) << before << after;
    EXPECT_EQ(linesWith(before, "\"insert\" \"PART\"").size(), 3u) << before;
    EXPECT_EQ(linesWith(after, "\"insert\" \"PART").size(), 3u) << after;
    const json inserts = info("b.dxf")["inserts"];
    ASSERT_EQ(inserts.size(), 3u) << inserts;
    EXPECT_EQ(inserts[0]["attributes"], json({{"NAME", "one"}, {"NO", "7"}}));
    EXPECT_EQ(inserts[2]["layer"], "A");
}

TEST_F(Tool, OptionsChangeWhatIsRead) {
    dir.write("a.dxf", dxf()
                           .header("AC1015", {{9, "$INSUNITS"}, {70, "6"}})
                           .entity("LINE", lineFrom(100, 100, {{62, "1"}}))
                           .entity("LINE", lineFrom(5, 5, {{67, "1"}}))
                           .text());
    dir.write("my.dxd", "#PEN-DXF-TO-CAD\n1\n1|77\n#EOF\n");
    EXPECT_THAT(dump("a.dxf"), AllOf(HasSubstr("unit m "), HasSubstr("move 100 100\n"),
                                     HasSubstr("pen 1 lt 1"), Not(HasSubstr("move 5 5"))));
    EXPECT_THAT(dump("a.dxf --center"), HasSubstr("move -5 0\n"));
    EXPECT_THAT(dump("a.dxf --unit cm"), HasSubstr("unit cm "));
    EXPECT_THAT(dump("a.dxf --space paper"), AllOf(HasSubstr("move 5 5\n"), Not(HasSubstr("move 100 100"))));
    EXPECT_THAT(dump("a.dxf --plain --space paper --set '&DxfInsbase=1'"),
                AllOf(HasSubstr("move 5 5\n"), Not(HasSubstr("move 100 100"))));
    EXPECT_THAT(dump("a.dxf --plain"),
                AllOf(HasSubstr("unit mm "), HasSubstr("move -5 0\n"), HasSubstr("pen 2 lt 1")));
    EXPECT_THAT(dump("a.dxf --config my.dxd"), HasSubstr("pen 77 lt 1"));
    EXPECT_THAT(dump("a.dxf --set '&DxfInsbase=0' --set '$DxfConfig=my.dxd'"),
                AllOf(HasSubstr("move -5 0\n"), HasSubstr("pen 77")));
    EXPECT_EQ(run("dump --3d a.dxf").status, 0);
}

TEST_F(Tool, ErrorsAreToldWithTheirNumberAndKeepWhatWasRead) {
    // With extents in the header there is no measuring pass that would meet the cut ahead of all drawing.
    const DxfGroups extents{{9, "$EXTMIN"}, {10, "0"}, {20, "0"}, {9, "$EXTMAX"}, {10, "9"}, {20, "9"}};
    const std::string whole =
        dxf().header("AC1015", extents).entity("LINE", lineFrom(1, 1)).entity("LINE", lineFrom(2, 2)).text();
    dir.write("cut.dxf", whole.substr(0, whole.find("ENDSEC", whole.find("ENTITIES"))));
    dir.write("none.dxf", "no pairs");
    Outcome outcome = run("import cut.dxf -o cut.tdw --set '&DxfExt=1'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("error 9003"), HasSubstr("what was read until the error")));
    EXPECT_THAT(dump("cut.tdw"), HasSubstr("move 1 1"));
    outcome = run("import none.dxf -o none.tdw -v --lang de");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("Keine Section gefunden!"));
    EXPECT_FALSE(fs::exists(dir.file("none.tdw")));
    EXPECT_THAT(run("info -v none.dxf --lang en").out, Not(HasSubstr("Keine Section")));
    EXPECT_THAT(run("info none.dxf", "LC_ALL=fr_FR.UTF-8").out, Not(HasSubstr("Keine Section")));
    EXPECT_THAT(run("info none.dxf", "LC_ALL=de_AT.UTF-8").out, HasSubstr("Keine Section"));
    EXPECT_EQ(info("missing.dxf")["stat"], 9001);
    EXPECT_EQ(run("render missing.dxf m.svg").status, 1);
    EXPECT_FALSE(fs::exists(dir.file("m.svg")));
    outcome = run("import " + bracket + " -o few.tdw --max-elements 20");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("9009"), HasSubstr("--max-elements")));
}

TEST_F(Tool, ManyFilesGoToAFolderAndComeOutInOrder) {
    for (const char* name : {"a", "b", "c"})
        dir.write(std::string(name) + ".dxf", dxf().header("AC1015").entity("LINE", lineFrom(1, 1)).text());
    dir.write("bad.dxf", "junk");
    const Outcome outcome = run("import a.dxf bad.dxf b.dxf c.dxf -d out --jobs 3");
    EXPECT_EQ(outcome.status, 1) << "one of them ended with an error";
    for (const char* name : {"out/a.tdw", "out/b.tdw", "out/c.tdw"})
        EXPECT_TRUE(fs::exists(dir.file(name))) << name;
    std::istringstream lines(run("info --json a.dxf out/b.tdw missing.tdw c.dxf --jobs 2").out);
    std::vector<std::string> files;
    for (std::string line; std::getline(lines, line);) files.push_back(json::parse(line)["file"]);
    EXPECT_THAT(files, testing::ElementsAre("a.dxf", "out/b.tdw", "missing.tdw", "c.dxf"));
}

TEST_F(Tool, StandardInputIsRead) {
    const json b = json::parse(run("info --json - <" + bracket).out);
    EXPECT_EQ(b["file"], "-");
    EXPECT_EQ(b["entities"], info(bracket)["entities"]);
    ASSERT_EQ(
        std::system(
            ("mkfifo " + dir.file("pipe") + " && cat " + bracket + " >" + dir.file("pipe") + " &").c_str()),
        0);
    while (!fs::exists(dir.file("pipe"))) std::this_thread::yield();
    EXPECT_EQ(info("pipe")["entities"], b["entities"]) << "a pipe can be read once only";
}

TEST_F(Tool, FolderOfTheUserIsNotLittered) {
    dir.write("a.dxf", dxf().header("AC1015").entity("LINE", lineFrom(1, 1)).text());
    run("info a.dxf");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
    run("info a.dxf", "HD_WORK_DIR=" + dir.path());
    EXPECT_THAT(dir.read("dxf.proto"), HasSubstr("DXF-IMPORT: a.dxf"));
    EXPECT_EQ(json::parse(run("info --json a.dxf", "HD_WORK_DIR=" + dir.path()).out)["messages"],
              info("a.dxf")["messages"])
        << "earlier runs in the protocol don't count";
}

TEST_F(Tool, MessagesAreThoseOfTheFileItself) {
    std::string inputs;
    for (int i = 0; i < 6; ++i) {
        const std::string name = std::string(1, static_cast<char>('a' + i));
        DxfText drawing = dxf().header("AC1015");
        for (int row = 0; row < 40; ++row)
            drawing.entity("INSERT", {{8, "0"}, {2, name + std::to_string(row)}, {10, "0"}, {20, "0"}});
        dir.write(name + ".dxf", drawing.text());
        inputs += " " + name + ".dxf";
    }
    std::istringstream lines(run("info --json --lang de --jobs 3" + inputs, "HD_WORK_DIR=" + dir.path()).out);
    for (std::string line; std::getline(lines, line);) {
        const auto one = json::parse(line);
        const std::string name = one["file"].get<std::string>().substr(0, 1);
        int missing = 0;
        for (const std::string text : one["messages"]) {
            if (text.find("nicht definiert") == std::string::npos) continue;
            EXPECT_THAT(text, HasSubstr("Block " + name));
            ++missing;
        }
        EXPECT_EQ(missing, 40);
    }
    const auto unwritable = json::parse(run("info --json a.dxf", "HD_WORK_DIR=/nowhere").out);
    EXPECT_GT(unwritable["messages"].size(), 40U);
}

TEST_F(Tool, ARecoveredTwinIsTold) {
    dir.write("a_recovered.dxf", dxf().header("AC1015").entity("LINE", lineFrom(1, 1)).text());
    const Outcome outcome = run("info --json a.dxf --lang de");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(json::parse(outcome.out)["messages"].dump(), HasSubstr("Korrigierte Datei(en):"));
    EXPECT_THAT(run("import a.dxf -o a.tdw").err, HasSubstr("a.dxf"));
}

TEST_F(Tool, AnyBytesEndInWords) {
    std::mt19937 random(3);
    const std::string good = dxf().header("AC1015").entity("LINE", lineFrom(1, 1)).text();
    for (int round = 0; round < 12; ++round) {
        std::string bytes;
        if (round % 2 == 0)
            for (int i = 0; i < 3000; ++i) bytes += static_cast<char>(random() % (round % 4 == 0 ? 256 : 64));
        else {
            bytes = good;
            for (int i = 0; i < 15; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        dir.write("r.dxf", bytes);
        const int status = run("info r.dxf").status;
        EXPECT_TRUE(status == 0 || status == 1) << status;
    }
    EXPECT_EQ(run("info " + dir.path()).status, 1) << "a folder";
}

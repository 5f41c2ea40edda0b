// Wrong words of a command line, and files that are not what their command wants.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST_F(Tool, SlipsAreNamedAndTheWordThatWasMeant) {
    const struct {
        const char* line;
        const char* says;
    } slips[] = {
        {"inof a.dxf", "unknown command inof, did you mean info?"},
        {"--lang en inof a.dxf", "unknown command inof"},
        {"render --szie 3 a.dxf b.png", "unknown option --szie, did you mean --size?"},
        {"convert a.dxf b.dxf --fromat=R12", "unknown option --fromat, did you mean --format?"},
        {"info a.dxf --set '&DxfUnti=1'", "unknown variable &DxfUnti, did you mean &DxfUnit?"},
        {"xyzzyplugh", "unknown command xyzzyplugh\n"},
        {"render a.dxf", "needs the name of a picture"},
    };
    for (const auto& [line, says] : slips) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(says), Not(HasSubstr("b.png")))) << line;
    }
    EXPECT_EQ(run("help").status, 0);
    EXPECT_THAT(run("help").out, HasSubstr("render plan.dxf plan.svg"));
    EXPECT_THAT(run("convert --help").out, AllOf(HasSubstr("--format R12"), Not(HasSubstr("dump plan.tdw"))));
    EXPECT_EQ(run("--lang en info " + bracket).status, 0) << "global options in front";
}

TEST_F(Tool, EveryVariableOfTheDocumentationCanBeSet) {
    std::ifstream docs(std::string(TORVA_SOURCE_DIR) + "/docs/macro-variables.md");
    std::string line = "info " + bracket;
    int count = 0;
    for (std::string row; std::getline(docs, row) && row != "## Written by the module";) {
        if (!row.starts_with("| `&Dxf") && !row.starts_with("| `$Dxf")) continue;
        line += " --set '" + row.substr(3, row.find('`', 3) - 3) + "=1'";
        ++count;
    }
    EXPECT_GT(count, 20);
    EXPECT_NE(run(line).status, 2) << run(line).err;
}

TEST_F(Tool, FormatsGoByTheirOtherNamesToo) {
    const struct {
        const char* name;
        const char* version;
    } formats[] = {{"R12", "AC1009"}, {"2000", "AC1015"}, {"acad24", "AC1024"}, {"2018", "AC1032"}};
    for (const auto& [name, version] : formats) {
        ASSERT_EQ(run("convert " + bracket + " o.dxf -q --format " + name).status, 0) << name;
        EXPECT_EQ(info("o.dxf")["version"], version);
    }
}

TEST_F(Tool, NoFileIsWrittenOverItsSourceNorUnderAnotherKindsName) {
    fs::copy(bracket, dir.file("a.dxf"));
    fs::copy(bracket, dir.file("picture.svg"));
    fs::create_hard_link(dir.file("a.dxf"), dir.file("hard.tdw"));
    fs::create_symlink("a.dxf", dir.file("soft.tdw"));
    fs::create_symlink("a.dxf", dir.file("soft.png"));
    const std::string kept = dir.read("a.dxf");
    for (const char* line : {"import a.dxf -o a.dxf", "import a.dxf -o ./a.dxf", "import a.dxf -o hard.tdw",
                             "import a.dxf -o soft.tdw", "import a.dxf -o new.dxf", "import a.dxf -o new.svg",
                             "render picture.svg picture.svg", "render a.dxf soft.png",
                             "render a.dxf new.tdw", "render a.dxf new.dxf", "convert a.dxf hard.tdw",
                             "convert a.dxf new.svg", "convert a.dxf new.tdw", "export a.dxf new.pdf"}) {
        const Outcome outcome = run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_THAT(outcome.err, testing::AnyOf(HasSubstr("one file"), HasSubstr("'torva-dxf "))) << line;
    }
    EXPECT_EQ(dir.read("a.dxf"), kept);
    EXPECT_EQ(dir.read("picture.svg"), kept);
    for (const char* name : {"new.dxf", "new.svg", "new.tdw", "new.pdf"})
        EXPECT_FALSE(fs::exists(dir.file(name)));
}

TEST_F(Tool, WhatIsNoDrawingIsCalledByItsName) {
    const std::string png("\x89PNG\r\n\x1a\n\0\0\0\0", 12);
    dir.write("a.dxf", png);
    dir.write("b.dxf", "PK\x03\x04 and more");
    dir.write("c.dxf", "");
    dir.write("d.dwg", std::string("AC1027\0\0\0\0\0", 11));
    fs::create_directory(dir.file("e.dxf"));
    const struct {
        const char* file;
        const char* says;
    } cases[] = {{"a.dxf", "this is a PNG picture"},
                 {"b.dxf", "this is a ZIP archive"},
                 {"c.dxf", "the file is empty"},
                 {"d.dwg", "is a DWG of version AC1027. Set TORVA_DWG"},
                 {"e.dxf", "is a folder"},
                 {"none.dxf", "none.dxf: No such file or directory"},
                 {"/dev/zero", "is a device, not a file"},
                 {"none/x.dxf", "No such file or directory"}};
    for (const auto& [file, says] : cases) {
        for (const std::string& line :
             {"info " + std::string(file), "convert " + std::string(file) + " o.dxf"}) {
            const Outcome outcome = run(line);
            EXPECT_EQ(outcome.status, 1) << line;
            EXPECT_THAT(outcome.err, HasSubstr(says)) << line;
        }
        EXPECT_THAT(info(file)["error"].get<std::string>(), HasSubstr(says));
    }
    EXPECT_FALSE(fs::exists(dir.file("o.dxf")));
    EXPECT_THAT(run("convert " + bracket + " none/o.dxf").err, HasSubstr("there is no folder"));
    EXPECT_THAT(run("convert " + bracket + " e.dxf").err, HasSubstr("is a folder"));
}

TEST_F(Tool, WhatACutFileHeldIsConverted) {
    const std::string whole =
        dxf()
            .header("AC1015", {{9, "$EXTMIN"}, {10, "0"}, {20, "0"}, {9, "$EXTMAX"}, {10, "9"}, {20, "9"}})
            .entity("LINE", {{10, "1"}, {20, "1"}, {11, "9"}, {21, "9"}})
            .entity("LINE", {{10, "2"}, {20, "2"}, {11, "9"}, {21, "9"}})
            .text();
    dir.write("cut.dxf", whole.substr(0, whole.find("ENDSEC", whole.find("ENTITIES"))));
    const Outcome outcome = run("convert cut.dxf o.dxf --set '&DxfExt=1'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("error 9003"), HasSubstr("what was read until the error")));
    EXPECT_EQ(info("o.dxf")["entities"]["LINE"]["drawn"], 1);
}

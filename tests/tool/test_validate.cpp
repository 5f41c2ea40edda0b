// The command that judges files: what it says, what it leaves out, how it ends.
#include "tool_fixture.h"

#include <gmock/gmock.h>

#include <filesystem>

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A circle without a radius on a layer that no table has.
const char* const kFaulty =
    "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n8\nWALLS\n10\n0.0\n20\n0.0\n30\n0.0\n40\n-2.5\n"
    "0\nENDSEC\n0\nEOF\n";
const char* const kUnwise = "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nWALLS\n10\n0.0\n20\n0.0\n30\n0.0\n"
                            "0\nENDSEC\n0\nEOF\n";

class Validate : public Tool {};

} // namespace

TEST_F(Validate, FilesThatAreNoDxfHaveOneFindingInPlainWords) {
    struct Case {
        const char* name;
        std::string content;
        const char* finding;
    };
    const Case cases[] = {
        {"picture.dxf", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16),
         "102: this is a PNG picture, not a DXF file"},
        {"packed.dxf", "PK\x03\x04zip", "102: this is a ZIP archive, not a DXF file"},
        {"empty.dxf", "", "102: the file is empty"},
        {"plan.dwg", std::string("AC1027\0\0\0\0\0\0", 12),
         "102: this is a DWG of version AC1027, not a DXF file"},
        {"letter.txt", "Dear reader,\nthis is no drawing.\n", "102: there is no group 0: this is no DXF"},
    };
    for (const Case& c : cases) {
        dir.write(c.name, c.content);
        const Outcome outcome = run(std::string("validate ") + c.name);
        EXPECT_EQ(outcome.status, 1) << c.name;
        EXPECT_THAT(outcome.out,
                    AllOf(HasSubstr(c.finding), HasSubstr(": no version, 1 error, 0 warnings, 0 notes")));
    }
    for (const auto& [name, reason] :
         {std::pair("none.dxf", "101: No such file or directory"), {".", "101: is a folder"}}) {
        const Outcome outcome = run(std::string("validate ") + name);
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_THAT(outcome.out, AllOf(HasSubstr(reason), HasSubstr("1 error")));
    }
}

TEST_F(Validate, StatusSaysHowBadItIs) {
    dir.write("faulty.dxf", kFaulty);
    dir.write("unwise.dxf", kUnwise);
    const std::pair<const char*, int> cases[] = {{"unwise.dxf", 0},
                                                 {"unwise.dxf --strict", 1},
                                                 {"unwise.dxf faulty.dxf --jobs 2", 1},
                                                 {"faulty.dxf --level error", 1},
                                                 {"faulty.dxf --ignore 206", 0},
                                                 {"faulty.dxf --rule 401,901", 0},
                                                 {"faulty.dxf --rule 999", 2},
                                                 {"faulty.dxf --level bad", 2},
                                                 {"", 2}};
    for (const auto& [arguments, status] : cases)
        EXPECT_EQ(run(std::string("validate ") + arguments).status, status) << arguments;
}

TEST_F(Validate, ShowsWhatIsAskedFor) {
    dir.write("faulty.dxf", kFaulty);
    dir.write("unwise.dxf", kUnwise);
    EXPECT_THAT(run("validate faulty.dxf").out, AllOf(HasSubstr("error 206:"), HasSubstr("warning 401:")));
    EXPECT_THAT(run("validate faulty.dxf --level error").out,
                AllOf(HasSubstr("error 206:"), Not(HasSubstr("401:")), HasSubstr("1 warning")));
    EXPECT_THAT(run("validate faulty.dxf --rule 401").out,
                AllOf(HasSubstr("warning 401:"), Not(HasSubstr("206:")), HasSubstr("0 errors, 1 warning")));
    EXPECT_EQ(run("validate -q unwise.dxf").out, "");
    EXPECT_THAT(run("validate -q faulty.dxf").out, AllOf(HasSubstr("error 206:"), Not(HasSubstr("401:"))));
}

TEST_F(Validate, FolderHoldsAReportOfEachFile) {
    dir.write("faulty.dxf", kFaulty);
    dir.write("unwise.dxf", kUnwise);
    const Outcome outcome = run("validate faulty.dxf unwise.dxf -d reports --json --jobs 2");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(json::parse(dir.read("reports/faulty.dxf.json"))["counts"]["206"], 1);
    EXPECT_EQ(json::parse(dir.read("reports/unwise.dxf.json"))["errors"], 0);
}

TEST_F(Validate, RepairWritesAnotherFileAndTellsWhatItDid) {
    dir.write("faulty.dxf", kFaulty);
    dir.write("unwise.dxf", kUnwise);
    const Outcome mended = run("validate unwise.dxf --repair new.dxf");
    EXPECT_EQ(mended.status, 0);
    EXPECT_THAT(mended.out,
                AllOf(HasSubstr("unwise.dxf:7: mended 401: the layer \"WALLS\" is added [ENTITIES]\n"),
                      HasSubstr("unwise.dxf: 1 mended\n"),
                      HasSubstr("new.dxf: no version, 0 errors, 0 warnings")));
    EXPECT_EQ(run("validate --strict new.dxf").status, 0);
    const Outcome stays = run("validate faulty.dxf --repair new.dxf");
    EXPECT_EQ(stays.status, 1) << "no radius is guessed";
    EXPECT_THAT(stays.out, HasSubstr("new.dxf:"));
    const Outcome both = run("validate faulty.dxf unwise.dxf --repair -d folder");
    EXPECT_EQ(both.status, 1);
    EXPECT_EQ(run("validate --strict folder/unwise.dxf").status, 0);
    EXPECT_THAT(run("validate unwise.dxf -q --repair -").out, HasSubstr("WALLS"));
}

TEST_F(Validate, RepairNeverWritesOverItsInput) {
    dir.write("unwise.dxf", kUnwise);
    std::filesystem::create_hard_link(dir.file("unwise.dxf"), dir.file("link.dxf"));
    dir.write("picture.dxf", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16));
    dir.write("sub/unwise.dxf", kUnwise);
    for (const char* arguments : {"unwise.dxf --repair unwise.dxf", "unwise.dxf --repair link.dxf",
                                  "unwise.dxf --repair -d .", "unwise.dxf --repair new.tdw",
                                  "unwise.dxf sub/unwise.dxf --repair -d folder", "unwise.dxf --repair"})
        EXPECT_EQ(run(std::string("validate ") + arguments).status, 2) << arguments;
    EXPECT_EQ(run("validate picture.dxf --repair new.dxf").status, 1);
    EXPECT_FALSE(std::filesystem::exists(dir.file("new.dxf")));
    EXPECT_EQ(dir.read("unwise.dxf"), kUnwise);
    EXPECT_EQ(run("validate unwise.dxf --repair none/new.dxf").status, 1);
}

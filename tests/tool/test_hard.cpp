// What the command withstands: files that others change, odd names, full disks, signals.
#include "dxf_text.h"
#include "store/store.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/file.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

DxfGroups line(int x) {
    return {{8, "0"}, {10, std::to_string(x)}, {20, "0"}, {11, std::to_string(x + 1)}, {21, "1"}};
}

DxfGroups insertOf(const std::string& block) {
    return {{0, "INSERT"}, {8, "0"}, {2, block}, {10, "0"}, {20, "0"}};
}

class Hard : public Tool {
protected:
    /// The drawing `name` of a line and an INSERT of each of these files, as external references.
    void writeReferences(const std::string& name, const std::vector<std::string>& files) {
        DxfText text = dxf();
        text.header("AC1027").entity("LINE", line(0));
        for (std::size_t i = 0; i < files.size(); ++i) {
            const std::string block = "X" + std::to_string(i);
            text.block(block, {}, {{70, "4"}, {1, files[i]}}).raw(insertOf(block));
        }
        dir.write(name, text.text());
    }
    void writeMany(const std::string& name, int lines) {
        DxfText text = dxf();
        text.header("AC1027");
        for (int i = 0; i < lines; ++i) text.entity("LINE", line(i));
        dir.write(name, text.text());
    }
    /// Names in the folder that the test didn't give.
    std::vector<std::string> leftovers(const std::string& folder) const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder))
            if (const std::string name = entry.path().filename().string();
                name.find("torva") != std::string::npos)
                names.push_back(name);
        return names;
    }
};

TEST_F(Hard, WhatTheRunNeedsAndCantHaveEndsIt) {
    fs::copy(bracket, dir.file("a.dxf"));
    dir.write("a.tdw", "old");
    const struct {
        const char* line;
        const char* environment;
        const char* why;
    } cases[] = {
        {"import a.dxf -o a.tdw", "HD_U=/nowhere", "installation data"},
        {"import a.dxf -o a.tdw --plain", "HD_U=/nowhere", "installation data"},
        {"import a.dxf -o a.tdw --config /dev/null", "LC_ALL=C", "configuration /dev/null"},
        {"import a.dxf -o a.tdw", "TMPDIR=/nowhere", "temporary files"},
    };
    for (const auto& one : cases) {
        const Outcome outcome = run(one.line, one.environment);
        EXPECT_EQ(outcome.status, 1) << one.line << one.environment;
        EXPECT_THAT(outcome.err, HasSubstr(one.why));
        EXPECT_EQ(dir.read("a.tdw"), "old");
    }
    // A configuration that lies where nothing can be written is used as it is.
    const rlim_t none = 0;
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const Outcome info = run("dump a.dxf 2>&1 | grep -c '^layer'; ulimit -f " + std::to_string(none) +
                             "; " TORVA_TOOL " import a.dxf -o full.tdw");
    EXPECT_EQ(info.status, 1) << "a limit of the system is an error, not a signal";
    EXPECT_FALSE(fs::exists(dir.file("full.tdw")));
    EXPECT_THAT(leftovers(dir.path()), testing::IsEmpty());
}

TEST_F(Hard, ReferencesToWhatIsNoFileNeitherWaitNorEatTheInput) {
    ASSERT_EQ(std::system(("mkfifo " + dir.file("pipe")).c_str()), 0);
    writeReferences("a.dxf", {"/dev/stdin", "/proc/self/fd/0", "pipe", "/dev/tty", "/dev/zero"});
    dir.write("my.dxd",
              "#FLAGS-START\nUSE_TEMPLATE=1\nTEMPLATE_NAME=/dev/stdin\nUSE_BYLAYER=1\nBYLAYER_NAME=pipe\n"
              "#FLAGS-END\n#EOF\n");
    dir.write("input", "for the caller\n");
    for (const char* command :
         {"import a.dxf -o a.tdw", "convert a.dxf b.dxf", "convert --config my.dxd a.dxf c.dxf"}) {
        const Outcome outcome = run(std::string("--version >/dev/null; (timeout 20 " TORVA_TOOL " ") +
                                    command + "; echo status $?; cat) <input");
        EXPECT_THAT(outcome.out, AllOf(HasSubstr("status 0"), HasSubstr("for the caller"))) << command;
    }
}

TEST_F(Hard, AReferenceToItselfIsOneUnderEachName) {
    writeReferences("a.dxf",
                    {"./a.dxf", ".//a.dxf", "././a.dxf", dir.file("a.dxf"), "soft.dxf", "hard.dxf",
                     "../" + fs::path(dir.path()).filename().string() + "/a.dxf", "b.dxf", ".//b.dxf"});
    writeReferences("b.dxf", {"c.dxf", "./c.dxf", ".//a.dxf", "././c.dxf"});
    writeReferences("c.dxf", {"b.dxf", "./b.dxf", "hard.dxf", "././b.dxf"});
    fs::create_symlink("a.dxf", dir.file("soft.dxf"));
    fs::create_hard_link(dir.file("a.dxf"), dir.file("hard.dxf"));
    const auto elements = info("a.dxf")["elements"];
    EXPECT_EQ(elements["draw"], 1 + 2 * (1 + 3)) << "a, and twice b with three times c";
}

TEST_F(Hard, BlocksThatInsertEachOtherStopSoon) {
    DxfText text = dxf();
    text.header("AC1027");
    constexpr int blocks = 13;
    for (int i = 0; i < blocks; ++i) {
        DxfGroups entities{{0, "LINE"}};
        for (const DxfGroup& group : line(i)) entities.push_back(group);
        for (int j = 0; j < blocks; ++j)
            for (const DxfGroup& group : insertOf("B" + std::to_string(j))) entities.push_back(group);
        text.block("B" + std::to_string(i), entities);
    }
    for (int i = 0; i < 200; ++i) text.raw(insertOf("B0"));
    dir.write("a.dxf", text.text());
    const Outcome outcome = run("info a.dxf");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("so many others"));
    // One ring is cut where it closes, and costs no more than its blocks.
    DxfText ring = dxf();
    ring.header("AC1027").block("A", insertOf("B")).block("B", insertOf("A")).entity("LINE", line(0));
    for (int i = 0; i < 500; ++i) ring.raw(insertOf(i % 2 ? "A" : "B"));
    dir.write("ring.dxf", ring.text());
    EXPECT_EQ(run("info ring.dxf").status, 0);
}

TEST_F(Hard, NothingStaysBehindARunThatASignalEnds) {
    writeMany("a.dxf", 100'000);
    dir.write("a.tdw", "old"), dir.write("b.dxf", "old"), dir.write("c.svg", "old");
    const std::string temporary = scratch.file("tmp");
    fs::create_directory(temporary);
    const struct {
        const char* signal;
        const char* line;
        const char* target;
    } cases[] = {{"TERM", "import a.dxf -o a.tdw", "a.tdw"},
                 {"HUP", "convert a.dxf b.dxf", "b.dxf"},
                 {"INT", "render a.dxf c.svg", "c.svg"},
                 {"TERM", "import - -o a.tdw <pipe", "a.tdw"},
                 {"INT", "validate a.dxf a.dxf --jobs 2 -q", "a.tdw"}};
    ASSERT_EQ(std::system(("mkfifo " + dir.file("pipe") + "; sleep 5 >" + dir.file("pipe") + " &").c_str()),
              0);
    for (const auto& one : cases) {
        const Outcome outcome = run("--version >/dev/null; export TMPDIR=" + temporary + "; timeout -s " +
                                    one.signal + " 0.3 " TORVA_TOOL " " + one.line);
        EXPECT_NE(outcome.status, 0) << one.line;
        EXPECT_TRUE(dir.read(one.target) == "old") << one.line << ": not the old file";
        EXPECT_THAT(leftovers(dir.path()), testing::IsEmpty()) << one.line;
        EXPECT_THAT(leftovers(temporary), testing::IsEmpty()) << one.line;
    }
}

TEST_F(Hard, TheNextRunClearsWhatAKilledOneLeft) {
    fs::copy(bracket, dir.file("a.dxf"));
    const std::string temporary = scratch.file("tmp");
    fs::create_directories(temporary + "/torva-dxf-abcdef");
    fs::create_directories(temporary + "/torva-dxf-locked");
    dir.write(".b.dxf.torva-17", "half"), dir.write(".a.tdw.torva-18", "half"),
        dir.write("my.torva-plan", "mine");
    dir.write(".b.dxf.torva-19", "of a running program");
    const int lock = open(dir.file(".b.dxf.torva-19").c_str(), O_RDONLY);
    const int folderLock = open((temporary + "/torva-dxf-locked").c_str(), O_RDONLY);
    ASSERT_EQ(flock(lock, LOCK_EX) + flock(folderLock, LOCK_EX), 0);
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {"/torva-dxf-abcdef", "/torva-dxf-locked"})
        fs::last_write_time(temporary + name, longAgo);
    EXPECT_EQ(run("convert a.dxf b.dxf", "TMPDIR=" + temporary).status, 0);
    EXPECT_THAT(leftovers(dir.path()), testing::UnorderedElementsAre(".b.dxf.torva-19", "my.torva-plan"));
    EXPECT_THAT(leftovers(temporary), testing::ElementsAre("torva-dxf-locked"));
    close(lock), close(folderLock);
}

TEST_F(Hard, ManyJobsBehindASlowOneNeedFewFiles) {
    writeMany("slow.dxf", 30'000);
    writeMany("a.dxf", 1);
    std::string inputs = "slow.dxf";
    for (int i = 0; i < 60; ++i) inputs += " a.dxf";
    const Outcome outcome =
        run("--version >/dev/null; ulimit -n 48; " TORVA_TOOL " info --json --jobs 2 " + inputs);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 61);
}

TEST_F(Hard, NothingStaysBesideADrawingFileThatIsRead) {
    fs::copy(bracket, dir.file("a.dxf"));
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    std::fstream file(dir.file("a.tdw"), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(18).write("\2\2", 2); // its changes go to a log from now on
    file.close();
    EXPECT_EQ(run("info a.tdw").status, 0);
    EXPECT_FALSE(fs::exists(dir.file("a.tdw-wal")) || fs::exists(dir.file("a.tdw-shm")));
    dir.write("a.tdw-wal", "changes");
    const Outcome outcome = run("export a.tdw b.dxf");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("another program is at work"));
    EXPECT_FALSE(fs::exists(dir.file("b.dxf"))) << "nor is there half a file";
}

TEST_F(Hard, NamesOfADrawingFileAreNeverLinesOfAConfiguration) {
    dir.write("secret", "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n0\nLAYER\n2\nSTOLEN\n70\n0\n62\n1\n"
                        "0\nENDTAB\n0\nENDSEC\n0\nEOF\n");
    DxfText text = dxf();
    const DxfGroups dashes{{2, "PLACE"}, {70, "0"}, {3, ""},   {72, "65"},
                           {73, "2"},    {40, "2"}, {49, "1"}, {49, "-1"}};
    text.header("AC1027").record("LTYPE", dashes).layer("L", 1);
    DxfGroups drawn = line(0);
    drawn.insert(drawn.end(), {{6, "PLACE"}});
    dir.write("a.dxf", text.entity("LINE", drawn).text());
    ASSERT_EQ(run("import a.dxf -o a.tdw").status, 0);
    const auto renamed = [&](bool isLayer, const std::string& name) {
        host::Drawing drawing;
        EXPECT_EQ(host::loadDrawing(drawing, dir.file("a.tdw")), "");
        (isLayer ? drawing.layers.front().name : drawing.lineTypes.begin()->second.name) = name;
        EXPECT_EQ(host::saveDrawing(drawing, dir.file("renamed.tdw")), "");
        return run("export renamed.tdw b.dxf");
    };
    const std::string lines = "x\n#FLAGS-START\nTEMPLATE_NAME=" + dir.file("secret") + "\n#FLAGS-END";
    for (const bool isLayer : {false, true}) {
        EXPECT_EQ(renamed(isLayer, lines).status, 1) << isLayer;
        EXPECT_FALSE(fs::exists(dir.file("b.dxf")));
    }
    EXPECT_EQ(renamed(false, "#FLAGS-START|TEMPLATE_NAME=secret|7").status, 0);
    EXPECT_THAT(dir.read("b.dxf"), Not(HasSubstr("STOLEN")));
    EXPECT_EQ(run("validate b.dxf").status, 0);
}

TEST_F(Hard, ConfinedToAFolderNothingElseIsReadOrWritten) {
    fs::create_directories(dir.file("in/sub"));
    fs::create_directories(dir.file("inside"));
    DxfText part = dxf();
    part.header("AC1027").entity("CIRCLE", {{8, "0"}, {10, "0"}, {20, "0"}, {40, "5"}});
    for (const char* name : {"outside.dxf", "inside/b.dxf", "in/sub/ok.dxf"}) dir.write(name, part.text());
    fs::create_symlink(dir.file("outside.dxf"), dir.file("in/link.dxf"));
    fs::create_symlink(dir.file("new.tdw"), dir.file("in/new.tdw"));
    writeReferences("in/a.dxf", {"sub/ok.dxf", "../outside.dxf", dir.file("inside/b.dxf"), "link.dxf"});
    EXPECT_EQ(info("in/a.dxf")["elements"]["arc"], 4);
    EXPECT_EQ(info("--confine in in/a.dxf")["elements"]["arc"], 1);
    EXPECT_EQ(info("--confine in --confine inside in/a.dxf")["elements"]["arc"], 2);
    EXPECT_EQ(run("import --confine in in/a.dxf -o in/a.tdw").status, 0);
    EXPECT_EQ(run("convert --confine in in/a.dxf -d in/more").status, 0);
    EXPECT_EQ(run("render --confine in in/a.tdw in/a.png").status, 0);
    for (const char* line :
         {"import --confine in in/a.dxf -o new.tdw", "import --confine in in/a.dxf -o in/new.tdw",
          "info --confine in outside.dxf", "info --confine in in/link.dxf",
          "convert --confine in in/a.dxf -d new", "convert --confine in in/a.dxf in/../new.dxf",
          "render --confine in in/a.dxf new.svg", "validate --confine in in/a.dxf -d new",
          "validate --confine in outside.dxf", "export --confine in in/a.tdw new.stl",
          "info --confine nowhere in/a.dxf"})
        EXPECT_NE(run(line).status, 0) << line;
    for (const auto& entry : fs::directory_iterator(dir.path()))
        EXPECT_THAT(entry.path().filename().string(), Not(HasSubstr("new")));
}

TEST_F(Hard, WhatIsOddIsToldInPlainWords) {
    DxfText text = dxf();
    text.header("AC1027")
        .entity("LINE", line(0))
        .entity("\x1b[31mRED", {{8, "0"}})
        .raw(insertOf("\x1b[2J\u009b2J"));
    text.entity("LWPOLYLINE",
                {{8, "0"}, {90, "2"}, {10, "0"}, {20, "0"}, {10, "1"}, {20, "1"}, {10, "2"}, {20, "7"}});
    dir.write("a.dxf", text.text());
    const Outcome people = run("info a.dxf"), import = run("import a.dxf -o a.tdw");
    for (const std::string& told : {people.out, import.err})
        EXPECT_THAT(told, AllOf(HasSubstr("\\x1B[31mRED"), Not(HasSubstr("\x1b")), Not(HasSubstr("\u009b"))));
    EXPECT_THAT(import.err, HasSubstr("announces 2 vertices and has 3, 3 are taken"));
    EXPECT_THAT(dump("a.dxf"), HasSubstr("draw 2 7"));
    EXPECT_THAT(dump("--plain a.dxf"), Not(HasSubstr("draw 2 7")));
    writeReferences("b.dxf", {"C:\\there\\plan.dxf"});
    EXPECT_THAT(run("import b.dxf -o b.tdw").err, HasSubstr("C:\\there\\plan.dxf"));
    dir.write("long.dxf", dxf().header("AC1027").entity(std::string(2'000'000, 'X'), line(0)).text());
    const Outcome endless = run("import long.dxf -o long.tdw");
    EXPECT_EQ(endless.status, 1);
    EXPECT_THAT(endless.err, HasSubstr("more than a megabyte"));
}

} // namespace

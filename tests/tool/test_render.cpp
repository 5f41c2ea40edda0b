// Pictures by the command: many at once, into one PDF, to standard output; what options show.
#include "dxf_text.h"
#include "tool_fixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// A line along x, of colour `color`, in metres.
std::string line(const char* length, const char* color = "7") {
    return dxf()
        .header("AC1015", {{9, "$INSUNITS"}, {70, "6"}})
        .entity("LINE", {{8, "A"}, {62, color}, {10, "0"}, {20, "0"}, {11, length}, {21, "0"}})
        .text();
}

int count(const std::string& text, const std::string& word) {
    int found = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) ++found;
    return found;
}

class Rendering : public Tool {
protected:
    /// The drawing instructions of a PDF, unpacked.
    std::string instructions(const std::string& pdf) const {
        const std::string script = "import re,sys,zlib;d=open(sys.argv[1],'rb').read();"
                                   "print(b''.join(zlib.decompress(s) for s in "
                                   "re.findall(rb'FlateDecode.*?stream\\r?\\n(.*?)\\r?\\nendstream',d,re.S)"
                                   ").decode('latin1'))";
        const std::string command = "cd " + dir.path() + " && PYTHONUTF8=1 python3 -c \"" + script + "\" " +
                                    pdf + " >" + scratch.file("instructions");
        EXPECT_EQ(std::system(command.c_str()), 0);
        std::string text = scratch.read("instructions");
        std::replace(text.begin(), text.end(), '\n', ' '); // lines are broken anywhere
        return text;
    }
    /// Length of the first line that a PDF draws, millimetres.
    double firstLine(const std::string& pdf) const {
        const std::string text = instructions(pdf);
        std::smatch found;
        if (!std::regex_search(text, found, std::regex(R"((\S+) (\S+) m (\S+) (\S+) l)"))) return -1;
        const double x1 = std::stod(found[1]), y1 = std::stod(found[2]);
        const double x2 = std::stod(found[3]), y2 = std::stod(found[4]);
        return std::hypot(x2 - x1, y2 - y1) * 25.4 / 72;
    }
};

} // namespace

TEST_F(Rendering, ManyInputsBecomeFilesOrPagesOfOnePdf) {
    dir.write("a.dxf", line("5"));
    dir.write("b.dxf", line("7"));
    dir.write("broken.dxf", "");
    const Outcome many = run("render a.dxf broken.dxf b.dxf -d out --type svg --jobs 2");
    EXPECT_EQ(many.status, 1);
    EXPECT_THAT(many.err, AllOf(HasSubstr("a.dxf -> out/a.svg"), HasSubstr("2 of 3 done")));
    EXPECT_TRUE(fs::exists(dir.file("out/a.svg")) && fs::exists(dir.file("out/b.svg")));
    EXPECT_FALSE(fs::exists(dir.file("out/broken.svg")));
    EXPECT_EQ(run("render a.dxf b.dxf -o book.pdf --paper A4").status, 0);
    EXPECT_THAT(dir.read("book.pdf"), HasSubstr("/Count 2"));
    EXPECT_EQ(run("render a.dxf broken.dxf b.dxf -o left.pdf").status, 1);
    EXPECT_THAT(dir.read("left.pdf"), HasSubstr("/Count 2")) << "what can't be read has no page";
    EXPECT_EQ(run("render broken.dxf -o none.pdf").status, 1);
    EXPECT_FALSE(fs::exists(dir.file("none.pdf")));
}

TEST_F(Rendering, GoesToStandardOutput) {
    dir.write("a.dxf", line("5"));
    const std::pair<const char*, const char*> types[] = {
        {"svg", "<?xml"}, {"pdf", "%PDF"}, {"png", "\x89PNG"}};
    for (const auto& [type, start] : types) {
        const Outcome outcome = run(std::string("render - - --type ") + type + " < a.dxf");
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_THAT(outcome.out, StartsWith(start));
    }
}

TEST_F(Rendering, CombinationsThatMakeNoSenseAreRefusedInWords) {
    dir.write("a.dxf", line("5"));
    dir.write("b.dxf", line("5"));
    fs::create_directory(dir.file("x"));
    dir.write("x/a.dxf", line("5"));
    const std::pair<const char*, const char*> wrong[] = {
        {"a.dxf -", "needs --type"},
        {"a.dxf b.dxf c.svg", "-o BOOK.pdf"},
        {"a.dxf b.dxf -o c.svg", "only as a PDF"},
        {"a.dxf c.svg --type png", "another type than --type png"},
        {"a.dxf c.svg --all-views", "--all-views needs a PDF"},
        {"a.dxf -o c.svg -d out", "excludes"},
        {"a.dxf c.pdf --text text", "how texts stand in an SVG"},
        {"a.dxf c.svg --jobs 2", "--directory"},
        {"a.dxf x/a.dxf -d out", "would both become"},
        {"a.dxf c.svg --window 1,2,3", "--window"},
        {"a.dxf c.svg --window 1,2,1,5", "has no area"},
        {"a.dxf c.svg --window 0,0,1,1 --view A", "excludes"},
        {"a.dxf c.svg --window 0,0,1,1 --shade", "in space"},
        {"a.dxf c.pdf --paper A4 --all-views", "excludes"},
        {"a.dxf c.svg --legible --mono", "excludes"},
        {"- - -o c.pdf", "read once only"},
    };
    for (const auto& [words, says] : wrong) {
        const Outcome outcome = run("--lang en render " + std::string(words));
        EXPECT_EQ(outcome.status, 2) << words;
        EXPECT_THAT(outcome.err, HasSubstr(says)) << words;
    }
    EXPECT_FALSE(fs::exists(dir.file("c.svg")) || fs::exists(dir.file("out")));
}

TEST_F(Rendering, LinesOnPaperAreMeasuredInThePdf) {
    dir.write("a.dxf", line("5"));
    ASSERT_EQ(run("render a.dxf a.pdf --paper A4 --landscape --scale 1:50").status, 0);
    EXPECT_NEAR(firstLine("a.pdf"), 100, 0.01) << "5 m at 1:50";
    ASSERT_EQ(run("render a.dxf b.pdf --paper A4 --landscape --margin 48.5").status, 0);
    EXPECT_NEAR(firstLine("b.pdf"), 200, 0.01) << "fitted between margins";
    ASSERT_EQ(run("render a.dxf c.pdf --paper 120x50 --margin 10 --window 0,-1,1,1").status, 0);
    EXPECT_NEAR(firstLine("c.pdf"), 5 * 15, 0.01) << "a window of 1 by 2 m in 30 mm of height";
}

TEST_F(Rendering, AnSvgHasAGroupForEachLayerAndTextsAsWanted) {
    DxfText text = dxf().header("AC1021");
    text.layer("Wände & Türen", 1).layer("EMPTY", 2).layer("A", 3);
    text.entity("LINE", {{8, "Wände & Türen"}, {10, "0"}, {20, "0"}, {11, "50"}, {21, "30"}})
        .entity("LINE", {{8, "A"}, {10, "0"}, {20, "10"}, {11, "50"}, {21, "0"}})
        .entity("TEXT", {{8, "A"}, {10, "5"}, {20, "5"}, {40, "4"}, {1, "R&D <x>"}});
    dir.write("a.dxf", text.text());
    const auto parsed = [&](const std::string& options) {
        EXPECT_EQ(run("render a.dxf a.svg " + options).status, 0);
        const std::string script = "import xml.etree.ElementTree as E;r=E.parse('a.svg').getroot();"
                                   "n='{http://www.w3.org/2000/svg}';"
                                   "print([(g.get('data-layer'),len(g.findall('.//'+n+'path')),"
                                   "[t.text for t in g.iter(n+'text')],len(list(g.iter(n+'use'))))"
                                   " for g in r.iter(n+'g') if g.get('data-layer')])";
        EXPECT_EQ(std::system(("cd " + dir.path() + " && PYTHONUTF8=1 python3 -c \"" + script + "\" >" +
                               scratch.file("g"))
                                  .c_str()),
                  0);
        return scratch.read("g");
    };
    EXPECT_EQ(parsed(""), "[('Wände & Türen', 1, [], 0), ('A', 1, [], 6)]\n") << "glyphs but the blank";
    EXPECT_EQ(parsed("--text text"), "[('Wände & Türen', 1, [], 0), ('A', 1, ['R&D <x>'], 0)]\n");
}

TEST_F(Rendering, LightColoursAreDarkenedOnlyWhenAsked) {
    dir.write("a.dxf", line("5", "2"));
    const auto yellow = [&](const std::string& options) {
        EXPECT_EQ(run("render a.dxf a.pdf " + options).status, 0);
        return count(instructions("a.pdf"), "1 1 0 RG");
    };
    EXPECT_GT(yellow(""), 0);
    EXPECT_EQ(yellow("--legible"), 0);
    EXPECT_GT(yellow("--legible --dark"), 0);
    EXPECT_EQ(yellow("--mono"), 0);
}

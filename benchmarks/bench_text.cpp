// Import of texts as a ratio to the floor: TEXT and MTEXT in fonts by number and in faces, with formats,
// stacks and boxes that break their lines; and MTEXT of growing length, which must cost no more a byte.
#include "drawing/drawing.h"
#include "drawing/dump.h"
#include "dx_select.h"
#include "floor.h"
#include "generate.h"
#include "services/session.h"
#include "timing.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr const char* head = R"(0
SECTION
2
HEADER
9
$ACADVER
1
AC1015
9
$EXTMIN
10
0
20
0
30
0
9
$EXTMAX
10
1000
20
1000
30
0
0
ENDSEC
0
SECTION
2
TABLES
0
TABLE
2
STYLE
70
2
0
STYLE
2
ROMANS
41
0.9
3
romans.shx
0
STYLE
2
SERIF
3
x.ttf
1001
ACAD
1000
DejaVu Serif
1071
0
0
ENDTAB
0
ENDSEC
0
SECTION
2
ENTITIES
)";
constexpr const char* tail = "0\nENDSEC\n0\nEOF\n";

/// The texts that come in turn: entity, style, groups of its own, text.
struct Kind {
    bool isMtext;
    const char* style;
    const char* groups;
    const char* text;
};
constexpr std::array<Kind, 8> kinds{{
    {false, "ROMANS", "41\n0.9\n", "Plan %%c120 h9 x 25.5"},
    {false, "SERIF", "41\n1.0\n", "A face, \\U+00D8 and more"},
    {false, "ROMANS", "72\n     1\n11\n12.5\n21\n3.5\n31\n0.0\n", "centred in its middle"},
    {false, "STANDARD", "51\n15.0\n", "%%uunderlined%%u and slanted"},
    {true, "ROMANS", "41\n0.0\n71\n     1\n", "\\A1;first line\\Psecond {\\C1;red} line"},
    {true, "SERIF", "41\n60.0\n71\n     5\n",
     "A paragraph that is long enough to be broken into several lines by its narrow box\\Pand one more"},
    {true, "SERIF", "41\n60.0\n71\n     7\n",
     "Runs of {\\fDejaVu Sans|b1|i0|c0|p34;bold}, of {\\H1.5x;height} and {\\Q15;slant} in a box"},
    {true, "ROMANS", "41\n0.0\n71\n     3\n", "%%c10 {\\H0.7x;\\S+0.1^ -0.2;} and \\S1/2; in"},
}};

/// An entity with the groups that drawing programs write.
std::string entity(const Kind& kind, std::size_t i) {
    char handle[20];
    std::snprintf(handle, sizeof handle, "%zX", i + 0x1000);
    const std::string x = std::to_string(i % 1000), y = std::to_string(i / 1000 % 1000);
    const char* name = kind.isMtext ? "MTEXT" : "TEXT";
    const char* marker = kind.isMtext ? "AcDbMText" : "AcDbText";
    const char* end = kind.isMtext ? "210\n0.0\n220\n0.0\n230\n1.0\n73\n     1\n44\n1.0\n"
                                   : "210\n0.0\n220\n0.0\n230\n1.0\n100\nAcDbText\n73\n     2\n";
    return std::string("  0\n") + name + "\n  5\n" + handle + "\n330\n1F\n100\nAcDbEntity\n  8\n0\n100\n" +
           marker + "\n 10\n" + x + ".2512345\n 20\n" + y + ".5012345\n 30\n0.0\n 40\n2.5\n" + kind.groups +
           "  1\n" + kind.text + " " + std::to_string(i) + "\n  7\n" + kind.style + "\n" + end;
}

std::string generateTexts(std::size_t bytes) {
    std::string dxf = head;
    dxf.reserve(bytes + 1000);
    for (std::size_t i = 0; dxf.size() < bytes; ++i) dxf += entity(kinds[i % kinds.size()], i);
    return dxf + tail;
}

/// MTEXT of `characters` each: words with a change of format now and then.
std::string generateLong(std::size_t bytes, std::size_t characters) {
    std::string text;
    for (int i = 0; text.size() < characters; ++i) {
        const std::string number = std::to_string(i);
        text += i % 20 == 19 ? "{\\C3;colour " + number + "} " : "word" + number + " ";
    }
    std::string dxf = head;
    while (dxf.size() < bytes) {
        dxf += "0\nMTEXT\n8\n0\n10\n1\n20\n2\n40\n2.5\n41\n300\n71\n1\n7\nSERIF\n";
        for (std::size_t at = 0; at < text.size(); at += 250)
            dxf += (at + 250 < text.size() ? "3\n" : "1\n") + text.substr(at, 250) + "\n";
    }
    return dxf + tail;
}

bool measure(const std::string& what, const std::string& dxf) {
    const bench::TempFile file("torva-bench-text", dxf);
    const double floorSeconds = bench::secondsOf(3, [&] { bench::runFloor(dxf); });
    const double seconds = bench::secondsOf(3, [&] {
        host::resetSession();
        DxfSelect(0, DX_IMPORT_2D, file.path().c_str());
    });
    const double stat = host::session().numbers["&DxfStat"];
    const auto megabytes = static_cast<double>(dxf.size()) / 1e6;
    std::printf("%-26s %6.1f MB %8ld texts  floor %6.3f s  import %6.3f s %6.1f MB/s  ratio %5.2f\n",
                what.c_str(), megabytes, host::countDrawing(host::openDrawing()).texts, floorSeconds, seconds,
                megabytes / seconds, seconds / floorSeconds);
    if (stat != 0) std::printf("import ended with %g\n", stat);
    return stat == 0;
}

} // namespace

int main(int argc, char** argv) {
    const bool smoke = argc > 1 && std::strcmp(argv[1], "--smoke") == 0;
    const std::size_t megabyte = 1'000'000;
    setenv("HD_WORK_DIR", std::filesystem::temp_directory_path().c_str(), 0);
    setenv("HD_U", TORVA_BUILD_DATA, 0);
    host::session().maxElements = 1'000'000'000;
    bool isGood = true;
    for (const std::size_t size : smoke ? std::vector<std::size_t>{1} : std::vector<std::size_t>{10, 100})
        isGood = measure("TEXT and MTEXT mixed", generateTexts(size * megabyte)) && isGood;
    for (const std::size_t characters : {300, 3000, 29000}) {
        const std::string dxf = generateLong((smoke ? 1 : 20) * megabyte, characters);
        isGood = measure("MTEXT of " + std::to_string(characters) + " characters", dxf) && isGood;
    }
    return isGood ? 0 : 1;
}

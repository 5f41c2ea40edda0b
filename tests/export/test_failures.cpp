// Exports that can't go well: targets, disks, templates and rules that fail, and a host that fails.
#include "exported.h"
#include "faces.h"

#include "services/failure.h"

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
const std::string OLD = "the old file";

/// Exports into `target` with a protocol in `folder`. Gives &DxfStat.
double exportInto(const TempDir& folder, const std::string& target, const std::string& config) {
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    host::session().texts["$DxfConfig"] = folder.write("out.dxd", config);
    DxfSelect(0, DX_EXPORT_2D, target.c_str());
    return host::session().numbers["&DxfStat"];
}

std::size_t filesIn(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// ---- the target --------------------------------------------------------------------------------------

TEST_F(Export, ATargetThatCantBeWrittenIsReported) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const TempDir folder;
    fs::create_directory(folder.file("folder.dxf"));
    for (const std::string& target : {folder.file("no/such/file.dxf"), folder.file("folder.dxf"),
                                      std::string("/dev/null"), std::string("/proc/version")}) {
        EXPECT_EQ(exportInto(folder, target, exportConfig("ACAD15")), 1.0) << target;
        const std::string protocol = folder.read("dxf.proto");
        EXPECT_NE(protocol.find("Datei " + target + " konnte nicht"), std::string::npos) << target;
        EXPECT_NE(protocol.find("Mit Fehler 9001 beendet!"), std::string::npos) << target;
        EXPECT_EQ(installation_.leftovers(), 0u) << target;
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(filesIn(folder.path()), 3u) << "the folder, the configuration, the protocol";
}

TEST_F(Export, WithoutAPlaceForTemporaryFilesNothingIsLost) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const TempDir folder;
    folder.write("out.dxf", OLD);
    setenv("TMPDIR", "/no/such/folder", 1);
    EXPECT_EQ(exportInto(folder, folder.file("out.dxf"), exportConfig("ACAD15")), 1.0);
    EXPECT_NE(folder.read("dxf.proto").find("Datei /no/such/folder/DXF"), std::string::npos);
    EXPECT_EQ(folder.read("out.dxf"), OLD);
    EXPECT_EQ(filesIn(folder.path()), 3u);
}

TEST_F(Export, ALinkAndPermissionsOfTheTargetStay) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const TempDir folder;
    const std::string real = folder.write("kept/real.dxf", OLD);
    ASSERT_EQ(chmod(real.c_str(), 0640), 0);
    fs::create_symlink(real, folder.file("out.dxf"));
    ASSERT_EQ(exportInto(folder, folder.file("out.dxf"), exportConfig("ACAD15")), 0.0);
    EXPECT_TRUE(fs::is_symlink(folder.file("out.dxf")));
    EXPECT_TRUE(folder.read("kept/real.dxf").ends_with("EOF\n"));
    EXPECT_EQ(fs::status(real).permissions(), fs::perms(0640));
}

TEST_F(Export, ADwgThatCantBeMadeIsNoSuccess) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const TempDir folder;
    host::session().dwgConverter = "false";
    EXPECT_EQ(exportInto(folder, folder.file("out.dwg"), exportConfig("ACAD15")), 1.0);
    EXPECT_NE(folder.read("dxf.proto").find("Mit Fehler 3011 beendet!"), std::string::npos);
    EXPECT_TRUE(folder.read("out.dxf").ends_with("EOF\n")) << "the text stays for another try";
    host::session().dwgConverter = "cp";
    folder.write("out.dxf", OLD);
    EXPECT_EQ(exportInto(folder, folder.file("out.dwg"), exportConfig("ACAD15")), 0.0);
    EXPECT_EQ(folder.read("out.dwg"), folder.read("out.dxf")) << "one that was there stays, overwritten";
    fs::remove(folder.file("out.dxf"));
    EXPECT_EQ(exportInto(folder, folder.file("out.dwg"), exportConfig("ACAD15")), 0.0);
    EXPECT_FALSE(fs::exists(folder.file("out.dxf")));
}

// ---- a full disk -------------------------------------------------------------------------------------

/// The export in a process that may write files of `limit` bytes only. Gives &DxfStat.
int exportWithLimit(const TempDir& folder, const std::string& config, std::size_t limit) {
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit size{limit, limit};
        const std::string path = folder.write("out.dxd", config);
        setenv("HD_WORK_DIR", folder.path().c_str(), 1);
        host::session().texts["$DxfConfig"] = path;
        if (setrlimit(RLIMIT_FSIZE, &size) != 0) _exit(99);
        DxfSelect(0, DX_EXPORT_2D, folder.file("out.dxf").c_str());
        _exit(static_cast<int>(host::session().numbers["&DxfStat"]));
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct SectionSizes {
    std::size_t header, tables, body, whole;
};
SectionSizes sizesOf(const std::string& text) {
    const std::size_t tables = text.find("  0\nSECTION\n  2\nTABLES\n");
    const std::size_t blocks = text.find("  0\nSECTION\n  2\nBLOCKS\n");
    return {tables, blocks - tables, text.size() - blocks, text.size()};
}

void expectOldFileStays(const std::string& config, std::size_t limit, const Installation& installation) {
    const TempDir folder;
    folder.write("out.dxf", OLD);
    EXPECT_EQ(exportWithLimit(folder, config, limit), 1) << limit;
    EXPECT_EQ(folder.read("out.dxf"), OLD) << limit;
    EXPECT_NE(folder.read("dxf.proto").find("Mit Fehler 9000 beendet!"), std::string::npos) << limit;
    EXPECT_EQ(filesIn(folder.path()), 3u) << limit;
    EXPECT_EQ(installation.leftovers(), 0u) << limit;
}

TEST_F(Export, AFullDiskCostsNoOldFile) {
    for (int i = 0; i < 300; ++i)
        addPattern({moveTo(0, 0), drawTo(i, 1)}, "P", std::string(150, 'L') + std::to_string(i));
    const std::string config = exportConfig("ACAD15", "LAYER_ELEM=ATTR\nNO_KOMMA=0\n");
    SectionSizes sizes = sizesOf(exportDrawing(config).text);
    expectOldFileStays(config, sizes.body - 1, installation_); // the body fails
    for (const char* poly : {"WRITE_POLY=1\n", "WRITE_BLOCKS=YES\n"})
        expectOldFileStays(exportConfig("ACAD15", poly), 4096, installation_);

    // So little that it waits in memory until its stream is closed.
    startDrawing();
    for (int i = 0; i < 60; ++i) addPattern({moveTo(0, 0), drawTo(i, 1)});
    sizes = sizesOf(exportDrawing(exportConfig("ACAD15")).text);
    ASSERT_GT(sizes.body, sizes.header + sizes.tables);
    expectOldFileStays(exportConfig("ACAD15"), sizes.body - 1, installation_);

    // Many layers and few entities: the other files are larger than the body.
    std::string layers;
    DxfText source = dxf();
    for (int i = 0; i < 1000; ++i) source.layer(std::string(100, 'L') + std::to_string(i), 7);
    const TempDir folder;
    const std::string path = folder.write("layers.dxf", source.text());
    startDrawing();
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    const std::string wide = exportConfig("ACAD15", "USE_TEMPLATE=1\nTEMPLATE_NAME=" + path + "\n");
    sizes = sizesOf(exportDrawing(wide).text);
    ASSERT_GT(sizes.tables, sizes.body);
    expectOldFileStays(wide, sizes.tables - 1, installation_);
    expectOldFileStays(wide, sizes.tables + sizes.header - 1, installation_); // the tables behind the header
    expectOldFileStays(wide, sizes.whole - 1, installation_);                 // the body behind both
    EXPECT_EQ(exportWithLimit(folder, wide, sizes.whole), 0);
    EXPECT_EQ(folder.read("out.dxf").size(), sizes.whole);
}

TEST_F(Export, WithoutAnOldFileTheTornOneStays) {
    std::vector<host::Element> elements{moveTo(0, 0)};
    for (int i = 0; i < 2000; ++i) elements.push_back(drawTo(i, i % 7));
    addPattern(elements);
    const std::string config = exportConfig("ACAD15");
    const std::string whole = exportDrawing(config).text;
    const TempDir folder;
    EXPECT_EQ(exportWithLimit(folder, config, whole.size() - 1), 1);
    const std::string torn = folder.read("out.dxf");
    EXPECT_EQ(torn, whole.substr(0, torn.size()));
    EXPECT_LT(torn.size(), whole.size());
    EXPECT_EQ(filesIn(folder.path()), 3u);
}

// ---- template and rules ------------------------------------------------------------------------------

TEST_F(Export, ADamagedTemplateGivesWhatCanBeRead) {
    addPattern({moveTo(0, 0), drawTo(4, 0)});
    const std::string whole = dxf().layer("LAY", 3).layer("SECOND", 5).text();
    const std::size_t second = whole.find("SECOND");
    const TempDir folder;
    fs::create_directory(folder.file("folder"));
    const auto exportWith = [&](const std::string& name, const std::string& version) {
        const std::string path = folder.file(name);
        return exportDrawing(
            exportConfig(version, "LAYER_ELEM=ATTR\nUSE_TEMPLATE=1\nTEMPLATE_NAME=" + path + "\n"));
    };
    folder.write("cut", whole.substr(0, second + 3));
    folder.write("odd", "x\n" + whole);
    folder.write("empty", "");
    folder.write("noise", std::string("\0\xFF\n\x01\n", 5) + std::string(5000, '\xE4'));
    folder.write("binary", "AutoCAD Binary DXF\r\n\x1A" + std::string(200, '\0'));
    folder.write("bare.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n");
    folder.write("none.dwg", "AC1015");
    for (const std::string version : {"ACAD32", "ACAD18", "ACAD12"}) {
        for (const char* name :
             {"cut", "odd", "empty", "noise", "binary", "bare.dxf", "folder", "missing", "none.dwg"}) {
            const Exported file = exportWith(name, version);
            EXPECT_EQ(file.stat, 0) << name;
            EXPECT_EQ(file.errors(), "") << name << " " << version;
            const bool isRead = std::string(name) == "cut";
            EXPECT_EQ(valueOf(file.first(2, "LAY"), 62), isRead ? "3" : "7") << name;
            const bool isOpened = fs::is_regular_file(folder.file(name)) && std::string(name) != "none.dwg";
            EXPECT_EQ(file.protocol.find(" konnte nicht") == std::string::npos, isOpened) << name;
            EXPECT_EQ(file.protocol.find("Keine TABLE-Section") == std::string::npos, isRead || !isOpened)
                << name;
        }
    }
}

TEST_F(Export, TemplatesOfBothEncodingsKnowTheirLayers) {
    addPattern({moveTo(0, 0), drawTo(4, 0)}, "P", "W\xC3\xA4nde");
    for (const char* name : {"W\xC3\xA4nde", "W\xE4nde", "W\\U+00E4nde"}) {
        const TempDir folder;
        const std::string path = folder.write("t.dxf", dxf().layer(name, 3).text());
        for (const char* version : {"ACAD24", "ACAD18"}) {
            const Exported file = exportDrawing(
                exportConfig(version, "LAYER_ELEM=ATTR\nUSE_TEMPLATE=1\nTEMPLATE_NAME=" + path + "\n"));
            EXPECT_EQ(file.errors(), "");
            const std::string layer = valueOf(file.first(0, "LINE"), 8);
            EXPECT_EQ(file.count(2, layer), 1u) << name << " " << version;
            EXPECT_EQ(valueOf(file.first(2, layer), 62), "3") << name << " " << version;
        }
    }
}

TEST_F(Export, RulesGiveLayersToElements) {
    addPattern({moveTo(0, 0), drawTo(1, 0, 1, 2), drawTo(2, 0, 2), drawTo(3, 0, 3), moveTo(9, 9)}, "P",
               "WALL");
    addPattern({moveTo(0, 5), drawTo(1, 5)}, "P", "OTHER");
    const std::string lines = "LAYER_ELEM=ATTR\nUSE_BYLAYER=1\n";
    for (const char* version : {"ACAD24", "ACAD12"}) {
        const Exported file = exportDrawing(exportConfig(version, lines));
        EXPECT_EQ(file.errors(), "");
        for (const char* layer : {"WALL-HIDDEN", "WALL-CUT", "WALL-LINES", "OTHER"})
            EXPECT_EQ(file.count(2, layer), 1u) << layer;
        EXPECT_EQ(valueOf(file.first(0, "LINE"), 8), "WALL-HIDDEN");
        EXPECT_EQ(valueOf(file.first(0, "LINE", 1), 8), "WALL-CUT");
        EXPECT_EQ(valueOf(file.first(0, "LINE", 2), 8), "WALL-LINES");
        EXPECT_EQ(valueOf(file.first(0, "LINE", 3), 8), "OTHER");
        EXPECT_NE(file.protocol.find("Layer WALL-CUT ist nicht in Dateivorlage definiert!"),
                  std::string::npos);
    }
    const TempDir folder;
    folder.write("broken.xls", "Key;Layer\nelement;WALL;;X\n");
    for (const char* name : {"broken.xls", "missing.xls"}) {
        const std::string rules = folder.file(name);
        const Exported file = exportDrawing(exportConfig("ACAD24", lines + "BYLAYER_NAME=" + rules + "\n"));
        EXPECT_EQ(file.stat, 0);
        EXPECT_EQ(valueOf(file.first(0, "LINE", 1), 8), "WALL") << "the layer of its pattern";
        ASSERT_EQ(host::session().dialogs.size(), 1u) << "told once";
        EXPECT_EQ(host::session().dialogs[0], "Datei " + rules +
                                                  " konnte nicht ge\xC3\xB6"
                                                  "ffnet werden!");
        host::session().dialogs.clear();
    }
}

TEST_F(Export, HiddenLinesOfAPatternAreDrawnIntoIt) {
    addPattern({moveTo(0, 0), drawTo(7, 3)});
    DxfSelect(0, DX_HIDDEN_LINE_PATTERNS, "");
    EXPECT_EQ(host::session().numbers["&DxfStat"], 0.0) << "there is no 3D in it";
    host::Pattern& solid = addPattern({moveTo(1, 1), drawTo(2, 2)});
    addFace(solid.faceLists.emplace_back(), {{0, 0, 5}, {4, 0, 5}, {4, 4, 5}, {0, 4, 5}}, 3);
    addFace(solid.faceLists.back(), {{1, 1, 0}, {6, 1, 0}, {1, 3, 0}}, 2);
    DxfSelect(0, DX_HIDDEN_LINE_PATTERNS, "");
    EXPECT_EQ(host::session().numbers["&DxfStat"], 0.0);
    std::string image;
    for (std::size_t i = 3; i < solid.elements.size(); i += 2) {
        const host::Element &from = solid.elements[i - 1], &to = solid.elements[i];
        image += UtFormat("%g %g - %g %g pen %d\n", from.x, from.y, to.x, to.y, to.pen).str();
    }
    EXPECT_EQ(image, "0 0 - 0 4 pen 3\n0 0 - 4 0 pen 3\n0 4 - 4 4 pen 3\n4 1 - 6 1 pen 2\n4 1.8 - 6 1 pen 2\n"
                     "4 0 - 4 4 pen 3\n");
    EXPECT_EQ(host::openDrawing().next(solid.number), nullptr) << "no image is left behind";
}

// ---- a failing host ----------------------------------------------------------------------------------

/// The entities of a file without what a missing template or character table may change: handles, and where
/// exactly a text stands.
std::string contentOf(const std::string& text) {
    std::string all, entity;
    bool isInside = false;
    for (const DxfGroup& pair : pairsOf(text)) {
        if (pair.code == 2 && (pair.value == "BLOCKS" || pair.value == "OBJECTS"))
            isInside = pair.value == "BLOCKS";
        if (pair.code == 0) entity = pair.value;
        const bool isHandle = pair.code == 5 || pair.code == 330;
        const bool isNumber = pair.code >= 10 && pair.code < 60;
        if (!isInside || isHandle || entity == "SECTION" || entity == "EOF") continue;
        if (!isNumber || entity == "LINE") all += std::to_string(pair.code) + "=" + pair.value + "\n";
    }
    return all;
}

TEST_F(Export, SurvivesEachFailureOfTheHost) {
    const std::string config = exportConfig("ACAD15", "LAYER_ELEM=ATTR\nWRITE_BLOCKS=YES\n");
    const auto draw = [] {
        startDrawing();
        host::Pattern& pattern = addPattern({moveTo(0, 0), drawTo(4, 0), drawTo(4, 4, 2)});
        host::Text text;
        text.lines = {"abc"};
        pattern.texts.push_back(text);
        host::session().pen = 7;
    };
    draw();
    const std::string whole = contentOf(exportDrawing(config).text);
    int notRemoved = 0, pensLost = 0;
    for (long n = 1;; ++n) {
        ASSERT_LT(n, 5000);
        const TempDir folder;
        folder.write("out.dxf", OLD);
        draw();
        host::failCall(n);
        const double stat = exportInto(folder, folder.file("out.dxf"), config);
        const bool hasFailed = host::callCount() >= n;
        host::failCall(0);
        const std::string text = folder.read("out.dxf");
        if (stat != 0)
            EXPECT_EQ(text, OLD) << "call " << n;
        else
            EXPECT_EQ(contentOf(text), whole) << "call " << n << ": a whole drawing, or an error";
        if (!hasFailed) break;
        notRemoved += installation_.leftovers() + filesIn(folder.path()) > 3 ? 1 : 0;
        installation_.clearLeftovers();
        pensLost += host::session().pen != 7 ? 1 : 0;
    }
    EXPECT_LE(notRemoved, 4) << "only where the removal is the call that fails";
    EXPECT_LE(pensLost, 1);
}

} // namespace

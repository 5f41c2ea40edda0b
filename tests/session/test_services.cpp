// Hosts that lack services: an import and an export bring the whole drawing without them.
#include "import_text.h"

#include "dx_select.h"
#include "services/failure.h"
#include "services/session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

std::string contentOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Lines of a dump that show something: elements, texts, hatches, faces. What a layer or pen looks like
/// isn't.
long shownIn(const std::string& dump) {
    long count = 0;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);)
        for (const char* word :
             {"move", "draw", "arc", "spline", "text", "hatch", "face", "bitmap", "dimension"})
            count += line.find(word) != std::string::npos && line.find("look") == std::string::npos;
    return count;
}

struct Passage {
    double in = -1, out = -1; ///< &DxfStat
    long shown = 0;
    std::string entities; ///< of the file that is written
};

/// In and out again, in space, by the configuration that keeps all, with a host that lacks the service.
Passage passWithout(const std::string& service, const TempDir& folder, const std::string& drawing) {
    Passage passage;
    const std::string keep = contentOf(TORVA_SOURCE_DIR "/int/dxf/dflt/keep.dxd");
    ImportOptions options;
    options.in3d = options.keepsSession = true;
    options.config = keep;
    host::resetSession();
    host::failService(service);
    const ImportResult result = importFile(folder, drawing, options);
    passage.in = result.stat;
    passage.shown = shownIn(result.dump);
    host::session().texts["$DxfConfig"] = folder.write("keep.dxd", keep);
    DxfSelect(0, DX_EXPORT_3D, folder.file("out.dxf").c_str());
    passage.out = host::session().numbers["&DxfStat"];
    host::failService("");
    const std::string written = folder.read("out.dxf");
    passage.entities = written.substr(std::min(written.size(), written.find("ENTITIES")));
    std::filesystem::remove(folder.file("out.dxf"));
    return passage;
}

TEST(Services, OfWhichADrawingDoesNotDependMayBeMissing) {
    const TempDir folder;
    for (const char* drawing : {"bracket.dxf", "texts.dxf"}) {
        folder.write(drawing, contentOf(std::string(TORVA_SOURCE_DIR "/examples/") + drawing));
        const Passage whole = passWithout("", folder, drawing);
        ASSERT_EQ(whole.in, 0) << drawing;
        ASSERT_EQ(whole.out, 0) << drawing;
        for (const char* service : {"AddDXFLayer",
                                    "CoConnectPartner",
                                    "CoGetStringFromPartner",
                                    "DsAssemblyUpdateAct",
                                    "DsResetFlag",
                                    "GetLayerLook",
                                    "GetWork",
                                    "GoDoGetMdiClientPosEx",
                                    "GoMaskGetIdOrCreateEx",
                                    "GoPartnerOpenEx",
                                    "GoRsrcSetProgramEx",
                                    "SetLastInterfaceIds",
                                    "SetLayerLook",
                                    "Uo3dInitSonder",
                                    "UoFiltPatPerAttr",
                                    "UoStartInitEpsNew",
                                    "UpdateOnLoad",
                                    "UtFileRemove",
                                    "Zoom2Box",
                                    "findMask",
                                    "ov3dfunc",
                                    "ov3dgenepsi"}) {
            const Passage without = passWithout(service, folder, drawing);
            EXPECT_EQ(without.in, 0) << drawing << ' ' << service;
            EXPECT_EQ(without.out, 0) << drawing << ' ' << service;
            EXPECT_EQ(without.shown, whole.shown) << drawing << ' ' << service;
            EXPECT_EQ(without.entities.size(), whole.entities.size()) << drawing << ' ' << service;
        }
    }
}

TEST(Services, WithoutWhichNothingCanBeDrawnEndTheImport) {
    const TempDir folder;
    folder.write("floorplan.dxf", contentOf(TORVA_SOURCE_DIR "/examples/floorplan.dxf"));
    for (const char* service : {"AddElemsColLtAttrInfo", "DsCursorFromPatNo", "UtFileMap", "UtFileOpen",
                                "ovconv", "ovform", "ovpat", "ovpenlt", "ovtextparamsttf"})
        EXPECT_GT(passWithout(service, folder, "floorplan.dxf").in, 0) << service;
    for (const char* service :
         {"UoElemS", "UtFileRename", "UtFileTarget", "ovdim", "ovnexthatch2", "ovpatinfo", "ovtext"})
        EXPECT_GT(passWithout(service, folder, "floorplan.dxf").out, 0) << service;
}

TEST(Services, AWideLineThatCantBeCopiedStaysWhereItIs) {
    const TempDir folder;
    folder.write("floorplan.dxf", contentOf(TORVA_SOURCE_DIR "/examples/floorplan.dxf"));
    const Passage whole = passWithout("", folder, "floorplan.dxf"),
                  without = passWithout("ovcopy", folder, "floorplan.dxf");
    EXPECT_EQ(without.in, 0);
    EXPECT_EQ(without.shown, whole.shown);
}

} // namespace
